#pragma once

#include <cstdint>
#include <functional>

#include "mainwindow/RowControls.h"

namespace tarvelin {

// The sliders and value labels of the weightings, ratings and scores.
// The window keeps no copy of any value: an edit goes into the live topic, after which UpdateSettings
// rewrites every control from it.
class ValueDisplay final {
 public:
  // Edited hears of every change made here, with a key shared by the steps of one slider (so that a run
  // of them can count as one edit) or 0; UpdateSettings, the window's whole refresh, follows it.
  ValueDisplay(RowControls& Rows, std::function<void(int MergeKey)> Edited, std::function<void()> UpdateSettings);
  Q_DISABLE_COPY_MOVE(ValueDisplay)

  // Writes every slider position and value label from the topic.
  void Refresh();
  // True while Refresh writes the sliders, so that their change events do not feed back into the topic.
  bool IsUpdatingControls() const { return isUpdatingControls_; }

  // A weighting or rating slider moved: by the program (passed on only outside Refresh) or by the person.
  void SliderMoved(RowControls::SliderArray Array, int16_t Index, bool Scrolled);
  // The key that the steps of one slider share.
  static int MergeKeyOf(RowControls::SliderArray Array, int16_t Index);

  // A value typed into a label: stored when the topic takes it, explained to the person when not.
  void lblWeighting_Change(int16_t Index);
  void lblRating_Change(int16_t Index);

 private:
  void sliderWeighting_Change(int16_t Index);
  void sliderRating_Change(int16_t Index);
  void ApplyValue(const std::function<void()>& Store);

  RowControls& rows_;
  std::function<void(int MergeKey)> edited_;
  std::function<void()> updateSettings_;
  bool isUpdatingControls_ = false;
};

}  // namespace tarvelin
