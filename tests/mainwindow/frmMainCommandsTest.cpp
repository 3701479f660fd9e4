#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <cstdlib>
#include <memory>

#include "files/modLoadSave.h"
#include "gui_support/GuiTestRegistry.h"
#include "mainwindow/frmMain.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

using namespace tarvelin;
using tarvelin::testing::ScopedScriptedDialogs;
using tarvelin::testing::TempFolder;

// The window's commands, shortcuts and capture, with scripted dialogs.
class frmMainCommandsTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<TempFolder> folder_;
  std::unique_ptr<ScopedScriptedDialogs> dialogs_;
  std::unique_ptr<frmMain> window_;

  testing::ScriptedDialogs& Dialogs() { return **dialogs_; }
  QWidget* Control(const char* name) { return window_->findChild<QWidget*>(name); }

 private slots:
  void init() {
    folder_ = std::make_unique<TempFolder>();
    setenv("TARVELIN_REGISTRY_DIR", folder_->Path().c_str(), 1);
    dialogs_ = std::make_unique<ScopedScriptedDialogs>();
    Program().Topic = std::make_unique<TarvelinTopic>();
    Program().FileToOpen.clear();
    Program().FileTypeToOpen.clear();
    Program().ShowSettingsOnNew = false;
    Program().LastUsedDir = folder_->Path().string();
    window_ = std::make_unique<frmMain>();
    window_->Form_Load();
  }

  void cleanup() {
    window_.reset();
    dialogs_.reset();
    folder_.reset();
  }

  void shortcutsActOnlyWithCtrlAlone() {
    QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    QTest::keyClick(window_.get(), Qt::Key_S);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{0});
    QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    QTest::keyClick(window_.get(), Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(Dialogs().OpenRequests.size(), size_t{1});
  }

  void shortcutsWorkWhileEditing() {
    QTest::mouseClick(window_->findChild<QLabel*>("lblAttribute_0"), Qt::LeftButton);
    auto* editBox = window_->findChild<QLineEdit*>("txtEditBox");
    QVERIFY(editBox->isVisible());
    QTest::keyClick(editBox, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
  }

  void aShortcutCommitsTheOpenEditBeforeNewRebuildsTheRows() {
    Program().Topic->SetTotalOptions(3);
    bool rowsChanged = false;
    window_->UpdateSliderArrays(rowsChanged);
    Program().Modified = false;
    auto* editBox = window_->findChild<QLineEdit*>("txtEditBox");
    QTest::mouseClick(window_->findChild<QLabel*>("lblRating_5"), Qt::LeftButton);
    QTest::keyClicks(editBox, "0.4");
    Dialogs().Answers.push_back(MsgResult::No);
    QTest::keyClick(editBox, Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(Dialogs().Messages.size(), size_t{1});  // the committed value made the old topic worth saving
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    QVERIFY(!editBox->isVisible());
    QVERIFY(window_->EditingLabel() == nullptr);
  }

  void aShortcutSavesTheValueBeingTyped() {
    const std::string file = folder_->File("typed.tvt");
    auto* editBox = window_->findChild<QLineEdit*>("txtEditBox");
    QTest::mouseClick(window_->findChild<QLabel*>("lblWeighting_0"), Qt::LeftButton);
    QTest::keyClicks(editBox, "0.25");
    Dialogs().FileAnswers.push_back(file);
    QTest::keyClick(editBox, Qt::Key_S, Qt::ControlModifier);
    auto saved = std::make_unique<TarvelinTopic>();
    QVERIFY(LoadTopicFile(file, saved));
    QCOMPARE(saved->GetWeighting(0), 0.25);
  }

  void newCancelledAtTheSaveQuestionKeepsTheOldTopic() {
    Program().Topic->SetName("Keep me");
    Program().Modified = true;
    TarvelinTopic* before = Program().Topic.get();
    Dialogs().Answers.push_back(MsgResult::Cancel);
    QTest::keyClick(window_.get(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(Program().Topic.get(), before);
    QCOMPARE(Program().Topic->Name(), std::string("Keep me"));
  }

  void yesThenACancelledSaveCancelsTheLoad() {
    Program().Modified = true;
    Dialogs().Answers.push_back(MsgResult::Yes);
    Dialogs().FileAnswers.push_back(std::nullopt);
    QTest::mouseClick(static_cast<QAbstractButton*>(Control("btnLoad")), Qt::LeftButton);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    QCOMPARE(Dialogs().OpenRequests.size(), size_t{0});
  }

  void newStartsTwoByTwoWithThePreviousNormalisation() {
    Program().Topic->SetNormaliseWeights(true);
    Program().Topic->SetTotalOptions(5);
    Program().Modified = false;
    QTest::mouseClick(static_cast<QAbstractButton*>(Control("btnNew")), Qt::LeftButton);
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    QCOMPARE(Program().Topic->TotalAttributes(), int16_t{2});
    QCOMPARE(Program().Topic->Rounding(), int16_t{3});
    QVERIFY(Program().Topic->NormaliseWeights());
    QVERIFY(window_->findChild<QLabel*>("lblOption_2") == nullptr);
  }

  void closingAsksFirstAndCancelKeepsTheWindowOpen() {
    Program().Modified = true;
    Dialogs().Answers.push_back(MsgResult::Cancel);
    QVERIFY(!window_->close());
    QVERIFY(window_->isVisible());
    Dialogs().Answers.push_back(MsgResult::No);
    QVERIFY(window_->close());
  }

  void captureHidesTheControlsAndLeavesTheWindowAsItWas() {
    QTest::mouseClick(window_->findChild<QLabel*>("lblWeighting_1"), Qt::LeftButton);
    auto* editBox = window_->findChild<QLineEdit*>("txtEditBox");
    editBox->setText("0.3");
    QTest::mouseMove(window_->findChild<QLabel*>("lblAttribute_0"));
    const QPoint headingBefore = Control("lblWeightings")->pos();

    window_->CaptureWindow();
    const QImage& picture = window_->CapturedPicture();
    const qreal ratio = picture.devicePixelRatio();
    QCOMPARE(picture.size(), Control("picClient")->size() * ratio);
    // Where the buttons stood, the capture shows the bare decoration.
    for (const char* name : {"btnSave", "btnSettings", "btnToggleScore", "btnToggleRatings"}) {
      const QPoint centre = Control(name)->geometry().center();
      QCOMPARE(picture.pixel(centre * ratio), window_->PersistentImage().pixel(centre * ratio));
    }
    for (const char* name : {"btnSave", "btnNew", "btnToggleRatings", "btnAddAttribute"}) {
      QVERIFY(Control(name)->isVisible());
    }
    QCOMPARE(Control("lblWeightings")->pos(), headingBefore);
    QVERIFY(editBox->isVisible());
    QCOMPARE(editBox->text(), QString("0.3"));
    QCOMPARE(window_->EditingLabel(), window_->findChild<QLabel*>("lblWeighting_1"));
  }
};

TARVELIN_GUI_TEST(frmMainCommandsTest);

#include "frmMainCommandsTest.moc"
