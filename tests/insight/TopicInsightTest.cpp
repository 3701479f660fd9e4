#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "insight/InsightTopics.h"
#include "insight/TopicInsight.h"
#include "support/RaisedErrors.h"

namespace tarvelin {
namespace {

using testing::ErrorNumberOf;
using testing::MakeTopic;

// How far past a band end or tipping point the checks look: far above the scores' rounding errors, far below
// any gap a random topic has between crossings.
constexpr double Step = 1e-7;

// 2 to 10 options and attributes, now and then a weighting of 0, with normalisation and inversion or not.
TarvelinTopic RandomTopic(std::mt19937& Random) {
  std::uniform_real_distribution<double> value(0.0, 1.0);
  std::vector<double> weightings(2 + Random() % 9);
  std::generate(weightings.begin(), weightings.end(), [&] { return Random() % 8 == 0 ? 0.0 : value(Random); });
  std::vector<std::vector<double>> ratings(2 + Random() % 9, std::vector<double>(weightings.size()));
  for (auto& row : ratings) {
    std::generate(row.begin(), row.end(), [&] { return value(Random); });
  }
  TarvelinTopic topic = MakeTopic(weightings, ratings, Random() % 2 == 0, Random() % 2 == 0);
  // With normalisation on, setting a weighting rescales the others: start from shares that sum to 1.
  topic.SetWeighting(0, topic.GetWeighting(0));
  return topic;
}

// The option's score minus the highest of the others'; with one option, more than its score.
double LeadOf(const TarvelinTopic& Topic, int16_t OptionID) {
  double others = -1.0;
  for (int16_t o = 0; o < Topic.TotalOptions(); ++o) {
    others = o == OptionID ? others : std::max(others, Topic.GetScore(o));
  }
  return Topic.GetScore(OptionID) - others;
}

// Both allow for the scores' rounding errors.
bool AmongBest(const TarvelinTopic& Topic, int16_t OptionID) {
  return LeadOf(Topic, OptionID) >= -1e-13;
}

bool StrictlyBest(const TarvelinTopic& Topic, int16_t OptionID) {
  return LeadOf(Topic, OptionID) > 1e-13;
}

int16_t BestOf(const TarvelinTopic& Topic) {
  int16_t best = 0;
  while (!AmongBest(Topic, best)) {
    ++best;
  }
  return best;
}

TarvelinTopic WithWeighting(TarvelinTopic Topic, int16_t AttributeID, double Weighting) {
  Topic.SetWeighting(AttributeID, Weighting);
  return Topic;
}

TarvelinTopic WithRating(TarvelinTopic Topic, int16_t OptionID, int16_t AttributeID, double Rating) {
  Topic.SetRating(OptionID, AttributeID, Rating);
  return Topic;
}

// The band against the topic's own SetWeighting: the best option holds inside, across a sweep of 0..1 and just
// inside each end, and the rival named for an end is best just outside it.
void CheckBand(const TarvelinTopic& Topic, int16_t AttributeID) {
  const WeightingBand band = GetWeightingBand(Topic, AttributeID);
  const int16_t best = BestOf(Topic);
  const double current = Topic.GetWeighting(AttributeID);
  ASSERT_LE(band.Low, current);
  ASSERT_GE(band.High, current);
  for (int step = 0; step <= 100; ++step) {
    const double x = step / 100.0;
    const bool nearRivalEnd = (band.LowerRival >= 0 && std::fabs(x - band.Low) <= Step) ||
                              (band.UpperRival >= 0 && std::fabs(x - band.High) <= Step);
    if (!nearRivalEnd) {
      EXPECT_EQ(AmongBest(WithWeighting(Topic, AttributeID, x), best), x >= band.Low && x <= band.High) << x;
    }
  }
  EXPECT_TRUE(AmongBest(WithWeighting(Topic, AttributeID, std::min(band.Low + Step, band.High)), best));
  EXPECT_TRUE(AmongBest(WithWeighting(Topic, AttributeID, std::max(band.High - Step, band.Low)), best));
  if (band.LowerRival >= 0) {
    // Below 0 there is nothing: a rival for an end at 0 is best at 0 itself.
    EXPECT_TRUE(StrictlyBest(WithWeighting(Topic, AttributeID, std::max(band.Low - Step, 0.0)), band.LowerRival));
  } else {
    EXPECT_EQ(band.Low, 0.0);
  }
  if (band.UpperRival >= 0) {
    EXPECT_TRUE(StrictlyBest(WithWeighting(Topic, AttributeID, band.High + Step), band.UpperRival));
  } else {
    EXPECT_EQ(band.High, 1.0);
  }
}

// The tipping point against the topic's own SetRating, one step either side; without one, the rating's far end
// in the telling direction changes nothing.
void CheckTippingPoint(const TarvelinTopic& Topic, int16_t OptionID, int16_t AttributeID) {
  const std::optional<double> tipping = RatingTippingPoint(Topic, OptionID, AttributeID);
  const int16_t best = BestOf(Topic);
  // The way the rating moves to lower the option's score.
  const double down = Topic.InvertWeights() ? 1.0 : -1.0;
  const auto at = [&](double Rating) { return WithRating(Topic, OptionID, AttributeID, std::clamp(Rating, 0.0, 1.0)); };
  if (!tipping) {
    const double farEnd = (OptionID == best) == (down < 0) ? 0.0 : 1.0;
    EXPECT_EQ(AmongBest(at(farEnd), OptionID), OptionID == best);
    return;
  }
  ASSERT_GE(*tipping, 0.0);
  ASSERT_LE(*tipping, 1.0);
  EXPECT_FALSE(AmongBest(at(*tipping + down * Step), OptionID));
  // One step the other way the best still holds, and another option is best outright unless that step
  // leaves the rating's range.
  const double before = *tipping - down * Step;
  EXPECT_TRUE(OptionID == best ? AmongBest(at(before), best)
                               : StrictlyBest(at(before), OptionID) || before > 1.0 || before < 0.0);
}

TEST(TopicInsightOracle, RandomTopicsAgreeWithTheTopicItself) {
  std::mt19937 random(20261123);
  for (int round = 0; round < 60; ++round) {
    const TarvelinTopic topic = RandomTopic(random);
    SCOPED_TRACE("round " + std::to_string(round));
    double contributions = 0.0;
    std::optional<double> nearest;
    // Rounding changes what the topic reads out, never what it holds, so the answers stay the same.
    TarvelinTopic rounded = topic;
    rounded.SetRounding(2);
    for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
      CheckBand(topic, a);
      const WeightingBand band = GetWeightingBand(topic, a);
      EXPECT_EQ(GetWeightingBand(rounded, a).High, band.High);
      EXPECT_EQ(ScoreContribution(rounded, 0, a), ScoreContribution(topic, 0, a));
      for (double end : {band.LowerRival >= 0 ? band.Low : -9.0, band.UpperRival >= 0 ? band.High : -9.0}) {
        const double distance = std::fabs(end - topic.GetWeighting(a));
        nearest = end < -1.0 ? nearest : std::min(nearest.value_or(distance), distance);
      }
      for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
        CheckTippingPoint(topic, o, a);
        contributions += o == 0 ? ScoreContribution(topic, o, a) : 0.0;
      }
    }
    EXPECT_EQ(contributions, topic.GetScore(0));
    const std::optional<WinnerFlip> flip = ClosestWinnerFlip(topic);
    ASSERT_EQ(flip.has_value(), nearest.has_value());
    if (flip) {
      EXPECT_EQ(std::fabs(flip->To - flip->From), *nearest);
      const WeightingBand band = GetWeightingBand(topic, flip->AttributeID);
      const bool lowerEnd = band.LowerRival == flip->NewBest && band.Low == flip->To;
      const double beyond = std::clamp(flip->To + (lowerEnd ? -Step : Step), 0.0, 1.0);
      EXPECT_TRUE(StrictlyBest(WithWeighting(topic, flip->AttributeID, beyond), flip->NewBest));
    }
  }
}

