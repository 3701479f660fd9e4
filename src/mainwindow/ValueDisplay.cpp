#include "mainwindow/ValueDisplay.h"

#include <QLabel>
#include <cmath>

#include "mainwindow/modDisplay.h"
#include "startup/modStartup.h"
#include "util/TarvelinError.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {

namespace {

TarvelinTopic& Topic() {
  return *Program().Topic;
}

int SliderPosition(double Value) {
  return static_cast<int>(std::lround(Value * 100));
}

}  // namespace

ValueDisplay::ValueDisplay(RowControls& Rows, std::function<void(int MergeKey)> Edited,
                           std::function<void()> UpdateSettings)
    : rows_(Rows), edited_(std::move(Edited)), updateSettings_(std::move(UpdateSettings)) {}

int ValueDisplay::MergeKeyOf(RowControls::SliderArray Array, int16_t Index) {
  return (Array == RowControls::SliderArray::Weighting ? 1001 : 1) + Index;
}

void ValueDisplay::Refresh() {
  isUpdatingControls_ = true;
  const TarvelinTopic& topic = Topic();
  const int16_t rounding = topic.Rounding();
  const bool decimal = Program().DisplayAsDecimal;
  // The label and the slider's spoken value read the same.
  const auto show = [&](ctlSlider* slider, QLabel* label, double value) {
    slider->SetValue(SliderPosition(value));
    const QString text = QString::fromStdString(FormatNumberForDisplay(value, rounding, decimal));
    slider->SetValueText(text);
    label->setText(text);
  };
  for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
    const double weighting = topic.GetWeighting(a);
    show(rows_.sliderWeighting[static_cast<size_t>(a)], rows_.lblWeighting[static_cast<size_t>(a)], weighting);
  }
  for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
    for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
      const auto i = static_cast<size_t>(rows_.TranslateToIndex(o, a));
      const double rating = topic.GetRating(o, a);
      show(rows_.sliderRating[i], rows_.lblRating[i], rating);
    }
  }
  for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
    const double score = topic.GetScore(o);
    show(rows_.sliderScore[static_cast<size_t>(o)], rows_.lblScore[static_cast<size_t>(o)], score);
  }
  isUpdatingControls_ = false;
}

void ValueDisplay::SliderMoved(RowControls::SliderArray Array, int16_t Index, bool Scrolled) {
  if (!Scrolled && isUpdatingControls_) {
    return;
  }
  if (Array == RowControls::SliderArray::Weighting) {
    sliderWeighting_Change(Index);
  } else {
    sliderRating_Change(Index);
  }
}

void ValueDisplay::sliderWeighting_Change(int16_t Index) {
  Topic().SetWeighting(Index, rows_.sliderWeighting[static_cast<size_t>(Index)]->Value() / 100.0);
  SetModified();
  edited_(MergeKeyOf(RowControls::SliderArray::Weighting, Index));
  updateSettings_();
  rows_.lblWeighting[static_cast<size_t>(Index)]->repaint();
}

void ValueDisplay::sliderRating_Change(int16_t Index) {
  Topic().SetRating(rows_.GetOptionIDFromIndex(Index), rows_.GetAttributeIDFromIndex(Index),
                    rows_.sliderRating[static_cast<size_t>(Index)]->Value() / 100.0);
  SetModified();
  edited_(MergeKeyOf(RowControls::SliderArray::Rating, Index));
  updateSettings_();
  rows_.lblRating[static_cast<size_t>(Index)]->repaint();
}

void ValueDisplay::lblWeighting_Change(int16_t Index) {
  const std::string text = rows_.lblWeighting[static_cast<size_t>(Index)]->text().toStdString();
  ApplyValue([&] { Topic().SetWeighting(Index, NormaliseNumericInput(text, Program().DisplayAsDecimal)); });
}

void ValueDisplay::lblRating_Change(int16_t Index) {
  const std::string text = rows_.lblRating[static_cast<size_t>(Index)]->text().toStdString();
  ApplyValue([&] {
    Topic().SetRating(rows_.GetOptionIDFromIndex(Index), rows_.GetAttributeIDFromIndex(Index),
                      NormaliseNumericInput(text, Program().DisplayAsDecimal));
  });
}

// Either way every label is rewritten from the model, so a refused value disappears.
void ValueDisplay::ApplyValue(const std::function<void()>& Store) {
  try {
    Store();
    SetModified();
    edited_(0);
  } catch (const TarvelinError& error) {
    Program().UI->ShowMessage(error.Description(), MsgButtons::OK, MsgIcon::Exclamation, "");
  }
  updateSettings_();
}

}  // namespace tarvelin
