#include "mainwindow/ClientArea.h"

#include <QPaintEvent>
#include <QPainter>

namespace tarvelin {

ClientArea::ClientArea(const QImage& PersistentImage, QWidget* parent) : QWidget(parent), image_(PersistentImage) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

void ClientArea::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.drawImage(
      event->rect(), image_,
      QRectF(event->rect().topLeft() * image_.devicePixelRatio(), event->rect().size() * image_.devicePixelRatio()));
}

}  // namespace tarvelin
