#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QLabel;
class QWidget;

namespace tarvelin {

class GraphicalButton;

// The window's top row: the topic's title and, right-aligned, the command buttons New, Load, Save and
// Settings, whose tooltips name their shortcuts.
class CommandRow final {
 public:
  struct Commands {
    std::function<void()> New, Load, Save, Settings;
  };
  CommandRow(QWidget* Client, Commands Run);
  Q_DISABLE_COPY_MOVE(CommandRow)

  // Lays the buttons from the client's right edge and gives the title the room left of them.
  void Arrange(int ClientWidth);
  // The buttons, which a picture of the window leaves out.
  std::vector<QWidget*> Buttons() const;

  QLabel* lblTitle = nullptr;
  GraphicalButton* btnNew = nullptr;
  GraphicalButton* btnLoad = nullptr;
  GraphicalButton* btnSave = nullptr;
  GraphicalButton* btnSettings = nullptr;
};

}  // namespace tarvelin
