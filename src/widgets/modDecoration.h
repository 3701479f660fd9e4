#pragma once

#include <QBrush>
#include <QImage>
#include <QLine>
#include <QRect>
#include <QSize>
#include <cstdint>

namespace tarvelin {

class cDIBSection;

// Fills the whole picture with a diagonal sweep: ColourA in three corners, ColourB in the bottom-right one.
void FillTwoColourGradient(cDIBSection& Picture, uint32_t ColourA, uint32_t ColourB);

// The window's decoration for a client area of the given size (in device-independent pixels, drawn at
// the screen's pixel ratio so that it stays sharp): the background sweep and the three panels, each with its
// own sweep inside a rounded 20 x 20 frame.
QImage PaintWindowDecoration(QSize ClientSize, qreal PixelRatio, const QRect& ScorePanel, const QRect& WeightingPanel,
                             const QRect& RatingPanel);

// The loading cover's fill: the background sweep with its two colours exchanged.
QBrush CoverBrush(QSize Size);

// Draws a one-pixel line into the persistent image (device-independent coordinates).
void DrawLine(QImage& Image, const QLine& Line, uint32_t Colour);

}  // namespace tarvelin
