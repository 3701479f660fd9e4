#pragma once

#include <QLine>
#include <QObject>
#include <QRect>
#include <cstdint>
#include <map>
#include <vector>

#include "widgets/modDecoration.h"

class QPainter;
class QWidget;

namespace tarvelin {

class PanelLayout;
class ViewToggles;

// The window's decoration (the background sweep and the framed panels) under the client area, and the layout
// aid drawn over it. Nothing as large as the canvas is kept: a paint makes only the rows it shows, so a long
// topic costs no memory and the first frame costs only what is on screen. At a whole-number pixel ratio the
// rows are made in tiles that are kept while the decoration stays as it is and the client shows them, so
// that a slider's repaint costs no gradient fill and a scroll step makes at most a tile or two.
class WindowDecoration final {
 public:
  WindowDecoration(QWidget* Client, const PanelLayout& Panels, const ViewToggles& Toggles);
  Q_DISABLE_COPY_MOVE(WindowDecoration)

  // Takes the client's size and the panels' places and repaints the client when they changed (or when the
  // layout aid is to be cleared).
  void RepaintGradients();
  // Paints the decoration under Area (device-independent pixels of the client) with the painter of a paint
  // event or grab. A part that cannot be made is left unpainted: drawing problems never stop the program.
  void Paint(QPainter& Painter, const QRect& Area) const;
  // The decoration's rows (with the layout aid) around device rows [Top, Top + Height).
  DecorationRows Render(int Top, int Height, qreal PixelRatio) const;

  // A layout aid: the 10-pixel lattice and the border and section rules, drawn over the decoration until
  // the next RepaintGradients.
  void DrawGrid();
  void HLine(int16_t Y, uint32_t Colour);
  void VLine(int16_t X, uint32_t Colour);

 private:
  struct GuideLine {
    QLine Line;
    uint32_t Colour;
  };

  void PaintBand(QPainter& Painter, const QRect& Band, qreal PixelRatio) const;
  void PaintFromTiles(QPainter& Painter, const QRect& Area, int PixelRatio) const;
  const DecorationRows& Tile(int Index, int PixelRatio) const;
  void Forget();

  QWidget* client_;
  const PanelLayout& panels_;
  const ViewToggles& toggles_;
  DecorationLayout layout_;
  qreal pixelRatio_ = 0;
  std::vector<GuideLine> guides_;
  mutable std::map<int, DecorationRows> tiles_;  // by index, at tilesRatio_
  mutable int tilesRatio_ = 0;
};

}  // namespace tarvelin
