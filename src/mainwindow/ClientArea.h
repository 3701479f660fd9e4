#pragma once

#include <QImage>
#include <QWidget>

namespace tarvelin {

// The main window's drawing surface: it shows the window's persistent image, which is built only when the
// decoration changes, so a paint event is a single blit.
class ClientArea final : public QWidget {
  Q_OBJECT

 public:
  explicit ClientArea(QWidget* parent = nullptr);
  Q_DISABLE_COPY_MOVE(ClientArea)

  // The image to show; it must outlive the client area.
  void ShowImage(const QImage* PersistentImage) { image_ = PersistentImage; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QImage* image_ = nullptr;
};

}  // namespace tarvelin