// Two options on two attributes: Estate (0.8, 0.2) and Hatchback (0.4, 0.5), both weightings 0.5. Moving the
// first share t, Estate scores 0.2 + 0.6t and Hatchback 0.5 - 0.1t: they cross at t = 3/7. Without normalisation
// t = x / (0.5 + x), so at x = 3/8; for the second attribute at t = 4/7, x = 2/3. Inverted, the stored ratings
// are 1 minus these.
TarvelinTopic Crossing(bool Normalise, bool Invert = false) {
  const double flip = Invert ? 1.0 : 0.0;
  return MakeTopic({0.5, 0.5}, {{std::fabs(flip - 0.8), std::fabs(flip - 0.2)}, {std::fabs(flip - 0.4), 0.5}},
                   Normalise, Invert);
}

struct BandRow {
  std::string Name;
  TarvelinTopic Topic;
  int16_t AttributeID;
  WeightingBand Expected;
};

TEST(TopicInsightBand, HandMadeTopics) {
  const std::vector<double> even = {0.5, 0.5};
  const std::vector<BandRow> rows = {
      {"normalised, rival below", Crossing(true), 0, {3.0 / 7, 1, 1, -1}},
      {"stored, rival below", Crossing(false), 0, {3.0 / 8, 1, 1, -1}},
      {"stored, rival above", Crossing(false), 1, {0, 2.0 / 3, -1, 1}},
      {"a lone attribute", MakeTopic({0.3}, {{0.2}, {0.9}}), 0, {}},
      {"one option", MakeTopic(even, {{0.2, 0.9}}), 0, {}},
      {"all options equal", MakeTopic(even, {{0.3, 0.6}, {0.3, 0.6}, {0.3, 0.6}}, true), 1, {}},
      {"a rival with the same slope", MakeTopic(even, {{0.9, 0.6}, {0.8, 0.5}}, true), 0, {}},
      {"tied now, crossing", MakeTopic(even, {{0.2, 0.8}, {0.8, 0.2}}, true), 0, {0, 0.5, -1, 1}},
      // Rivals crossing at the same point: the one ahead just beyond it is named, Coupe climbing fastest.
      {"two rivals at one point",
       MakeTopic(even, {{0.5, 0.5}, {0.625, 0.375}, {0.75, 0.25}}, true),
       0,
       {0, 0.5, -1, 2}},
      {"two rivals at one point, below",
       MakeTopic(even, {{0.5, 0.5}, {0.375, 0.625}, {0.25, 0.75}}, true),
       0,
       {0.5, 1, 2, -1}},
      // All weightings 0 without normalisation: every attribute counts equally (Hatchback 0.55, Estate 0.5), but
      // any weighting above 0 gives its attribute the whole score.
      {"all 0, other best above", MakeTopic({0, 0}, {{1, 0}, {0.4, 0.7}}), 0, {0, 0, -1, 0}},
      {"all 0, same best above", MakeTopic({0, 0}, {{1, 0}, {0.4, 0.7}}), 1, {}},
      {"others 0, other best at 0", MakeTopic({0.3, 0}, {{1, 0}, {0.4, 0.7}}), 0, {0, 1, 1, -1}},
      // Estate 1 - t, Hatchback 0.4 + 0.3t: t = 6/13, x = 0.3 * 6 / 7.
      {"stored, the other at 0", MakeTopic({0.3, 0}, {{1, 0}, {0.4, 0.7}}), 1, {0, 0.3 * 6 / 7, -1, 1}},
      // The other attribute has no share: setting this one gives it the rest. Estate t, Hatchback 0.7 - 0.3t.
      {"normalised, others without share", MakeTopic({0.3, 0}, {{1, 0}, {0.4, 0.7}}, true), 0, {7.0 / 13, 1, 1, -1}},
  };
  for (const BandRow& row : rows) {
    SCOPED_TRACE(row.Name);
    const WeightingBand band = GetWeightingBand(row.Topic, row.AttributeID);
    EXPECT_NEAR(band.Low, row.Expected.Low, 1e-12);
    EXPECT_NEAR(band.High, row.Expected.High, 1e-12);
    EXPECT_EQ(band.LowerRival, row.Expected.LowerRival);
    EXPECT_EQ(band.UpperRival, row.Expected.UpperRival);
    CheckBand(row.Topic, row.AttributeID);
  }
}

