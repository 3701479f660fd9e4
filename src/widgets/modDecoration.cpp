#include "widgets/modDecoration.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "graphics/cDIBSection.h"
#include "graphics/clsGradientFill.h"
#include "platform/qt/modPictureConversion.h"
#include "widgets/Palette.h"

namespace tarvelin {

namespace {

constexpr qreal kPanelCornerDiameter = 20;

// One gradient object serves the whole program.
const clsGradientFill& SharedGradientFill() {
  static const clsGradientFill gradientFill;
  return gradientFill;
}

QImage SweepImage(QSize DeviceSize, uint32_t ColourA, uint32_t ColourB) {
  cDIBSection picture;
  picture.Create(DeviceSize.width(), DeviceSize.height());
  FillTwoColourGradient(picture, ColourA, ColourB);
  return ImageFromDIB(picture).convertToFormat(QImage::Format_RGB32);
}

QSize DeviceSizeOf(QSize Size, qreal PixelRatio) {
  return QSize(static_cast<int>(std::ceil(Size.width() * PixelRatio)),
               static_cast<int>(std::ceil(Size.height() * PixelRatio)));
}

void PaintPanel(QPainter& Painter, const QRect& Panel, qreal PixelRatio) {
  if (Panel.isEmpty()) {
    return;
  }
  QImage fill = SweepImage(DeviceSizeOf(Panel.size(), PixelRatio), Palette::PanelFirst, Palette::PanelSecond);
  fill.setDevicePixelRatio(PixelRatio);
  QPainterPath frame;
  const qreal radius = kPanelCornerDiameter / 2;
  frame.addRoundedRect(QRectF(Panel).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  // The fill is clipped to the rounded frame; the frame's antialiased stroke then covers the clip's edge.
  Painter.save();
  Painter.setClipPath(frame);
  Painter.drawImage(Panel.topLeft(), fill);
  Painter.restore();
  Painter.strokePath(frame, QPen(ColourFromColorref(Palette::PanelBorder), 1));
}

}  // namespace

void FillTwoColourGradient(cDIBSection& Picture, uint32_t ColourA, uint32_t ColourB) {
  SharedGradientFill().GradientFillTri(Picture, ColourA, ColourA, ColourB, ColourA);
}

QImage PaintWindowDecoration(QSize ClientSize, qreal PixelRatio, const QRect& ScorePanel, const QRect& WeightingPanel,
                             const QRect& RatingPanel) {
  QImage image = SweepImage(DeviceSizeOf(ClientSize, PixelRatio), Palette::FormFirst, Palette::FormSecond);
  if (image.isNull()) {
    return image;
  }
  image.setDevicePixelRatio(PixelRatio);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const QRect& panel : {ScorePanel, WeightingPanel, RatingPanel}) {
    PaintPanel(painter, panel, PixelRatio);
  }
  return image;
}

QBrush CoverBrush(QSize Size) {
  return QBrush(SweepImage(Size, Palette::FormSecond, Palette::FormFirst));
}

void DrawLine(QImage& Image, const QLine& Line, uint32_t Colour) {
  if (Image.isNull()) {
    return;
  }
  QPainter painter(&Image);
  painter.setPen(QPen(ColourFromColorref(Colour), 0));
  painter.drawLine(Line);
}

}  // namespace tarvelin
