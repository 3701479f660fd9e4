#include <QAbstractButton>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <cstdlib>
#include <memory>

#include "files/modLoadSave.h"
#include "gui_support/GuiTestRegistry.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/ctlSlider.h"
#include "mainwindow/frmMain.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

using namespace tarvelin;
using tarvelin::testing::ScopedScriptedDialogs;
using tarvelin::testing::TempFolder;

// The real main window, driven through its controls.
class frmMainTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<TempFolder> folder_;
  std::unique_ptr<ScopedScriptedDialogs> dialogs_;
  std::unique_ptr<frmMain> window_;

  template <typename T>
  T* Control(const QString& name) {
    T* control = window_->findChild<T*>(name);
    if (control == nullptr) {
      qFatal("no control named %s", qPrintable(name));
    }
    return control;
  }

  // A started window with the given topic loaded as if it had been named on the command line.
  void StartWith(int options, int attributes) {
    TarvelinTopic topic;
    topic.SetRounding(3);
    topic.SetTotalOptions(static_cast<int16_t>(options));
    topic.SetTotalAttributes(static_cast<int16_t>(attributes));
    const std::string file = folder_->File("start.tvt");
    QVERIFY(SaveTopicFile(file, topic));
    Program().FileToOpen = file;
    Program().FileTypeToOpen = "TVT";
    window_ = std::make_unique<frmMain>();
    window_->Form_Load();
  }

 private slots:
  void init() {
    folder_ = std::make_unique<TempFolder>();
    setenv("TARVELIN_REGISTRY_DIR", folder_->Path().c_str(), 1);
    dialogs_ = std::make_unique<ScopedScriptedDialogs>();
    Program().Topic = std::make_unique<TarvelinTopic>();
    Program().FileToOpen.clear();
    Program().FileTypeToOpen.clear();
    Program().DisplayAsDecimal = true;
    Program().ShowSettingsOnNew = false;
  }

  void cleanup() {
    window_.reset();
    dialogs_.reset();
    folder_.reset();
  }

  void mapsIndexesOptionMajor() {
    StartWith(4, 3);
    QCOMPARE(window_->TranslateToIndex(2, 1), int16_t{7});
    QCOMPARE(window_->GetOptionIDFromIndex(7), int16_t{2});
    QCOMPARE(window_->GetAttributeIDFromIndex(7), int16_t{1});
    // While the topic already has a fourth attribute but the window still shows three, only the control
    // count maps the existing controls correctly.
    Program().Topic->AddAttribute("Attribute 4");
    QCOMPARE(window_->GetOptionIDFromIndex(7, true), int16_t{2});
    QCOMPARE(window_->GetAttributeIDFromIndex(7, true), int16_t{1});
    QCOMPARE(window_->GetOptionIDFromIndex(7), int16_t{1});
  }

  void buildsOneRowOfControlsPerOptionAndAttribute() {
    StartWith(3, 4);
    QVERIFY(window_->findChild<ctlSlider*>("sliderRating_11") != nullptr);
    QVERIFY(window_->findChild<ctlSlider*>("sliderRating_12") == nullptr);
    QVERIFY(window_->findChild<QLabel*>("lblAttribute_3") != nullptr);
    QVERIFY(window_->findChild<QLabel*>("lblScoreTitle_2") != nullptr);
    QCOMPARE(Control<QLabel>("lblOption_1")->text(), QString("Option 2"));
    QCOMPARE(Control<QLabel>("lblAttribute_1")->toolTip(), QString("Attribute 2"));
    QCOMPARE(Control<QLabel>("lblScoreTitle_1")->toolTip(), QString("Scores for option 2"));

    Program().Topic->DeleteAttribute(0);
    Program().Topic->DeleteOption(0);
    bool rowsChanged = false;
    window_->UpdateSliderArrays(rowsChanged);
    QVERIFY(rowsChanged);
    QVERIFY(window_->findChild<ctlSlider*>("sliderRating_5") != nullptr);
    QVERIFY(window_->findChild<ctlSlider*>("sliderRating_6") == nullptr);
  }

  void snapsToTheMinimumClientSize() {
    StartWith(2, 2);
    window_->resize(300, 200);
    QTRY_COMPARE(window_->size(), QSize(MinClientSize.Width, MinClientSize.Height));
  }

  void panelsCollapseToTheirHeadingAndToggleBack() {
    StartWith(3, 2);
    auto* scores = Control<QWidget>("picScoreFrame");
    const int heading = Control<QLabel>("lblScores")->height();
    QCOMPARE(scores->height(), 3 * (window_->ScoreRowStep() + 5) + heading + 15);
    const QRect ratingsBefore = Control<QWidget>("picRatingFrame")->geometry();
    const QRect sliderBefore = Control<ctlSlider>("sliderRating_3")->geometry();

    auto* toggle = Control<QAbstractButton>("btnToggleScore");
    QCOMPARE(toggle->text(), QString("Hide Scores"));
    QTest::mouseClick(toggle, Qt::LeftButton);
    QCOMPARE(scores->height(), heading + 10);
    QCOMPARE(toggle->text(), QString("Show Scores"));
    QVERIFY(!Control<ctlSlider>("sliderScore_0")->isVisible());
    QVERIFY(Control<QWidget>("picRatingFrame")->y() < ratingsBefore.y());

    QTest::mouseClick(toggle, Qt::LeftButton);
    QCOMPARE(Control<QWidget>("picRatingFrame")->geometry(), ratingsBefore);
    QCOMPARE(Control<ctlSlider>("sliderRating_3")->geometry(), sliderBefore);
    QVERIFY(Control<ctlSlider>("sliderScore_0")->isVisible());
  }

  void movingARatingSliderStoresTheValueAndRefreshesScores() {
    StartWith(2, 2);
    Program().DisplayAsDecimal = false;
    Program().Topic->SetRounding(2);
    window_->UpdateSettings();
    auto* slider = Control<ctlSlider>("sliderRating_1");
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Home);
    QTest::keyClick(slider, Qt::Key_PageUp);
    QCOMPARE(Program().Topic->GetRating(0, 1), 0.10);
    QCOMPARE(Control<QLabel>("lblRating_1")->text(), QString("10%"));
    QCOMPARE(Control<QLabel>("lblScore_0")->text(),
             QString("%1%").arg(std::lround(Program().Topic->GetScore(0) * 100)));
    QVERIFY(Program().Modified);
  }

  void writingControlsFromTheModelStoresNothingBack() {
    StartWith(2, 2);
    Program().Topic->SetRating(1, 1, 0.25);
    const double before = Program().Topic->GetRating(0, 0);
    Program().Modified = false;
    window_->UpdateSettings();
    QCOMPARE(Control<ctlSlider>("sliderRating_3")->Value(), 25);
    QCOMPARE(Program().Topic->GetRating(0, 0), before);
    QVERIFY(!Program().Modified);
  }

  void coloursEveryBarTiedWithTheBest() {
    StartWith(3, 1);
    Program().Topic->SetRating(0, 0, 0.8);
    Program().Topic->SetRating(1, 0, 0.8);
    Program().Topic->SetRating(2, 0, 0.3);
    window_->UpdateSettings();
    QCOMPARE(Control<ctlSlider>("sliderScore_0")->BarColour(), 0x0CC0FEu);
    QCOMPARE(Control<ctlSlider>("sliderScore_1")->BarColour(), 0x0CC0FEu);
    QCOMPARE(Control<ctlSlider>("sliderScore_2")->BarColour(), 0x0980FDu);
  }

  void loadsTheFileNamedOnTheCommandLine() {
    TarvelinTopic topic;
    topic.SetName("Choosing a flat");
    topic.SetTotalOptions(4);
    const std::string file = folder_->File("flat.tvt");
    QVERIFY(SaveTopicFile(file, topic));
    Program().FileToOpen = file;
    Program().FileTypeToOpen = "TVT";
    window_ = std::make_unique<frmMain>();
    window_->Form_Load();
    QCOMPARE(Program().Topic->Name(), std::string("Choosing a flat"));
    QCOMPARE(window_->windowTitle(), QString("Tarvelin - Choosing a flat"));
    QCOMPARE(Program().CurrentFileName, file);
    QVERIFY(window_->findChild<QLabel*>("lblOption_3") != nullptr);
    QVERIFY((*dialogs_)->Messages.empty());
  }

  void aFileThatFailsToLoadLeavesANewTopicAndOneMessage() {
    const std::string file = folder_->File("broken.tvt");
    tarvelin::testing::WriteBytes(file, "this is not a topic");
    Program().FileToOpen = file;
    Program().FileTypeToOpen = "TVT";
    window_ = std::make_unique<frmMain>();
    window_->Form_Load();
    QCOMPARE((*dialogs_)->Messages.size(), size_t{1});
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    QCOMPARE(Program().Topic->TotalAttributes(), int16_t{2});
    QVERIFY(Program().CurrentFileName.empty());
  }

  void firstRunIsCentredAtItsDesignSize() {
    window_ = std::make_unique<frmMain>();
    window_->Form_Load();
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    const QRect screen = window_->screen()->availableGeometry();
    QCOMPARE(window_->x(), screen.width() / 2 - window_->width() / 2);
    QCOMPARE(window_->y(), screen.height() / 2 - window_->height() / 2);
    QVERIFY(!window_->isMaximized());
  }
};

TARVELIN_GUI_TEST(frmMainTest);

#include "frmMainTest.moc"
