#include "widgets/modDecoration.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "graphics/clsGradientFill.h"
#include "widgets/Palette.h"

namespace tarvelin {

namespace {

constexpr qreal kPanelCornerDiameter = 20;
// A part is made in one piece; anything larger than this is not drawn at all.
constexpr qint64 kLargestPartPixels = qint64{1} << 26;
// How many rows above and below a part are drawn with it.
constexpr int kPartMargin = 4;
// How many rows beyond those a panel's fill is made, so that the fill's cut edges stay out of the part.
constexpr int kFillSlack = 2;

// One gradient object serves the whole program.
const clsGradientFill& SharedGradientFill() {
  static const clsGradientFill gradientFill;
  return gradientFill;
}

QImage MakePart(QSize Size) {
  if (Size.isEmpty() || qint64{Size.width()} * Size.height() > kLargestPartPixels) {
    return QImage();
  }
  return QImage(Size, QImage::Format_RGB32);
}

// Fills Image with the pixels from Origin of a sweep laid over a picture of WholeSize.
void FillSweep(QImage& Image, QPoint Origin, QSize WholeSize, uint32_t ColourA, uint32_t ColourB) {
  const PicturePart part{reinterpret_cast<uint32_t*>(Image.bits()),
                         Image.bytesPerLine() / 4,
                         Origin.x(),
                         Origin.y(),
                         Image.width(),
                         Image.height(),
                         WholeSize.width(),
                         WholeSize.height()};
  SharedGradientFill().GradientFillTri(part, ColourA, ColourA, ColourB, ColourA);
}

// Only the rows of the panel's fill near the part are made, and they are placed where the whole fill would
// put them. False when the fill cannot be made.
bool PaintPanel(QPainter& Painter, const QRect& Panel, qreal PixelRatio, const QRect& Part) {
  if (Panel.isEmpty()) {
    return true;
  }
  const QSize fillSize = DecorationDeviceSize(Panel.size(), PixelRatio);
  const qreal fillTop = Panel.top() * PixelRatio;
  const int firstRow = static_cast<int>(std::floor(Part.top() - fillTop)) - kFillSlack;
  const int endRow = static_cast<int>(std::ceil(Part.bottom() + 1 - fillTop)) + kFillSlack;
  const QRect needed = QRect(0, firstRow, fillSize.width(), endRow - firstRow) & QRect(QPoint(0, 0), fillSize);
  if (needed.isEmpty()) {
    return true;
  }
  QImage fill = MakePart(needed.size());
  if (fill.isNull()) {
    return false;
  }
  FillSweep(fill, needed.topLeft(), fillSize, Palette::PanelFirst, Palette::PanelSecond);
  fill.setDevicePixelRatio(PixelRatio);
  QPainterPath frame;
  const qreal radius = kPanelCornerDiameter / 2;
  frame.addRoundedRect(QRectF(Panel).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  // The fill is clipped to the rounded frame; the frame's antialiased stroke then covers the clip's edge.
  Painter.save();
  Painter.setClipPath(frame);
  Painter.drawImage(QPointF(Panel.topLeft()) + QPointF(needed.topLeft()) / PixelRatio, fill);
  Painter.restore();
  Painter.strokePath(frame, QPen(ColourFromColorref(Palette::PanelBorder), 1));
  return true;
}

// A painter over rows from Origin that takes device-independent coordinates of the whole decoration.
void PlacePainter(QPainter& Painter, QPoint Origin, qreal PixelRatio) {
  Painter.setTransform(QTransform(PixelRatio, 0, 0, PixelRatio, -Origin.x(), -Origin.y()));
}

}  // namespace

QSize DecorationDeviceSize(QSize Size, qreal PixelRatio) {
  return QSize(static_cast<int>(std::ceil(Size.width() * PixelRatio)),
               static_cast<int>(std::ceil(Size.height() * PixelRatio)));
}

// Rows are drawn across the decoration's whole width and a few rows beyond: the frames' antialiased edges then
// come out exactly as in the whole decoration, which they do not when a frame is cut at the part's edge.
DecorationRows PaintDecorationRows(const DecorationLayout& Layout, qreal PixelRatio, int Top, int Height) {
  const QSize wholeSize = DecorationDeviceSize(Layout.Client, PixelRatio);
  const QRect made =
      QRect(0, Top - kPartMargin, wholeSize.width(), Height + 2 * kPartMargin) & QRect(QPoint(0, 0), wholeSize);
  DecorationRows rows{MakePart(made.size()), made.topLeft()};
  if (rows.Image.isNull()) {
    return rows;
  }
  FillSweep(rows.Image, made.topLeft(), wholeSize, Palette::FormFirst, Palette::FormSecond);
  QPainter painter(&rows.Image);
  painter.setRenderHint(QPainter::Antialiasing);
  PlacePainter(painter, made.topLeft(), PixelRatio);
  for (const QRect& panel : Layout.Panels) {
    if (!PaintPanel(painter, panel, PixelRatio, made)) {
      return {};
    }
  }
  return rows;
}

QImage PaintDecorationPart(const DecorationLayout& Layout, qreal PixelRatio, const QRect& Part) {
  const DecorationRows rows = PaintDecorationRows(Layout, PixelRatio, Part.top(), Part.height());
  const QRect made(rows.Origin, rows.Image.size());
  if (rows.Image.isNull() || !made.contains(Part)) {
    return QImage();
  }
  return made == Part ? rows.Image : rows.Image.copy(Part.translated(-made.topLeft()));
}

QImage PaintWindowDecoration(QSize ClientSize, qreal PixelRatio, const QRect& ScorePanel, const QRect& WeightingPanel,
                             const QRect& RatingPanel) {
  const DecorationLayout layout{ClientSize, {ScorePanel, WeightingPanel, RatingPanel}};
  QImage image =
      PaintDecorationPart(layout, PixelRatio, QRect(QPoint(0, 0), DecorationDeviceSize(ClientSize, PixelRatio)));
  image.setDevicePixelRatio(PixelRatio);
  return image;
}

QBrush CoverBrush(QSize Size) {
  QImage image = MakePart(Size);
  if (!image.isNull()) {
    FillSweep(image, QPoint(0, 0), Size, Palette::FormSecond, Palette::FormFirst);
  }
  return QBrush(image);
}

void DrawLine(DecorationRows& Rows, qreal PixelRatio, const QLine& Line, uint32_t Colour) {
  if (Rows.Image.isNull()) {
    return;
  }
  QPainter painter(&Rows.Image);
  PlacePainter(painter, Rows.Origin, PixelRatio);
  painter.setPen(QPen(ColourFromColorref(Colour), 0));
  painter.drawLine(Line);
}

}  // namespace tarvelin
