#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "insight/InsightText.h"
#include "insight/InsightTopics.h"

namespace tarvelin {
namespace {

NumberFormat Printed(const char* Pattern, double Scale) {
  return [=](double Value) {
    char text[32];
    std::snprintf(text, sizeof text, Pattern, Value * Scale);
    return std::string(text);
  };
}

const NumberFormat Decimal = Printed("%.3f", 1.0);
const NumberFormat Percent = Printed("%.1f%%", 100.0);

// Options and attributes named in order: Estate, Hatchback, Coupe, Saloon; Price, Safety, Looks, Comfort, Space.
TarvelinTopic Named(const std::vector<double>& Weightings, const std::vector<std::vector<double>>& Ratings,
                    bool Normalise = false, bool Invert = false) {
  TarvelinTopic topic = testing::MakeTopic(Weightings, Ratings, Normalise, Invert);
  const char* const options[] = {"Estate", "Hatchback", "Coupe", "Saloon"};
  const char* const attributes[] = {"Price", "Safety", "Looks", "Comfort", "Space"};
  for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
    topic.SetOptionName(o, options[o]);
  }
  for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
    topic.SetAttributeName(a, attributes[a]);
  }
  return topic;
}

struct TextRow {
  std::string Name, Text, Expected;
};

TEST(InsightText, Sentences) {
  const std::vector<double> even = {0.5, 0.5};
  // Estate scores 0.5, Coupe 0.46 and Hatchback 0.45. Moving Price (share t = x / (0.5 + x)), Hatchback crosses
  // Estate at x = 0.375 and Coupe at x = 0.833; moving Safety, Coupe at 0.3 and Hatchback at 0.667.
  const TarvelinTopic cars = Named(even, {{0.8, 0.2}, {0.4, 0.5}, {0.92, 0.0}});
  const TarvelinTopic tied = Named(even, {{0.2, 0.8}, {0.8, 0.2}}, true);
  const TarvelinTopic apart = Named(even, {{0.9, 0.9}, {0.1, 0.1}});
  const TarvelinTopic inverted = Named(even, {{0.2, 0.8}, {0.6, 0.5}}, true, true);
  const TarvelinTopic stepped = Named({0.3, 0.0}, {{1, 0}, {0.4, 0.7}});
  // Estate gains 0.10, 0.16, 0.12 and 0.14 on the first four attributes and loses 0.02 on the fifth.
  const TarvelinTopic many = Named({0.5, 0.5, 0.5, 0.5, 0.5}, {{0.6, 0.9, 0.7, 0.8, 0.1}, {0.1, 0.1, 0.1, 0.1, 0.2}});
  const std::vector<TextRow> rows = {
      {"band, rivals at both ends", WeightingBandText(cars, 0, Decimal),
       "Estate stays best while Price is between 0.375 and 0.833. Below, Hatchback is best; above, Coupe."},
      {"band, rival above only", WeightingBandText(tied, 0, Decimal),
       "Estate stays among the best while Price is at most 0.500. Above, Hatchback is best."},
      {"band, rival below only", WeightingBandText(inverted, 0, Decimal),
       "Estate stays best while Price is at least 0.429. Below, Hatchback is best."},
      {"band, rival only at 0", WeightingBandText(stepped, 0, Decimal),
       "Estate stays best while Price is above 0.000. At 0.000, Hatchback is best."},
      {"band, no rival", WeightingBandText(apart, 1, Decimal), "Estate stays best at any weighting of Safety."},
      {"rating, best option", RatingTippingText(cars, 0, 0, Decimal), "Estate stays best down to 0.720 here"},
      {"rating, best inverted", RatingTippingText(inverted, 0, 0, Decimal), "Estate stays best up to 0.300 here"},
      {"rating, other option", RatingTippingText(cars, 2, 1, Decimal), "Coupe would tie the best at 0.080 here"},
      {"rating, no point", RatingTippingText(apart, 1, 0, Decimal), "This rating alone cannot change the best option"},
      {"line, with hold share", InsightLineText(cars, Decimal, HoldShareFigure{0.87, 0.1}),
       "Estate leads Coupe by 0.040. Closest change: Price weighting 0.500 to 0.375 makes Hatchback best. It holds "
       "in 87% of weightings within 0.100 of these."},
      {"line, percentages, nearly all hold", InsightLineText(cars, Percent, HoldShareFigure{0.997, 0.1}),
       "Estate leads Coupe by 4.0%. Closest change: Price weighting 50.0% to 37.5% makes Hatchback best. It holds in "
       "99% of weightings within 10.0% of these."},
      {"line, no flip", InsightLineText(apart, Decimal),
       "Estate leads Hatchback by 0.800. No single weighting can make another option best."},
      {"line, two tied", InsightLineText(tied, Decimal), "Estate and Hatchback are tied."},
      {"line, three tied",
       InsightLineText(Named(even, {{0.2, 0.8}, {0.8, 0.2}, {0.5, 0.5}, {0.1, 0.1}}, true), Decimal),
       "Estate, Hatchback and Coupe are tied."},
      {"line, all tied", InsightLineText(Named(even, {{0.2, 0.8}, {0.8, 0.2}, {0.5, 0.5}}, true), Decimal),
       "All 3 options are tied."},
      {"line, one option", InsightLineText(Named(even, {{0.2, 0.9}}), Decimal), "Estate is the only option."},
      {"why, another option", ScoreWhyText(cars, 1, Decimal),
       "Estate beats Hatchback mainly on Price (+0.200); Hatchback does better on Safety (+0.150)."},
      {"why, the best names its runner-up", ScoreWhyText(cars, 0, Decimal),
       "Estate beats Coupe mainly on Safety (+0.100); Coupe does better on Price (+0.060)."},
      {"why, three each way, largest first", ScoreWhyText(many, 1, Decimal),
       "Estate beats Hatchback mainly on Safety (+0.160), Comfort (+0.140) and Looks (+0.120); Hatchback does "
       "better on Space (+0.020)."},
      {"why, tied", ScoreWhyText(tied, 1, Decimal),
       "Estate and Hatchback are tied: Estate does better on Safety (+0.300); Hatchback does better on Price "
       "(+0.300)."},
      {"why, equal on everything", ScoreWhyText(Named(even, {{0.3, 0.6}, {0.3, 0.6}}), 1, Decimal),
       "Hatchback equals Estate on every attribute."},
  };
  for (const TextRow& row : rows) {
    EXPECT_EQ(row.Text, row.Expected) << row.Name;
  }
}

}  // namespace
}  // namespace tarvelin
