#include "gui_support/SoakActions.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <initializer_list>

#include "mainwindow/frmMain.h"

namespace tarvelin::testing {

namespace {

// Past this many answers within one action the dialog is closed outright, so that no sequence can hang.
constexpr int kMaxAnswersPerAction = 12;

// What a person might type into a name or a value: digits, points and signs the value filter must
// refuse, characters a topic file gives meaning to, and letters outside ASCII.
const QString kTypedCharacters = QString::fromUtf8("0123456789..%-,+ abcXYZ=;[]\"'#\\\xC3\xA9\xC3\x9F\xE6\x97\xA5");

std::string Name(const QObject* Object) {
  return Object->objectName().toStdString();
}

bool IsArrayMember(const QString& Name, const char* Array) {
  const QString prefix = QString(Array) + "_";
  bool isNumber = false;
  return Name.startsWith(prefix) && (Name.mid(prefix.size()).toInt(&isNumber), isNumber);
}

class Actor {
 public:
  Actor(frmMain& Window, std::mt19937& Random) : window_(Window), random_(Random) {
    answerer_.setInterval(0);
    QObject::connect(&answerer_, &QTimer::timeout, [this] { AnswerOpenDialog(); });
  }

  std::string Step() {
    if (!window_.isVisible()) {
      window_.show();  // closed by Ctrl+Q: the person starts it again on the same topic
    }
    if (!window_.isActiveWindow()) {
      window_.activateWindow();
      QApplication::processEvents();
    }
    std::vector<double> weights;
    for (const WeightedAction& action : Actions()) {
      weights.push_back(action.Weight);
    }
    // Any click may open the modal settings dialog (a click anywhere can land on its button), so a timer
    // answers it from inside its own loop during every action.
    answerer_.start();
    const std::string done =
        (this->*Actions()[std::discrete_distribution<size_t>(weights.begin(), weights.end())(random_)].Perform)();
    QApplication::processEvents();
    answerer_.stop();
    return done + dialogTranscript_;
  }

 private:
  using Action = std::string (Actor::*)();
  struct WeightedAction {
    double Weight;
    Action Perform;
  };

  template <class T>
  T Pick(const std::vector<T>& Choices) {
    return Choices[static_cast<size_t>(Between(0, static_cast<int>(Choices.size()) - 1))];
  }

  // Adding outweighs deleting a little, so the counts wander over the whole range and meet both limits.
  static const std::vector<WeightedAction>& Actions() {
    static const std::vector<WeightedAction> actions{
        {22, &Actor::Slider},     {10, &Actor::ClickLabel},    {5, &Actor::ClickAnywhere},
        {26, &Actor::Edit},       {7, &Actor::HoverAndDelete}, {5, &Actor::ClickAdd},
        {3, &Actor::ClickToggle}, {3, &Actor::Resize},         {13, &Actor::Command},
    };
    return actions;
  }

  int Between(int Low, int High) { return std::uniform_int_distribution<int>(Low, High)(random_); }

  bool Chance(double Probability) { return std::bernoulli_distribution(Probability)(random_); }

  QPoint PointIn(const QWidget* Widget) {
    return {Between(0, std::max(0, Widget->width() - 1)), Between(0, std::max(0, Widget->height() - 1))};
  }

  QWidget* Client() const { return Control("picClient"); }

  QLineEdit* EditBox() const { return window_.findChild<QLineEdit*>("txtEditBox"); }

  QWidget* Control(const char* Name) const { return window_.findChild<QWidget*>(Name); }

  std::vector<QWidget*> Visible(std::initializer_list<const char*> Arrays) const {
    std::vector<QWidget*> found;
    for (QWidget* control : Client()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      for (const char* array : Arrays) {
        if (control->isVisible() && IsArrayMember(control->objectName(), array)) {
          found.push_back(control);
        }
      }
    }
    return found;
  }

  // A click lands on whatever stands at that point, as a real one would: the edit box over its label, the
  // delete button over the highlight, the background between the rows.
  std::string ClickAt(QPoint ClientPoint) {
    QWidget* target = Client()->childAt(ClientPoint);
    if (target == nullptr) {
      target = Client();
    }
    QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, target->mapFrom(Client(), ClientPoint));
    return "click " + Name(target);
  }

  std::string Clicked(QWidget* Control) {
    QTest::mouseClick(Control, Qt::LeftButton, Qt::NoModifier, PointIn(Control));
    return "click " + Name(Control);
  }

