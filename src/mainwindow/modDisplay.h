#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvelin {

// The text of a value label. Decimal display shows Rounding places ("0.75"); percentage display multiplies
// Number by 100 - in the caller's variable too, which some callers rely on - and shows Rounding - 2 places
// when Rounding is 3 or more, none otherwise ("75%"). Without rounding (-1) a decimal shows the shortest
// text that reads back as the same number. DecimalSeparator stands between the whole and the fraction
// ("0,75" for ","); the C library's locale plays no part.
std::string FormatNumberForDisplay(double& Number, int16_t Rounding, bool DisplayAsDecimal,
                                   std::string_view DecimalSeparator = ".");

// A value label's text in model units. A "%" at the end is ignored; the scale is 100 in percentage display
// and 1 in decimal display whatever the text holds, and values above the scale are clamped to it (values
// below 0 are not: the topic refuses them). Both "." and DecimalSeparator separate the fraction. Raises
// error 13 "Type mismatch" for text that is not a number.
double NormaliseNumericInput(std::string_view Text, bool DisplayAsDecimal, std::string_view DecimalSeparator = ".");

}  // namespace tarvelin
