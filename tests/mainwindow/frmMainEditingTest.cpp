#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <memory>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "mainwindow/LabelEditor.h"
#include "mainwindow/modLabelEditing.h"

using namespace tarvelin;

// In-place editing, adding and deleting, and keyboard navigation, through real clicks and keys.
class frmMainEditingTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<testing::MainWindowFixture> f_;

  QLabel* Label(const QString& Name) { return f_->Find<QLabel>(Name); }
  QLineEdit* EditBox() { return f_->EditBox(); }
  TarvelinTopic& Topic() { return *Program().Topic; }
  QLabel* Editing() { return f_->Window->Editor().EditingLabel(); }

  void Open(const QString& Name) {
    f_->Click(Name);
    QVERIFY(EditBox()->isVisible());
  }
  // Opens the label, types Text and ends the edit with Key.
  void Edit(const QString& Name, const QString& Text, Qt::Key Key = Qt::Key_Return) {
    f_->Type(Name, Text);
    QTest::keyClick(EditBox(), Key);
  }
  // Shows the row's delete button by pointing at its label, then clicks it.
  void DeleteRowOf(const QString& Name, const char* Button) {
    QTest::mouseMove(Label(Name));
    auto* remove = f_->Find<QAbstractButton>(Button);
    QTRY_VERIFY(remove->isVisible());
    QTest::mouseClick(remove, Qt::LeftButton);
  }

 private slots:
  void init() { f_ = std::make_unique<testing::MainWindowFixture>(); }
  void cleanup() { f_.reset(); }

  void theEditBoxSitsOverItsLabelOnePointSmaller() {
    f_->Start();
    Open("lblAttribute_1");
    QCOMPARE(EditBox()->geometry(), Label("lblAttribute_1")->geometry());
    QCOMPARE(EditBox()->font().pointSizeF(), Label("lblAttribute_1")->font().pointSizeF() - 1);
    QCOMPARE(EditBox()->selectedText(), QString("Attribute 2"));
  }

  void aValueTakesDigitsAndOnePointOnly() {
    f_->Start();
    Open("lblWeighting_0");
    QTest::keyClicks(EditBox(), "0..5x-%7");
    QCOMPARE(EditBox()->text(), QString("0.57"));
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QVERIFY(!EditBox()->isVisible());
    QCOMPARE(Topic().GetWeighting(0), 0.57);
    QCOMPARE(Label("lblWeighting_0")->text(), QString("0.570"));
    QVERIFY(Program().Modified);
  }

  void escapeAndAnUnchangedOrBlankNameCommitNothing() {
    f_->Start(2, 3);
    Edit("lblOption_0", "Bungalow", Qt::Key_Escape);
    QVERIFY(!EditBox()->isVisible());
    QCOMPARE(Topic().GetOptionName(0), std::string("Option 1"));
    Edit("lblAttribute_2", "");
    Edit("lblAttribute_2", "", Qt::Key_Backspace);
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QCOMPARE(Topic().GetAttributeName(2), std::string("Attribute 3"));
    QVERIFY(!Program().Modified);
  }

  void clickingASecondLabelCommitsTheFirst() {
    f_->Start();
    f_->Type("lblAttribute_0", "Cost");
    Open("lblAttribute_1");
    QCOMPARE(Topic().GetAttributeName(0), std::string("Cost"));
    QCOMPARE(Label("lblAttribute_0")->toolTip(), QString("Attribute 1: Cost"));
    QCOMPARE(Editing(), Label("lblAttribute_1"));
  }

  void aClickOnTheBackgroundCommitsAndARenamedOptionRetitlesItsScoreBar() {
    f_->Start();
    f_->Type("lblOption_1", "Flat");
    QTest::mouseClick(f_->Find("picClient"), Qt::LeftButton, {}, QPoint(5, 500));
    QTRY_VERIFY(!EditBox()->isVisible());
    QCOMPARE(Topic().GetOptionName(1), std::string("Flat"));
    QCOMPARE(Label("lblScoreTitle_1")->text(), QString("Flat"));
  }

  void aPercentageIsReadInPercentageDisplayAndANonNumberIsExplainedAndUndone() {
    Program().DisplayAsDecimal = false;
    f_->Start();
    const QString before = Label("lblRating_0")->text();
    Edit("lblRating_0", ".");
    QCOMPARE(f_->Dialogs->Messages.size(), size_t{1});
    QCOMPARE(Label("lblRating_0")->text(), before);
    Open("lblRating_3");
    QCOMPARE(EditBox()->text(), Label("lblRating_3")->text());
    EditBox()->setText("75%");
    QTest::keyClick(EditBox(), Qt::Key_Return);
    QCOMPARE(Topic().GetRating(1, 1), 0.75);
    QCOMPARE(Label("lblRating_3")->text(), QString("75.0%"));
  }

  void tabWrapsWithinTheSameKindOfLabelOpensTheFullNameAndLeavesTheTitle() {
    f_->Start(2, 3);
    Edit("lblWeighting_2", "", Qt::Key_Tab);
    QCOMPARE(Editing(), Label("lblWeighting_0"));
    QTest::keyClick(EditBox(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(Editing(), Label("lblWeighting_2"));
    QTest::keyClick(EditBox(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(Editing(), Label("lblWeighting_1"));
    const std::string longName = "A rather long attribute name that will not fit";
    Topic().SetAttributeName(1, longName);
    f_->Rebuild();
    Edit("lblAttribute_0", "", Qt::Key_Tab);
    QCOMPARE(EditBox()->text(), QString::fromStdString(longName));
    Edit("lblTitle", "Holiday", Qt::Key_Tab);
    QVERIFY(!EditBox()->isVisible());
    QCOMPARE(f_->Window->windowTitle(), QString("Tarvelin - Holiday"));
  }

  void addingNumbersPastTheHighestDefaultNameAndStopsAtTen() {
    f_->Start();
    Topic().SetAttributeName(1, "Attribute 7");
    f_->Click("btnAddAttribute");
    QCOMPARE(Topic().GetAttributeName(2), std::string("Attribute 8"));
    QVERIFY(f_->Has("lblAttribute_2"));
    QVERIFY(Program().Modified);
    auto* add = f_->Find<QAbstractButton>("btnAddOption");
    for (int i = 0; i < 10; ++i) {
      QTest::mouseClick(add, Qt::LeftButton);
    }
    QCOMPARE(Topic().TotalOptions(), int16_t{10});
    QVERIFY(!add->isEnabled());
  }

  void deletingRemovesTheHighlightedRowButNeverTheLast() {
    f_->Start(3, 1);
    DeleteRowOf("lblOption_1", "btnRemoveOption");
    QCOMPARE(Topic().TotalOptions(), int16_t{2});
    QCOMPARE(Topic().GetOptionName(1), std::string("Option 3"));
    Topic().SetAttributeName(0, "Only");
    f_->Find<QAbstractButton>("btnRemoveAttribute")->click();
    QCOMPARE(Topic().TotalAttributes(), int16_t{1});
    QCOMPARE(Topic().GetAttributeName(0), std::string("Attribute 1"));
  }

  // The settings dialog can remove the row of a label edited earlier; a delete afterwards must not reach
  // back to that label (a crash, or a sanitizer report, when it does).
  void deletingAfterTheEditedRowWentAwayIsSafe() {
    f_->Start(2, 3);
    Edit("lblRating_5", "0.3");
    Topic().SetTotalOptions(1);
    f_->Rebuild();
    DeleteRowOf("lblAttribute_2", "btnRemoveAttribute");
    QCOMPARE(Topic().TotalAttributes(), int16_t{2});
    QVERIFY(!EditBox()->isVisible());
  }

  void nextDefaultNameRules() {
    QCOMPARE(NextDefaultName("Attribute", {"Price", "Comfort"}, 2), std::string("Attribute 3"));
    QCOMPARE(NextDefaultName("Option", {"Option 2.5", "Option x", "option 9"}, 3), std::string("Option 4"));
    QCOMPARE(NextDefaultName("Option", {"Option  12 "}, 1), std::string("Option 13"));
  }

  void keyFilterOrder() {
    QCOMPARE(FilterEditBoxKey(U'5', U"12", true, 2), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(KeyBackspace, U"12", true, 2), EditKeyAction::Accept);
    QCOMPARE(FilterEditBoxKey(U'.', U"1.2", true, 10), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(U'.', U"1.2", false, 10), EditKeyAction::Accept);
    QCOMPARE(FilterEditBoxKey(U'a', U"abc", false, 3), EditKeyAction::Discard);
  }
};

TARVELIN_GUI_TEST(frmMainEditingTest);

#include "frmMainEditingTest.moc"
