#include "insight/InsightText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "insight/TopicInsight.h"

namespace tarvelin {

namespace {

// Each side of a comparison names at most this many attributes.
constexpr std::size_t MostReasons = 3;
// A tie of more options than this names the first few and counts the rest.
constexpr std::size_t MostTiedNames = 3;

// "A", "A and B", "A, B and C".
std::string JoinedList(const std::vector<std::string>& Items) {
  std::string joined;
  for (std::size_t i = 0; i < Items.size(); ++i) {
    joined += i == 0 ? "" : (i + 1 == Items.size() ? " and " : ", ");
    joined += Items[i];
  }
  return joined;
}

// A difference too small to show in the display format is no difference to the reader.
bool ShowsAsZero(double Value, const NumberFormat& Format) {
  return Format(std::fabs(Value)) == Format(0.0);
}

std::string StaysBest(const TarvelinTopic& Topic, const ExactScores& Exact) {
  const int16_t best = Exact.Best();
  const bool tied = Exact.RunnerUp() >= 0 && Exact.AmongBest(Exact.RunnerUp());
  return Topic.GetOptionName(best) + (tied ? " stays among the best" : " stays best");
}

// Where the band lies, for a band with at least one end set by a rival.
std::string BandRange(const WeightingBand& Band, const std::string& Attribute, const NumberFormat& Format) {
  if (Band.LowerRival >= 0 && Band.UpperRival >= 0) {
    return " while " + Attribute + " is between " + Format(Band.Low) + " and " + Format(Band.High) + ".";
  }
  if (Band.UpperRival >= 0) {
    return " while " + Attribute + " is at most " + Format(Band.High) + ".";
  }
  return " while " + Attribute + (Band.Low == 0.0 ? " is above " : " is at least ") + Format(Band.Low) + ".";
}

std::string BandRivals(const TarvelinTopic& Topic, const WeightingBand& Band, const NumberFormat& Format) {
  // One rival's line crosses the best one's once, so the two ends have different rivals.
  if (Band.LowerRival >= 0 && Band.UpperRival >= 0) {
    return " Below, " + Topic.GetOptionName(Band.LowerRival) + " is best; above, " +
           Topic.GetOptionName(Band.UpperRival) + ".";
  }
  if (Band.UpperRival >= 0) {
    return " Above, " + Topic.GetOptionName(Band.UpperRival) + " is best.";
  }
  // A band from 0 with a rival is open there: the rival is best at 0 itself.
  const std::string where = Band.Low == 0.0 ? " At " + Format(0.0) + ", " : " Below, ";
  return where + Topic.GetOptionName(Band.LowerRival) + " is best.";
}

// One side of a comparison: the attributes on which Ahead gains most over Behind, largest first.
std::vector<std::string> Reasons(const TarvelinTopic& Topic, const ExactScores& Exact, int16_t Ahead, int16_t Behind,
                                 const NumberFormat& Format) {
  std::vector<std::pair<double, int16_t>> gains;
  for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
    const double gain = Exact.Share(i) * (Exact.Rating(Ahead, i) - Exact.Rating(Behind, i));
    if (gain > 0.0 && !ShowsAsZero(gain, Format)) {
      gains.emplace_back(gain, i);
    }
  }
  std::stable_sort(gains.begin(), gains.end(), [](const auto& A, const auto& B) { return A.first > B.first; });
  gains.resize(std::min(gains.size(), MostReasons));
  std::vector<std::string> reasons;
  for (const auto& [gain, attributeID] : gains) {
    reasons.push_back(Topic.GetAttributeName(attributeID) + " (+" + Format(gain) + ")");
  }
  return reasons;
}

std::string TiedText(const TarvelinTopic& Topic, const ExactScores& Exact) {
  std::vector<std::string> names;
  for (int16_t optionID = 0; optionID < Exact.TotalOptions(); ++optionID) {
    if (Exact.AmongBest(optionID)) {
      names.push_back(Topic.GetOptionName(optionID));
    }
  }
  if (names.size() == static_cast<std::size_t>(Exact.TotalOptions()) && names.size() > 2) {
    return "All " + std::to_string(names.size()) + " options are tied.";
  }
  if (names.size() > MostTiedNames + 1) {
    const std::size_t others = names.size() - MostTiedNames;
    names.resize(MostTiedNames);
    names.push_back(std::to_string(others) + " others");
  }
  return JoinedList(names) + " are tied.";
}

std::string FlipText(const TarvelinTopic& Topic, const TopicInsight& Insight, const NumberFormat& Format) {
  const std::optional<WinnerFlip> flip = Insight.ClosestFlip();
  if (!flip) {
    return " No single weighting can make another option best.";
  }
  return " Closest change: " + Topic.GetAttributeName(flip->AttributeID) + " weighting " + Format(flip->From) + " to " +
         Format(flip->To) + " makes " + Topic.GetOptionName(flip->NewBest) + " best.";
}

// A whole percentage, but never 0% or 100% for a share that is neither.
std::string HoldText(const HoldShareFigure& Hold, const NumberFormat& Format) {
  long percent = std::lround(Hold.Share * 100.0);
  if (Hold.Share > 0.0 && Hold.Share < 1.0) {
    percent = std::clamp(percent, 1L, 99L);
  }
  return " It holds in " + std::to_string(percent) + "% of weightings within " + Format(Hold.Radius) + " of these.";
}

}  // namespace

