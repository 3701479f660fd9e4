#include "mainwindow/PanelLayout.h"

#include <QLabel>

#include "mainwindow/EntryButtons.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/ViewToggles.h"
#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"
#include "widgets/GraphicalButton.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {

namespace {

TarvelinTopic& Topic() {
  return *Program().Topic;
}

QWidget* MakeFrame(QWidget* Client, const char* Name) {
  auto* frame = new QWidget(Client);
  frame->setObjectName(Name);
  frame->hide();
  return frame;
}

QLabel* MakeHeading(QWidget* Client, const char* Name, const char* Text) {
  auto* heading = new QLabel(Client);
  heading->setObjectName(Name);
  heading->setFont(LabelFont(12, true));
  heading->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  heading->setMouseTracking(true);
  heading->setText(Text);
  heading->resize(heading->sizeHint().width() + 10, 24);
  return heading;
}

void SetVisible(bool Visible, std::initializer_list<QWidget*> Controls) {
  for (QWidget* control : Controls) {
    control->setVisible(Visible);
  }
}

}  // namespace

PanelLayout::PanelLayout(QWidget* Client, RowControls& Rows, const ViewToggles& Toggles, EntryButtons& Entries)
    : rows_(Rows), toggles_(Toggles), entries_(Entries) {
  picScoreFrame = MakeFrame(Client, "picScoreFrame");
  lblScores = MakeHeading(Client, "lblScores", "Scores");
  picWeightingFrame = MakeFrame(Client, "picWeightingFrame");
  lblWeightings = MakeHeading(Client, "lblWeightings", "Weightings");
  picRatingFrame = MakeFrame(Client, "picRatingFrame");
  lblRatings = MakeHeading(Client, "lblRatings", "Ratings");
}

int PanelLayout::ScoreRowStep() const {
  return RowHeight;
}

int PanelLayout::WeightingExtent() const {
  return RowExtent(Topic().TotalAttributes(), RowHeight);
}

int PanelLayout::RatingExtent() const {
  return RowExtent(Topic().TotalAttributes(), RowHeight);
}

PanelLayout::PanelHeights PanelLayout::Heights() const {
  const int heading = lblScores->height();
  // The line on how robust the best option is takes one more row under the score bars.
  const int insightRow = Program().ShowInsight && toggles_.ShowScores() ? RowStep(ScoreRowStep()) : 0;
  return {ScorePanelHeight(Topic().TotalOptions(), ScoreRowStep(), heading, toggles_.ShowScores()) + insightRow,
          WeightingPanelHeight(WeightingExtent(), heading, RowHeight, toggles_.ShowWeightings()),
          RatingPanelHeight(Topic().TotalOptions(), RatingExtent(), RowHeight, heading, toggles_.ShowRatings())};
}

int PanelLayout::ContentHeight() const {
  const PanelHeights heights = Heights();
  return PanelsTop + heights.Score + heights.Weighting + heights.Rating + 3 * PanelMargin;
}

void PanelLayout::Arrange(int ClientWidth) {
  const PanelHeights heights = Heights();
  const int panelWidth = ClientWidth - 2 * PanelMargin;
  picScoreFrame->setGeometry(PanelMargin, PanelsTop, panelWidth, heights.Score);
  const int weightingTop = PanelsTop + heights.Score + PanelMargin;
  picWeightingFrame->setGeometry(PanelMargin, weightingTop, panelWidth, heights.Weighting);
  const int ratingTop = weightingTop + heights.Weighting + PanelMargin;
  picRatingFrame->setGeometry(PanelMargin, ratingTop, panelWidth, heights.Rating);

  PlacePanelHeading(picScoreFrame, lblScores, toggles_.btnToggleScore, nullptr, PanelsTop, toggles_.ShowScores());
  PlacePanelHeading(picWeightingFrame, lblWeightings, toggles_.btnToggleWeightings, entries_.btnAddAttribute,
                    weightingTop, toggles_.ShowWeightings());
  PlacePanelHeading(picRatingFrame, lblRatings, toggles_.btnToggleRatings, entries_.btnAddOption, ratingTop,
                    toggles_.ShowRatings());
  PlaceScoreRows(PanelsTop, panelWidth);
  PlaceWeightingRows(weightingTop, panelWidth);
  PlaceRatingRows(ratingTop, panelWidth);
}

