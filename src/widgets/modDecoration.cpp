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
// How far beyond a part its pixels are drawn, so that the frames' antialiased edges are worked out as they are
// for the whole decoration rather than cut at the part's edge.
constexpr int kPartMargin = 4;
// How far beyond a part a panel's fill is made, so that the fill's cut edges stay out of the part.
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

// The smallest number of device pixels that is also a whole number of device-independent pixels, so that a
// panel's fill cut at a multiple of it is placed exactly where the whole fill would put those pixels; 0 when
// no small number is.
int WholeStep(qreal PixelRatio) {
  for (int step = 1; step <= 64; ++step) {
    const qreal independent = std::round(step / PixelRatio);
    if (independent * PixelRatio == step) {
      return step;
    }
  }
  return 0;
}

// Only the panel's fill near the part is made; its top-left is moved out to a whole step so that it lands on
// the same device pixels as the whole fill. False when the fill cannot be made.
bool PaintPanel(QPainter& Painter, const QRect& Panel, qreal PixelRatio, const QRect& Part) {
  if (Panel.isEmpty()) {
    return true;
  }
  const QSize fillSize = DecorationDeviceSize(Panel.size(), PixelRatio);
  const QPointF origin = QPointF(Panel.topLeft()) * PixelRatio;
  QRect needed = QRectF(QPointF(Part.topLeft()) - origin, QSizeF(Part.size())).toAlignedRect();
  needed = needed.adjusted(-kFillSlack, -kFillSlack, kFillSlack, kFillSlack) & QRect(QPoint(0, 0), fillSize);
  if (needed.isEmpty()) {
    return true;
  }
  const int step = WholeStep(PixelRatio);
  const auto alignDown = [step](int Position) { return step > 0 ? Position / step * step : 0; };
  needed.setTopLeft(QPoint(alignDown(needed.left()), alignDown(needed.top())));
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

// A painter over a part that takes device-independent coordinates of the whole decoration.
void PlacePainter(QPainter& Painter, const QRect& Part, qreal PixelRatio) {
  Painter.setTransform(QTransform(PixelRatio, 0, 0, PixelRatio, -Part.x(), -Part.y()));
}

}  // namespace

QSize DecorationDeviceSize(QSize Size, qreal PixelRatio) {
  return QSize(static_cast<int>(std::ceil(Size.width() * PixelRatio)),
               static_cast<int>(std::ceil(Size.height() * PixelRatio)));
}

QImage PaintDecorationPart(const DecorationLayout& Layout, qreal PixelRatio, const QRect& Part) {
  const QSize wholeSize = DecorationDeviceSize(Layout.Client, PixelRatio);
  const QRect made =
      Part.adjusted(-kPartMargin, -kPartMargin, kPartMargin, kPartMargin) & QRect(QPoint(0, 0), wholeSize);
  QImage image = MakePart(made.size());
  if (image.isNull() || !made.contains(Part)) {
    return QImage();
  }
  FillSweep(image, made.topLeft(), wholeSize, Palette::FormFirst, Palette::FormSecond);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  PlacePainter(painter, made, PixelRatio);
  for (const QRect& panel : Layout.Panels) {
    if (!PaintPanel(painter, panel, PixelRatio, made)) {
      return QImage();
    }
  }
  painter.end();
  return made == Part ? image : image.copy(Part.translated(-made.topLeft()));
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

void DrawLine(QImage& Part, const QRect& PartRect, qreal PixelRatio, const QLine& Line, uint32_t Colour) {
  if (Part.isNull()) {
    return;
  }
  QPainter painter(&Part);
  PlacePainter(painter, PartRect, PixelRatio);
  painter.setPen(QPen(ColourFromColorref(Colour), 0));
  painter.drawLine(Line);
}

}  // namespace tarvelin
