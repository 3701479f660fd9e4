#pragma once

#include <QImage>
#include <QObject>
#include <QRect>
#include <cstdint>

class QWidget;

namespace tarvelin {

class PanelLayout;
class ViewToggles;

// The window's decoration (the background sweep and the framed panels), kept as the persistent image that
// the client area shows, and the layout aid drawn over it.
class WindowDecoration final {
 public:
  WindowDecoration(QWidget* Client, const PanelLayout& Panels, const ViewToggles& Toggles);
  Q_DISABLE_COPY_MOVE(WindowDecoration)

  const QImage& PersistentImage() const { return persistentImage_; }

  // Rebuilds the decoration for the client's size and the panels' places; an unchanged geometry keeps the
  // image already built.
  void RepaintGradients();
  // A layout aid: the 10-pixel lattice and the border and section rules, drawn into the persistent image.
  void DrawGrid();
  void HLine(int16_t Y, uint32_t Colour);
  void VLine(int16_t X, uint32_t Colour);

 private:
  // What the persistent image was built for.
  struct DecorationGeometry {
    QSize Client;
    qreal PixelRatio = 0;
    QRect ScorePanel, WeightingPanel, RatingPanel;
    bool operator==(const DecorationGeometry&) const = default;
  };

  QWidget* client_;
  const PanelLayout& panels_;
  const ViewToggles& toggles_;
  QImage persistentImage_;
  DecorationGeometry decorationGeometry_;
};

}  // namespace tarvelin