  // A drag now and then overshoots the track at either end.
  std::string Slider() {
    const auto sliders = Visible({"sliderWeighting", "sliderRating"});
    if (sliders.empty()) {
      return ClickToggle();
    }
    QWidget* slider = Pick(sliders);
    const int roll = Between(0, 21);
    return roll < 14 ? DragSlider(slider) : roll < 19 ? KeyOnSlider(slider) : WheelOnSlider(slider);
  }

  std::string DragSlider(QWidget* Slider) {
    QPoint at(Between(-10, Slider->width() + 10), Slider->height() / 2);
    std::string done = "drag " + Name(Slider) + " " + std::to_string(at.x());
    QTest::mousePress(Slider, Qt::LeftButton, Qt::NoModifier, at);
    for (int moves = Between(0, 3); moves > 0; --moves) {
      at.setX(Between(-10, Slider->width() + 10));
      QTest::mouseMove(Slider, at);
      done += ">" + std::to_string(at.x());
    }
    QTest::mouseRelease(Slider, Qt::LeftButton, Qt::NoModifier, at);
    return done;
  }

  std::string KeyOnSlider(QWidget* Slider) {
    const char* name = Pick(std::vector<const char*>{"Left", "Right", "Up", "Down", "PgUp", "PgDown", "Home", "End"});
    Slider->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(Slider, QKeySequence(name)[0].key());
    return std::string("key ") + name + " on " + Name(Slider);
  }

  std::string WheelOnSlider(QWidget* Slider) {
    const QPoint at = PointIn(Slider);
    const int angle = Pick(std::vector<int>{-240, -120, -40, 40, 120, 360});
    QWheelEvent wheel(at, Slider->mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(Slider, &wheel);
    return "wheel " + std::to_string(angle) + " on " + Name(Slider);
  }

  std::string ClickLabel() {
    std::vector<QWidget*> labels;
    for (auto* label : Client()->findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
      if (label->isVisible()) {
        labels.push_back(label);
      }
    }
    QWidget* label = Pick(labels);
    return ClickAt(label->geometry().topLeft() + PointIn(label)) + " (aimed at " + Name(label) + ")";
  }

  std::string ClickAnywhere() { return ClickAt(PointIn(Client())); }

  // Opens the edit box over a random name or value when it is not open.
  std::string EnsureEditing() {
    if (EditBox()->isVisible()) {
      return "";
    }
    auto editable = Visible({"lblOption", "lblAttribute", "lblWeighting", "lblRating"});
    editable.push_back(Control("lblTitle"));
    QWidget* label = Pick(editable);
    QTest::mouseClick(label, Qt::LeftButton, Qt::NoModifier, PointIn(label));
    return "open " + Name(label) + ", ";
  }

  // Typing, or a key that ends the edit, moves on with Tab or edits the text.
  std::string Edit() {
    static const std::vector<const char*> keys{"Esc",       "Return", "Num+Enter", "Tab", "Tab",   "Shift+Backtab",
                                               "Backspace", "Del",    "Left",      "End", "Ctrl+A"};
    std::string done = EnsureEditing();
    QLineEdit* editBox = EditBox();
    if (!editBox->isVisible()) {
      return done + "no edit box";
    }
    if (Chance(0.55)) {
      return done + TypeText(editBox);
    }
    const char* name = Pick(keys);
    const QKeyCombination key = QKeySequence(name)[0];
    QTest::keyClick(editBox, key.key(), key.keyboardModifiers());
    return done + "key " + name;
  }

  std::string TypeText(QLineEdit* EditBox) {
    const int length = Chance(0.02) ? Between(250, 270) : Between(1, 6);
    QString typed;
    for (int i = 0; i < length; ++i) {
      const QChar character = kTypedCharacters.at(Between(0, static_cast<int>(kTypedCharacters.size()) - 1));
      QTest::sendKeyEvent(QTest::Click, EditBox, Qt::Key_unknown, QString(character), Qt::NoModifier);
      typed += character;
    }
    return "type \"" + typed.toStdString() + "\"";
  }

  // The delete buttons appear only beside the name under the mouse.
  std::string HoverAndDelete() {
    const auto names = Visible({"lblOption", "lblAttribute"});
    if (names.empty()) {
      return ClickToggle();
    }
    QWidget* name = Pick(names);
    QTest::mouseMove(name, PointIn(name));
    std::string done = "hover " + Name(name);
    QWidget* remove =
        Control(IsArrayMember(name->objectName(), "lblOption") ? "btnRemoveOption" : "btnRemoveAttribute");
    if (remove->isVisible() && Chance(0.6)) {
      QTest::mouseMove(remove, PointIn(remove));
      done += ", " + Clicked(remove);
    }
    return done;
  }

  // A hidden add button is reached by expanding its panel first. Clicks come once or twice in a row, so that
  // the counts climb against New and the deletes and meet the maximum now and then.
  std::string ClickAdd() {
    const bool attribute = Chance(0.5);
    QWidget* add = Control(attribute ? "btnAddAttribute" : "btnAddOption");
    if (!add->isVisible()) {
      return Clicked(Control(attribute ? "btnToggleWeightings" : "btnToggleRatings"));
    }
    std::string done = Clicked(add);
    return Chance(0.5) ? done + ", " + Clicked(add) : done;
  }

  std::string ClickToggle() {
    return Clicked(
        Control(Pick(std::vector<const char*>{"btnToggleScore", "btnToggleWeightings", "btnToggleRatings"})));
  }

  std::string Resize() {
    const int roll = Between(0, 9);
    if (roll < 2) {
      roll == 0 ? window_.showMaximized() : window_.showNormal();
      return roll == 0 ? "maximise" : "restore";
    }
    const QSize size(Between(200, 1600), Between(150, 1200));
    window_.resize(size);
    return "resize to " + std::to_string(size.width()) + "x" + std::to_string(size.height());
  }

  // New, Load, Save, Settings, copy, quit, undo and redo, by button or by shortcut, to the window or to the
  // open edit box (whose own text the undo keys then act on).
  std::string Command() {
    static const std::vector<std::pair<const char*, const char*>> routes{
        {"btnNew", "Ctrl+N"},     {"btnLoad", "Ctrl+L"}, {"btnSave", "Ctrl+S"},
        {"btnSettings", nullptr}, {nullptr, "Ctrl+C"},   {nullptr, "Ctrl+Q"},
        {nullptr, "Ctrl+Z"},      {nullptr, "Ctrl+Y"},   {nullptr, "Ctrl+Shift+Z"}};
    const auto [button, shortcut] = Pick(routes);
    if (shortcut != nullptr && std::string(shortcut) == "Ctrl+Q" && !Chance(0.1)) {
      return Command();
    }
    if (button != nullptr && (shortcut == nullptr || Chance(0.5))) {
      return Clicked(Control(button));
    }
    QWidget* receiver = EditBox()->isVisible() ? static_cast<QWidget*>(EditBox()) : &window_;
    const QKeyCombination key = QKeySequence(shortcut)[0];
    QTest::keyClick(receiver, key.key(), key.keyboardModifiers());
    return std::string(shortcut) + " to " + Name(receiver);
  }

  void AnswerOpenDialog() {
    QDialog* dialog = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == "frmOptions" && window->isVisible()) {
        dialog = qobject_cast<QDialog*>(window);
      }
    }
    if (dialog == nullptr) {
      return;
    }
    if (++answers_ > kMaxAnswersPerAction) {
      dialogTranscript_ += " [settings closed outright]";
      dialog->done(QDialog::Rejected);
      return;
    }
    dialogTranscript_ += " [settings " + FillSettings(*dialog) + "]";
  }

