#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tarvelin {

enum class CaptionAlignment { Left = 0, Right = 1, Centre = 2 };

struct FittedCaption {
  std::string Text;  // the caption, shortened with a trailing "…" when it did not fit
  int Left = 0;      // where the text starts inside the label, for right and centred alignment
};

// Measures the width of a text in the label's font, in the same units as the label's width.
using TextMeasure = std::function<int(std::string_view)>;

// Shortens a caption so that it fits a label of the given width, keeping a margin of "SS".
FittedCaption FitCaption(std::string_view Caption, int LabelWidth, const TextMeasure& Measure,
                         CaptionAlignment Alignment = CaptionAlignment::Left);

}  // namespace tarvelin
