#include "mainwindow/ClientArea.h"

#include <QPaintEvent>
#include <QPainter>

namespace tarvelin {

ClientArea::ClientArea(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

void ClientArea::paintEvent(QPaintEvent* event) {
  if (image_ == nullptr) {
    return;
  }
  QPainter painter(this);
  const qreal ratio = image_->devicePixelRatio();
  painter.drawImage(event->rect(), *image_, QRectF(event->rect().topLeft() * ratio, event->rect().size() * ratio));
}

}  // namespace tarvelin
