#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <memory>

#include "files/modLoadSave.h"
#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "gui_support/SliderPixels.h"
#include "mainwindow/LabelEditor.h"
#include "mainwindow/WindowDecoration.h"
#include "settingsdialog/frmOptions.h"
#include "support/TempFolder.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;

// The window's commands, shortcuts, capture, and undo and redo as the person meets them (Ctrl+Z, Ctrl+Y and
// Ctrl+Shift+Z over drags, keys, renames and deletes, and the modified flag at the saved state).
class frmMainCommandsTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<testing::MainWindowFixture> f_;

  testing::ScriptedDialogs& Dialogs() { return *f_->Dialogs; }
  QWidget* Window() { return f_->Window.get(); }
  QLineEdit* EditBox() { return f_->EditBox(); }
  void Key(int KeyCode, Qt::KeyboardModifiers Modifiers = Qt::ControlModifier) {
    QTest::keyClick(Window(), static_cast<Qt::Key>(KeyCode), Modifiers);
  }
  void Drag(const char* Name, double From, double To) {
    auto* slider = f_->Find<ctlSlider>(Name);
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, testing::TrackPoint(*slider, From));
    QTest::mouseMove(slider, testing::TrackPoint(*slider, (From + To) / 2));
    QTest::mouseMove(slider, testing::TrackPoint(*slider, To));
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, testing::TrackPoint(*slider, To));
  }
  static double Rating(int16_t Option, int16_t Attribute) { return Program().Topic->GetRating(Option, Attribute); }

 private slots:
  void init() {
    f_ = std::make_unique<testing::MainWindowFixture>();
    f_->Start();
  }
  void cleanup() { f_.reset(); }

  void shortcutsActOnlyWithCtrlAlone() {
    Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    Key(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    Key(Qt::Key_S, Qt::NoModifier);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{0});
    Key(Qt::Key_S);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    Key(Qt::Key_L);
    QCOMPARE(Dialogs().OpenRequests.size(), size_t{1});
  }

  void ctrlPOffersThePdfReport() {
    Dialogs().FileAnswers.push_back(f_->File("car.pdf"));
    Key(Qt::Key_P);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    const FileDialogRequest& request = Dialogs().SaveRequests[0];
    QCOMPARE(QString::fromStdString(request.Filter).split('|').at(2 * (request.FilterIndex - 1)),
             QString("Decision report - PDF (*.pdf)"));
    QVERIFY(request.FileName.ends_with(".pdf"));
    QVERIFY(testing::ReadBytes(f_->File("car.pdf")).starts_with("%PDF"));
  }

  void aShortcutCommitsTheOpenEditBeforeNewRebuildsTheRows() {
    Program().Topic->SetTotalOptions(3);
    f_->Rebuild();
    f_->Type("lblRating_5", "0.4");
    Dialogs().Answers.push_back(MsgResult::No);
    QTest::keyClick(EditBox(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(Dialogs().Messages.size(), size_t{1});  // the committed value made the old topic worth saving
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    QVERIFY(!EditBox()->isVisible());
    QVERIFY(f_->Window->Editor().EditingLabel() == nullptr);
  }

  void aShortcutSavesTheValueBeingTyped() {
    f_->Type("lblWeighting_0", "0.25");
    Dialogs().FileAnswers.push_back(f_->File("typed.tvt"));
    QTest::keyClick(EditBox(), Qt::Key_S, Qt::ControlModifier);
    auto saved = std::make_unique<TarvelinTopic>();
    QVERIFY(LoadTopicFile(f_->File("typed.tvt"), saved));
    QCOMPARE(saved->GetWeighting(0), 0.25);
  }

  void cancellingTheSaveQuestionOrItsSaveCancelsNewAndLoad() {
    TarvelinTopic* before = Program().Topic.get();
    Program().Modified = true;
    Dialogs().Answers = {MsgResult::Cancel, MsgResult::Yes};
    Dialogs().FileAnswers.push_back(std::nullopt);
    Key(Qt::Key_N);
    QCOMPARE(Program().Topic.get(), before);
    f_->Click("btnLoad");
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    QCOMPARE(Dialogs().OpenRequests.size(), size_t{0});
  }

  // With the preference, New shows the settings dialog for the new topic; Escape there keeps it, as OK does.
  void newShowsTheSettingsFirstWhenAskedTo() {
    Program().ShowSettingsOnNew = true;
    Program().CurrentFileName = f_->File("old.tvt");
    TarvelinTopic* before = Program().Topic.get();
    bool shown = false;
    QTimer escape;
    QObject::connect(&escape, &QTimer::timeout, [&] {
      if (auto* dialog = f_->Window->findChild<frmOptions*>(); dialog != nullptr && dialog->isVisible()) {
        shown = true;
        QTest::keyClick(dialog, Qt::Key_Escape);
      }
    });
    escape.start(10);
    f_->Click("btnNew");
    QVERIFY(shown && Program().Topic.get() != before);
    QVERIFY(Program().CurrentFileName.empty());
  }

  void newStartsTwoByTwoWithThePreviousNormalisation() {
    Program().Topic->SetNormaliseWeights(true);
    Program().Topic->SetTotalOptions(5);
    f_->Click("btnNew");
    QCOMPARE(Program().Topic->TotalOptions() + Program().Topic->TotalAttributes(), 4);
    QCOMPARE(Program().Topic->Rounding(), int16_t{3});
    QVERIFY(Program().Topic->NormaliseWeights());
  }

  void closingAsksFirstAndCancelKeepsTheWindowOpen() {
    Program().Modified = true;
    Dialogs().Answers = {MsgResult::Cancel, MsgResult::No};
    QVERIFY(!Window()->close());
    QVERIFY(Window()->isVisible());
    QVERIFY(Window()->close());
  }

  void captureHidesTheControlsAndLeavesTheWindowAsItWas() {
    f_->Click("lblWeighting_1");
    EditBox()->setText("0.3");
    QTest::mouseMove(f_->Find("lblAttribute_0"));
    const QPoint headingBefore = f_->Find("lblWeightings")->pos();
    f_->Window->CaptureWindow();
    const QImage& picture = f_->Window->CapturedPicture();
    const qreal ratio = picture.devicePixelRatio();
    QCOMPARE(picture.size(), f_->Find("picClient")->size() * ratio);
    // Where the buttons stood, the capture shows the bare decoration.
    for (const char* name : {"btnSave", "btnSettings", "btnToggleScore", "btnToggleRatings"}) {
      const QPoint centre = f_->Find(name)->geometry().center();
      const DecorationRows bare = f_->Window->Decoration().Render((centre * ratio).y(), 1, ratio);
      QCOMPARE(picture.pixel(centre * ratio), bare.Image.pixel(centre * ratio - bare.Origin));
      QVERIFY(f_->Find(name)->isVisible());
    }
    QCOMPARE(f_->Find("lblWeightings")->pos(), headingBefore);
    QCOMPARE(EditBox()->text(), QString("0.3"));
    QCOMPARE(f_->Window->Editor().EditingLabel(), f_->Find<QLabel>("lblWeighting_1"));
  }

  void aDragAndARunOfKeysAreOneStepEach() {
    const double before = Rating(0, 0);
    Drag("sliderRating_0", 0.2, 0.8);
    const double dragged = Rating(0, 0);
    QVERIFY(dragged > 0.7 && Program().Modified);
    auto* slider = f_->Find<ctlSlider>("sliderRating_1");
    slider->setFocus();
    const double keyed = Rating(0, 1);
    for (int i = 0; i < 3; ++i) {
      QTest::keyClick(slider, Qt::Key_Right);
    }
    Key(Qt::Key_Z);
    QCOMPARE(Rating(0, 1), keyed);
    QCOMPARE(Rating(0, 0), dragged);
    Key(Qt::Key_Z);
    QCOMPARE(Rating(0, 0), before);
    Key(Qt::Key_Y);
    QCOMPARE(Rating(0, 0), dragged);
    Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Rating(0, 1), keyed + 0.03);
  }

  void undoingADeleteBringsBackTheRowsAndNames() {
    f_->Type("lblOption_0", "Estate");
    QTest::keyClick(EditBox(), Qt::Key_Return);
    f_->Click("btnAddOption");
    QTest::mouseMove(f_->Find("lblOption_0"));
    f_->Click("btnRemoveOption");
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    Key(Qt::Key_Z);
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{3});
    QCOMPARE(Program().Topic->GetOptionName(0), std::string("Estate"));
    Key(Qt::Key_Z);
    Key(Qt::Key_Z);
    QCOMPARE(Program().Topic->GetOptionName(0), std::string("Option 1"));
  }

  void undoingBackToTheSavedTopicClearsTheModifiedFlag() {
    f_->Dialogs->FileAnswers.push_back(f_->File("saved.tvt"));
    Key(Qt::Key_S);
    Drag("sliderWeighting_0", 0.1, 0.9);
    QVERIFY(Program().Modified);
    Key(Qt::Key_Z);
    QVERIFY(!Program().Modified);
  }

  void whileEditingTheUndoKeysBelongToTheEditBox() {
    Drag("sliderRating_0", 0.2, 0.8);
    const double dragged = Rating(0, 0);
    f_->Type("lblAttribute_0", "Cost");
    QTest::keyClick(EditBox(), Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(EditBox()->text() != "Cost");
    QCOMPARE(Rating(0, 0), dragged);
  }
};

TARVELIN_GUI_TEST(frmMainCommandsTest);

#include "frmMainCommandsTest.moc"
