#include "mainwindow/RowControls.h"

#include <QLabel>
#include <algorithm>

#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {

namespace {

QString ArrayName(const char* Array, size_t Index) {
  return QString("%1_%2").arg(Array).arg(static_cast<qulonglong>(Index));
}

int16_t TotalAttributes() {
  return Program().Topic->TotalAttributes();
}

}  // namespace

RowControls::RowControls(QWidget* Client, SliderHandler OnSlider) : client_(Client), onSlider_(std::move(OnSlider)) {}

void RowControls::WatchLabels(std::vector<QObject*> Watchers) {
  watchers_ = std::move(Watchers);
}

bool RowControls::Resize() {
  const size_t optionsBefore = lblOption.size();
  const size_t attributesBefore = lblAttribute.size();
  const auto options = static_cast<size_t>(Program().Topic->TotalOptions());
  const auto attributes = static_cast<size_t>(TotalAttributes());
  ResizeLabels(lblScoreTitle, "lblScoreTitle", options, false, false);
  ResizeSliders(sliderScore, "sliderScore", options, std::nullopt);
  ResizeLabels(lblScore, "lblScore", options, false, true);
  ResizeLabels(lblAttribute, "lblAttribute", attributes, false, false);
  ResizeSliders(sliderWeighting, "sliderWeighting", attributes, SliderArray::Weighting);
  ResizeLabels(lblWeighting, "lblWeighting", attributes, false, true);
  ResizeLabels(lblOption, "lblOption", options, true, false);
  ResizeSliders(sliderRating, "sliderRating", options * attributes, SliderArray::Rating);
  ResizeLabels(lblRating, "lblRating", options * attributes, false, true);
  return optionsBefore != lblOption.size() || attributesBefore != lblAttribute.size();
}

QLabel* RowControls::CreateLabel(const char* Array, size_t Index, bool Bold, bool AlignRight) {
  auto* label = new QLabel(client_);
  label->setObjectName(ArrayName(Array, Index));
  label->setFont(LabelFont(10, Bold));
  label->setAlignment((AlignRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  label->setMouseTracking(true);
  for (QObject* watcher : watchers_) {
    label->installEventFilter(watcher);
  }
  return label;
}

// Controls are created on first use and removed when the topic no longer has their row.
void RowControls::ResizeLabels(std::vector<QLabel*>& Labels, const char* Array, size_t Count, bool Bold,
                               bool AlignRight) {
  while (Labels.size() > Count) {
    delete Labels.back();
    Labels.pop_back();
  }
  while (Labels.size() < Count) {
    Labels.push_back(CreateLabel(Array, Labels.size(), Bold, AlignRight));
    // The layout gives every control its place, so showing it need not work out a size of its own first.
    Labels.back()->setAttribute(Qt::WA_Resized);
    Labels.back()->show();
  }
}

void RowControls::ResizeSliders(std::vector<ctlSlider*>& Sliders, const char* Array, size_t Count,
                                std::optional<SliderArray> Handled) {
  while (Sliders.size() > Count) {
    delete Sliders.back();
    Sliders.pop_back();
  }
  while (Sliders.size() < Count) {
    const auto index = static_cast<int16_t>(Sliders.size());
    auto* slider = new ctlSlider(client_);
    slider->setObjectName(ArrayName(Array, Sliders.size()));
    slider->SetReadOnly(!Handled);
    if (Handled) {
      const SliderArray array = *Handled;
      const auto report = [this, array, index](SliderEvent Event) {
        return [=, this] { onSlider_(array, index, Event); };
      };
      QObject::connect(slider, &ctlSlider::Change, client_, report(SliderEvent::Changed));
      QObject::connect(slider, &ctlSlider::Scroll, client_, report(SliderEvent::Scrolled));
      QObject::connect(slider, &ctlSlider::DragStarted, client_, report(SliderEvent::DragStarted));
      QObject::connect(slider, &ctlSlider::DragEnded, client_, report(SliderEvent::DragEnded));
    }
    slider->setAttribute(Qt::WA_Resized);
    slider->show();
    Sliders.push_back(slider);
  }
}

int16_t RowControls::TranslateToIndex(int16_t OptionID, int16_t AttributeID) const {
  return static_cast<int16_t>(OptionID * TotalAttributes() + AttributeID);
}

int16_t RowControls::GetOptionIDFromIndex(int16_t Index, bool UseControlValues) const {
  const int divisor = UseControlValues ? static_cast<int>(lblWeighting.size()) : TotalAttributes();
  return static_cast<int16_t>(Index / divisor);
}

int16_t RowControls::GetAttributeIDFromIndex(int16_t Index, bool UseControlValues) const {
  const int divisor = UseControlValues ? static_cast<int>(lblWeighting.size()) : TotalAttributes();
  return static_cast<int16_t>(Index % divisor);
}

std::vector<QLabel*>* RowControls::ArrayOf(const QLabel* Label) {
  for (auto* labels : {&lblOption, &lblAttribute, &lblWeighting, &lblRating, &lblScoreTitle, &lblScore}) {
    if (std::find(labels->begin(), labels->end(), Label) != labels->end()) {
      return labels;
    }
  }
  return nullptr;
}

int16_t RowControls::IndexOf(const std::vector<QLabel*>& Labels, const QLabel* Label) {
  return static_cast<int16_t>(std::find(Labels.begin(), Labels.end(), Label) - Labels.begin());
}

}  // namespace tarvelin
