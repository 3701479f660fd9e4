#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <array>
#include <initializer_list>

#include "gui_support/Soak.h"
#include "mainwindow/frmMain.h"

namespace tarvelin::testing {

namespace {

// Past this many answers within one action the dialog is closed outright, so that no sequence can hang.
constexpr int kMaxAnswersPerAction = 12;

// What a person might type into a name or a value: digits, points and signs the value filter must
// refuse, characters a topic file gives meaning to, and letters outside ASCII.
const QString kTypedCharacters = QString::fromUtf8("0123456789..%-,+ abcXYZ=;[]\"'#\\\xC3\xA9\xC3\x9F\xE6\x97\xA5");

template <class Choices>
auto Pick(std::mt19937& Random, const Choices& From) {
  return From[std::uniform_int_distribution<size_t>(0, std::size(From) - 1)(Random)];
}

std::string Name(const QObject* Object) {
  return Object->objectName().toStdString();
}

bool IsArrayMember(const QString& Name, const char* Array) {
  const QString prefix = QString(Array) + "_";
  bool isNumber = false;
  return Name.startsWith(prefix) && (Name.mid(prefix.size()).toInt(&isNumber), isNumber);
}

// Sends a shortcut written as text ("Ctrl+Shift+Z") to Receiver.
void KeyClick(QWidget* Receiver, const char* Shortcut) {
  const QKeyCombination key = QKeySequence(Shortcut)[0];
  QTest::keyClick(Receiver, key.key(), key.keyboardModifiers());
}

class Actor {
 public:
  Actor(frmMain& Window, std::mt19937& Random) : window_(Window), random_(Random) {
    answerer_.setInterval(0);
    QObject::connect(&answerer_, &QTimer::timeout, [this] { AnswerOpenDialog(); });
  }

  // Adding outweighs deleting a little, so the counts wander over the whole range and meet both limits.
  std::string Step() {
    static constexpr std::array<double, 9> weights{22, 10, 5, 26, 7, 5, 3, 3, 13};
    static constexpr std::array<std::string (Actor::*)(), 9> actions{
        &Actor::Slider,   &Actor::ClickLabel,  &Actor::ClickAnywhere, &Actor::Edit,   &Actor::HoverAndDelete,
        &Actor::ClickAdd, &Actor::ClickToggle, &Actor::Resize,        &Actor::Command};
    if (!window_.isVisible()) {
      window_.show();  // closed by Ctrl+Q: the person starts it again on the same topic
    }
    if (!window_.isActiveWindow()) {
      window_.activateWindow();
      QApplication::processEvents();
    }
    // Any click may open the modal settings dialog (a click anywhere can land on its button), so a timer
    // answers it from inside its own loop during every action.
    answerer_.start();
    const std::string done =
        (this->*actions[std::discrete_distribution<size_t>(weights.begin(), weights.end())(random_)])();
    QApplication::processEvents();
    answerer_.stop();
    return done + dialogTranscript_;
  }

 private:
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
        if (control->isVisible() && (array == nullptr ? qobject_cast<QLabel*>(control) != nullptr
                                                      : IsArrayMember(control->objectName(), array))) {
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
    target = target == nullptr ? Client() : target;
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
    QWidget* slider = Pick(random_, sliders);
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
    static constexpr std::array keys{"Left", "Right", "Up", "Down", "PgUp", "PgDown", "Home", "End"};
    const char* name = Pick(random_, keys);
    Slider->setFocus(Qt::MouseFocusReason);
    KeyClick(Slider, name);
    return std::string("key ") + name + " on " + Name(Slider);
  }

