#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "model/modRounding.h"

namespace tarvelin {
namespace {

// Decimals from 0 to 1 are checked digit by digit below; here, values outside that range and extremes.
TEST(BankersRound, DecidesOnTheDecimalDigitsWithTiesToEven) {
  EXPECT_EQ(BankersRound(2.5, 0), 2.0);
  EXPECT_EQ(BankersRound(1.015, 2), 1.02);  // a tie only in decimal: 1.015 lies below it in binary
  EXPECT_EQ(BankersRound(-0.125, 2), -0.12);
  EXPECT_EQ(BankersRound(0.23217612806301458, 15), 0.232176128063015);
  EXPECT_EQ(BankersRound(0.1, 30), 0.1);
  EXPECT_EQ(BankersRound(1e-30, 3), 0.0);
  EXPECT_EQ(BankersRound(0x1p-1074, 400), 0x1p-1074);
  EXPECT_EQ(BankersRound(1e300, 2), 1e300);
  EXPECT_TRUE(std::isnan(BankersRound(std::numeric_limits<double>::quiet_NaN(), 2)));
}

// Every decimal from 0 to 1 with Digits places, against rounding its digits as whole numbers.
TEST(BankersRound, AgreesWithRoundingTheDigitsOnPaper) {
  for (const auto& [digits, places] : {std::pair{2, 1}, {3, 2}, {4, 3}, {5, 2}, {6, 4}, {6, 5}}) {
    const auto denominator = static_cast<int64_t>(std::pow(10, digits));
    const auto dropped = static_cast<int64_t>(std::pow(10, digits - places));
    for (int64_t numerator = 0; numerator <= denominator; ++numerator) {
      int64_t kept = numerator / dropped;
      const int64_t rest = numerator % dropped;
      kept += (2 * rest > dropped || (2 * rest == dropped && kept % 2 == 1)) ? 1 : 0;
      const double value = static_cast<double>(numerator) / static_cast<double>(denominator);
      ASSERT_EQ(BankersRound(value, places), static_cast<double>(kept) / std::pow(10, places))
          << numerator << "e-" << digits << " to " << places;
    }
  }
}

}  // namespace
}  // namespace tarvelin
