#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <cstdlib>
#include <memory>

#include "gui_support/GuiTestRegistry.h"
#include "mainwindow/frmMain.h"
#include "mainwindow/modLabelEditing.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

using namespace tarvelin;
using tarvelin::testing::ScopedScriptedDialogs;
using tarvelin::testing::TempFolder;

// In-place editing, adding and deleting, and keyboard navigation, through real clicks and keys.
class frmMainEditingTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<TempFolder> folder_;
  std::unique_ptr<ScopedScriptedDialogs> dialogs_;
  std::unique_ptr<frmMain> window_;

  QLabel* Label(const QString& name) {
    auto* label = window_->findChild<QLabel*>(name);
    if (label == nullptr) {
      qFatal("no label named %s", qPrintable(name));
    }
    return label;
  }
  QLineEdit* EditBox() { return window_->findChild<QLineEdit*>("txtEditBox"); }
  QAbstractButton* Button(const char* name) { return window_->findChild<QAbstractButton*>(name); }
  TarvelinTopic& Topic() { return *Program().Topic; }

  void Open(const QString& name) {
    QTest::mouseClick(Label(name), Qt::LeftButton);
    QVERIFY(EditBox()->isVisible());
  }

  void Start(int options, int attributes) {
    window_ = std::make_unique<frmMain>();
    window_->Form_Load();
    Topic().SetTotalOptions(static_cast<int16_t>(options));
    Topic().SetTotalAttributes(static_cast<int16_t>(attributes));
    bool rowsChanged = false;
    window_->UpdateSliderArrays(rowsChanged);
    Program().Modified = false;
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

  void theEditBoxSitsOverItsLabelOnePointSmaller() {
    Start(2, 2);
    Open("lblAttribute_1");
    QCOMPARE(EditBox()->geometry(), Label("lblAttribute_1")->geometry());
    QCOMPARE(EditBox()->font().pointSizeF(), Label("lblAttribute_1")->font().pointSizeF() - 1);
    QCOMPARE(EditBox()->text(), QString("Attribute 2"));
    QCOMPARE(EditBox()->selectedText(), QString("Attribute 2"));
  }

  void aValueTakesDigitsAndOnePointOnly() {
    Start(2, 2);
    Open("lblWeighting_0");
    QTest::keyClicks(EditBox(), "0..5x-%7");
    QCOMPARE(EditBox()->text(), QString("0.57"));
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QVERIFY(!EditBox()->isVisible());
    QCOMPARE(Topic().GetWeighting(0), 0.57);
    QCOMPARE(Label("lblWeighting_0")->text(), QString("0.570"));
    QVERIFY(Program().Modified);
  }

  void escapeRestoresTheCaptionAndCommitsNothing() {
    Start(2, 2);
    Open("lblOption_0");
    QTest::keyClicks(EditBox(), "Bungalow");
    QTest::keyClick(EditBox(), Qt::Key_Escape);
    QVERIFY(!EditBox()->isVisible());
    QCOMPARE(Label("lblOption_0")->text(), QString("Option 1"));
    QCOMPARE(Topic().GetOptionName(0), std::string("Option 1"));
    QVERIFY(!Program().Modified);
  }

  void clickingASecondLabelCommitsTheFirst() {
    Start(2, 2);
    Open("lblAttribute_0");
    QTest::keyClicks(EditBox(), "Cost");
    Open("lblAttribute_1");
    QCOMPARE(Topic().GetAttributeName(0), std::string("Cost"));
    QCOMPARE(Label("lblAttribute_0")->toolTip(), QString("Attribute 1: Cost"));
    QCOMPARE(window_->EditingLabel(), Label("lblAttribute_1"));
  }

  void renamingAnOptionRetitlesItsScoreBar() {
    Start(2, 2);
    Open("lblOption_1");
    QTest::keyClicks(EditBox(), "Flat");
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QCOMPARE(Label("lblScoreTitle_1")->text(), QString("Flat"));
    QCOMPARE(Label("lblScoreTitle_0")->text(), QString("Option 1"));
  }

  void committingAnUnchangedOrBlankNameChangesNothing() {
    Start(2, 3);
    Open("lblAttribute_2");
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QVERIFY(!Program().Modified);
    Open("lblAttribute_2");
    QTest::keyClick(EditBox(), Qt::Key_Backspace);
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QCOMPARE(Topic().GetAttributeName(2), std::string("Attribute 3"));
    QVERIFY(!Program().Modified);
  }

  void aPercentageIsReadInPercentageDisplay() {
    Program().DisplayAsDecimal = false;
    Start(2, 2);
    Open("lblRating_3");
    QCOMPARE(EditBox()->text(), Label("lblRating_3")->text());
    EditBox()->setText("75%");
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QCOMPARE(Topic().GetRating(1, 1), 0.75);
    QCOMPARE(Label("lblRating_3")->text(), QString("75.0%"));
  }

  void aValueThatIsNoNumberIsExplainedAndUndone() {
    Start(2, 2);
    const QString before = Label("lblRating_0")->text();
    Open("lblRating_0");
    QTest::keyClicks(EditBox(), ".");
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QCOMPARE((*dialogs_)->Messages.size(), size_t{1});
    QCOMPARE(Label("lblRating_0")->text(), before);
  }

  void tabWrapsWithinTheSameKindOfLabel() {
    Start(2, 3);
    Open("lblWeighting_2");
    QTest::keyClick(EditBox(), Qt::Key_Tab);
    QCOMPARE(window_->EditingLabel(), Label("lblWeighting_0"));
    QTest::keyClick(EditBox(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(window_->EditingLabel(), Label("lblWeighting_2"));
    QTest::keyClick(EditBox(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(window_->EditingLabel(), Label("lblWeighting_1"));
  }

  void tabOpensTheFullNameAndTheTitleLeadsNowhere() {
    Start(2, 2);
    Topic().SetAttributeName(1, "A rather long attribute name that will not fit");
    bool rowsChanged = false;
    window_->UpdateSliderArrays(rowsChanged);
    Open("lblAttribute_0");
    QTest::keyClick(EditBox(), Qt::Key_Tab);
    QCOMPARE(EditBox()->text(), QString("A rather long attribute name that will not fit"));

    Open("lblTitle");
    QTest::keyClicks(EditBox(), "Holiday");
    QTest::keyClick(EditBox(), Qt::Key_Tab);
    QVERIFY(!EditBox()->isVisible());
    QCOMPARE(Topic().Name(), std::string("Holiday"));
    QCOMPARE(window_->windowTitle(), QString("Tarvelin - Holiday"));
  }

  void aClickOnTheBackgroundCommits() {
    Start(2, 2);
    Open("lblOption_1");
    QTest::keyClicks(EditBox(), "Flat");
    QTest::mouseClick(window_->findChild<QWidget*>("picClient"), Qt::LeftButton, {}, QPoint(5, 500));
    QTRY_VERIFY(!EditBox()->isVisible());
    QCOMPARE(Topic().GetOptionName(1), std::string("Flat"));
  }

  void addingNumbersPastTheHighestDefaultNameAndStopsAtTen() {
    Start(2, 2);
    Topic().SetAttributeName(1, "Attribute 7");
    QTest::mouseClick(Button("btnAddAttribute"), Qt::LeftButton);
    QCOMPARE(Topic().GetAttributeName(2), std::string("Attribute 8"));
    QVERIFY(window_->findChild<QLabel*>("lblAttribute_2") != nullptr);
    QVERIFY(Program().Modified);
    for (int i = 0; i < 10; ++i) {
      QTest::mouseClick(Button("btnAddOption"), Qt::LeftButton);
    }
    QCOMPARE(Topic().TotalOptions(), int16_t{10});
    QVERIFY(!Button("btnAddOption")->isEnabled());
  }

  void deletingRemovesTheHighlightedRowButNeverTheLast() {
    Start(3, 1);
    QTest::mouseMove(Label("lblOption_1"));
    auto* remove = Button("btnRemoveOption");
    QTRY_VERIFY(remove->isVisible());
    QCOMPARE(window_->SelectedOption(), int16_t{1});
    QTest::mouseClick(remove, Qt::LeftButton);
    QCOMPARE(Topic().TotalOptions(), int16_t{2});
    QCOMPARE(Topic().GetOptionName(1), std::string("Option 3"));

    Topic().SetAttributeName(0, "Only");
    window_->findChild<QAbstractButton*>("btnRemoveAttribute")->click();
    QCOMPARE(Topic().TotalAttributes(), int16_t{1});
    QCOMPARE(Topic().GetAttributeName(0), std::string("Attribute 1"));
  }

  // The settings dialog can remove the row of a label edited earlier; a delete afterwards must not reach
  // back to that label (a crash, or a sanitizer report, when it does).
  void deletingAfterTheEditedRowWentAwayIsSafe() {
    Start(2, 3);
    Open("lblRating_5");
    QTest::keyClicks(EditBox(), "0.3");
    QTest::keyClick(EditBox(), Qt::Key_Return);
    Topic().SetTotalOptions(1);
    bool rowsChanged = false;
    window_->UpdateSliderArrays(rowsChanged);
    QTest::mouseMove(Label("lblAttribute_2"));
    auto* remove = Button("btnRemoveAttribute");
    QTRY_VERIFY(remove->isVisible());
    QTest::mouseClick(remove, Qt::LeftButton);
    QCOMPARE(Topic().TotalAttributes(), int16_t{2});
    QVERIFY(!EditBox()->isVisible());
  }

  void nextDefaultNameRules() {
    QCOMPARE(NextDefaultName("Attribute", {"Attribute 1", "Attribute 7"}, 2), std::string("Attribute 8"));
    QCOMPARE(NextDefaultName("Attribute", {"Price", "Comfort"}, 2), std::string("Attribute 3"));
    QCOMPARE(NextDefaultName("Option", {"Option 2.5", "Option x", "option 9"}, 3), std::string("Option 4"));
    QCOMPARE(NextDefaultName("Option", {"Option  12 "}, 1), std::string("Option 13"));
  }

  void keyFilterOrder() {
    QCOMPARE(FilterEditBoxKey(U'5', U"12", true, 2), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(KeyBackspace, U"12", true, 2), EditKeyAction::Accept);
    QCOMPARE(FilterEditBoxKey(U'.', U"1.2", true, 10), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(U'.', U"1.2", false, 10), EditKeyAction::Accept);
    QCOMPARE(FilterEditBoxKey(U'a', U"", true, 10), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(U'a', U"abc", false, 3), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(KeyEscape, U"", false, 0), EditKeyAction::Cancel);
    QCOMPARE(FilterEditBoxKey(KeyEnter, U"abc", false, 3), EditKeyAction::Commit);
  }
};

TARVELIN_GUI_TEST(frmMainEditingTest);

#include "frmMainEditingTest.moc"
