#pragma once

#include <QObject>
#include <vector>

class QWidget;

namespace tarvelin {

class RowControls;
class TopicInsight;

// What each score is made of. Every bar and score label tells in its tooltip why its option trails the best
// one (the best one: why it leads its runner-up). With the SplitScoreBars preference each bar is drawn as one
// segment per attribute, each attribute's part of the score in that attribute's colour, the best bars (ties
// included) framed and their titles filled in the best colour, and each attribute's name in the weightings panel shows
// its colour beside it. Without the preference nothing of the window changes.
class ScoreBreakdown final {
 public:
  ScoreBreakdown(QWidget* Client, RowControls& Rows);
  Q_DISABLE_COPY_MOVE(ScoreBreakdown)

  // Brings tooltips, segments, marks and swatches up to date with the topic and the preference.
  void Refresh(const TopicInsight& Insight);
  // Places the swatches beside their attribute names, after the rows have moved.
  void PlaceSwatches();

 private:
  void ExplainScores(const TopicInsight& Insight);
  void SplitBars(const TopicInsight& Insight, bool Split);
  void MarkBestTitles(bool Split);
  void ShowSwatches(bool Split);

  QWidget* client_;
  RowControls& rows_;
  std::vector<QWidget*> picSwatch;
  std::vector<QWidget*> picBestMark;
};

}  // namespace tarvelin
