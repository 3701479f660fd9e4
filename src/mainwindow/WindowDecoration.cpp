#include "mainwindow/WindowDecoration.h"

#include <QLabel>
#include <QWidget>

#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/PanelLayout.h"
#include "mainwindow/ViewToggles.h"
#include "startup/modStartup.h"
#include "widgets/modDecoration.h"

namespace tarvelin {

WindowDecoration::WindowDecoration(QWidget* Client, const PanelLayout& Panels, const ViewToggles& Toggles)
    : client_(Client), panels_(Panels), toggles_(Toggles) {}

// The layout runs several times while a topic is loaded; the decoration only changes with the geometry.
void WindowDecoration::RepaintGradients() {
  const DecorationGeometry geometry{client_->size(), client_->devicePixelRatioF(), panels_.picScoreFrame->geometry(),
                                    panels_.picWeightingFrame->geometry(), panels_.picRatingFrame->geometry()};
  if (geometry == decorationGeometry_ && !persistentImage_.isNull()) {
    return;
  }
  decorationGeometry_ = geometry;
  persistentImage_ = PaintWindowDecoration(geometry.Client, geometry.PixelRatio, geometry.ScorePanel,
                                           geometry.WeightingPanel, geometry.RatingPanel);
  client_->update();
}

void WindowDecoration::HLine(int16_t Y, uint32_t Colour) {
  decorationGeometry_ = {};
  DrawLine(persistentImage_, QLine(0, Y, client_->width(), Y), Colour);
}

void WindowDecoration::VLine(int16_t X, uint32_t Colour) {
  decorationGeometry_ = {};
  DrawLine(persistentImage_, QLine(X, 0, X, client_->height()), Colour);
}

void WindowDecoration::DrawGrid() {
  constexpr uint32_t lattice = 0x00FFFF;
  constexpr uint32_t rule = 0x000000;
  const int w = client_->width();
  const int h = client_->height();
  for (int x = 0; x <= w; x += 10) {
    VLine(static_cast<int16_t>(x), lattice);
  }
  for (int y = 0; y <= h; y += 10) {
    HLine(static_cast<int16_t>(y), lattice);
  }
  for (const int x : {10, 20, w - 10, w - 20}) {
    VLine(static_cast<int16_t>(x), rule);
  }
  HLine(10, rule);
  HLine(static_cast<int16_t>(h - 10), rule);
  const auto sectionRules = [this](bool expanded, const QLabel* heading, int rows) {
    if (!expanded) {
      return;
    }
    for (int row = 0; row < rows; ++row) {
      HLine(static_cast<int16_t>(heading->y() + heading->height() + row * RowStep(RowHeight)), rule);
    }
  };
  const TarvelinTopic& topic = *Program().Topic;
  sectionRules(toggles_.ShowScores(), panels_.lblScores, topic.TotalOptions());
  sectionRules(toggles_.ShowWeightings(), panels_.lblWeightings, topic.TotalAttributes());
  sectionRules(toggles_.ShowRatings(), panels_.lblRatings, topic.TotalOptions() * topic.TotalAttributes());
  client_->update();
}

}  // namespace tarvelin
