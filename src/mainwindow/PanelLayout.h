#pragma once

#include <QObject>

class QLabel;
class QWidget;

namespace tarvelin {

class EntryButtons;
class GraphicalButton;
class RowControls;
class ViewToggles;

// The three stacked panels (scores, weightings, ratings): their frames and headings, and the places of
// every row in them. The frames are painted into the window's decoration; the widgets only hold their
// geometry.
class PanelLayout final {
 public:
  PanelLayout(QWidget* Client, RowControls& Rows, const ViewToggles& Toggles, EntryButtons& Entries);
  Q_DISABLE_COPY_MOVE(PanelLayout)

  // The rows' measures: the score row step S, the weighting extent W and the rating block extent R.
  int ScoreRowStep() const;
  int WeightingExtent() const;
  int RatingExtent() const;

  // The height the client area needs for the panels as they are expanded or collapsed.
  int ContentHeight() const;
  // Places the panels across a client area of this width, with their headings, toggles, add buttons and rows.
  void Arrange(int ClientWidth);

  QWidget* picScoreFrame = nullptr;
  QWidget* picWeightingFrame = nullptr;
  QWidget* picRatingFrame = nullptr;
  QLabel* lblScores = nullptr;
  QLabel* lblWeightings = nullptr;
  QLabel* lblRatings = nullptr;

 private:
  struct PanelHeights {
    int Score = 0, Weighting = 0, Rating = 0;
  };
  PanelHeights Heights() const;
  void PlacePanelHeading(QWidget* Frame, QLabel* Heading, GraphicalButton* Toggle, GraphicalButton* Add, int Top,
                         bool Expanded);
  void PlaceScoreRows(int PanelTop, int PanelWidth);
  void PlaceWeightingRows(int PanelTop, int PanelWidth);
  void PlaceRatingRows(int PanelTop, int PanelWidth);

  RowControls& rows_;
  const ViewToggles& toggles_;
  EntryButtons& entries_;
};

}  // namespace tarvelin
