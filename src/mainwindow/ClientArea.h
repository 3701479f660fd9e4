#pragma once

#include <QWidget>

namespace tarvelin {

class WindowDecoration;

// The main window's drawing surface: it shows the window's decoration under its controls, painting only
// the parts that a paint event asks for.
class ClientArea final : public QWidget {
  Q_OBJECT

 public:
  explicit ClientArea(QWidget* parent = nullptr);
  Q_DISABLE_COPY_MOVE(ClientArea)

  // The decoration to show; it must outlive the client area.
  void ShowDecoration(const WindowDecoration* Decoration) { decoration_ = Decoration; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const WindowDecoration* decoration_ = nullptr;
};

}  // namespace tarvelin
