#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "insight/InsightTopics.h"
#include "model/TarvelinTopic.h"
#include "support/RaisedErrors.h"

namespace tarvelin {
namespace {

using testing::ErrorOf;
using testing::MakeTopic;

// The weightings as stored. A lone attribute always reads as 1.0, so the copy gets a second attribute first,
// which with normalisation on starts with the mean of the stored ones and leaves them as they are.
std::vector<double> StoredWeightings(TarvelinTopic Topic) {
  std::vector<double> weightings(Topic.TotalAttributes());
  Topic.SetRounding(-1);
  Topic.SetNormaliseWeights(true);
  Topic.AddAttribute("");
  Topic.SetNormaliseWeights(false);
  for (size_t i = 0; i < weightings.size(); ++i) {
    weightings[i] = Topic.GetWeighting(static_cast<int16_t>(i));
  }
  return weightings;
}

// Everything the topic holds, unrounded, as its diagnostic dump shows it.
std::string Dump(TarvelinTopic Topic) {
  Topic.SetRounding(-1);
  std::ostringstream captured;
  auto* const original = std::clog.rdbuf(captured.rdbuf());
  Topic.OutputDebugInfo();
  std::clog.rdbuf(original);
  return captured.str();
}

TEST(TarvelinTopic, StartsWithOneEntryEachAndCountsGrowUnnamedShrinkFromTheEndNeverBelowOne) {
  TarvelinTopic topic;
  EXPECT_EQ(topic.Name(), "New Topic");
  EXPECT_FALSE(topic.InvertWeights() || topic.NormaliseWeights());
  EXPECT_EQ(topic.Rounding(), -1);
  EXPECT_EQ(StoredWeightings(topic), std::vector<double>{0.5});
  topic.SetOptionName(0, "First");
  topic.SetTotalOptions(3);
  topic.SetTotalAttributes(4);
  EXPECT_EQ(topic.GetOptionName(2) + "/" + topic.GetAttributeName(3), "Option 3/Attribute 4");
  EXPECT_EQ(topic.GetRating(2, 3), 0.5);
  topic.SetTotalOptions(0);
  topic.SetTotalAttributes(-3);
  EXPECT_EQ(topic.TotalOptions() + topic.TotalAttributes(), 2);
  EXPECT_EQ(topic.GetOptionName(0) + "/" + topic.GetAttributeName(0), "First/Attribute 1");
}

// Later entries move down with their ratings; deleting the only entry resets it to a fresh one.
TEST(TarvelinTopic, DeletingMovesLaterEntriesDownAndResetsTheOnlyOne) {
  TarvelinTopic topic = MakeTopic({0.1, 0.2, 0.3}, {{0.0, 0.1, 0.2}, {0.3, 0.4, 0.5}, {0.6, 0.7, 0.8}});
  topic.SetAttributeName(1, "B");
  topic.SetOptionName(2, "Third");
  topic.DeleteAttribute(0);
  topic.DeleteOption(1);
  EXPECT_EQ(topic.GetAttributeName(0) + "/" + topic.GetAttributeName(1) + "/" + topic.GetOptionName(1),
            "B/Attribute 2/Third");
  EXPECT_EQ(StoredWeightings(topic), (std::vector<double>{0.2, 0.3}));
  EXPECT_EQ(topic.GetRating(0, 1), 0.2);
  EXPECT_EQ(topic.GetRating(1, 0), 0.7);

  TarvelinTopic lone = MakeTopic({0.3}, {{0.9}, {0.9}}, true);
  lone.SetAttributeName(0, "Price");
  lone.SetOptionName(1, "Car");
  lone.DeleteAttribute(0);
  EXPECT_EQ(lone.GetAttributeName(0) + "/" + lone.GetOptionName(1), "Attribute 1/Car");
  EXPECT_EQ(StoredWeightings(lone), std::vector<double>{0.5});
  EXPECT_EQ(lone.GetRating(1, 0), 0.5);
  lone.SetRating(1, 0, 0.9);
  lone.DeleteOption(0);
  lone.DeleteOption(0);
  EXPECT_EQ(lone.GetOptionName(0), "Option 1");
  EXPECT_EQ(lone.GetRating(0, 0), 0.5);
}

// Counts are read as 16-bit numbers, so 32767 entries are the most a topic can hold.
TEST(TarvelinTopic, GrowingPast32767RaisesOverflowAndChangesNothing) {
  constexpr int16_t most = std::numeric_limits<int16_t>::max();
  TarvelinTopic options;
  options.SetTotalOptions(most);
  TarvelinTopic attributes;
  attributes.SetTotalAttributes(most);
  EXPECT_EQ(ErrorOf([&] { options.AddOption(""); }), "6 [TarvelinTopic] Overflow");
  EXPECT_EQ(ErrorOf([&] { attributes.AddAttribute(""); }), "6 [TarvelinTopic] Overflow");
  EXPECT_EQ(options.GetOptionName(most - 1) + "/" + attributes.GetAttributeName(most - 1),
            "Option 32767/Attribute 32767");
}

TEST(TarvelinTopic, RatingIsStoredExactlyAndReadRoundedNeverInverted) {
  TarvelinTopic topic = MakeTopic({0.5}, {{0.125}}, false, true);
  topic.SetRounding(2);
  EXPECT_EQ(topic.GetRating(0, 0), 0.12);
  topic.SetRounding(-1);
  EXPECT_EQ(topic.GetRating(0, 0), 0.125);
}

// Stored weightings after setting the first one, or without a weighting after adding an attribute.
struct WeightingChange {
  const char* Label;
  std::vector<double> Before;
  bool Normalise;
  int16_t Rounding;
  std::optional<double> SetFirst;
  std::vector<double> After;
};

const std::vector<WeightingChange> WeightingChanges = {
    {"AddTakesTheMean", {0.2, 0.6}, true, -1, std::nullopt, {0.2, 0.6, 0.4}},
    {"AddToALoneOneTakesItsStoredValue", {0.3}, true, -1, std::nullopt, {0.3, 0.3}},
    // The mean of 0.12 and 0.14 as read; the stored mean 0.135 would be rounded to 0.14.
    {"AddTakesTheRoundedMean", {0.125, 0.145}, true, 2, std::nullopt, {0.125, 0.145, 0.13}},
    {"SetPlainLeavesTheOthers", {0.5, 0.5, 0.5}, false, -1, 0.9, {0.9, 0.5, 0.5}},
    {"AllZeroShareEqually", {0.0, 0.0, 0.0}, true, -1, 0.4, {0.4, 0.3, 0.3}},
    {"OthersZeroSplitEvenly", {0.5, 0.0, 0.0}, true, -1, 0.4, {0.4, 0.3, 0.3}},
    // Shares 0.3 and 0.5 of the old sum; written one by one, the second would be taken of a new sum.
    {"SharesTakenBeforeWriting", {0.2, 0.3, 0.5}, true, -1, 0.6, {0.6, 0.15, 0.25}},
    // 0.46 is stored as 0.5; the shares 0.28/0.88 and 0.6/0.88 are taken rounded, as 0.3 and 0.6, and the
    // results, 1/6 and 1/3, are stored unrounded.
    {"RoundedSharesUnroundedResults", {0.12, 0.28, 0.6}, true, 1, 0.46, {0.5, 1.0 / 6, 1.0 / 3}},
    {"LoneAttribute", {0.7}, true, -1, 0.3, {0.3}}};

class TarvelinTopicWeightingChange : public ::testing::TestWithParam<WeightingChange> {};

TEST_P(TarvelinTopicWeightingChange, StoresTheExpectedWeightings) {
  TarvelinTopic topic = MakeTopic(GetParam().Before, {});
  topic.SetNormaliseWeights(GetParam().Normalise);
  topic.SetRounding(GetParam().Rounding);
  if (GetParam().SetFirst) {
    topic.SetWeighting(0, *GetParam().SetFirst);
  } else {
    topic.AddAttribute("");
  }
  const std::vector<double> after = StoredWeightings(topic);
  for (size_t i = 0; i < GetParam().After.size(); ++i) {
    EXPECT_NEAR(after.at(i), GetParam().After[i], 1e-15) << "attribute " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Cases, TarvelinTopicWeightingChange, ::testing::ValuesIn(WeightingChanges),
                         [](const auto& Info) { return std::string(Info.param.Label); });

// Weightings as read without and with normalisation, and the score of option 0, which is the same for both.
struct Reading {
  const char* Label;
  std::vector<double> Weightings, Ratings;
  bool Invert;
  int16_t Rounding;
  std::vector<double> Plain, Normalised;
  double Score;
};

const std::vector<Reading> Readings = {
    {"LoneWeighsOne", {0.3}, {0.37}, false, 1, {1.0}, {1.0}, 0.4},
    {"WeightedMean", {0.125, 0.375}, {0.5, 0.9}, false, -1, {0.125, 0.375}, {0.25, 0.75}, 0.8},
    {"InvertedRatings", {0.125, 0.375}, {0.5, 0.75}, true, -1, {}, {}, 0.3125},
    {"InvertedZeroScoresOne", {0.125, 0.375}, {0.0, 0.0}, true, -1, {}, {}, 1.0},
    {"ZeroSumSharesEqually", {0.0, 0.0}, {0.2, 0.6}, false, -1, {0.0, 0.0}, {0.5, 0.5}, 0.4},
    {"RoundedToEven", {0.125, 0.375}, {0.125, 0.125}, false, 2, {0.12, 0.38}, {0.25, 0.75}, 0.12},
    {"RoundingZeroMeansOnePlace", {0.125, 0.375}, {0.25, 0.25}, false, 0, {0.1, 0.4}, {0.2, 0.8}, 0.2},
    // The score uses the unrounded share 2/3; the rounded 0.67 would give 0.536 and so 0.54.
    // 1 / (S / w) is 0.025 here, one bit above w / S: scores compared for ties must all use the one form.
    {"ShareIsOneOverSumOverWeighting", {0.01, 0.02, 0.37}, {1.0, 0.0, 0.0}, false, -1, {}, {0.025}, 0.025},
    {"ScoreUsesUnroundedShares", {0.1, 0.2}, {0.0, 0.8}, false, 2, {0.1, 0.2}, {0.33, 0.67}, 0.53}};

class TarvelinTopicReading : public ::testing::TestWithParam<Reading> {};

TEST_P(TarvelinTopicReading, WeightingsAndScoreAreAsExpected) {
  TarvelinTopic topic = MakeTopic(GetParam().Weightings, {GetParam().Ratings}, false, GetParam().Invert);
  topic.SetRounding(GetParam().Rounding);
  for (const bool normalise : {false, true}) {
    topic.SetNormaliseWeights(normalise);
    const std::vector<double>& expected = normalise ? GetParam().Normalised : GetParam().Plain;
    for (size_t i = 0; i < expected.size(); ++i) {
      EXPECT_EQ(topic.GetWeighting(static_cast<int16_t>(i)), expected[i]) << "attribute " << i << normalise;
    }
    EXPECT_EQ(topic.GetScore(0), GetParam().Score);
  }
}

INSTANTIATE_TEST_SUITE_P(Cases, TarvelinTopicReading, ::testing::ValuesIn(Readings),
                         [](const auto& Info) { return std::string(Info.param.Label); });

// Every failure, on a topic of 2 options and 3 attributes, normalised and rounded so that a partial change
// would show. The numbers are ObjectErrorBase + 1001, 1002 and 1003.
struct Failure {
  std::function<void(TarvelinTopic&)> Call;
  const char* Raised;
};

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
using T = TarvelinTopic;

const std::vector<Failure> Failures = {
    {[](T& t) { t.GetAttributeName(-1); }, "-2147220503 [] Attribute -1 not found in GetAttributeName()."},
    {[](T& t) { t.SetAttributeName(3, ""); }, "-2147220503 [] Attribute 3 not found in SetAttributeName()."},
    {[](T& t) { t.GetOptionName(2); }, "-2147220502 [] Option 2 not found in GetOptionName()."},
    {[](T& t) { t.SetOptionName(-32768, ""); }, "-2147220502 [] Option -32768 not found in SetOptionName()."},
    {[](T& t) { t.DeleteAttribute(3); }, "-2147220503 [] Attribute 3 not found in DeleteAttribute()."},
    {[](T& t) { t.DeleteOption(-1); }, "-2147220502 [] Option -1 not found in DeleteOption()."},
    {[](T& t) { t.SetWeighting(3, 2.0); }, "-2147220503 [] Attribute 3 not found in SetWeighting()."},
    {[](T& t) { t.SetWeighting(0, -0.0001); }, "-2147220501 [] Invalid weighting supplied to SetWeighting()."},
    {[](T& t) { t.SetWeighting(1, NaN); }, "-2147220501 [] Invalid weighting supplied to SetWeighting()."},
    {[](T& t) { t.GetWeighting(-1); }, "-2147220503 [] Attribute -1 not found in GetWeighting()."},
    {[](T& t) { t.SetRating(2, 3, 2.0); }, "-2147220502 [] Option 2 not found in SetRating()."},
    {[](T& t) { t.SetRating(0, -1, 2.0); }, "-2147220503 [] Attribute -1 not found in SetRating()."},
    {[](T& t) { t.SetRating(1, 2, 1.0001); }, "-2147220501 [] Invalid Rating supplied to SetRating()."},
    {[](T& t) { t.GetRating(-1, -1); }, "-2147220502 [] Option -1 not found in GetRating()."},
    {[](T& t) { t.GetRating(1, 3); }, "-2147220503 [] Attribute 3 not found in GetRating()."},
    {[](T& t) { t.GetScore(2); }, "-2147220502 [] Option 2 not found in GetRating()."}};

class TarvelinTopicFailure : public ::testing::TestWithParam<Failure> {};

TEST_P(TarvelinTopicFailure, RaisesItsNumberAndMessageAndChangesNothing) {
  TarvelinTopic topic = MakeTopic({0.2, 0.3, 0.5}, {{0.5, 0.5, 0.5}, {0.5, 0.5, 0.125}}, true);
  topic.SetRounding(2);
  const std::string before = Dump(topic);
  EXPECT_EQ(ErrorOf([&] { GetParam().Call(topic); }), GetParam().Raised);
  EXPECT_EQ(Dump(topic), before);
}

INSTANTIATE_TEST_SUITE_P(Cases, TarvelinTopicFailure, ::testing::ValuesIn(Failures));

}  // namespace
}  // namespace tarvelin
