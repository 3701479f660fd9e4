#include "mainwindow/modDisplay.h"

#include <charconv>
#include <cmath>

#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

// Fixed notation without an exponent, the point always "." whatever the C library's locale: the largest
// double takes 310 characters before its places, the smallest denormal 327 in all.
std::string FixedPlaces(double Number, int Places) {
  std::string text(330 + static_cast<size_t>(Places), '\0');
  char* end = text.data() + text.size();
  const auto result = Places < 0 ? std::to_chars(text.data(), end, Number, std::chars_format::fixed)
                                 : std::to_chars(text.data(), end, Number, std::chars_format::fixed, Places);
  text.resize(static_cast<size_t>(result.ptr - text.data()));
  return text;
}

std::string WithSeparator(std::string Text, std::string_view DecimalSeparator) {
  const size_t point = Text.find('.');
  if (point != std::string::npos) {
    Text.replace(point, 1, DecimalSeparator);
  }
  return Text;
}

}  // namespace

std::string FormatNumberForDisplay(double& Number, int16_t Rounding, bool DisplayAsDecimal,
                                   std::string_view DecimalSeparator) {
  if (DisplayAsDecimal) {
    return WithSeparator(FixedPlaces(Number, Rounding < 0 ? -1 : Rounding), DecimalSeparator);
  }
  Number *= 100;
  return WithSeparator(FixedPlaces(Number, Rounding >= 3 ? Rounding - 2 : 0), DecimalSeparator) + "%";
}

double NormaliseNumericInput(std::string_view Text, bool DisplayAsDecimal, std::string_view DecimalSeparator) {
  std::string number = TrimBlanks(Text.find('%') != std::string_view::npos ? Text.substr(0, Text.size() - 1) : Text);
  const size_t separator = DecimalSeparator.empty() ? std::string::npos : number.find(DecimalSeparator);
  if (separator != std::string::npos) {
    number.replace(separator, DecimalSeparator.size(), ".");
  }
  if (!number.empty() && number.front() == '+') {
    number.erase(0, 1);
  }
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (number.empty() || error != std::errc() || end != number.data() + number.size() || !std::isfinite(value)) {
    throw TarvelinError::RuntimeFault(ErrTypeMismatch, "NormaliseNumericInput");
  }
  const double scale = DisplayAsDecimal ? 1.0 : 100.0;
  return (value > scale ? scale : value) / scale;
}

}  // namespace tarvelin
