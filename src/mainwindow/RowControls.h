#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class QLabel;
class QWidget;

namespace tarvelin {

class ctlSlider;

// The rows of the three panels as control arrays grown to the topic's counts, and the rules that map a
// rating control's index to its option and attribute. Element i of each array is named "<array>_<i>".
class RowControls final {
 public:
  enum class SliderArray { Weighting, Rating };
  // What a weighting or rating slider reports: a change of its position (Scrolled when the person moved it),
  // and the start and end of a drag with the mouse.
  enum class SliderEvent { Changed, Scrolled, DragStarted, DragEnded };
  using SliderHandler = std::function<void(SliderArray Array, int16_t Index, SliderEvent Event)>;

  RowControls(QWidget* Client, SliderHandler OnSlider);
  Q_DISABLE_COPY_MOVE(RowControls)

  // Every label created from now on passes its events through these objects first.
  void WatchLabels(std::vector<QObject*> Watchers);

  // Grows or shrinks every array to the topic's counts; true when rows were created or removed.
  bool Resize();

  // Index of the rating controls of an option and attribute: OptionID * TotalAttributes + AttributeID.
  int16_t TranslateToIndex(int16_t OptionID, int16_t AttributeID) const;
  // With UseControlValues the divisor is the number of weighting rows present in the window instead of the
  // topic's count, for the moments when the two disagree (while attributes are added or removed).
  int16_t GetOptionIDFromIndex(int16_t Index, bool UseControlValues = false) const;
  int16_t GetAttributeIDFromIndex(int16_t Index, bool UseControlValues = false) const;

  // The array a label belongs to and its index there; null when it is in none.
  std::vector<QLabel*>* ArrayOf(const QLabel* Label);
  static int16_t IndexOf(const std::vector<QLabel*>& Labels, const QLabel* Label);

  std::vector<QLabel*> lblScoreTitle, lblScore, lblAttribute, lblWeighting, lblOption, lblRating;
  std::vector<ctlSlider*> sliderScore, sliderWeighting, sliderRating;

 private:
  QLabel* CreateLabel(const char* Array, size_t Index, bool Bold, bool AlignRight);
  void ResizeLabels(std::vector<QLabel*>& Labels, const char* Array, size_t Count, bool Bold, bool AlignRight);
  void ResizeSliders(std::vector<ctlSlider*>& Sliders, const char* Array, size_t Count,
                     std::optional<SliderArray> Handled);

  QWidget* client_;
  SliderHandler onSlider_;
  std::vector<QObject*> watchers_;
};

}  // namespace tarvelin
