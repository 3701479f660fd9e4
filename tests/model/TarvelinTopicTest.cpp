#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "model/TarvelinTopic.h"

namespace tarvelin {
namespace {

// A topic with the given weightings stored as they are, normalisation and rounding off.
TarvelinTopic TopicWithWeightings(std::initializer_list<double> Weightings, int16_t Options = 1) {
  TarvelinTopic topic;
  topic.SetTotalAttributes(static_cast<int16_t>(Weightings.size()));
  topic.SetTotalOptions(Options);
  int16_t attributeID = 0;
  for (const double weighting : Weightings) {
    topic.SetWeighting(attributeID++, weighting);
  }
  return topic;
}

// The weightings as stored, seen through a copy with normalisation and rounding off. A lone attribute always
// reads as 1.0, so the copy is given a second one, which starts with the first one's stored weighting.
std::vector<double> StoredWeightings(TarvelinTopic Topic) {
  const int16_t count = Topic.TotalAttributes();
  Topic.SetRounding(-1);
  Topic.SetNormaliseWeights(true);
  Topic.AddAttribute("");
  Topic.SetNormaliseWeights(false);
  std::vector<double> weightings;
  for (int16_t attributeID = 0; attributeID < count; ++attributeID) {
    weightings.push_back(Topic.GetWeighting(attributeID));
  }
  return weightings;
}

// Everything a topic holds, as text, for checking that a failed call changed nothing.
std::string Snapshot(TarvelinTopic Topic) {
  std::ostringstream text;
  text.precision(17);
  text << Topic.Name() << '|' << Topic.Description() << '|' << Topic.InvertWeights() << Topic.NormaliseWeights()
       << Topic.Rounding() << '|';
  for (const double weighting : StoredWeightings(Topic)) {
    text << weighting << ',';
  }
  Topic.SetRounding(-1);
  for (int16_t attributeID = 0; attributeID < Topic.TotalAttributes(); ++attributeID) {
    text << Topic.GetAttributeName(attributeID) << ',';
  }
  for (int16_t optionID = 0; optionID < Topic.TotalOptions(); ++optionID) {
    text << '|' << Topic.GetOptionName(optionID);
    for (int16_t attributeID = 0; attributeID < Topic.TotalAttributes(); ++attributeID) {
      text << ',' << Topic.GetRating(optionID, attributeID);
    }
  }
  return text.str();
}

TEST(TarvelinTopicCreate, StartsWithOneUnnamedOptionAndAttributeAtOneHalf) {
  TarvelinTopic topic;
  EXPECT_EQ(topic.Name(), "New Topic");
  EXPECT_EQ(topic.Description(), "");
  EXPECT_FALSE(topic.InvertWeights());
  EXPECT_FALSE(topic.NormaliseWeights());
  EXPECT_EQ(topic.Rounding(), -1);
  EXPECT_EQ(topic.TotalOptions(), 1);
  EXPECT_EQ(topic.TotalAttributes(), 1);
  EXPECT_EQ(topic.GetAttributeName(0), "Attribute 1");
  EXPECT_EQ(topic.GetOptionName(0), "Option 1");
  EXPECT_EQ(topic.GetRating(0, 0), 0.5);
  EXPECT_EQ(StoredWeightings(topic), std::vector<double>({0.5}));
}

TEST(TarvelinTopicNames, OnlyTheEmptyNameShowsTheDefault) {
  TarvelinTopic topic;
  topic.SetTotalAttributes(2);
  topic.SetAttributeName(0, " ");
  topic.SetOptionName(0, "Car");
  EXPECT_EQ(topic.GetAttributeName(0), " ");
  EXPECT_EQ(topic.GetAttributeName(1), "Attribute 2");
  EXPECT_EQ(topic.GetOptionName(0), "Car");
  topic.SetOptionName(0, "");
  EXPECT_EQ(topic.GetOptionName(0), "Option 1");
}

TEST(TarvelinTopicDelete, LaterAttributesMoveDownWithTheirRatings) {
  TarvelinTopic topic = TopicWithWeightings({0.1, 0.2, 0.3}, 2);
  topic.SetAttributeName(0, "A");
  topic.SetAttributeName(1, "B");
  for (int16_t attributeID = 0; attributeID < 3; ++attributeID) {
    topic.SetRating(0, attributeID, 0.1 * (attributeID + 1));
    topic.SetRating(1, attributeID, 0.9 - 0.1 * attributeID);
  }
  topic.DeleteAttribute(0);
  ASSERT_EQ(topic.TotalAttributes(), 2);
  EXPECT_EQ(topic.GetAttributeName(0), "B");
  EXPECT_EQ(topic.GetAttributeName(1), "Attribute 2");
  EXPECT_EQ(StoredWeightings(topic), std::vector<double>({0.2, 0.3}));
  EXPECT_DOUBLE_EQ(topic.GetRating(0, 0), 0.2);
  EXPECT_DOUBLE_EQ(topic.GetRating(0, 1), 0.3);
  EXPECT_DOUBLE_EQ(topic.GetRating(1, 0), 0.8);
  EXPECT_DOUBLE_EQ(topic.GetRating(1, 1), 0.7);
}

TEST(TarvelinTopicDelete, LaterOptionsMoveDownWithTheirRatings) {
  TarvelinTopic topic = TopicWithWeightings({0.5, 0.5}, 3);
  topic.SetOptionName(2, "Third");
  topic.SetRating(2, 1, 0.9);
  topic.DeleteOption(1);
  ASSERT_EQ(topic.TotalOptions(), 2);
  EXPECT_EQ(topic.GetOptionName(1), "Third");
  EXPECT_EQ(topic.GetRating(1, 1), 0.9);
}

TEST(TarvelinTopicDelete, TheOnlyAttributeIsResetNotRemoved) {
  TarvelinTopic topic = TopicWithWeightings({0.3}, 2);
  topic.SetAttributeName(0, "Price");
  topic.SetRating(0, 0, 0.1);
  topic.SetRating(1, 0, 0.9);
  topic.SetNormaliseWeights(true);
  topic.DeleteAttribute(0);
  EXPECT_EQ(topic.TotalAttributes(), 1);
  EXPECT_EQ(topic.GetAttributeName(0), "Attribute 1");
  EXPECT_EQ(StoredWeightings(topic), std::vector<double>({0.5}));
  EXPECT_EQ(topic.GetRating(0, 0), 0.5);
  EXPECT_EQ(topic.GetRating(1, 0), 0.5);
}

TEST(TarvelinTopicDelete, TheOnlyOptionIsResetNotRemoved) {
  TarvelinTopic topic = TopicWithWeightings({0.5, 0.5});
  topic.SetOptionName(0, "Car");
  topic.SetRating(0, 0, 0.1);
  topic.SetRating(0, 1, 0.2);
  topic.DeleteOption(0);
  EXPECT_EQ(topic.TotalOptions(), 1);
  EXPECT_EQ(topic.GetOptionName(0), "Option 1");
  EXPECT_EQ(topic.GetRating(0, 0), 0.5);
  EXPECT_EQ(topic.GetRating(0, 1), 0.5);
}

TEST(TarvelinTopicCounts, BelowOneKeepsOneAndShrinkingKeepsTheFirstEntries) {
  TarvelinTopic topic;
  for (const int16_t count : {int16_t{0}, int16_t{-3}}) {
    topic.SetTotalAttributes(3);
    topic.SetTotalOptions(3);
    topic.SetAttributeName(0, "First");
    topic.SetOptionName(0, "Only");
    topic.SetTotalAttributes(count);
    topic.SetTotalOptions(count);
    EXPECT_EQ(topic.TotalAttributes(), 1);
    EXPECT_EQ(topic.TotalOptions(), 1);
    EXPECT_EQ(topic.GetAttributeName(0), "First");
    EXPECT_EQ(topic.GetOptionName(0), "Only");
  }
}

TEST(TarvelinTopicCounts, GrowingAddsUnnamedEntriesRatedOneHalf) {
  TarvelinTopic topic;
  topic.SetRating(0, 0, 0.2);
  topic.SetTotalOptions(3);
  topic.SetTotalAttributes(4);
  EXPECT_EQ(topic.TotalOptions(), 3);
  EXPECT_EQ(topic.TotalAttributes(), 4);
  EXPECT_EQ(topic.GetOptionName(2), "Option 3");
  EXPECT_EQ(topic.GetAttributeName(3), "Attribute 4");
  EXPECT_EQ(topic.GetRating(0, 0), 0.2);
  EXPECT_EQ(topic.GetRating(2, 3), 0.5);
  EXPECT_EQ(StoredWeightings(topic), std::vector<double>({0.5, 0.5, 0.5, 0.5}));
}

// Counts are read as 16-bit numbers, so 32767 entries are the most a topic can hold.
TEST(TarvelinTopicCounts, GrowingPast32767RaisesOverflowAndChangesNothing) {
  constexpr int16_t most = std::numeric_limits<int16_t>::max();
  TarvelinTopic manyOptions;
  manyOptions.SetTotalOptions(most);
  TarvelinTopic manyAttributes;
  manyAttributes.SetTotalAttributes(most);
  const std::vector<std::function<void()>> growthsPastTheEnd = {[&] { manyOptions.AddOption("x"); },
                                                                [&] { manyAttributes.AddAttribute("x"); }};
  for (const auto& grow : growthsPastTheEnd) {
    try {
      grow();
      ADD_FAILURE() << "no overflow raised";
    } catch (const TarvelinError& error) {
      EXPECT_EQ(error.Number(), 6);
      EXPECT_EQ(error.Description(), "Overflow");
    }
  }
  EXPECT_EQ(manyOptions.TotalOptions(), most);
  EXPECT_EQ(manyOptions.GetOptionName(most - 1), "Option 32767");
  EXPECT_EQ(manyAttributes.TotalAttributes(), most);
  EXPECT_EQ(manyAttributes.GetAttributeName(most - 1), "Attribute 32767");
}

TEST(TarvelinTopicDefaultWeighting, NormalisedNewAttributeTakesTheMeanOfTheOthers) {
  TarvelinTopic topic = TopicWithWeightings({0.2, 0.6});
  topic.SetNormaliseWeights(true);
  topic.AddAttribute("New");
  EXPECT_DOUBLE_EQ(StoredWeightings(topic)[2], 0.4);
  EXPECT_EQ(StoredWeightings(topic)[0], 0.2);
  EXPECT_EQ(StoredWeightings(topic)[1], 0.6);
  EXPECT_EQ(topic.GetAttributeName(2), "New");
}

TEST(TarvelinTopicDefaultWeighting, ALoneAttributeLendsItsStoredWeightingNotItsWholeShare) {
  TarvelinTopic topic = TopicWithWeightings({0.3});
  topic.SetNormaliseWeights(true);
  topic.AddAttribute("");
  EXPECT_EQ(StoredWeightings(topic), std::vector<double>({0.3, 0.3}));
}

TEST(TarvelinTopicDefaultWeighting, TheMeanIsOfRoundedWeightingsAndIsStoredRounded) {
  TarvelinTopic topic = TopicWithWeightings({0.125, 0.145});
  topic.SetNormaliseWeights(true);
  topic.SetRounding(2);
  topic.AddAttribute("");
  // (0.12 + 0.14) / 2; the unrounded mean 0.135 would be stored as 0.14.
  EXPECT_DOUBLE_EQ(StoredWeightings(topic)[2], 0.13);
  EXPECT_EQ(StoredWeightings(topic)[0], 0.125);
}

TEST(TarvelinTopicRounding, ZeroMeansOnePlaceAndAnyNegativeMeansNone) {
  TarvelinTopic topic;
  const std::vector<std::pair<int16_t, int16_t>> writtenAndRead = {{0, 1}, {-7, -1}, {-32768, -1}, {5, 5}};
  for (const auto& [written, read] : writtenAndRead) {
    topic.SetRounding(written);
    EXPECT_EQ(topic.Rounding(), read) << written;
  }
}

TEST(TarvelinTopicWeighting, ALoneAttributeAlwaysWeighsOne) {
  TarvelinTopic topic;
  topic.SetWeighting(0, 0.3);
  topic.SetRating(0, 0, 0.37);
  for (const bool normalise : {false, true}) {
    topic.SetNormaliseWeights(normalise);
    topic.SetRounding(1);
    EXPECT_EQ(topic.GetWeighting(0), 1.0);
    EXPECT_EQ(topic.GetScore(0), 0.4);
    topic.SetRounding(-1);
    topic.SetInvertWeights(true);
    EXPECT_DOUBLE_EQ(topic.GetScore(0), 0.63);
    topic.SetInvertWeights(false);
  }
}

TEST(TarvelinTopicWeighting, NormalisedShareIsOneOverSumOverWeighting) {
  TarvelinTopic topic = TopicWithWeightings({0.01, 0.02, 0.37});
  topic.SetRating(0, 0, 1.0);
  topic.SetRating(0, 1, 0.0);
  topic.SetRating(0, 2, 0.0);
  const double sum = 0.01 + 0.02 + 0.37;
  // The direct quotient differs in the last bit here; scores compared for ties must agree on the form.
  ASSERT_NE(0.01 / sum, 1.0 / (sum / 0.01));
  EXPECT_EQ(topic.GetScore(0), 1.0 / (sum / 0.01));
  topic.SetNormaliseWeights(true);
  EXPECT_EQ(topic.GetWeighting(0), 1.0 / (sum / 0.01));
  EXPECT_EQ(topic.GetWeighting(2), 1.0 / (sum / 0.37));
}

TEST(TarvelinTopicWeighting, NormalisationAppliesToReadingButScoresAlwaysUseShares) {
  TarvelinTopic topic = TopicWithWeightings({0.2, 0.6});
  topic.SetRating(0, 0, 1.0);
  topic.SetRating(0, 1, 0.0);
  EXPECT_EQ(topic.GetWeighting(0), 0.2);
  EXPECT_EQ(topic.GetWeighting(1), 0.6);
  EXPECT_DOUBLE_EQ(topic.GetScore(0), 0.25);
  topic.SetNormaliseWeights(true);
  EXPECT_DOUBLE_EQ(topic.GetWeighting(0), 0.25);
  EXPECT_DOUBLE_EQ(topic.GetWeighting(1), 0.75);
  EXPECT_DOUBLE_EQ(topic.GetScore(0), 0.25);
}

TEST(TarvelinTopicWeighting, AllZeroWeightingsShareEqually) {
  TarvelinTopic topic = TopicWithWeightings({0.0, 0.0, 0.0});
  topic.SetRating(0, 0, 0.2);
  topic.SetRating(0, 1, 0.5);
  topic.SetRating(0, 2, 0.8);
  EXPECT_DOUBLE_EQ(topic.GetScore(0), 0.5);
  topic.SetNormaliseWeights(true);
  EXPECT_DOUBLE_EQ(topic.GetWeighting(1), 1.0 / 3.0);
}

TEST(TarvelinTopicWeighting, ReadingRoundsToEvenOnATie) {
  TarvelinTopic topic = TopicWithWeightings({0.125, 0.375});
  topic.SetRounding(2);
  EXPECT_EQ(topic.GetWeighting(0), 0.12);
  EXPECT_EQ(topic.GetWeighting(1), 0.38);
  topic.SetNormaliseWeights(true);
  topic.SetRounding(1);
  EXPECT_EQ(topic.GetWeighting(0), 0.2);
  EXPECT_EQ(topic.GetWeighting(1), 0.8);
}

TEST(TarvelinTopicScore, UsesTheUnroundedShares) {
  TarvelinTopic topic = TopicWithWeightings({0.1, 0.2});
  topic.SetRating(0, 0, 0.0);
  topic.SetRating(0, 1, 0.8);
  topic.SetNormaliseWeights(true);
  topic.SetRounding(2);
  ASSERT_EQ(topic.GetWeighting(1), 0.67);
  // 2/3 * 0.8 = 0.5333; the rounded share would give 0.536 and so 0.54.
  EXPECT_EQ(topic.GetScore(0), 0.53);
}

TEST(TarvelinTopicSetWeighting, WithoutNormalisationOnlyTheOneChanges) {
  TarvelinTopic topic = TopicWithWeightings({0.5, 0.5, 0.5});
  topic.SetWeighting(1, 0.9);
  EXPECT_EQ(StoredWeightings(topic), std::vector<double>({0.5, 0.9, 0.5}));
}

// Names a parameterised case after its Label.
template <typename Case>
std::string LabelOfCase(const ::testing::TestParamInfo<Case>& Info) {
  return Info.param.Label;
}

struct RescaleCase {
  const char* Label;
  std::vector<double> Before;
  double Weighting;
  int16_t Rounding;
  std::vector<double> After;
};

class TarvelinTopicRescale : public ::testing::TestWithParam<RescaleCase> {};

TEST_P(TarvelinTopicRescale, OthersKeepTheirSharesOfTheRemainder) {
  const RescaleCase& example = GetParam();
  TarvelinTopic topic;
  topic.SetTotalAttributes(static_cast<int16_t>(example.Before.size()));
  for (size_t i = 0; i < example.Before.size(); ++i) {
    topic.SetWeighting(static_cast<int16_t>(i), example.Before[i]);
  }
  topic.SetNormaliseWeights(true);
  topic.SetRounding(example.Rounding);
  topic.SetWeighting(0, example.Weighting);
  const std::vector<double> after = StoredWeightings(topic);
  ASSERT_EQ(after.size(), example.After.size());
  for (size_t i = 0; i < after.size(); ++i) {
    EXPECT_NEAR(after[i], example.After[i], 1e-15) << "attribute " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TarvelinTopicRescale,
    ::testing::Values(RescaleCase{"EqualThirds", {0.5, 0.5, 0.5}, 0.5, -1, {0.5, 0.25, 0.25}},
                      RescaleCase{"AllZeroSharesEqually", {0.0, 0.0, 0.0}, 0.4, -1, {0.4, 0.3, 0.3}},
                      RescaleCase{"OthersZeroSplitEvenly", {0.5, 0.0, 0.0}, 0.4, -1, {0.4, 0.3, 0.3}},
                      RescaleCase{"FullWeightZeroesTheRest", {0.2, 0.3, 0.5}, 1.0, -1, {1.0, 0.0, 0.0}},
                      // Shares 0.3 and 0.5 of the old sum; written one by one, the second would be re-read
                      // from a sum already changed.
                      RescaleCase{"SharesTakenBeforeWriting", {0.2, 0.3, 0.5}, 0.6, -1, {0.6, 0.15, 0.25}},
                      // 0.46 is stored as 0.5; the shares 0.28/0.88 and 0.6/0.88 are rounded to 0.3 and 0.6
                      // first, and the results, 1/6 and 1/3, are not rounded.
                      RescaleCase{"RoundedSharesUnroundedResults", {0.12, 0.28, 0.6}, 0.46, 1, {0.5, 1.0 / 6, 1.0 / 3}},
                      RescaleCase{"LoneAttribute", {0.7}, 0.3, -1, {0.3}}),
    LabelOfCase<RescaleCase>);

TEST(TarvelinTopicRating, StoredExactlyReadRoundedNeverInverted) {
  TarvelinTopic topic = TopicWithWeightings({0.5, 0.5});
  topic.SetRating(0, 0, 0.125);
  topic.SetRating(0, 1, 0.0);
  topic.SetRounding(2);
  topic.SetInvertWeights(true);
  EXPECT_EQ(topic.GetRating(0, 0), 0.12);
  EXPECT_EQ(topic.GetRating(0, 1), 0.0);
  topic.SetRounding(-1);
  EXPECT_EQ(topic.GetRating(0, 0), 0.125);
}

TEST(TarvelinTopicScore, IsTheWeightedMeanOfTheRatings) {
  TarvelinTopic topic = TopicWithWeightings({0.2, 0.6}, 2);
  topic.SetRating(0, 0, 0.5);
  topic.SetRating(0, 1, 0.9);
  topic.SetRating(1, 0, 0.0);
  topic.SetRating(1, 1, 0.0);
  EXPECT_DOUBLE_EQ(topic.GetScore(0), 0.25 * 0.5 + 0.75 * 0.9);
  EXPECT_EQ(topic.GetScore(1), 0.0);
  topic.SetInvertWeights(true);
  EXPECT_DOUBLE_EQ(topic.GetScore(0), 0.25 * 0.5 + 0.75 * 0.1);
  EXPECT_DOUBLE_EQ(topic.GetScore(1), 1.0);
  EXPECT_EQ(topic.GetRating(1, 0), 0.0);
}

TEST(TarvelinTopicScore, RoundedToTheNearestEvenOnATie) {
  TarvelinTopic topic = TopicWithWeightings({0.5, 0.5}, 2);
  topic.SetRating(0, 0, 0.125);
  topic.SetRating(0, 1, 0.125);
  topic.SetRating(1, 0, 0.25);
  topic.SetRating(1, 1, 0.5);
  topic.SetRounding(2);
  EXPECT_EQ(topic.GetScore(0), 0.12);
  EXPECT_EQ(topic.GetScore(1), 0.38);
}

TEST(TarvelinTopicDebugInfo, DumpsTheTopicAndChangesNothing) {
  TarvelinTopic topic = TopicWithWeightings({0.2, 0.6}, 2);
  topic.SetName("Which car");
  const std::string before = Snapshot(topic);
  std::ostringstream captured;
  auto* const original = std::clog.rdbuf(captured.rdbuf());
  topic.OutputDebugInfo();
  std::clog.rdbuf(original);
  EXPECT_EQ(Snapshot(topic), before);
  for (const char* fragment : {"Topic: [Which car] Desc: [", "InvertWeights:", "(normalised: ", "Attribute(s):",
                               "Option(s):", "Attribute 2", "Option 2"}) {
    EXPECT_NE(captured.str().find(fragment), std::string::npos) << fragment;
  }
}

TEST(TarvelinTopicErrors, NumbersAreTheObjectErrorsFrom1001) {
  EXPECT_EQ(ErrAttributeNotFound, -2147220503);
  EXPECT_EQ(ErrOptionNotFound, -2147220502);
  EXPECT_EQ(ErrInvalidValue, -2147220501);
}

struct ErrorCase {
  const char* Label;
  std::function<void(TarvelinTopic&)> Call;
  int32_t Number;
  const char* Message;
};

class TarvelinTopicError : public ::testing::TestWithParam<ErrorCase> {};

// On a topic with 2 options and 3 attributes, normalised and rounded, so that a partial change would show.
TEST_P(TarvelinTopicError, RaisesItsNumberAndMessageAndChangesNothing) {
  TarvelinTopic topic = TopicWithWeightings({0.2, 0.3, 0.5}, 2);
  topic.SetRating(1, 2, 0.125);
  topic.SetNormaliseWeights(true);
  topic.SetRounding(2);
  const std::string before = Snapshot(topic);
  try {
    GetParam().Call(topic);
    ADD_FAILURE() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Number(), GetParam().Number);
    EXPECT_EQ(error.Description(), GetParam().Message);
    EXPECT_EQ(error.Source(), "");
  }
  EXPECT_EQ(Snapshot(topic), before);
}

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Cases, TarvelinTopicError,
    ::testing::Values(ErrorCase{"GetAttributeNameNegative", [](TarvelinTopic& topic) { topic.GetAttributeName(-1); },
                                ErrAttributeNotFound, "Attribute -1 not found in GetAttributeName()."},
                      ErrorCase{"GetAttributeNamePastEnd", [](TarvelinTopic& topic) { topic.GetAttributeName(3); },
                                ErrAttributeNotFound, "Attribute 3 not found in GetAttributeName()."},
                      ErrorCase{"SetAttributeName", [](TarvelinTopic& topic) { topic.SetAttributeName(3, "x"); },
                                ErrAttributeNotFound, "Attribute 3 not found in SetAttributeName()."},
                      ErrorCase{"GetOptionNameNegative", [](TarvelinTopic& topic) { topic.GetOptionName(-1); },
                                ErrOptionNotFound, "Option -1 not found in GetOptionName()."},
                      ErrorCase{"GetOptionNamePastEnd", [](TarvelinTopic& topic) { topic.GetOptionName(2); },
                                ErrOptionNotFound, "Option 2 not found in GetOptionName()."},
                      ErrorCase{"SetOptionName", [](TarvelinTopic& topic) { topic.SetOptionName(-32768, "x"); },
                                ErrOptionNotFound, "Option -32768 not found in SetOptionName()."},
                      ErrorCase{"DeleteAttribute", [](TarvelinTopic& topic) { topic.DeleteAttribute(3); },
                                ErrAttributeNotFound, "Attribute 3 not found in DeleteAttribute()."},
                      ErrorCase{"DeleteOption", [](TarvelinTopic& topic) { topic.DeleteOption(-1); }, ErrOptionNotFound,
                                "Option -1 not found in DeleteOption()."},
                      ErrorCase{"SetWeightingAttribute", [](TarvelinTopic& topic) { topic.SetWeighting(3, 2.0); },
                                ErrAttributeNotFound, "Attribute 3 not found in SetWeighting()."},
                      ErrorCase{"SetWeightingBelowZero", [](TarvelinTopic& topic) { topic.SetWeighting(0, -0.0001); },
                                ErrInvalidValue, "Invalid weighting supplied to SetWeighting()."},
                      ErrorCase{"SetWeightingAboveOne", [](TarvelinTopic& topic) { topic.SetWeighting(1, 1.0001); },
                                ErrInvalidValue, "Invalid weighting supplied to SetWeighting()."},
                      ErrorCase{"SetWeightingNaN", [](TarvelinTopic& topic) { topic.SetWeighting(1, NaN); },
                                ErrInvalidValue, "Invalid weighting supplied to SetWeighting()."},
                      ErrorCase{"GetWeighting", [](TarvelinTopic& topic) { topic.GetWeighting(-1); },
                                ErrAttributeNotFound, "Attribute -1 not found in GetWeighting()."},
                      ErrorCase{"SetRatingOptionFirst", [](TarvelinTopic& topic) { topic.SetRating(2, 3, 2.0); },
                                ErrOptionNotFound, "Option 2 not found in SetRating()."},
                      ErrorCase{"SetRatingAttributeBeforeValue",
                                [](TarvelinTopic& topic) { topic.SetRating(0, -1, 2.0); }, ErrAttributeNotFound,
                                "Attribute -1 not found in SetRating()."},
                      ErrorCase{"SetRatingAboveOne", [](TarvelinTopic& topic) { topic.SetRating(1, 2, 1.0001); },
                                ErrInvalidValue, "Invalid Rating supplied to SetRating()."},
                      ErrorCase{"SetRatingBelowZero", [](TarvelinTopic& topic) { topic.SetRating(1, 2, -0.0001); },
                                ErrInvalidValue, "Invalid Rating supplied to SetRating()."},
                      ErrorCase{"SetRatingNaN", [](TarvelinTopic& topic) { topic.SetRating(1, 2, NaN); },
                                ErrInvalidValue, "Invalid Rating supplied to SetRating()."},
                      ErrorCase{"GetRatingOptionFirst", [](TarvelinTopic& topic) { topic.GetRating(-1, -1); },
                                ErrOptionNotFound, "Option -1 not found in GetRating()."},
                      ErrorCase{"GetRatingAttribute", [](TarvelinTopic& topic) { topic.GetRating(1, 3); },
                                ErrAttributeNotFound, "Attribute 3 not found in GetRating()."},
                      ErrorCase{"GetScoreNamesGetRating", [](TarvelinTopic& topic) { topic.GetScore(2); },
                                ErrOptionNotFound, "Option 2 not found in GetRating()."}),
    LabelOfCase<ErrorCase>);

}  // namespace
}  // namespace tarvelin
