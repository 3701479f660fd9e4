#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <memory>

#include "files/modLoadSave.h"
#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "mainwindow/LabelEditor.h"
#include "mainwindow/WindowDecoration.h"
#include "support/TempFolder.h"

using namespace tarvelin;

// The window's commands, shortcuts and capture, with scripted dialogs.
class frmMainCommandsTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<testing::MainWindowFixture> f_;

  testing::ScriptedDialogs& Dialogs() { return *f_->Dialogs; }
  QWidget* Window() { return f_->Window.get(); }
  QLineEdit* EditBox() { return f_->Find<QLineEdit>("txtEditBox"); }
  void Click(const char* Name) { QTest::mouseClick(f_->Find(Name), Qt::LeftButton); }
  // Opens the label for editing and types Text, leaving the edit open.
  void Type(const char* Label, const char* Text) {
    Click(Label);
    QTest::keyClicks(EditBox(), Text);
  }

 private slots:
  void init() {
    f_ = std::make_unique<testing::MainWindowFixture>();
    f_->Start();
  }
  void cleanup() { f_.reset(); }

  void shortcutsActOnlyWithCtrlAloneAndAlsoWhileEditing() {
    QTest::keyClick(Window(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(Window(), Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    QTest::keyClick(Window(), Qt::Key_S);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{0});
    QTest::keyClick(Window(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    QTest::keyClick(Window(), Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(Dialogs().OpenRequests.size(), size_t{1});
    Click("lblAttribute_0");
    QTest::keyClick(EditBox(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{2});
  }

  void ctrlPOffersThePdfReportAndKeepsTheTopicsFileName() {
    Program().CurrentFileName = f_->File("car.tvt");
    Program().Modified = true;
    QTest::keyClick(Window(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{0});
    Dialogs().FileAnswers.push_back(f_->File("car.pdf"));
    QTest::keyClick(Window(), Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    const FileDialogRequest& request = Dialogs().SaveRequests[0];
    QCOMPARE(QString::fromStdString(request.Filter).split('|').at(2 * (request.FilterIndex - 1)),
             QString("Decision report - PDF (*.pdf)"));
    QVERIFY(request.FileName.ends_with(".pdf"));
    QVERIFY(testing::ReadBytes(f_->File("car.pdf")).starts_with("%PDF"));
    QCOMPARE(Program().CurrentFileName, f_->File("car.tvt"));
    QVERIFY(Program().Modified);
  }

  void aShortcutCommitsTheOpenEditBeforeNewRebuildsTheRows() {
    Program().Topic->SetTotalOptions(3);
    f_->Rebuild();
    Type("lblRating_5", "0.4");
    Dialogs().Answers.push_back(MsgResult::No);
    QTest::keyClick(EditBox(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(Dialogs().Messages.size(), size_t{1});  // the committed value made the old topic worth saving
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    QVERIFY(!EditBox()->isVisible());
    QVERIFY(f_->Window->Editor().EditingLabel() == nullptr);
  }

  void aShortcutSavesTheValueBeingTyped() {
    Type("lblWeighting_0", "0.25");
    Dialogs().FileAnswers.push_back(f_->File("typed.tvt"));
    QTest::keyClick(EditBox(), Qt::Key_S, Qt::ControlModifier);
    auto saved = std::make_unique<TarvelinTopic>();
    QVERIFY(LoadTopicFile(f_->File("typed.tvt"), saved));
    QCOMPARE(saved->GetWeighting(0), 0.25);
  }

  void newCancelledAtTheSaveQuestionKeepsTheOldTopic() {
    TarvelinTopic* before = Program().Topic.get();
    Program().Modified = true;
    Dialogs().Answers.push_back(MsgResult::Cancel);
    QTest::keyClick(Window(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(Program().Topic.get(), before);
  }

  void yesThenACancelledSaveCancelsTheLoad() {
    Program().Modified = true;
    Dialogs().Answers.push_back(MsgResult::Yes);
    Dialogs().FileAnswers.push_back(std::nullopt);
    Click("btnLoad");
    QCOMPARE(Dialogs().SaveRequests.size(), size_t{1});
    QCOMPARE(Dialogs().OpenRequests.size(), size_t{0});
  }

  void newStartsTwoByTwoWithThePreviousNormalisation() {
    Program().Topic->SetNormaliseWeights(true);
    Program().Topic->SetTotalOptions(5);
    Click("btnNew");
    QCOMPARE(Program().Topic->TotalOptions() + Program().Topic->TotalAttributes(), 4);
    QCOMPARE(Program().Topic->Rounding(), int16_t{3});
    QVERIFY(Program().Topic->NormaliseWeights());
    QVERIFY(!f_->Has("lblOption_2"));
  }

  void closingAsksFirstAndCancelKeepsTheWindowOpen() {
    Program().Modified = true;
    Dialogs().Answers = {MsgResult::Cancel, MsgResult::No};
    QVERIFY(!Window()->close());
    QVERIFY(Window()->isVisible());
    QVERIFY(Window()->close());
  }

  void captureHidesTheControlsAndLeavesTheWindowAsItWas() {
    Click("lblWeighting_1");
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
};

TARVELIN_GUI_TEST(frmMainCommandsTest);

#include "frmMainCommandsTest.moc"
