#include "widgets/modButtonPictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <cmath>
#include <numbers>

namespace tarvelin {

namespace {

// Every picture is drawn on a 16 by 16 grid that is scaled onto the target box.
constexpr double Grid = 16.0;

// Draws with the picture's colours, or with greys of matching lightness when disabled.
class PictureInk {
 public:
  PictureInk(QPainter& Painter, bool Enabled) : painter_(Painter), enabled_(Enabled) {}

  void Fill(const QColor& Fill, const QColor& Outline, double OutlineWidth = 1.0) {
    painter_.setBrush(Tone(Fill));
    painter_.setPen(QPen(Tone(Outline), OutlineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }
  void Stroke(const QColor& Colour, double Width) {
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(Tone(Colour), Width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }
  QPainter& Painter() { return painter_; }

 private:
  QColor Tone(const QColor& Colour) const {
    if (enabled_) {
      return Colour;
    }
    const int grey = 150 + qGray(Colour.rgb()) * 90 / 255;
    return QColor(grey, grey, grey, Colour.alpha());
  }

  QPainter& painter_;
  bool enabled_;
};

const QColor OutlineDark(74, 90, 106);

void PaintSparkle(PictureInk& Ink, QPointF Centre, double Radius) {
  QPolygonF star;
  for (int i = 0; i < 8; ++i) {
    const double angle = i * std::numbers::pi / 4;
    const double reach = i % 2 == 0 ? Radius : Radius * 0.4;
    star << Centre + QPointF(std::cos(angle) * reach, std::sin(angle) * reach);
  }
  Ink.Fill(QColor(255, 205, 60), QColor(204, 132, 20), 0.8);
  Ink.Painter().drawPolygon(star);
}

void PaintNew(PictureInk& Ink) {
  const QPolygonF page{{3, 1.5}, {9.5, 1.5}, {13, 5}, {13, 14.5}, {3, 14.5}};
  Ink.Fill(Qt::white, OutlineDark);
  Ink.Painter().drawPolygon(page);
  const QPolygonF fold{{9.5, 1.5}, {9.5, 5}, {13, 5}};
  Ink.Fill(QColor(221, 228, 236), OutlineDark);
  Ink.Painter().drawPolygon(fold);
  PaintSparkle(Ink, {11.5, 11.5}, 4);
}

void PaintLoad(PictureInk& Ink) {
  const QColor outline(166, 122, 30);
  const QPolygonF back{{1.5, 3}, {6, 3}, {7.5, 4.5}, {13, 4.5}, {13, 13.5}, {1.5, 13.5}};
  Ink.Fill(QColor(232, 182, 74), outline);
  Ink.Painter().drawPolygon(back);
  const QPolygonF front{{4, 7.5}, {15, 7.5}, {13, 13.5}, {1.5, 13.5}};
  Ink.Fill(QColor(247, 215, 116), outline);
  Ink.Painter().drawPolygon(front);
}

void PaintSave(PictureInk& Ink) {
  Ink.Fill(QColor(61, 111, 182), QColor(36, 71, 122));
  Ink.Painter().drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 1.5, 1.5);
  Ink.Fill(QColor(221, 228, 236), QColor(36, 71, 122), 0.8);
  Ink.Painter().drawRect(QRectF(4.5, 1.5, 7, 4.5));
  Ink.Fill(QColor(36, 71, 122), QColor(36, 71, 122), 0.5);
  Ink.Painter().drawRect(QRectF(9, 2.5, 1.5, 2.5));
  Ink.Fill(Qt::white, QColor(36, 71, 122), 0.8);
  Ink.Painter().drawRect(QRectF(3.5, 8.5, 9, 6));
  Ink.Stroke(QColor(150, 170, 196), 0.8);
  Ink.Painter().drawLine(QPointF(5, 10.5), QPointF(11, 10.5));
  Ink.Painter().drawLine(QPointF(5, 12.5), QPointF(11, 12.5));
}

void PaintSettings(PictureInk& Ink) {
  constexpr int Teeth = 8;
  constexpr double Outer = 7.2;
  constexpr double Inner = 5.2;
  const QPointF centre(8, 8);
  const auto at = [&centre](double Degrees, double Radius) {
    const double angle = Degrees * std::numbers::pi / 180;
    return centre + QPointF(std::cos(angle) * Radius, std::sin(angle) * Radius);
  };
  QPolygonF wheel;
  for (int i = 0; i < Teeth; ++i) {
    const double middle = i * 360.0 / Teeth;
    wheel << at(middle - 15, Inner) << at(middle - 8, Outer) << at(middle + 8, Outer) << at(middle + 15, Inner);
  }
  QPainterPath gear;
  gear.addPolygon(wheel);
  gear.closeSubpath();
  gear.addEllipse(centre, 2.3, 2.3);
  Ink.Fill(QColor(122, 135, 150), QColor(74, 86, 99), 0.8);
  Ink.Painter().drawPath(gear);
}

void PaintRoundBadge(PictureInk& Ink, const QColor& Fill, const QColor& Outline, bool Plus) {
  Ink.Fill(Fill, Outline);
  Ink.Painter().drawEllipse(QPointF(8, 8), 6.5, 6.5);
  Ink.Stroke(Qt::white, 2);
  Ink.Painter().drawLine(QPointF(4.75, 8), QPointF(11.25, 8));
  if (Plus) {
    Ink.Painter().drawLine(QPointF(8, 4.75), QPointF(8, 11.25));
  }
}

void PaintChevron(PictureInk& Ink, bool PointsUp) {
  const double tip = PointsUp ? 5 : 11;
  const double ends = PointsUp ? 10.5 : 5.5;
  Ink.Stroke(QColor(61, 111, 182), 2.2);
  Ink.Painter().drawPolyline(QPolygonF{{3, ends}, {8, tip}, {13, ends}});
}

void PaintOk(PictureInk& Ink) {
  Ink.Stroke(QColor(46, 139, 62), 2.6);
  Ink.Painter().drawPolyline(QPolygonF{{2.5, 8.5}, {6, 12}, {13.5, 4}});
}

void PaintCancel(PictureInk& Ink) {
  Ink.Stroke(QColor(201, 65, 60), 2.6);
  Ink.Painter().drawLine(QPointF(3.5, 3.5), QPointF(12.5, 12.5));
  Ink.Painter().drawLine(QPointF(12.5, 3.5), QPointF(3.5, 12.5));
}

void PaintOnGrid(PictureInk& Ink, ButtonPicture Picture) {
  switch (Picture) {
    case ButtonPicture::None:
      return;
    case ButtonPicture::New:
      return PaintNew(Ink);
    case ButtonPicture::Load:
      return PaintLoad(Ink);
    case ButtonPicture::Save:
      return PaintSave(Ink);
    case ButtonPicture::Settings:
      return PaintSettings(Ink);
    case ButtonPicture::Add:
      return PaintRoundBadge(Ink, QColor(63, 163, 77), QColor(43, 122, 54), true);
    case ButtonPicture::Delete:
      return PaintRoundBadge(Ink, QColor(217, 83, 79), QColor(168, 58, 54), false);
    case ButtonPicture::Collapse:
      return PaintChevron(Ink, true);
    case ButtonPicture::Expand:
      return PaintChevron(Ink, false);
    case ButtonPicture::Ok:
      return PaintOk(Ink);
    case ButtonPicture::Cancel:
      return PaintCancel(Ink);
  }
}

}  // namespace

void PaintButtonPicture(QPainter& Painter, ButtonPicture Picture, const QRectF& Box, bool Enabled) {
  Painter.save();
  Painter.setRenderHint(QPainter::Antialiasing);
  Painter.translate(Box.topLeft());
  Painter.scale(Box.width() / Grid, Box.height() / Grid);
  PictureInk ink(Painter, Enabled);
  PaintOnGrid(ink, Picture);
  Painter.restore();
}

}  // namespace tarvelin
