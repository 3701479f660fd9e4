#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "insight/InsightText.h"

namespace tarvelin {
namespace {

std::string Decimal(double Value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", Value);
  return text;
}

std::string Percent(double Value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f%%", Value * 100.0);
  return text;
}

// Options and attributes named in order; one row of ratings per option.
TarvelinTopic Named(const std::vector<std::string>& Options, const std::vector<std::string>& Attributes,
                    const std::vector<double>& Weightings, const std::vector<std::vector<double>>& Ratings,
                    bool Normalise = false, bool Invert = false) {
  TarvelinTopic topic;
  topic.SetTotalAttributes(static_cast<int16_t>(Attributes.size()));
  topic.SetTotalOptions(static_cast<int16_t>(Options.size()));
  for (size_t o = 0; o < Options.size(); ++o) {
    topic.SetOptionName(static_cast<int16_t>(o), Options[o]);
  }
  for (size_t a = 0; a < Attributes.size(); ++a) {
    topic.SetAttributeName(static_cast<int16_t>(a), Attributes[a]);
    topic.SetWeighting(static_cast<int16_t>(a), Weightings[a]);
    for (size_t o = 0; o < Options.size(); ++o) {
      topic.SetRating(static_cast<int16_t>(o), static_cast<int16_t>(a), Ratings[o][a]);
    }
  }
  topic.SetNormaliseWeights(Normalise);
  topic.SetInvertWeights(Invert);
  return topic;
}

const std::vector<std::string> Cars = {"Estate", "Hatchback", "Coupe", "Saloon"};
const std::vector<std::string> PriceSafety = {"Price", "Safety"};

// Estate scores 0.5, Coupe 0.46 and Hatchback 0.45. Moving Price (share t = x / (0.5 + x)), Hatchback crosses
// Estate at x = 0.375 and Coupe at x = 0.833; moving Safety, Coupe at 0.3 and Hatchback at 0.667.
TarvelinTopic Cars3() {
  return Named({"Estate", "Hatchback", "Coupe"}, PriceSafety, {0.5, 0.5}, {{0.8, 0.2}, {0.4, 0.5}, {0.92, 0.0}});
}

TarvelinTopic TiedCars() {
  return Named({"Estate", "Hatchback"}, PriceSafety, {0.5, 0.5}, {{0.2, 0.8}, {0.8, 0.2}}, true);
}

struct TextRow {
  std::string Name;
  std::function<std::string()> Text;
  std::string Expected;
};

TEST(InsightText, Sentences) {
  const TarvelinTopic cars = Cars3();
  const TarvelinTopic alone = Named({"Estate"}, PriceSafety, {0.5, 0.5}, {{0.2, 0.9}});
  const TarvelinTopic identical = Named({"Estate", "Hatchback"}, PriceSafety, {0.5, 0.5}, {{0.3, 0.6}, {0.3, 0.6}});
  const TarvelinTopic apart = Named({"Estate", "Hatchback"}, PriceSafety, {0.5, 0.5}, {{0.9, 0.9}, {0.1, 0.1}});
  const TarvelinTopic inverted =
      Named({"Estate", "Hatchback"}, PriceSafety, {0.5, 0.5}, {{0.2, 0.8}, {0.6, 0.5}}, true, true);
  const TarvelinTopic stepped = Named({"Estate", "Hatchback"}, PriceSafety, {0.3, 0.0}, {{1, 0}, {0.4, 0.7}});
  const TarvelinTopic threeTied =
      Named(Cars, PriceSafety, {0.5, 0.5}, {{0.2, 0.8}, {0.8, 0.2}, {0.5, 0.5}, {0.1, 0.1}}, true);
  const TarvelinTopic allTied =
      Named({"Estate", "Hatchback", "Coupe"}, PriceSafety, {0.5, 0.5}, {{0.2, 0.8}, {0.8, 0.2}, {0.5, 0.5}}, true);
  // Fish gains 0.10, 0.16, 0.12 and 0.14 on the first four attributes and loses 0.02 on the fifth.
  const TarvelinTopic many = Named({"Fish", "Fowl"}, {"A", "B", "C", "D", "E"}, {0.5, 0.5, 0.5, 0.5, 0.5},
                                   {{0.6, 0.9, 0.7, 0.8, 0.1}, {0.1, 0.1, 0.1, 0.1, 0.2}});
  const std::vector<TextRow> rows = {
      {"band, rivals at both ends", [&] { return WeightingBandText(cars, 0, Decimal); },
       "Estate stays best while Price is between 0.375 and 0.833. Below, Hatchback is best; above, Coupe."},
      {"band, rival above only", [&] { return WeightingBandText(TiedCars(), 0, Decimal); },
       "Estate stays among the best while Price is at most 0.500. Above, Hatchback is best."},
      {"band, rival below only", [&] { return WeightingBandText(inverted, 0, Decimal); },
       "Estate stays best while Price is at least 0.429. Below, Hatchback is best."},
      {"band, rival only at 0", [&] { return WeightingBandText(stepped, 0, Decimal); },
       "Estate stays best while Price is above 0.000. At 0.000, Hatchback is best."},
      {"band, no rival", [&] { return WeightingBandText(apart, 1, Decimal); },
       "Estate stays best at any weighting of Safety."},
      {"rating, best option", [&] { return RatingTippingText(cars, 0, 0, Decimal); },
       "Estate stays best down to 0.720 here"},
      {"rating, best option inverted", [&] { return RatingTippingText(inverted, 0, 0, Decimal); },
       "Estate stays best up to 0.300 here"},
      {"rating, other option", [&] { return RatingTippingText(cars, 2, 1, Decimal); },
       "Coupe would tie the best at 0.080 here"},
      {"rating, no point", [&] { return RatingTippingText(apart, 1, 0, Decimal); },
       "This rating alone cannot change the best option"},
      {"line, with hold share",
       [&] {
         return InsightLineText(cars, Decimal, HoldShareFigure{0.87, 0.1});
       },
       "Estate leads Coupe by 0.040. Closest change: Price weighting 0.500 to 0.375 makes Hatchback best. It holds "
       "in 87% of weightings within 0.100 of these."},
      {"line, percentages, nearly all hold",
       [&] {
         return InsightLineText(cars, Percent, HoldShareFigure{0.997, 0.1});
       },
       "Estate leads Coupe by 4.0%. Closest change: Price weighting 50.0% to 37.5% makes Hatchback best. It holds in "
       "99% of weightings within 10.0% of these."},
      {"line, no flip", [&] { return InsightLineText(apart, Decimal); },
       "Estate leads Hatchback by 0.800. No single weighting can make another option best."},
      {"line, two tied", [&] { return InsightLineText(TiedCars(), Decimal); }, "Estate and Hatchback are tied."},
      {"line, three tied", [&] { return InsightLineText(threeTied, Decimal); },
       "Estate, Hatchback and Coupe are tied."},
      {"line, all tied", [&] { return InsightLineText(allTied, Decimal); }, "All 3 options are tied."},
      {"line, one option", [&] { return InsightLineText(alone, Decimal); }, "Estate is the only option."},
      {"why, another option", [&] { return ScoreWhyText(cars, 1, Decimal); },
       "Estate beats Hatchback mainly on Price (+0.200); Hatchback does better on Safety (+0.150)."},
      {"why, the best names its runner-up", [&] { return ScoreWhyText(cars, 0, Decimal); },
       "Estate beats Coupe mainly on Safety (+0.100); Coupe does better on Price (+0.060)."},
      {"why, three each way, largest first", [&] { return ScoreWhyText(many, 1, Decimal); },
       "Fish beats Fowl mainly on B (+0.160), D (+0.140) and C (+0.120); Fowl does better on E (+0.020)."},
      {"why, tied", [&] { return ScoreWhyText(TiedCars(), 1, Decimal); },
       "Estate and Hatchback are tied: Estate does better on Safety (+0.300); Hatchback does better on Price "
       "(+0.300)."},
      {"why, equal on everything", [&] { return ScoreWhyText(identical, 1, Decimal); },
       "Hatchback equals Estate on every attribute."},
  };
  for (const TextRow& row : rows) {
    EXPECT_EQ(row.Text(), row.Expected) << row.Name;
  }
}

}  // namespace
}  // namespace tarvelin
