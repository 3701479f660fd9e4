#pragma once

#include <QBrush>
#include <QImage>
#include <QLine>
#include <QRect>
#include <QSize>
#include <array>
#include <cstdint>

namespace tarvelin {

// Where the decoration's parts lie, in device-independent pixels: the size of the area it covers and the
// framed panels (an empty rectangle is no panel).
struct DecorationLayout {
  QSize Client;
  std::array<QRect, 3> Panels;
  bool operator==(const DecorationLayout&) const = default;
};

// The decoration's size in device pixels at a pixel ratio.
QSize DecorationDeviceSize(QSize Size, qreal PixelRatio);

// Rows of the decoration drawn at PixelRatio: the background sweep, ColourA in three corners and ColourB in
// the bottom-right one, and each panel with its own sweep inside a rounded 20 x 20 frame. Image (Format_RGB32,
// pixel ratio 1) holds the decoration's device pixels from Origin on, across its whole width; every pixel is the
// one the whole decoration has there. Image is null when the rows are too large to make.
struct DecorationRows {
  QImage Image;
  QPoint Origin;
};

// The device rows [Top, Top + Height) of the decoration and a few more either side where there are any.
DecorationRows PaintDecorationRows(const DecorationLayout& Layout, qreal PixelRatio, int Top, int Height);

// The pixels of the rectangle Part (device pixels, inside the decoration's device size); null when they cannot
// be made.
QImage PaintDecorationPart(const DecorationLayout& Layout, qreal PixelRatio, const QRect& Part);

// The whole decoration of an area of the given size, drawn at the screen's pixel ratio so that it stays
// sharp; null when it is too large to make.
QImage PaintWindowDecoration(QSize ClientSize, qreal PixelRatio, const QRect& ScorePanel, const QRect& WeightingPanel,
                             const QRect& RatingPanel);

// The loading cover's fill: the background sweep with its two colours exchanged.
QBrush CoverBrush(QSize Size);

// Draws a one-pixel line, given in device-independent pixels of the whole decoration, over rows of it.
void DrawLine(DecorationRows& Rows, qreal PixelRatio, const QLine& Line, uint32_t Colour);

}  // namespace tarvelin
