#include "mainwindow/NameLabels.h"

#include <QLabel>
#include <QVariant>
#include <algorithm>

#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/ScoreBars.h"
#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {

namespace {

TarvelinTopic& Topic() {
  return *Program().Topic;
}

// An option or attribute name shown in the name column; the tooltip numbers the entry from 1 and adds the
// full name unless it is the default one ("Attribute 2: Cost", but "Attribute 2").
void ShowEntryName(QLabel* Label, const std::string& Noun, int16_t Index, const std::string& Caption) {
  Label->setText(QString::fromStdString(FittedText(Label, Caption, NameColumnWidth - 10)));
  const std::string numbered = Noun + " " + std::to_string(Index + 1);
  Label->setToolTip(QString::fromStdString(Caption == numbered ? Caption : numbered + ": " + Caption));
}

}  // namespace

NameLabels::NameLabels(QLabel* Title, RowControls& Rows, ScoreBars& Bars, std::function<void()> Renamed)
    : lblTitle(Title), rows_(Rows), bars_(Bars), renamed_(std::move(Renamed)) {}

std::string NameLabels::CaptionOf(const QLabel* Label) {
  return Label->property("tag").toString().toStdString();
}

void NameLabels::SetCaption(QLabel* Label, const std::string& Text) {
  const QString caption = QString::fromStdString(Text);
  const bool changed = Label->property("tag").toString() != caption;
  Label->setProperty("tag", caption);
  if (Label == lblTitle) {
    lblTitle_Change();
    return;
  }
  if (!changed) {
    return;
  }
  const auto dispatch = [&](std::vector<QLabel*>& labels, void (NameLabels::*handler)(int16_t)) {
    const auto found = std::find(labels.begin(), labels.end(), Label);
    if (found != labels.end()) {
      (this->*handler)(static_cast<int16_t>(found - labels.begin()));
      return true;
    }
    return false;
  };
  dispatch(rows_.lblOption, &NameLabels::lblOption_Change) ||
      dispatch(rows_.lblAttribute, &NameLabels::lblAttribute_Change) ||
      dispatch(rows_.lblScoreTitle, &NameLabels::lblScoreTitle_Change);
}

void NameLabels::ShowTopicNames() {
  const TarvelinTopic& topic = Topic();
  showingAllNames_ = true;
  for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
    SetCaption(rows_.lblAttribute[static_cast<size_t>(a)], topic.GetAttributeName(a));
  }
  for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
    SetCaption(rows_.lblOption[static_cast<size_t>(o)], topic.GetOptionName(o));
    SetCaption(rows_.lblScoreTitle[static_cast<size_t>(o)], topic.GetOptionName(o));
  }
  showingAllNames_ = false;
  DescribeRows();
  bars_.UpdateScoreBars();
}

void NameLabels::lblTitle_Change() {
  if (inTitleChange_) {
    return;
  }
  inTitleChange_ = true;
  const std::string caption = CaptionOf(lblTitle);
  if (caption != Topic().Name()) {
    SetModified();
    Topic().SetName(caption);
    renamed_();
  }
  const std::string fitted = FittedText(lblTitle, caption, lblTitle->width());
  lblTitle->setText(QString::fromStdString(fitted));
  lblTitle->setToolTip(fitted != caption ? QString::fromStdString(caption) : QString());
  lblTitle->window()->setWindowTitle(QString::fromStdString(Program().AppTitle + " - " + Topic().Name()));
  inTitleChange_ = false;
}

void NameLabels::lblOption_Change(int16_t Index) {
  if (inOptionChange_ || Index >= Topic().TotalOptions()) {
    return;
  }
  inOptionChange_ = true;
  QLabel* label = rows_.lblOption[static_cast<size_t>(Index)];
  const std::string caption = CaptionOf(label);
  const bool renamed = Topic().GetOptionName(Index) != caption;
  if (renamed) {
    SetModified();
  }
  Topic().SetOptionName(Index, caption);
  if (renamed) {
    renamed_();
  }
  ShowEntryName(label, "Option", Index, caption);
  if (!showingAllNames_) {
    DescribeRows();
  }
  // The score bar is titled with the same name, renamed here wherever the name was edited.
  if (static_cast<size_t>(Index) < rows_.lblScoreTitle.size()) {
    SetCaption(rows_.lblScoreTitle[static_cast<size_t>(Index)], caption);
  }
  inOptionChange_ = false;
}

void NameLabels::lblAttribute_Change(int16_t Index) {
  if (inAttributeChange_ || Index >= Topic().TotalAttributes()) {
    return;
  }
  inAttributeChange_ = true;
  QLabel* label = rows_.lblAttribute[static_cast<size_t>(Index)];
  const std::string caption = CaptionOf(label);
  const bool renamed = Topic().GetAttributeName(Index) != caption;
  if (renamed) {
    SetModified();
  }
  Topic().SetAttributeName(Index, caption);
  if (renamed) {
    renamed_();
  }
  ShowEntryName(label, "Attribute", Index, caption);
  if (!showingAllNames_) {
    DescribeRows();
  }
  inAttributeChange_ = false;
}

void NameLabels::DescribeRows() {
  const TarvelinTopic& topic = Topic();
  const auto describe = [](QWidget* control, const std::string& name, const char* how) {
    control->setAccessibleName(QString::fromStdString(name));
    control->setAccessibleDescription(how);
  };
  const size_t options = std::min(rows_.lblOption.size(), static_cast<size_t>(topic.TotalOptions()));
  const size_t attributes = std::min(rows_.lblAttribute.size(), static_cast<size_t>(topic.TotalAttributes()));
  for (size_t a = 0; a < attributes; ++a) {
    const std::string attribute = topic.GetAttributeName(static_cast<int16_t>(a));
    describe(rows_.lblAttribute[a], "Attribute " + attribute, "Click to rename");
    describe(rows_.sliderWeighting[a], "Weighting of " + attribute, "Drag, or use the arrow keys, to change it");
    describe(rows_.lblWeighting[a], "Weighting of " + attribute, "Click to type a value");
  }
  for (size_t o = 0; o < options; ++o) {
    const std::string option = topic.GetOptionName(static_cast<int16_t>(o));
    describe(rows_.lblOption[o], "Option " + option, "Click to rename");
    describe(rows_.sliderScore[o], "Score of " + option, "The weighted mean of its ratings");
    describe(rows_.lblScore[o], "Score of " + option, "");
    for (size_t a = 0; a < attributes; ++a) {
      const std::string attribute = topic.GetAttributeName(static_cast<int16_t>(a));
      const auto i = static_cast<size_t>(rows_.TranslateToIndex(static_cast<int16_t>(o), static_cast<int16_t>(a)));
      describe(rows_.sliderRating[i], "Rating of " + option + " for " + attribute,
               "Drag, or use the arrow keys, to change it");
      describe(rows_.lblRating[i], "Rating of " + option + " for " + attribute, "Click to type a value");
      // The rows of a block carry no attribute names of their own; the tooltip tells which rating it is.
      rows_.sliderRating[i]->setToolTip(QString::fromStdString(option + ": " + attribute));
    }
  }
}

void NameLabels::lblScoreTitle_Change(int16_t Index) {
  if (inScoreTitleChange_ || showingAllNames_ || Index >= Topic().TotalOptions()) {
    return;
  }
  inScoreTitleChange_ = true;
  bars_.UpdateScoreBars();
  inScoreTitleChange_ = false;
}

}  // namespace tarvelin
