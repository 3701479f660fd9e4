#include "files/modNumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "util/TarvelinError.h"

namespace tarvelin {

namespace {

bool IsDigit(char Character) {
  return Character >= '0' && Character <= '9';
}

std::string_view WithoutOuterBlanks(std::string_view Text) {
  const auto first = Text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return Text.substr(first, Text.find_last_not_of(' ') - first + 1);
}

// Length of the digits (with at most one ".") at the start of Text, and how many of them are digits.
struct Mantissa {
  size_t Length = 0;
  size_t Digits = 0;
};

Mantissa ScanMantissa(std::string_view Text) {
  Mantissa mantissa;
  bool point = false;
  for (; mantissa.Length < Text.size(); ++mantissa.Length) {
    const char character = Text[mantissa.Length];
    if (IsDigit(character)) {
      ++mantissa.Digits;
    } else if (character == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  return mantissa;
}

// Length of an exponent ("e5", "E-03") at the start of Text; 0 when there is none or it has no digits.
size_t ScanExponent(std::string_view Text) {
  if (Text.empty() || (Text.front() != 'e' && Text.front() != 'E')) {
    return 0;
  }
  size_t length = 1;
  if (length < Text.size() && (Text[length] == '+' || Text[length] == '-')) {
    ++length;
  }
  const size_t digitsStart = length;
  while (length < Text.size() && IsDigit(Text[length])) {
    ++length;
  }
  return length > digitsStart ? length : 0;
}

}  // namespace

std::string PlainNumberText(double Value) {
  if (!std::isfinite(Value)) {
    return {};
  }
  if (Value == 0.0) {
    return "0";
  }
  std::array<char, 32> buffer{};
  const auto written =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), Value, std::chars_format::general, 15);
  std::string text(buffer.data(), written.ptr);
  const auto exponent = text.find('e');
  if (exponent != std::string::npos) {
    text[exponent] = 'E';
  }
  return text;
}

std::optional<double> NumberFromText(std::string_view Text) {
  std::string_view number = WithoutOuterBlanks(Text);
  bool negative = false;
  if (!number.empty() && (number.front() == '+' || number.front() == '-')) {
    negative = number.front() == '-';
    number.remove_prefix(1);
  }
  const Mantissa mantissa = ScanMantissa(number);
  if (mantissa.Digits == 0) {
    return std::nullopt;
  }
  const size_t exponent = ScanExponent(number.substr(mantissa.Length));
  if (mantissa.Length + exponent != number.size()) {
    return std::nullopt;
  }
  double value = 0.0;
  const auto parsed = std::from_chars(number.data(), number.data() + number.size(), value);
  if (parsed.ec != std::errc() || parsed.ptr != number.data() + number.size()) {
    return std::nullopt;
  }
  return negative ? -value : value;
}

int16_t ToInteger16(double Value, const char* Source) {
  const double nearest = std::nearbyint(Value);
  if (!(nearest >= -32768.0 && nearest <= 32767.0)) {
    throw TarvelinError::RuntimeFault(ErrOverflow, Source);
  }
  return static_cast<int16_t>(nearest);
}

}  // namespace tarvelin
