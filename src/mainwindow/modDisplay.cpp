#include "mainwindow/modDisplay.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

// Measured first: a large number, or many places, can need hundreds of characters.
std::string FixedPlaces(double Number, int Places) {
  const int length = std::snprintf(nullptr, 0, "%.*f", Places, Number);
  std::string text(static_cast<size_t>(length), '\0');
  std::snprintf(text.data(), text.size() + 1, "%.*f", Places, Number);
  return text;
}

// Fixed notation without an exponent: the smallest denormal takes 327 characters, the largest double 310.
std::string ShortestExact(double Number) {
  std::array<char, 330> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), Number, std::chars_format::fixed);
  return std::string(buffer.data(), result.ptr);
}

}  // namespace

std::string FormatNumberForDisplay(double& Number, int16_t Rounding, bool DisplayAsDecimal) {
  if (DisplayAsDecimal) {
    return Rounding < 0 ? ShortestExact(Number) : FixedPlaces(Number, Rounding);
  }
  Number *= 100;
  return FixedPlaces(Number, Rounding >= 3 ? Rounding - 2 : 0) + "%";
}

double NormaliseNumericInput(std::string_view Text, bool DisplayAsDecimal) {
  std::string number = TrimBlanks(Text.find('%') != std::string_view::npos ? Text.substr(0, Text.size() - 1) : Text);
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
