#include "settingsdialog/modOptionRules.h"

#include "files/modNumberText.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

int16_t CountFromFieldText(std::string_view Text, int16_t CurrentCount, int16_t MaxCount) {
  const std::optional<double> number = NumberFromText(Text);
  if (!number || *number < 1) {
    return CurrentCount;
  }
  if (*number > MaxCount) {
    return MaxCount;
  }
  return ToInteger16(*number, "CountFromFieldText");
}

std::string TitleFromFieldText(std::string_view Text, std::string_view CurrentName) {
  return std::string(IsBlankValue(Text) ? CurrentName : Text);
}

}  // namespace tarvelin
