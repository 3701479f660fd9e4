#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <memory>

#include "files/modLoadSave.h"
#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;

// Undo and redo as the person meets them: Ctrl+Z, Ctrl+Y and Ctrl+Shift+Z over drags, keys, renames and
// deletes, and the modified flag at the saved state.
class frmMainUndoTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<testing::MainWindowFixture> f_;

  QWidget* Window() { return f_->Window.get(); }
  void Key(int KeyCode, Qt::KeyboardModifiers Modifiers = Qt::ControlModifier) {
    QTest::keyClick(Window(), static_cast<Qt::Key>(KeyCode), Modifiers);
  }
  static QPoint At(const ctlSlider& Slider, double Fraction) {
    const int inset = Slider.TrackInset();
    return {inset + static_cast<int>(Fraction * (Slider.width() - 2 * inset)), Slider.height() / 2};
  }
  void Drag(const char* Name, double From, double To) {
    auto* slider = f_->Find<ctlSlider>(Name);
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, At(*slider, From));
    QTest::mouseMove(slider, At(*slider, (From + To) / 2));
    QTest::mouseMove(slider, At(*slider, To));
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, At(*slider, To));
  }
  void Rename(const char* Label, const char* Name) {
    QTest::mouseClick(f_->Find(Label), Qt::LeftButton);
    auto* box = f_->Find<QLineEdit>("txtEditBox");
    QTest::keyClicks(box, Name);
    QTest::keyClick(box, Qt::Key_Return);
  }
  static double Rating(int16_t Option, int16_t Attribute) { return Program().Topic->GetRating(Option, Attribute); }

 private slots:
  void init() {
    f_ = std::make_unique<testing::MainWindowFixture>();
    f_->Start();
  }
  void cleanup() { f_.reset(); }

  void aDragAndARunOfKeysAreOneStepEach() {
    const double before = Rating(0, 0);
    const QString beforeText = f_->Find<QLabel>("lblRating_0")->text();
    Drag("sliderRating_0", 0.2, 0.8);
    const double dragged = Rating(0, 0);
    QVERIFY(dragged > 0.7);
    auto* slider = f_->Find<ctlSlider>("sliderRating_1");
    slider->setFocus();
    const double keyed = Rating(0, 1);
    for (int i = 0; i < 3; ++i) {
      QTest::keyClick(slider, Qt::Key_Right);
    }
    QCOMPARE(Rating(0, 1), keyed + 0.03);
    Key(Qt::Key_Z);
    QCOMPARE(Rating(0, 1), keyed);
    QCOMPARE(Rating(0, 0), dragged);
    Key(Qt::Key_Z);
    QCOMPARE(Rating(0, 0), before);
    QCOMPARE(f_->Find<QLabel>("lblRating_0")->text(), beforeText);
    Key(Qt::Key_Y);
    QCOMPARE(Rating(0, 0), dragged);
    Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Rating(0, 1), keyed + 0.03);
  }

  void undoingADeleteBringsBackTheRowsAndNames() {
    Rename("lblOption_0", "Estate");
    QTest::mouseClick(f_->Find("btnAddOption"), Qt::LeftButton);
    QTest::mouseMove(f_->Find("lblOption_0"));
    QTest::mouseClick(f_->Find("btnRemoveOption"), Qt::LeftButton);
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{2});
    QVERIFY(!f_->Has("lblOption_2"));
    Key(Qt::Key_Z);
    QCOMPARE(Program().Topic->TotalOptions(), int16_t{3});
    QCOMPARE(Program().Topic->GetOptionName(0), std::string("Estate"));
    QCOMPARE(f_->Find<QLabel>("lblOption_0")->text(), QString("Estate"));
    QCOMPARE(f_->Find<QLabel>("lblScoreTitle_0")->text(), QString("Estate"));
    QVERIFY(f_->Has("sliderRating_5"));
    Key(Qt::Key_Z);
    Key(Qt::Key_Z);
    QCOMPARE(Program().Topic->GetOptionName(0), std::string("Option 1"));
  }

  void undoingBackToTheSavedTopicLetsNewGoWithoutAsking() {
    f_->Dialogs->FileAnswers.push_back(f_->File("saved.tvt"));
    Key(Qt::Key_S);
    Drag("sliderWeighting_0", 0.1, 0.9);
    QVERIFY(Program().Modified);
    Key(Qt::Key_Z);
    QVERIFY(!Program().Modified);
    Key(Qt::Key_Y);
    QVERIFY(Program().Modified);
    Key(Qt::Key_Z);
    Key(Qt::Key_N);
    QVERIFY(f_->Dialogs->Messages.empty());
  }

  void whileEditingTheUndoKeysBelongToTheEditBox() {
    Drag("sliderRating_0", 0.2, 0.8);
    const double dragged = Rating(0, 0);
    QTest::mouseClick(f_->Find("lblAttribute_0"), Qt::LeftButton);
    auto* box = f_->Find<QLineEdit>("txtEditBox");
    QTest::keyClicks(box, "Cost");
    QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(box->text() != "Cost");
    QCOMPARE(Rating(0, 0), dragged);
  }
};

TARVELIN_GUI_TEST(frmMainUndoTest);

#include "frmMainUndoTest.moc"