// The heading stands 5 pixels below the panel's top: beside the add button while the panel is expanded
// (the button then stands where the heading would), at the panel's left edge when it is collapsed.
void PanelLayout::PlacePanelHeading(QWidget* Frame, QLabel* Heading, GraphicalButton* Toggle, GraphicalButton* Add,
                                    int Top, bool Expanded) {
  const int left = Frame->x();
  const bool showAdd = Add != nullptr && Expanded;
  if (Add != nullptr) {
    Add->move(left + 10, Top + 5);
    Add->setVisible(showAdd);
  }
  Heading->move(showAdd ? Add->x() + Add->width() + 5 : left + 10, Top + 5);
  Toggle->resize(Toggle->sizeHint().width(), Heading->height());
  Toggle->move(left + Frame->width() - Toggle->width() - 10, Top + 5);
}

// The score bars' columns follow their titles' widths afterwards (ScoreBars).
void PanelLayout::PlaceScoreRows(int PanelTop, int PanelWidth) {
  const int rowsTop = PanelTop + FirstRowOffset(lblScores->height());
  for (size_t i = 0; i < rows_.lblScoreTitle.size(); ++i) {
    const int top = rowsTop + static_cast<int>(i) * RowStep(ScoreRowStep());
    rows_.lblScoreTitle[i]->setGeometry(PanelMargin + 10, top, NameColumnWidth, RowHeight);
    rows_.lblScore[i]->resize(ValueLabelWidth, RowHeight);
    const int sliderWidth = PanelWidth - 50 - NameColumnWidth - rows_.lblScore[i]->width();
    rows_.sliderScore[i]->setGeometry(PanelMargin + 10 + NameColumnWidth + 10, top, sliderWidth, RowHeight);
    rows_.lblScore[i]->move(rows_.sliderScore[i]->x() + sliderWidth + 10, top);
    SetVisible(toggles_.ShowScores(), {rows_.lblScoreTitle[i], rows_.sliderScore[i], rows_.lblScore[i]});
  }
}

void PanelLayout::PlaceWeightingRows(int PanelTop, int PanelWidth) {
  const int column = PanelMargin + 10;
  const int rowsTop = PanelTop + FirstRowOffset(lblWeightings->height());
  const int sliderLeft = column + NameColumnWidth + 30;
  const int sliderWidth = PanelWidth - (sliderLeft - PanelMargin) - ValueLabelWidth - 20;
  for (size_t a = 0; a < rows_.lblAttribute.size(); ++a) {
    const int top = rowsTop + static_cast<int>(a) * RowStep(RowHeight);
    rows_.lblAttribute[a]->setGeometry(column, top, NameColumnWidth, RowHeight);
    rows_.sliderWeighting[a]->setGeometry(sliderLeft, top, sliderWidth, RowHeight);
    rows_.lblWeighting[a]->setGeometry(sliderLeft + sliderWidth + 10, top, ValueLabelWidth, RowHeight);
    SetVisible(toggles_.ShowWeightings(), {rows_.lblAttribute[a], rows_.sliderWeighting[a], rows_.lblWeighting[a]});
  }
}

void PanelLayout::PlaceRatingRows(int PanelTop, int PanelWidth) {
  const int column = PanelMargin + 10;
  const int sliderLeft = column + NameColumnWidth + 30;
  const int sliderWidth = PanelWidth - (sliderLeft - PanelMargin) - ValueLabelWidth - 20;
  const auto attributes = static_cast<int16_t>(Topic().TotalAttributes());
  for (size_t o = 0; o < rows_.lblOption.size(); ++o) {
    const int blockTop =
        PanelTop + RatingBlockOffset(static_cast<int>(o), RatingExtent(), RowHeight, lblRatings->height());
    rows_.lblOption[o]->setGeometry(column + 20, blockTop, NameColumnWidth, RowHeight);
    rows_.lblOption[o]->setVisible(toggles_.ShowRatings());
    for (int16_t a = 0; a < attributes; ++a) {
      const auto i = static_cast<size_t>(rows_.TranslateToIndex(static_cast<int16_t>(o), a));
      const int top = blockTop + a * RowStep(RowHeight);
      rows_.sliderRating[i]->setGeometry(sliderLeft, top, sliderWidth, RowHeight);
      rows_.lblRating[i]->setGeometry(sliderLeft + sliderWidth + 10, top, ValueLabelWidth, RowHeight);
      SetVisible(toggles_.ShowRatings(), {rows_.sliderRating[i], rows_.lblRating[i]});
    }
  }
}

}  // namespace tarvelin
