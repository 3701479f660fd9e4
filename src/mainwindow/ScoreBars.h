#pragma once

#include <QObject>

namespace tarvelin {

class PanelLayout;
class RowControls;

// The score panel's rows: each option's title fitted into a column as wide as the widest title needs, its
// bar and its score beside it; the best option's bar (and every bar tied with it) in the best colour.
class ScoreBars final {
 public:
  ScoreBars(RowControls& Rows, const PanelLayout& Panels);
  Q_DISABLE_COPY_MOVE(ScoreBars)

  // Fits the titles into their column, sets their tooltips and lays the bars beside them.
  void UpdateScoreBars();
  // Colours every bar from the topic's scores.
  void ColourScoreBars();

 private:
  RowControls& rows_;
  const PanelLayout& panels_;
};

}  // namespace tarvelin