  std::string FillSettings(QDialog& Dialog) {
    static const std::vector<const char*> titles{"", "   ", "Soak topic",
                                                 "A title long enough to be cut short in the window", "=;[x]"};
    static const std::vector<const char*> counts{"0", "1", "2", "3", "5", "9", "10", "11", "-1", "abc", "", "32768"};
    std::string done;
    const auto field = [&](const char* name, const std::vector<const char*>& choices) {
      if (Chance(0.4)) {
        const char* text = Pick(choices);
        Dialog.findChild<QLineEdit*>(name)->setText(text);
        done += std::string(name) + "=\"" + text + "\" ";
      }
    };
    field("txtTitle", titles);
    field("txtOptionCount", counts);
    field("txtAttributeCount", counts);
    for (const char* choice : {"chkNormaliseWeights", "optWeightingType_0", "optWeightingType_1", "optRange_0",
                               "optRange_1", "chkShowSettingsOnNew"}) {
      if (Chance(0.12)) {
        Dialog.findChild<QAbstractButton*>(choice)->click();
        done += std::string(choice) + " ";
      }
    }
    const int close = Between(0, 3);
    if (close == 0) {
      QTest::keyClick(&Dialog, Qt::Key_Escape);
    } else {
      Dialog.findChild<QAbstractButton*>(close == 1 ? "btnCancel" : "btnOk")->click();
    }
    return done + (close == 0 ? "Escape" : close == 1 ? "Cancel" : "OK");
  }

  frmMain& window_;
  std::mt19937& random_;
  QTimer answerer_;
  int answers_ = 0;
  std::string dialogTranscript_;
};

}  // namespace

std::string RandomAction(frmMain& Window, std::mt19937& Random) {
  return Actor(Window, Random).Step();
}

}  // namespace tarvelin::testing
