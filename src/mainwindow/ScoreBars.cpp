#include "mainwindow/ScoreBars.h"

#include <QLabel>
#include <algorithm>
#include <vector>

#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/PanelLayout.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"
#include "util/modFormElements.h"
#include "widgets/Palette.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {

ScoreBars::ScoreBars(RowControls& Rows, const PanelLayout& Panels) : rows_(Rows), panels_(Panels) {}

void ScoreBars::UpdateScoreBars() {
  const TarvelinTopic& topic = *Program().Topic;
  const int panelWidth = panels_.picScoreFrame->width();
  const int available = panelWidth - ValueLabelWidth - 20 - 110;
  const int fitWidth = available - available / 2 + 100;
  int widest = 0;
  for (size_t i = 0; i < rows_.lblScoreTitle.size(); ++i) {
    QLabel* title = rows_.lblScoreTitle[i];
    const std::string name = topic.GetOptionName(static_cast<int16_t>(i));
    const FittedCaption fitted = FitText(title->font(), name, fitWidth);
    title->setText(QString::fromStdString(fitted.Text));
    widest = std::max(widest, TextWidth(title->font(), title->text()));
    const QString number = QString::number(i + 1);
    title->setToolTip(fitted.Text != name
                          ? QString("Scores for option %1: %2").arg(number, QString::fromStdString(name))
                          : QString("Scores for option %1").arg(number));
  }
  const int titleColumn = std::max(widest, 100);
  const int barsLeft = PanelMargin + 10 + titleColumn + 10;
  const int barWidth = std::max(0, panelWidth - (barsLeft - PanelMargin) - ValueLabelWidth - 20);
  for (size_t i = 0; i < rows_.lblScoreTitle.size(); ++i) {
    const int top = rows_.lblScoreTitle[i]->y();
    rows_.lblScoreTitle[i]->setGeometry(PanelMargin + 10, top, titleColumn, RowHeight);
    rows_.sliderScore[i]->setGeometry(barsLeft, top, barWidth, RowHeight);
    rows_.lblScore[i]->setGeometry(barsLeft + barWidth + 10, top, ValueLabelWidth, RowHeight);
  }
}

void ScoreBars::ColourScoreBars() {
  const TarvelinTopic& topic = *Program().Topic;
  std::vector<double> scores;
  int16_t best = 0;
  for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
    scores.push_back(topic.GetScore(o));
    if (scores.back() > scores[static_cast<size_t>(best)]) {
      best = o;
    }
  }
  for (size_t o = 0; o < scores.size(); ++o) {
    // Every option tied with the best shares its colour, although only one index was recorded.
    rows_.sliderScore[o]->SetBarColour(scores[o] == scores[static_cast<size_t>(best)] ? Palette::BestBar
                                                                                      : Palette::OtherBar);
  }
}

}  // namespace tarvelin
