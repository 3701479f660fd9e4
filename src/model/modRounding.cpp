#include "model/modRounding.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace tarvelin {

namespace {

// Powers of ten that a double holds exactly.
constexpr std::array<double, 23> ExactPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Adds one to a string of decimal digits.
void IncrementDigits(std::string& Digits) {
  for (auto digit = Digits.rbegin(); digit != Digits.rend(); ++digit) {
    if (*digit != '9') {
      ++*digit;
      return;
    }
    *digit = '0';
  }
  Digits.insert(Digits.begin(), '1');
}

// The exact rule on the shortest decimal text of the value; slow but right for every finite double.
double RoundShortestDecimal(double Value, int Places) {
  // The fixed form of any finite double, the smallest subnormal included, takes fewer than 350 characters.
  std::array<char, 400> buffer{};
  const auto written =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(Value), std::chars_format::fixed);
  const std::string text(buffer.data(), written.ptr);
  const auto point = text.find('.');
  if (point == std::string::npos || text.size() - point - 1 <= static_cast<size_t>(Places)) {
    return Value;
  }
  std::string kept = text.substr(0, point) + text.substr(point + 1, Places);
  const char next = text[point + 1 + Places];
  const bool moreAfterNext = text.size() > point + 2 + Places;
  const bool lastKeptIsOdd = (kept.back() - '0') % 2 == 1;
  if (next > '5' || (next == '5' && (moreAfterNext || lastKeptIsOdd))) {
    IncrementDigits(kept);
  }
  const std::string scientific = kept + "e-" + std::to_string(Places);
  double rounded = 0.0;
  std::from_chars(scientific.data(), scientific.data() + scientific.size(), rounded);
  return std::copysign(rounded, Value);
}

}  // namespace

double BankersRound(double Value, int Places) {
  if (!std::isfinite(Value)) {
    return Value;
  }
  if (Places < static_cast<int>(ExactPowersOfTen.size())) {
    const double scale = ExactPowersOfTen[Places];
    const double scaled = std::fabs(Value) * scale;
    if (scaled < 0x1p52) {
      // Away from a tie the scaled value, whose error is below scaled * 2^-52, is on the same side of it as
      // the shortest decimal form, and whole / scale is the nearest double to the rounded decimal.
      const double whole = std::floor(scaled);
      const double fraction = scaled - whole;
      if (std::fabs(fraction - 0.5) > scaled * 0x1p-50) {
        return std::copysign((fraction > 0.5 ? whole + 1.0 : whole) / scale, Value);
      }
    }
  }
  return RoundShortestDecimal(Value, Places);
}

}  // namespace tarvelin
