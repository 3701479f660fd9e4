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

// The pixels of the rectangle Part (device pixels, inside the decoration's device size) of the decoration
// drawn at PixelRatio: the background sweep, ColourA in three corners and ColourB in the bottom-right one,
// and each panel with its own sweep inside a rounded 20 x 20 frame. Every pixel is the one the whole
// decoration has there. The image is in Format_RGB32 with a pixel ratio of 1; it is null when the part is
// too large to make.
QImage PaintDecorationPart(const DecorationLayout& Layout, qreal PixelRatio, const QRect& Part);

// The whole decoration of an area of the given size, drawn at the screen's pixel ratio so that it stays
// sharp; null when it is too large to make.
QImage PaintWindowDecoration(QSize ClientSize, qreal PixelRatio, const QRect& ScorePanel, const QRect& WeightingPanel,
                             const QRect& RatingPanel);

// The loading cover's fill: the background sweep with its two colours exchanged.
QBrush CoverBrush(QSize Size);

// Draws a one-pixel line, given in device-independent pixels of the whole decoration, into a part of it made
// by PaintDecorationPart.
void DrawLine(QImage& Part, const QRect& PartRect, qreal PixelRatio, const QLine& Line, uint32_t Colour);

}  // namespace tarvelin
