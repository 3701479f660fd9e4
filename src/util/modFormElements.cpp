#include "util/modFormElements.h"

#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

constexpr std::string_view kEllipsis = "\xE2\x80\xA6";
constexpr std::string_view kMargin = "SS";

// Drops the last character, which in UTF-8 may span several bytes.
void DropLastCharacter(std::string& Text) {
  while (!Text.empty()) {
    const auto byte = static_cast<unsigned char>(Text.back());
    Text.pop_back();
    if ((byte & 0xC0) != 0x80) {
      return;
    }
  }
}

size_t CharacterCount(std::string_view Text) {
  size_t count = 0;
  for (const char c : Text) {
    count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
  }
  return count;
}

int PlacementOf(int TextWidth, int LabelWidth, CaptionAlignment Alignment) {
  switch (Alignment) {
    case CaptionAlignment::Right:
      return LabelWidth - TextWidth;
    case CaptionAlignment::Centre:
      return LabelWidth / 2 - TextWidth / 2;
    case CaptionAlignment::Left:
      break;
  }
  return 0;
}

}  // namespace

FittedCaption FitCaption(std::string_view Caption, int LabelWidth, const TextMeasure& Measure,
                         CaptionAlignment Alignment) {
  std::string text = TrimBlanks(Caption);
  if (Measure(text + std::string(kMargin)) <= LabelWidth) {
    return {std::string(Caption), PlacementOf(Measure(Caption), LabelWidth, Alignment)};
  }
  do {
    DropLastCharacter(text);
    text = TrimBlanks(text);
  } while (CharacterCount(text) >= 2 && Measure(text + std::string(kEllipsis) + std::string(kMargin)) > LabelWidth);
  text.append(kEllipsis);
  return {text, PlacementOf(Measure(text), LabelWidth, Alignment)};
}

}  // namespace tarvelin
