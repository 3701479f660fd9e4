#include "mainwindow/InsightDisplay.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QLabel>
#include <utility>
#include <vector>

#include "insight/TopicInsight.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/PanelLayout.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/ViewToggles.h"
#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {

namespace {

// The hold share looks at weightings this far either side of the stored ones.
constexpr double HoldRadius = 0.1;
// While a mouse button is down a slider may be being dragged; the hold share waits until it is let go.
constexpr int DragPollMilliseconds = 50;

const TarvelinTopic& Topic() {
  return *Program().Topic;
}

// The tooltips' words are made when a tooltip is shown, from the topic of that moment.
ctlSlider::NoteSource WeightingNote(int16_t AttributeID) {
  return [AttributeID] {
    const TarvelinTopic& topic = Topic();
    return AttributeID < topic.TotalAttributes()
               ? QString::fromStdString(WeightingBandText(topic, AttributeID, DisplayNumberFormat()))
               : QString();
  };
}

ctlSlider::NoteSource RatingNote(int16_t OptionID, int16_t AttributeID) {
  return [OptionID, AttributeID] {
    const TarvelinTopic& topic = Topic();
    return OptionID < topic.TotalOptions() && AttributeID < topic.TotalAttributes()
               ? QString::fromStdString(RatingTippingText(topic, OptionID, AttributeID, DisplayNumberFormat()))
               : QString();
  };
}

}  // namespace

InsightDisplay::InsightDisplay(QWidget* Client, RowControls& Rows, const PanelLayout& Panels,
                               const ViewToggles& Toggles)
    : rows_(Rows), panels_(Panels), toggles_(Toggles) {
  lblInsight = new QLabel(Client);
  lblInsight->setObjectName("lblInsight");
  lblInsight->setFont(LabelFont(9));
  lblInsight->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  lblInsight->setAccessibleName("How robust the best option is");
  lblInsight->hide();
  tmrHoldShare.setSingleShot(true);
  QObject::connect(&tmrHoldShare, &QTimer::timeout, &tmrHoldShare, [this] { tmrHoldShare_Timer(); });
}

void InsightDisplay::Refresh(const TopicInsight& Insight) {
  hold_.reset();
  if (!Program().ShowInsight) {
    tmrHoldShare.stop();
    ClearSliders();
    line_.clear();
    FitLine();
    return;
  }
  ShowBands(Insight);
  ShowTippingPoints(Insight);
  ShowLine(Insight);
  tmrHoldShare.start(0);
}

void InsightDisplay::RefreshLine() {
  if (Program().ShowInsight) {
    ShowLine(TopicInsight(Topic()));
  }
}

void InsightDisplay::Arrange() {
  const QWidget* panel = panels_.picScoreFrame;
  // The extra row lies where the next score row would: 5 pixels above the panel's bottom edge.
  lblInsight->setGeometry(panel->x() + 10, panel->y() + panel->height() - 5 - RowHeight, panel->width() - 20,
                          RowHeight);
  lblInsight->setVisible(Program().ShowInsight && toggles_.ShowScores());
  FitLine();
}

void InsightDisplay::ShowBands(const TopicInsight& Insight) {
  for (int16_t a = 0; a < Insight.Exact().TotalAttributes(); ++a) {
    const WeightingBand band = Insight.Band(a);
    std::vector<double> ticks;
    if (band.LowerRival >= 0) {
      ticks.push_back(band.Low);
    }
    if (band.UpperRival >= 0) {
      ticks.push_back(band.High);
    }
    ctlSlider* slider = rows_.sliderWeighting[static_cast<size_t>(a)];
    slider->SetBand(std::pair{band.Low, band.High});
    slider->SetTicks(std::move(ticks));
    slider->SetToolTipNote(WeightingNote(a));
  }
}

void InsightDisplay::ShowTippingPoints(const TopicInsight& Insight) {
  for (int16_t o = 0; o < Insight.Exact().TotalOptions(); ++o) {
    for (int16_t a = 0; a < Insight.Exact().TotalAttributes(); ++a) {
      const std::optional<double> point = Insight.TippingPoint(o, a);
      ctlSlider* slider = rows_.sliderRating[static_cast<size_t>(rows_.TranslateToIndex(o, a))];
      slider->SetTicks(point ? std::vector<double>{*point} : std::vector<double>{});
      slider->SetToolTipNote(RatingNote(o, a));
    }
  }
}

void InsightDisplay::ShowLine(const TopicInsight& Insight) {
  line_ = InsightLineText(Topic(), Insight, DisplayNumberFormat(), hold_);
  FitLine();
}

// A line too long for the panel ends in "…"; its tooltip then holds the whole of it. Qt's own eliding measures
// the line once, where fitting it as the names are fitted would measure it once per character cut.
void InsightDisplay::FitLine() {
  const QString line = QString::fromStdString(line_);
  const QString fitted = lblInsight->fontMetrics().elidedText(line, Qt::ElideRight, lblInsight->width());
  lblInsight->setText(fitted);
  lblInsight->setToolTip(fitted != line ? line : QString());
  lblInsight->setAccessibleDescription(line);
}

void InsightDisplay::ClearSliders() {
  for (auto* sliders : {&rows_.sliderWeighting, &rows_.sliderRating}) {
    for (ctlSlider* slider : *sliders) {
      slider->SetBand(std::nullopt);
      slider->SetTicks({});
      slider->SetToolTipNote(nullptr);
    }
  }
}

void InsightDisplay::tmrHoldShare_Timer() {
  if (QGuiApplication::mouseButtons() != Qt::NoButton) {
    tmrHoldShare.start(DragPollMilliseconds);
    return;
  }
  const TopicInsight insight(Topic());
  hold_ = HoldShareFigure{insight.HoldShare(HoldRadius), HoldRadius};
  ShowLine(insight);
}

}  // namespace tarvelin
