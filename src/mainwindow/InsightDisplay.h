#pragma once

#include <QObject>
#include <QTimer>
#include <optional>
#include <string>

#include "insight/InsightText.h"

class QLabel;
class QWidget;

namespace tarvelin {

class PanelLayout;
class RowControls;
class TopicInsight;
class ViewToggles;

// How robust the best option is, on the window while the preference is on: behind each weighting slider a pale
// band over which the best option stays best, with a tick at an end where a rival takes over; on each rating
// slider a tick where that rating alone would change the best option; the same in words in the sliders'
// tooltips; and a line under the score bars. The line's last sentence (the share of nearby weightings under which
// the best option holds) samples many weightings, so it follows once the person lets go of a slider.
class InsightDisplay final {
 public:
  InsightDisplay(QWidget* Client, RowControls& Rows, const PanelLayout& Panels, const ViewToggles& Toggles);
  Q_DISABLE_COPY_MOVE(InsightDisplay)

  // Shows the insight for the topic as it is now; with the preference off, takes every trace of it away.
  void Refresh(const TopicInsight& Insight);
  // Rewrites the line after a rename: the names changed, the values did not.
  void RefreshLine();
  // Places the line in the score panel's extra row; it shows only with the panel's rows and the preference.
  void Arrange();

  // The line as a whole, before it is fitted into the panel's width.
  const std::string& LineText() const { return line_; }

  QLabel* lblInsight = nullptr;

 private:
  void ShowBands(const TopicInsight& Insight);
  void ShowTippingPoints(const TopicInsight& Insight);
  void ShowLine(const TopicInsight& Insight);
  void FitLine();
  void ClearSliders();
  void tmrHoldShare_Timer();

  RowControls& rows_;
  const PanelLayout& panels_;
  const ViewToggles& toggles_;
  QTimer tmrHoldShare;
  std::optional<HoldShareFigure> hold_;  // for the topic as the line shows it; none until computed
  std::string line_;
};

}  // namespace tarvelin
