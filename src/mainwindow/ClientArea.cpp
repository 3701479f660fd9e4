#include "mainwindow/ClientArea.h"

#include <QPaintEvent>
#include <QPainter>

#include "mainwindow/WindowDecoration.h"

namespace tarvelin {

ClientArea::ClientArea(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

// Controls repainted far apart arrive as one region; each of its rectangles is drawn alone so that the
// space between them costs nothing.
void ClientArea::paintEvent(QPaintEvent* event) {
  if (decoration_ == nullptr) {
    return;
  }
  QPainter painter(this);
  for (const QRect& area : event->region()) {
    decoration_->Paint(painter, area);
  }
}

}  // namespace tarvelin