struct TippingRow {
  std::string Name;
  TarvelinTopic Topic;
  int16_t OptionID, AttributeID;
  std::optional<double> Expected;
};

// In the crossing topic both shares are 0.5 and Estate leads by 0.05: Hatchback's Safety must gain 0.1.
TEST(TopicInsightTipping, HandMadeTopics) {
  const std::vector<TippingRow> rows = {
      {"other option, inverted", Crossing(true, true), 1, 1, 0.4},
      {"best cannot fall far enough", MakeTopic({0.5, 0.5}, {{0.9, 0.9}, {0.1, 0.1}}), 0, 0, std::nullopt},
      {"other cannot rise far enough", MakeTopic({0.5, 0.5}, {{0.9, 0.9}, {0.1, 0.1}}), 1, 0, std::nullopt},
      {"a share of 0", MakeTopic({1, 0}, {{0.9, 0.1}, {0.1, 0.9}}, true), 1, 1, std::nullopt},
      {"one option", MakeTopic({0.5, 0.5}, {{0.9, 0.1}}), 0, 0, std::nullopt},
      {"tied now", MakeTopic({0.5, 0.5}, {{0.2, 0.8}, {0.8, 0.2}}), 1, 0, 0.8},
      {"best tied at 0 already", MakeTopic({0.5, 0.5}, {{0, 0.5}, {0, 0.5}}), 0, 0, std::nullopt},
  };
  for (const TippingRow& row : rows) {
    SCOPED_TRACE(row.Name);
    const std::optional<double> tipping = RatingTippingPoint(row.Topic, row.OptionID, row.AttributeID);
    ASSERT_EQ(tipping.has_value(), row.Expected.has_value());
    if (tipping) {
      EXPECT_NEAR(*tipping, *row.Expected, 1e-12);
    }
    CheckTippingPoint(row.Topic, row.OptionID, row.AttributeID);
  }
}

