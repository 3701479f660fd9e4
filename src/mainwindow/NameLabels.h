#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

class QLabel;

namespace tarvelin {

class RowControls;
class ScoreBars;

// The labels that show names: the title, the options and the attributes (and the score bars' titles,
// which follow the options). Setting a caption stores the name in the topic and shows it fitted to its
// label, with the whole name in the tooltip.
class NameLabels final {
 public:
  // Renamed hears of every name the person changed.
  NameLabels(QLabel* Title, RowControls& Rows, ScoreBars& Bars, std::function<void()> Renamed);
  Q_DISABLE_COPY_MOVE(NameLabels)

  // Sets a name label's caption and runs the change handler of its array, as a caption change does.
  void SetCaption(QLabel* Label, const std::string& Text);
  // The caption of a label as last set (the whole name, whatever the label shows).
  static std::string CaptionOf(const QLabel* Label);

  void lblTitle_Change();

  // Shows every option and attribute name of the topic in its label and on its score bar. The rows are
  // described and the bars laid out once at the end rather than after each name.
  void ShowTopicNames();

  // Names every row's controls after its option and attribute, for screen readers ("Rating of Estate for
  // Price") and in the rating sliders' tooltips.
  void DescribeRows();

 private:
  void lblOption_Change(int16_t Index);
  void lblAttribute_Change(int16_t Index);
  void lblScoreTitle_Change(int16_t Index);

  QLabel* lblTitle;
  RowControls& rows_;
  ScoreBars& bars_;
  std::function<void()> renamed_;
  bool inTitleChange_ = false, inOptionChange_ = false, inAttributeChange_ = false, inScoreTitleChange_ = false;
  bool showingAllNames_ = false;
};

}  // namespace tarvelin
