#include "mainwindow/NameLabels.h"

#include <QLabel>
#include <QVariant>
#include <algorithm>

#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/ScoreBars.h"
#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"

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

NameLabels::NameLabels(QLabel* Title, RowControls& Rows, ScoreBars& Bars) : lblTitle(Title), rows_(Rows), bars_(Bars) {}

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

void NameLabels::lblTitle_Change() {
  if (inTitleChange_) {
    return;
  }
  inTitleChange_ = true;
  const std::string caption = CaptionOf(lblTitle);
  if (caption != Topic().Name()) {
    SetModified();
    Topic().SetName(caption);
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
  if (Topic().GetOptionName(Index) != caption) {
    SetModified();
  }
  Topic().SetOptionName(Index, caption);
  ShowEntryName(label, "Option", Index, caption);
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
  if (Topic().GetAttributeName(Index) != caption) {
    SetModified();
  }
  Topic().SetAttributeName(Index, caption);
  ShowEntryName(label, "Attribute", Index, caption);
  inAttributeChange_ = false;
}

void NameLabels::lblScoreTitle_Change(int16_t Index) {
  if (inScoreTitleChange_ || Index >= Topic().TotalOptions()) {
    return;
  }
  inScoreTitleChange_ = true;
  bars_.UpdateScoreBars();
  inScoreTitleChange_ = false;
}

}  // namespace tarvelin