  std::string WheelOnSlider(QWidget* Slider) {
    const QPoint at = PointIn(Slider);
    const int angle = Pick(random_, std::array{-240, -120, -40, 40, 120, 360});
    QWheelEvent wheel(at, Slider->mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(Slider, &wheel);
    return "wheel " + std::to_string(angle) + " on " + Name(Slider);
  }

  std::string ClickLabel() {
    QWidget* label = Pick(random_, Visible({nullptr}));
    return ClickAt(label->geometry().topLeft() + PointIn(label)) + " (aimed at " + Name(label) + ")";
  }

  std::string ClickAnywhere() { return ClickAt(PointIn(Client())); }

  // Typing, or a key that ends the edit, moves on with Tab or edits the text; the edit box is first opened
  // over a random name or value when it is not open.
  std::string Edit() {
    static constexpr std::array keys{"Esc",       "Return", "Num+Enter", "Tab", "Tab",   "Shift+Backtab",
                                     "Backspace", "Del",    "Left",      "End", "Ctrl+A"};
    std::string done;
    if (!EditBox()->isVisible()) {
      auto editable = Visible({"lblOption", "lblAttribute", "lblWeighting", "lblRating"});
      editable.push_back(Control("lblTitle"));
      QWidget* label = Pick(random_, editable);
      QTest::mouseClick(label, Qt::LeftButton, Qt::NoModifier, PointIn(label));
      done = "open " + Name(label) + ", ";
    }
    if (!EditBox()->isVisible()) {
      return done + "no edit box";
    }
    if (Chance(0.55)) {
      return done + TypeText();
    }
    const char* key = Pick(random_, keys);
    KeyClick(EditBox(), key);
    return done + "key " + key;
  }

  std::string TypeText() {
    const int length = Chance(0.02) ? Between(250, 270) : Between(1, 6);
    QString typed;
    for (int i = 0; i < length; ++i) {
      typed += kTypedCharacters.at(Between(0, static_cast<int>(kTypedCharacters.size()) - 1));
      QTest::sendKeyEvent(QTest::Click, EditBox(), Qt::Key_unknown, typed.back(), Qt::NoModifier);
    }
    return "type \"" + typed.toStdString() + "\"";
  }

  // The delete buttons appear only beside the name under the mouse.
  std::string HoverAndDelete() {
    const auto names = Visible({"lblOption", "lblAttribute"});
    if (names.empty()) {
      return ClickToggle();
    }
    QWidget* name = Pick(random_, names);
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
    return Clicked(Control(Pick(random_, std::array{"btnToggleScore", "btnToggleWeightings", "btnToggleRatings"})));
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
    static constexpr std::array<const char*, 9> buttons{"btnNew", "btnLoad", "btnSave", "btnSettings"};
    static constexpr std::array shortcuts{"Ctrl+N", "Ctrl+L", "Ctrl+S",      "", "Ctrl+C", "Ctrl+Q",
                                          "Ctrl+Z", "Ctrl+Y", "Ctrl+Shift+Z"};
    const int route = Between(0, 8);
    const char* button = buttons[static_cast<size_t>(route)];
    const char* shortcut = shortcuts[static_cast<size_t>(route)];
    if (std::string(shortcut) == "Ctrl+Q" && !Chance(0.1)) {
      return Command();
    }
    if (button != nullptr && (*shortcut == '\0' || Chance(0.5))) {
      return Clicked(Control(button));
    }
    QWidget* receiver = EditBox()->isVisible() ? static_cast<QWidget*>(EditBox()) : &window_;
    KeyClick(receiver, shortcut);
    return std::string(shortcut) + " to " + Name(receiver);
  }

  void AnswerOpenDialog() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* dialog = qobject_cast<QDialog*>(window);
      if (dialog == nullptr || window->objectName() != "frmOptions" || !window->isVisible()) {
        continue;
      }
      if (++answers_ > kMaxAnswersPerAction) {
        dialogTranscript_ += " [settings closed outright]";
        dialog->done(QDialog::Rejected);
      } else {
        dialogTranscript_ += " [settings " + FillSettings(*dialog) + "]";
      }
      return;
    }
  }

  std::string FillSettings(QDialog& Dialog) {
    static constexpr std::array titles{"", "   ", "Soak topic", "A title long enough to be cut short in the window",
                                       "=;[x]"};
    static constexpr std::array counts{"0", "1", "2", "3", "5", "9", "10", "11", "-1", "abc", "", "32768"};
    std::string done;
    const auto field = [&](const char* name, const char* text) {
      if (Chance(0.4)) {
        Dialog.findChild<QLineEdit*>(name)->setText(text);
        done += std::string(name) + "=\"" + text + "\" ";
      }
    };
    field("txtTitle", Pick(random_, titles));
    field("txtOptionCount", Pick(random_, counts));
    field("txtAttributeCount", Pick(random_, counts));
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

MsgResult RandomDialogs::ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon, const std::string&) {
  static constexpr std::array names{"OK", "Yes", "No", "Cancel"};
  MsgResult answer = MsgResult::OK;
  if (Buttons != MsgButtons::OK) {
    const int last = Buttons == MsgButtons::YesNo ? 2 : 3;
    answer = static_cast<MsgResult>(std::uniform_int_distribution<int>(1, last)(random_));
  }
  transcript_ += " [\"" + Prompt.substr(0, 40) + "\" " + names.at(static_cast<size_t>(answer)) + "]";
  return answer;
}

std::optional<std::string> RandomDialogs::RandomFileName(const char* Verb) {
  static constexpr std::array stems{"soak", "other", "Topic 1", "na\xC3\xAFve"};
  static constexpr std::array extensions{".tvt", ".tvt", ".csv", ".jpg", ".bmp", ".TVT", ""};
  const int roll = std::uniform_int_distribution<int>(0, 19)(random_);
  std::optional<std::string> chosen;
  if (roll == 4) {
    chosen = folder_.string();  // a folder, not a file
  } else if (roll == 5) {
    chosen = (folder_ / "missing" / "soak.tvt").string();
  } else if (roll > 5) {
    chosen = (folder_ / (std::string(Pick(random_, stems)) + Pick(random_, extensions))).string();
  }
  transcript_ += std::string(" [") + Verb + " " + chosen.value_or("cancelled") + "]";
  return chosen;
}

}  // namespace tarvelin::testing
