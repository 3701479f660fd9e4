#include "settingsdialog/modOptionsTabs.h"

#include <QPainter>
#include <QPainterPath>

#include "widgets/Palette.h"

namespace tarvelin {

namespace {

constexpr qreal TabCornerRadius = 6;
constexpr int UnselectedTabDrop = 3;

const QColor UnselectedTabFill(224, 236, 248);
const QColor HoveredTabFill(241, 248, 254);
const QColor SelectedTabText(0, 0, 0);
const QColor UnselectedTabText(72, 84, 100);

// The outline of a tab: its two sides and its rounded top, open at the bottom where it meets the page.
QPainterPath TabOutline(const QRectF& Box) {
  const qreal diameter = 2 * TabCornerRadius;
  QPainterPath outline;
  outline.moveTo(Box.bottomLeft());
  outline.lineTo(Box.left(), Box.top() + TabCornerRadius);
  outline.arcTo(QRectF(Box.left(), Box.top(), diameter, diameter), 180, -90);
  outline.lineTo(Box.right() - TabCornerRadius, Box.top());
  outline.arcTo(QRectF(Box.right() - diameter, Box.top(), diameter, diameter), 90, -90);
  outline.lineTo(Box.bottomRight());
  return outline;
}

}  // namespace

QColor TabCaptionColour(bool Selected) {
  return Selected ? SelectedTabText : UnselectedTabText;
}

void PaintOptionsTab(QPainter& Painter, const QRect& Tab, bool Selected, bool Hovered) {
  const QRectF box = QRectF(Tab).adjusted(0.5, Selected ? 0.5 : UnselectedTabDrop + 0.5, -0.5, Selected ? 1 : 0);
  const QPainterPath outline = TabOutline(box);
  const QColor fill = Selected ? ColourFromColorref(Palette::PanelFirst) : Hovered ? HoveredTabFill : UnselectedTabFill;
  Painter.fillPath(outline, fill);
  Painter.strokePath(outline, QPen(ColourFromColorref(Palette::PanelBorder), 1));
}

}  // namespace tarvelin
