#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <memory>

#include "files/modLoadSave.h"
#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/PanelLayout.h"
#include "mainwindow/RowControls.h"
#include "settingsdialog/frmOptions.h"
#include "startup/modSettings.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;

// The real main window, driven through its controls.
class frmMainTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<testing::MainWindowFixture> f_;

  // Names a file on the command line: a saved four-option topic, or one holding the given bytes.
  std::string CommandLineFile(const std::string& Name, const std::string& Bytes = {}) {
    const std::string file = f_->File(Name);
    TarvelinTopic topic;
    topic.SetName("Choosing a flat");
    topic.SetTotalOptions(4);
    SaveTopicFile(file, topic);
    if (!Bytes.empty()) {
      testing::WriteBytes(file, Bytes);
    }
    Program().FileToOpen = file;
    Program().FileTypeToOpen = "TVT";
    return file;
  }

 private slots:
  void init() { f_ = std::make_unique<testing::MainWindowFixture>(); }
  void cleanup() { f_.reset(); }

  void buildsOneRowPerOptionAndAttributeMappedOptionMajor() {
    frmMain& window = f_->Start(4, 3);
    QCOMPARE(window.Rows().TranslateToIndex(2, 1), int16_t{7});
    QCOMPARE(window.Rows().GetOptionIDFromIndex(7), int16_t{2});
    QCOMPARE(window.Rows().GetAttributeIDFromIndex(7), int16_t{1});
    QVERIFY(f_->Has("sliderRating_11") && !f_->Has("sliderRating_12"));
    QCOMPARE(f_->Find<QLabel>("lblScoreTitle_1")->toolTip(), QString("Scores for option 2"));
    // While the topic already has a fourth attribute but the window still shows three, only the control
    // count maps the existing controls correctly.
    Program().Topic->AddAttribute("Attribute 4");
    QCOMPARE(window.Rows().GetOptionIDFromIndex(7, true), int16_t{2});
    QCOMPARE(window.Rows().GetAttributeIDFromIndex(7, true), int16_t{1});
    QCOMPARE(window.Rows().GetOptionIDFromIndex(7), int16_t{1});
    Program().Topic->SetTotalOptions(2);
    f_->Rebuild();
    QVERIFY(f_->Has("sliderRating_7") && !f_->Has("sliderRating_8"));
  }

  void snapsToTheMinimumClientSize() {
    f_->Start().resize(300, 200);
    QTRY_COMPARE(f_->Window->size(), QSize(MinClientSize.Width, MinClientSize.Height));
  }

  // The formulas are those of the window without the line on how robust the best option is.
  void panelsCollapseToTheirHeadingAndToggleBack() {
    Program().ShowInsight = false;
    frmMain& window = f_->Start(3, 2);
    auto* scores = f_->Find("picScoreFrame");
    const int heading = f_->Find("lblScores")->height();
    QCOMPARE(scores->height(), 3 * (window.Panels().ScoreRowStep() + 5) + heading + 15);
    const QRect ratingsBefore = f_->Find("picRatingFrame")->geometry();
    const QRect sliderBefore = f_->Find("sliderRating_3")->geometry();
    auto* toggle = f_->Find<QAbstractButton>("btnToggleScore");
    QTest::mouseClick(toggle, Qt::LeftButton);
    QCOMPARE(scores->height(), heading + 10);
    QCOMPARE(toggle->text(), QString("Show Scores"));
    QVERIFY(f_->Find("picRatingFrame")->y() < ratingsBefore.y());
    QTest::mouseClick(toggle, Qt::LeftButton);
    QCOMPARE(f_->Find("picRatingFrame")->geometry(), ratingsBefore);
    QCOMPARE(f_->Find("sliderRating_3")->geometry(), sliderBefore);
  }

  void writingControlsFromTheModelStoresNothingBack() {
    frmMain& window = f_->Start();
    Program().Topic->SetRating(1, 1, 0.25);
    const double before = Program().Topic->GetRating(0, 0);
    window.UpdateSettings();
    QCOMPARE(f_->Find<ctlSlider>("sliderRating_3")->Value(), 25);
    QCOMPARE(Program().Topic->GetRating(0, 0), before);
    QVERIFY(!Program().Modified);
  }

  void loadsTheFileNamedOnTheCommandLine() {
    const std::string file = CommandLineFile("flat.tvt");
    QCOMPARE(f_->Launch().windowTitle(), QString("Tarvelin - Choosing a flat"));
    QCOMPARE(Program().CurrentFileName, file);
    QVERIFY(f_->Has("lblOption_3"));
    QVERIFY(f_->Dialogs->Messages.empty());
  }

  void aFileThatFailsToLoadLeavesANewTopicAndOneMessage() {
    CommandLineFile("broken.tvt", "this is not a topic");
    f_->Launch();
    QCOMPARE(f_->Dialogs->Messages.size(), size_t{1});
    QCOMPARE(Program().Topic->TotalOptions() + Program().Topic->TotalAttributes(), 4);
    QVERIFY(Program().CurrentFileName.empty());
  }

  // A size no screen shows (a monitor that is gone, a hand-edited hive) comes back inside the screen, so
  // the command row stays in reach and the drawing code never sees it.
  void aRememberedPlacementOffTheScreenIsBroughtOntoIt() {
    SaveSettings(WindowPlacement{-300000, 900000, 9000, 6000, false});
    frmMain& window = f_->Launch();
    const QRect screen = window.screen()->availableGeometry();
    QVERIFY(screen.contains(window.frameGeometry()));
  }

  // Under a dark desktop palette the window's own text stays dark on its light decoration, the settings
  // dialog's too; the command buttons name their shortcuts and every row says what it is.
  void staysReadableUnderADarkThemeAndTellsWhatEachControlIs() {
    const QPalette desktop = QApplication::palette();
    QPalette dark = desktop;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    frmMain& window = f_->Start(2, 2);
    frmOptions dialog(
        false, [] { return false; }, &window);
    const bool readable = f_->Find<QLabel>("lblTitle")->palette().color(QPalette::WindowText).lightness() < 100 &&
                          dialog.palette().color(QPalette::WindowText).lightness() < 100;
    QApplication::setPalette(desktop);
    QVERIFY(readable);
    for (const char* command : {"btnNew", "btnLoad", "btnSave"}) {
      QVERIFY(f_->Find(command)->toolTip().contains("(Ctrl+"));
    }
    Program().Topic->SetOptionName(1, "Estate");
    Program().Topic->SetAttributeName(0, "Price");
    Program().Topic->SetRating(1, 0, 0.7);
    f_->Rebuild();
    auto* rating = f_->Find<ctlSlider>("sliderRating_2");
    QCOMPARE(rating->accessibleName(), QString("Rating of Estate for Price"));
    QCOMPARE(rating->ValueText(), QString("0.700"));
    QCOMPARE(f_->Find("lblRating_2")->accessibleName(), QString("Rating of Estate for Price"));
  }

  // The test screen (800 x 800) is narrower than the design size (880 x 700): the height is centred, the
  // width kept on the screen.
  void firstRunIsCentredAtItsDesignSize() {
    frmMain& window = f_->Launch();
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    const QRect screen = window.screen()->availableGeometry();
    QCOMPARE(window.height(), 700);
    QCOMPARE(window.pos().y(), screen.height() / 2 - window.height() / 2);
    QVERIFY(screen.contains(window.frameGeometry()));
    QVERIFY(!window.isMaximized());
  }
};

TARVELIN_GUI_TEST(frmMainTest);

#include "frmMainTest.moc"
