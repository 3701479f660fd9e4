#include "mainwindow/ScoreBreakdown.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "insight/InsightText.h"
#include "insight/TopicInsight.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"
#include "widgets/Palette.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {

namespace {

constexpr int SwatchSize = 10;
constexpr double MarkRadius = 4.0;
// From the name column's left edge: past the longest name, clear of the weighting slider.
constexpr int SwatchLeft = NameColumnWidth + 8;

const TarvelinTopic& Topic() {
  return *Program().Topic;
}

QString ColourName(uint32_t Colour) {
  return ColourFromColorref(Colour).name();
}

// The best colour behind a score title, following the title wherever it goes; text in that colour would be
// hard to read on the light panel, hence a fill. It stays shown, marked or not, and paints only while marked.
class TitleMark final : public QWidget {
 public:
  TitleMark(QWidget* Client, QLabel* Title) : QWidget(Client) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(Around(Title->geometry()));
    stackUnder(Title);
    Title->installEventFilter(this);
    show();
  }

  void SetMarked(bool Marked) {
    if (Marked != marked_) {
      marked_ = Marked;
      update();
    }
  }

 protected:
  bool eventFilter(QObject* Watched, QEvent* Event) override {
    if (Event->type() == QEvent::Move || Event->type() == QEvent::Resize) {
      setGeometry(Around(static_cast<QWidget*>(Watched)->geometry()));
    }
    return false;
  }
  void paintEvent(QPaintEvent*) override {
    if (marked_) {
      QPainter painter(this);
      painter.setRenderHint(QPainter::Antialiasing);
      painter.setPen(Qt::NoPen);
      painter.setBrush(ColourFromColorref(Palette::BestBar));
      painter.drawRoundedRect(QRectF(rect()), MarkRadius, MarkRadius);
    }
  }

 private:
  // A little room before the title's first letter.
  static QRect Around(const QRect& Title) { return Title.adjusted(-4, 0, 0, 0); }

  bool marked_ = false;
};

size_t ShownOptions(const RowControls& Rows) {
  return std::min(Rows.sliderScore.size(), static_cast<size_t>(Topic().TotalOptions()));
}

}  // namespace

ScoreBreakdown::ScoreBreakdown(QWidget* Client, RowControls& Rows) : client_(Client), rows_(Rows) {}

void ScoreBreakdown::Refresh(const TopicInsight& Insight) {
  const bool split = Program().SplitScoreBars;
  ExplainScores(Insight);
  SplitBars(Insight, split);
  MarkBestTitles(split);
  ShowSwatches(split);
}

void ScoreBreakdown::ExplainScores(const TopicInsight& Insight) {
  const NumberFormat format = DisplayNumberFormat();
  for (size_t o = 0; o < ShownOptions(rows_); ++o) {
    const QString why = QString::fromStdString(ScoreWhyText(Topic(), Insight, static_cast<int16_t>(o), format));
    rows_.sliderScore[o]->setToolTip(why);
    rows_.lblScore[o]->setToolTip(why);
  }
}

// The frame follows the bar's colour, so it marks exactly the bars that today's colouring calls best.
void ScoreBreakdown::SplitBars(const TopicInsight& Insight, bool Split) {
  const int16_t attributes = Topic().TotalAttributes();
  for (size_t o = 0; o < ShownOptions(rows_); ++o) {
    ctlSlider* bar = rows_.sliderScore[o];
    std::vector<ctlSlider::Segment> segments;
    for (int16_t a = 0; Split && a < attributes; ++a) {
      segments.emplace_back(Insight.Contribution(static_cast<int16_t>(o), a), Palette::AttributeColour(a));
    }
    bar->SetSegments(std::move(segments));
    bar->SetFramed(Split && bar->BarColour() == Palette::BestBar);
  }
}

// Marks are made only once the preference is first on, so that without it the window holds nothing new.
void ScoreBreakdown::MarkBestTitles(bool Split) {
  const size_t options = ShownOptions(rows_);
  while (picBestMark.size() > options) {
    delete picBestMark.back();
    picBestMark.pop_back();
  }
  while (Split && picBestMark.size() < options) {
    auto* mark = new TitleMark(client_, rows_.lblScoreTitle[picBestMark.size()]);
    mark->setObjectName(QString("picBestMark_%1").arg(picBestMark.size()));
    picBestMark.push_back(mark);
  }
  for (size_t o = 0; o < picBestMark.size(); ++o) {
    static_cast<TitleMark*>(picBestMark[o])->SetMarked(Split && rows_.sliderScore[o]->Framed());
  }
}

void ScoreBreakdown::ShowSwatches(bool Split) {
  const auto attributes = static_cast<size_t>(Topic().TotalAttributes());
  while (picSwatch.size() > attributes) {
    delete picSwatch.back();
    picSwatch.pop_back();
  }
  while (Split && picSwatch.size() < attributes) {
    auto* swatch = new QWidget(client_);
    swatch->setObjectName(QString("picSwatch_%1").arg(picSwatch.size()));
    swatch->setAttribute(Qt::WA_TransparentForMouseEvents);
    swatch->setStyleSheet(QString("background-color: %1; border: 1px solid rgba(0, 0, 0, 90); border-radius: 2px;")
                              .arg(ColourName(Palette::AttributeColour(static_cast<int>(picSwatch.size())))));
    swatch->resize(SwatchSize, SwatchSize);
    picSwatch.push_back(swatch);
  }
  PlaceSwatches();
}

void ScoreBreakdown::PlaceSwatches() {
  const bool split = Program().SplitScoreBars;
  for (size_t a = 0; a < std::min(picSwatch.size(), rows_.lblAttribute.size()); ++a) {
    const QLabel* name = rows_.lblAttribute[a];
    picSwatch[a]->move(name->x() + SwatchLeft, name->y() + (RowHeight - SwatchSize) / 2);
    picSwatch[a]->setVisible(split && !name->isHidden());
  }
}

}  // namespace tarvelin
