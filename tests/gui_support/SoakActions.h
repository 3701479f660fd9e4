#pragma once

#include <QPoint>
#include <QTimer>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

class QDialog;
class QLineEdit;
class QWidget;

namespace tarvelin {
class frmMain;
}

namespace tarvelin::testing {

// Drives the main window as a person clicking, dragging and typing at random would, through real mouse,
// wheel and key events: slider drags, wheels and keys, clicks anywhere and on every label, typing in the
// edit box (Escape, Tab and Enter included), hovering names and deleting their rows, the add buttons,
// the panel toggles, resizes, undo and redo, and the commands with their buttons and shortcuts. The settings dialog an
// action opens is filled in and closed at random too. The same seed gives the same actions.
class SoakActions {
 public:
  SoakActions(frmMain& Window, std::mt19937& Random);
  SoakActions(const SoakActions&) = delete;
  SoakActions& operator=(const SoakActions&) = delete;

  // Performs one action, lets the window settle and returns what was done.
  std::string Step();

 private:
  using Action = std::string (SoakActions::*)();
  struct WeightedAction {
    double Weight;
    Action Perform;
  };
  static const std::vector<WeightedAction>& Actions();

  std::string Slider();
  std::string DragSlider(QWidget* Slider);
  std::string KeyOnSlider(QWidget* Slider);
  std::string WheelOnSlider(QWidget* Slider);
  std::string ClickLabel();
  std::string ClickAnywhere();
  std::string Edit();
  std::string TypeText(QLineEdit* EditBox);
  std::string HoverAndDelete();
  std::string ClickAdd();
  std::string ClickToggle();
  std::string Resize();
  std::string Command();

  int Between(int Low, int High);
  bool Chance(double Probability);
  template <class T>
  T Pick(const std::vector<T>& Choices) {
    return Choices[static_cast<size_t>(Between(0, static_cast<int>(Choices.size()) - 1))];
  }
  QPoint PointIn(const QWidget* Widget);

  QWidget* Client() const;
  QLineEdit* EditBox() const;
  QWidget* Control(const char* Name) const;
  std::vector<QWidget*> Visible(std::initializer_list<const char*> Arrays) const;
  std::string ClickAt(QPoint ClientPoint);
  std::string EnsureEditing();
  std::string Clicked(QWidget* Control);

  void AnswerOpenDialog();
  std::string FillSettings(QDialog& Dialog);

  frmMain& window_;
  std::mt19937& random_;
  std::discrete_distribution<size_t> choose_;
  QTimer answerer_;
  int answers_ = 0;
  std::string dialogTranscript_;
};

}  // namespace tarvelin::testing