std::string WeightingBandText(const TarvelinTopic& Topic, int16_t AttributeID, const NumberFormat& Format) {
  return WeightingBandText(Topic, TopicInsight(Topic), AttributeID, Format);
}

std::string WeightingBandText(const TarvelinTopic& Topic, const TopicInsight& Insight, int16_t AttributeID,
                              const NumberFormat& Format) {
  const ExactScores& exact = Insight.Exact();
  const WeightingBand band = Insight.Band(AttributeID);
  const std::string attribute = Topic.GetAttributeName(AttributeID);
  if (exact.TotalOptions() == 1) {
    return Topic.GetOptionName(0) + " is the only option.";
  }
  if (exact.TotalAttributes() == 1) {
    return attribute + " is the only attribute, so its weighting cannot change the best option.";
  }
  if (band.LowerRival < 0 && band.UpperRival < 0) {
    return StaysBest(Topic, exact) + " at any weighting of " + attribute + ".";
  }
  return StaysBest(Topic, exact) + BandRange(band, attribute, Format) + BandRivals(Topic, band, Format);
}

std::string RatingTippingText(const TarvelinTopic& Topic, int16_t OptionID, int16_t AttributeID,
                              const NumberFormat& Format) {
  return RatingTippingText(Topic, TopicInsight(Topic), OptionID, AttributeID, Format);
}

std::string RatingTippingText(const TarvelinTopic& Topic, const TopicInsight& Insight, int16_t OptionID,
                              int16_t AttributeID, const NumberFormat& Format) {
  const std::optional<double> tipping = Insight.TippingPoint(OptionID, AttributeID);
  if (!tipping) {
    return "This rating alone cannot change the best option";
  }
  const ExactScores& exact = Insight.Exact();
  if (OptionID != exact.Best()) {
    return Topic.GetOptionName(OptionID) + " would tie the best at " + Format(*tipping) + " here";
  }
  return StaysBest(Topic, exact) + (Topic.InvertWeights() ? " up to " : " down to ") + Format(*tipping) + " here";
}

std::string InsightLineText(const TarvelinTopic& Topic, const NumberFormat& Format,
                            std::optional<HoldShareFigure> Hold) {
  return InsightLineText(Topic, TopicInsight(Topic), Format, Hold);
}

std::string InsightLineText(const TarvelinTopic& Topic, const TopicInsight& Insight, const NumberFormat& Format,
                            std::optional<HoldShareFigure> Hold) {
  const ExactScores& exact = Insight.Exact();
  const int16_t best = exact.Best();
  const int16_t runnerUp = exact.RunnerUp();
  if (runnerUp < 0) {
    return Topic.GetOptionName(best) + " is the only option.";
  }
  if (exact.AmongBest(runnerUp)) {
    return TiedText(Topic, exact);
  }
  const double lead = exact.Score(best) - exact.Score(runnerUp);
  const std::string margin = ShowsAsZero(lead, Format) ? " by a very small margin." : " by " + Format(lead) + ".";
  return Topic.GetOptionName(best) + " leads " + Topic.GetOptionName(runnerUp) + margin +
         FlipText(Topic, Insight, Format) + (Hold ? HoldText(*Hold, Format) : "");
}

std::string ScoreWhyText(const TarvelinTopic& Topic, int16_t OptionID, const NumberFormat& Format) {
  return ScoreWhyText(Topic, TopicInsight(Topic), OptionID, Format);
}

std::string ScoreWhyText(const TarvelinTopic& Topic, const TopicInsight& Insight, int16_t OptionID,
                         const NumberFormat& Format) {
  const ExactScores& exact = Insight.Exact();
  const int16_t best = exact.Best();
  const int16_t other = OptionID == best ? exact.RunnerUp() : OptionID;
  const std::string hovered = Topic.GetOptionName(OptionID);
  if (other < 0) {
    return hovered + " is the only option.";
  }
  const std::string leader = Topic.GetOptionName(best);
  const std::string follower = Topic.GetOptionName(other);
  const std::vector<std::string> ahead = Reasons(Topic, exact, best, other, Format);
  const std::vector<std::string> behind = Reasons(Topic, exact, other, best, Format);
  if (ahead.empty() && behind.empty()) {
    return exact.AmongBest(other)
               ? hovered + " equals " + (OptionID == best ? follower : leader) + " on every attribute."
               : leader + " beats " + follower + " by a very small margin.";
  }
  std::string text = exact.AmongBest(other) ? leader + " and " + follower + " are tied" : leader + " beats " + follower;
  if (!ahead.empty()) {
    text += exact.AmongBest(other) ? ": " + leader + " does better on " + JoinedList(ahead)
                                   : " mainly on " + JoinedList(ahead);
  }
  if (!behind.empty()) {
    text += (ahead.empty() ? ": " : "; ") + follower + " does better on " + JoinedList(behind);
  }
  return text + ".";
}

}  // namespace tarvelin