TEST(TopicInsightHoldShare, DeterministicAndWithinTheBox) {
  const TarvelinTopic crossing = Crossing(false);
  const double share = BestOptionHoldShare(crossing, 0.1);
  EXPECT_EQ(share, BestOptionHoldShare(crossing, 0.1));
  // Estate leads by 0.4 x0 - 0.3 x1, so it holds while x0 >= 0.75 x1. In the box 0.4..0.6 squared it fails in the
  // corner triangle above x1 = 0.4 / 0.75 and left of x0 = 0.75 x1.
  const double exact = 1.0 - 0.5 * (0.6 - 0.4 / 0.75) * (0.75 * 0.6 - 0.4) / 0.04;
  EXPECT_NEAR(share, exact, 0.01);
  EXPECT_EQ(BestOptionHoldShare(crossing, 0.0), 1.0);
  EXPECT_LT(BestOptionHoldShare(crossing, 1.0), share);
  EXPECT_EQ(BestOptionHoldShare(MakeTopic({0.5, 0.5}, {{0.9, 0.9}, {0.1, 0.1}}), 0.5), 1.0);
  EXPECT_EQ(BestOptionHoldShare(MakeTopic({0.5}, {{0.2}, {0.9}}), 0.5), 1.0);
}

TEST(TopicInsight, IdentifiersOutOfRangeRaise) {
  const TarvelinTopic topic = Crossing(true);
  EXPECT_EQ(ErrorNumberOf([&] { GetWeightingBand(topic, 2); }), ErrAttributeNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { RatingTippingPoint(topic, -1, 0); }), ErrOptionNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { ScoreContribution(topic, 0, 2); }), ErrAttributeNotFound);
}

}  // namespace
}  // namespace tarvelin
