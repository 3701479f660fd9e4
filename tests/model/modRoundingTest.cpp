#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "model/modRounding.h"

namespace tarvelin {
namespace {

struct RoundingCase {
  double Value;
  int Places;
  double Expected;
};

class BankersRoundExamples : public ::testing::TestWithParam<RoundingCase> {};

TEST_P(BankersRoundExamples, MatchesTheDecimalAnswer) {
  const RoundingCase& example = GetParam();
  EXPECT_EQ(BankersRound(example.Value, example.Places), example.Expected)
      << example.Value << " to " << example.Places << " places";
}

INSTANTIATE_TEST_SUITE_P(Cases, BankersRoundExamples,
                         ::testing::Values(
                             // Ties exact in binary go to the even neighbour.
                             RoundingCase{0.0625, 3, 0.062}, RoundingCase{0.125, 2, 0.12}, RoundingCase{0.375, 2, 0.38},
                             RoundingCase{0.25, 1, 0.2}, RoundingCase{0.75, 1, 0.8}, RoundingCase{2.5, 0, 2.0},
                             RoundingCase{3.5, 0, 4.0}, RoundingCase{0.5, 1, 0.5}, RoundingCase{0.5, 0, 0.0},
                             // Ties only in decimal: 0.35 and 1.015 lie just below, 0.45 just above, in binary.
                             RoundingCase{0.35, 1, 0.4}, RoundingCase{0.45, 1, 0.4}, RoundingCase{0.05, 1, 0.0},
                             RoundingCase{1.015, 2, 1.02}, RoundingCase{1.025, 2, 1.02},
                             // Not ties.
                             RoundingCase{0.123451, 4, 0.1235}, RoundingCase{0.12345000001, 4, 0.1235},
                             RoundingCase{0.9996, 3, 1.0}, RoundingCase{0.9994, 3, 0.999},
                             RoundingCase{1.0 / 3.0, 3, 0.333}, RoundingCase{2.0 / 3.0, 4, 0.6667},
                             RoundingCase{-0.125, 2, -0.12}, RoundingCase{-0.126, 2, -0.13},
                             // Already within the places, or too small to survive them.
                             RoundingCase{0.1, 1, 0.1}, RoundingCase{0.1, 30, 0.1}, RoundingCase{1.0, 5, 1.0},
                             RoundingCase{0.0, 3, 0.0}, RoundingCase{1e-30, 3, 0.0}, RoundingCase{1.5e-25, 25, 2e-25},
                             RoundingCase{0x1p-1074, 400, 0x1p-1074}, RoundingCase{0x1p-1074, 323, 0.0},
                             RoundingCase{0.12345678901234568, 22, 0.12345678901234568},
                             RoundingCase{0.12345678901234568, 16, 0.1234567890123457}, RoundingCase{1e300, 2, 1e300}));

// Every decimal with Digits places, from 0 to 1, rounded to Places places by whole-number arithmetic on its
// digits, the way a person does it on paper.
class BankersRoundSweep : public ::testing::TestWithParam<std::pair<int, int>> {};

TEST_P(BankersRoundSweep, AgreesWithRoundingTheDigits) {
  const auto [digits, places] = GetParam();
  const auto valueDenominator = static_cast<int64_t>(std::pow(10, digits));
  const auto dropped = static_cast<int64_t>(std::pow(10, digits - places));
  for (int64_t numerator = 0; numerator <= valueDenominator; ++numerator) {
    int64_t kept = numerator / dropped;
    const int64_t rest = numerator % dropped;
    if (2 * rest > dropped || (2 * rest == dropped && kept % 2 == 1)) {
      ++kept;
    }
    const double value = static_cast<double>(numerator) / static_cast<double>(valueDenominator);
    const double expected = static_cast<double>(kept) / std::pow(10, places);
    ASSERT_EQ(BankersRound(value, places), expected) << numerator << "e-" << digits << " to " << places;
  }
}

INSTANTIATE_TEST_SUITE_P(Grids, BankersRoundSweep,
                         ::testing::Values(std::pair{2, 1}, std::pair{3, 1}, std::pair{3, 2}, std::pair{4, 3},
                                           std::pair{5, 2}, std::pair{6, 4}, std::pair{6, 5}));

TEST(BankersRound, LeavesInfinityAndNaNAlone) {
  EXPECT_EQ(BankersRound(std::numeric_limits<double>::infinity(), 2), std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(BankersRound(std::numeric_limits<double>::quiet_NaN(), 2)));
}

}  // namespace
}  // namespace tarvelin
