#include "insight/TopicInsight.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "insight/ExactScores.h"

namespace tarvelin {

namespace {

// Scores are sums of a few products of numbers from 0 to 1, so they carry errors near 1e-16. Differences
// below this are such errors, not the topic's: lines whose slopes differ by less are parallel, and a tie
// point this close to either end of the range is that end.
constexpr double Tolerance = 1e-12;

// The points of the hold share's sample: enough for a percentage to settle within about a point.
constexpr int HoldShareSamples = 2048;

void CheckAttribute(const ExactScores& Exact, int16_t AttributeID, const std::string& Operation) {
  if (AttributeID < 0 || AttributeID >= Exact.TotalAttributes()) {
    throw TarvelinError(ErrAttributeNotFound, "",
                        "Attribute " + std::to_string(AttributeID) + " not found in " + Operation + "().");
  }
}

void CheckOption(const ExactScores& Exact, int16_t OptionID, const std::string& Operation) {
  if (OptionID < 0 || OptionID >= Exact.TotalOptions()) {
    throw TarvelinError(ErrOptionNotFound, "",
                        "Option " + std::to_string(OptionID) + " not found in " + Operation + "().");
  }
}

// One option's score while only one attribute's share t moves and the others keep their proportions:
// Rest at t = 0, Own (the option's rating for that attribute) at t = 1, a straight line between.
struct ScoreLine {
  double Rest = 0;
  double Own = 0;
  double Slope() const { return Own - Rest; }
};

// When the other attributes have no share between them, setting the weighting gives each an equal part.
std::vector<ScoreLine> LinesFor(const ExactScores& Exact, int16_t AttributeID) {
  double othersShare = 0.0;
  for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
    othersShare += i == AttributeID ? 0.0 : Exact.Share(i);
  }
  const bool equalParts = othersShare == 0.0;
  const double divisor = equalParts ? Exact.TotalAttributes() - 1.0 : othersShare;
  std::vector<ScoreLine> lines(Exact.TotalOptions());
  for (int16_t optionID = 0; optionID < Exact.TotalOptions(); ++optionID) {
    double rest = 0.0;
    for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
      if (i != AttributeID) {
        rest += (equalParts ? 1.0 : Exact.Share(i)) * Exact.Rating(optionID, i);
      }
    }
    lines[optionID] = ScoreLine{rest / divisor, Exact.Rating(optionID, AttributeID)};
  }
  return lines;
}

double OthersStored(const ExactScores& Exact, int16_t AttributeID) {
  double total = 0.0;
  for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
    total += i == AttributeID ? 0.0 : Exact.StoredWeighting(i);
  }
  return total;
}

// How a weighting x maps to its share t. With normalisation on, SetWeighting rescales the others to 1 - x, so
// t = x. Without, the others stay as stored (W in all): t = x / (W + x), at most 1 / (1 + W).
struct ShareAxis {
  bool Normalised = false;
  double Others = 0;
  double MaxShare() const { return Normalised ? 1.0 : 1.0 / (1.0 + Others); }
  double WeightingAt(double Share) const {
    return Normalised ? Share : std::clamp(Others * Share / (1.0 - Share), 0.0, 1.0);
  }
};

// Of two rivals that tie the best at the same share, the one ahead just beyond it; the lower number on a tie.
bool AheadBeyond(const std::vector<ScoreLine>& Lines, int16_t Candidate, int16_t Current, bool Below) {
  if (Current < 0) {
    return true;
  }
  return Below ? Lines[Candidate].Slope() < Lines[Current].Slope() : Lines[Candidate].Slope() > Lines[Current].Slope();
}

// Every rival whose line crosses the best one's bounds the band on one side; the nearest crossings are the ends.
WeightingBand LinearBand(const ExactScores& Exact, int16_t AttributeID, const ShareAxis& Axis) {
  const std::vector<ScoreLine> lines = LinesFor(Exact, AttributeID);
  const int16_t best = Exact.Best();
  double lowShare = 0.0;
  double highShare = Axis.MaxShare();
  WeightingBand band;
  for (int16_t rival = 0; rival < Exact.TotalOptions(); ++rival) {
    const double gain = lines[best].Slope() - lines[rival].Slope();
    if (rival == best || std::fabs(gain) <= Tolerance) {
      continue;
    }
    const double tie = (lines[rival].Rest - lines[best].Rest) / gain;
    if (gain > 0.0 && (tie > lowShare || (tie == lowShare && AheadBeyond(lines, rival, band.LowerRival, true)))) {
      lowShare = tie;
      band.LowerRival = rival;
    } else if (gain < 0.0 &&
               (tie < highShare || (tie == highShare && AheadBeyond(lines, rival, band.UpperRival, false)))) {
      highShare = tie;
      band.UpperRival = rival;
    }
  }
  if (lowShare <= Tolerance) {
    band.LowerRival = -1;
  }
  if (highShare >= Axis.MaxShare() - Tolerance) {
    band.UpperRival = -1;
  }
  const double current = Exact.Weighting(AttributeID);
  band.Low = band.LowerRival < 0 ? 0.0 : std::min(Axis.WeightingAt(lowShare), current);
  band.High = band.UpperRival < 0 ? 1.0 : std::max(Axis.WeightingAt(highShare), current);
  return band;
}

// The best option among scores given by Score(OptionID).
template <typename ScoreOf>
int16_t BestBy(const ExactScores& Exact, ScoreOf Score) {
  int16_t best = 0;
  for (int16_t optionID = 1; optionID < Exact.TotalOptions(); ++optionID) {
    if (Score(optionID) > Score(best)) {
      best = optionID;
    }
  }
  return best;
}

// Without normalisation and with every other weighting 0, any weighting above 0 gives this attribute the
// whole score, while 0 itself leaves every weighting 0, and then every attribute counts equally.
WeightingBand SteppedBand(const ExactScores& Exact, int16_t AttributeID) {
  const double equalShare = 1.0 / Exact.TotalAttributes();
  const auto equalParts = [&](int16_t OptionID) {
    double score = 0.0;
    for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
      score += equalShare * Exact.Rating(OptionID, i);
    }
    return score;
  };
  const auto wholeScore = [&](int16_t OptionID) { return Exact.Rating(OptionID, AttributeID); };
  const int16_t best = Exact.Best();
  WeightingBand band;
  if (Exact.StoredWeighting(AttributeID) > 0.0) {
    const int16_t bestAtZero = BestBy(Exact, equalParts);
    band.LowerRival = equalParts(best) == equalParts(bestAtZero) ? -1 : bestAtZero;
  } else {
    const int16_t bestAbove = BestBy(Exact, wholeScore);
    band.UpperRival = wholeScore(best) == wholeScore(bestAbove) ? -1 : bestAbove;
    band.High = band.UpperRival < 0 ? 1.0 : 0.0;
  }
  return band;
}

// Ends within the tolerance of the range's ends are those ends.
double SnappedToRange(double Value) {
  if (std::fabs(Value) <= Tolerance) {
    return 0.0;
  }
  return std::fabs(Value - 1.0) <= Tolerance ? 1.0 : Value;
}

// The additive recurrence of the generalised golden ratio: well spread in any number of dimensions.
std::vector<double> SampleSteps(int16_t Dimensions) {
  double ratio = 2.0;
  for (int iteration = 0; iteration < 64; ++iteration) {
    ratio = std::pow(1.0 + ratio, 1.0 / (Dimensions + 1.0));
  }
  std::vector<double> steps(Dimensions);
  double power = 1.0;
  for (double& step : steps) {
    power /= ratio;
    step = power - std::floor(power);
  }
  return steps;
}

// The weightings the hold share draws from: each stored one +/- the radius, within 0 to 1.
struct WeightingBox {
  std::vector<double> Lows;
  std::vector<double> Widths;
};

WeightingBox BoxAround(const ExactScores& Exact, double Radius) {
  const double radius = std::max(Radius, 0.0);
  WeightingBox box;
  for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
    box.Lows.push_back(std::max(Exact.StoredWeighting(i) - radius, 0.0));
    box.Widths.push_back(std::min(Exact.StoredWeighting(i) + radius, 1.0) - box.Lows.back());
  }
  return box;
}

// The best option's lead over a rival, weighted, is smallest at one corner of the box: where each attribute on
// which the best one leads weighs least and each on which it trails weighs most.
bool CanOvertake(const ExactScores& Exact, const WeightingBox& Box, int16_t Rival) {
  double worst = 0.0;
  for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
    const double lead = Exact.Rating(Exact.Best(), i) - Exact.Rating(Rival, i);
    worst += lead * (lead > 0.0 ? Box.Lows[i] : Box.Lows[i] + Box.Widths[i]);
  }
  return worst < 0.0;
}

// The best option's lead over each rival that can overtake it somewhere in the box, attribute by attribute:
// for each attribute, one value per such rival.
struct RivalLeads {
  std::size_t Rivals = 0;
  std::vector<double> Leads;
};

RivalLeads LeadsOfBest(const ExactScores& Exact, const WeightingBox& Box) {
  std::vector<int16_t> rivals;
  for (int16_t rival = 0; rival < Exact.TotalOptions(); ++rival) {
    if (rival != Exact.Best() && CanOvertake(Exact, Box, rival)) {
      rivals.push_back(rival);
    }
  }
  RivalLeads leads{rivals.size(), {}};
  for (int16_t i = 0; i < Exact.TotalAttributes(); ++i) {
    for (const int16_t rival : rivals) {
      leads.Leads.push_back(Exact.Rating(Exact.Best(), i) - Exact.Rating(rival, i));
    }
  }
  return leads;
}

// Whether every rival's weighted lead is at least 0 (dividing by the weightings' sum changes no sign; all
// weightings 0, where every attribute counts equally, is only drawn when it is the topic's own state). Summing
// rival by rival in the inner loop keeps the sums independent, so the loop runs on vector registers.
bool LeadsHold(const RivalLeads& Leads, const std::vector<double>& Weightings, std::vector<double>& Sums) {
  std::fill(Sums.begin(), Sums.end(), 0.0);
  for (std::size_t i = 0; i < Weightings.size(); ++i) {
    for (std::size_t rival = 0; rival < Leads.Rivals; ++rival) {
      Sums[rival] += Weightings[i] * Leads.Leads[i * Leads.Rivals + rival];
    }
  }
  return std::all_of(Sums.begin(), Sums.end(), [](double Sum) { return Sum >= 0.0; });
}

}  // namespace

WeightingBand GetWeightingBand(const TarvelinTopic& Topic, int16_t AttributeID) {
  return TopicInsight(Topic).Band(AttributeID);
}

std::optional<WinnerFlip> ClosestWinnerFlip(const TarvelinTopic& Topic) {
  return TopicInsight(Topic).ClosestFlip();
}

std::optional<double> RatingTippingPoint(const TarvelinTopic& Topic, int16_t OptionID, int16_t AttributeID) {
  return TopicInsight(Topic).TippingPoint(OptionID, AttributeID);
}

double ScoreContribution(const TarvelinTopic& Topic, int16_t OptionID, int16_t AttributeID) {
  return TopicInsight(Topic).Contribution(OptionID, AttributeID);
}

double BestOptionHoldShare(const TarvelinTopic& Topic, double Radius) {
  return TopicInsight(Topic).HoldShare(Radius);
}

WeightingBand TopicInsight::Band(int16_t AttributeID) const {
  CheckAttribute(exact_, AttributeID, "GetWeightingBand");
  return pBand(AttributeID);
}

std::optional<WinnerFlip> TopicInsight::ClosestFlip() const {
  std::optional<WinnerFlip> closest;
  const auto consider = [&](int16_t AttributeID, double To, int16_t NewBest) {
    const double from = exact_.Weighting(AttributeID);
    if (NewBest >= 0 && (!closest || std::fabs(To - from) < std::fabs(closest->To - closest->From))) {
      closest = WinnerFlip{AttributeID, from, To, NewBest};
    }
  };
  for (int16_t attributeID = 0; attributeID < exact_.TotalAttributes(); ++attributeID) {
    const WeightingBand band = pBand(attributeID);
    consider(attributeID, band.Low, band.LowerRival);
    consider(attributeID, band.High, band.UpperRival);
  }
  return closest;
}

// The best option's score falls with its rating until it meets the best of the others; another option's
// rises until it meets the best. Both move along a straight line through the cell's share.
std::optional<double> TopicInsight::TippingPoint(int16_t OptionID, int16_t AttributeID) const {
  CheckOption(exact_, OptionID, "RatingTippingPoint");
  CheckAttribute(exact_, AttributeID, "RatingTippingPoint");
  const int16_t best = exact_.Best();
  const int16_t target = OptionID == best ? exact_.RunnerUp() : best;
  const double share = exact_.Share(AttributeID);
  if (target < 0 || share == 0.0) {
    return std::nullopt;
  }
  const double gap = exact_.Score(target) - exact_.Score(OptionID);
  const double tipping = SnappedToRange(exact_.Rating(OptionID, AttributeID) + gap / share);
  const bool reachable = OptionID == best ? tipping > 0.0 : tipping <= 1.0;
  if (!reachable) {
    return std::nullopt;
  }
  return exact_.Inverted() ? 1.0 - tipping : tipping;
}

double TopicInsight::Contribution(int16_t OptionID, int16_t AttributeID) const {
  CheckOption(exact_, OptionID, "ScoreContribution");
  CheckAttribute(exact_, AttributeID, "ScoreContribution");
  return exact_.Share(AttributeID) * exact_.Rating(OptionID, AttributeID);
}

// Samples the box with a fixed sequence, so the same topic always gives the same share.
double TopicInsight::HoldShare(double Radius) const {
  const int16_t attributes = exact_.TotalAttributes();
  const WeightingBox box = BoxAround(exact_, Radius);
  const RivalLeads leads = LeadsOfBest(exact_, box);
  if (attributes == 1 || leads.Rivals == 0) {
    return 1.0;
  }
  const std::vector<double> steps = SampleSteps(attributes);
  std::vector<double> position(attributes, 0.5);
  std::vector<double> weightings(attributes);
  std::vector<double> sums(leads.Rivals);
  int holding = 0;
  for (int sample = 0; sample < HoldShareSamples; ++sample) {
    for (int16_t i = 0; i < attributes; ++i) {
      position[i] += steps[i];
      position[i] -= position[i] >= 1.0 ? 1.0 : 0.0;
      weightings[i] = box.Lows[i] + box.Widths[i] * position[i];
    }
    holding += LeadsHold(leads, weightings, sums) ? 1 : 0;
  }
  return static_cast<double>(holding) / HoldShareSamples;
}

WeightingBand TopicInsight::pBand(int16_t AttributeID) const {
  if (exact_.TotalAttributes() == 1 || exact_.TotalOptions() == 1) {
    return WeightingBand{};
  }
  if (exact_.Normalised()) {
    return LinearBand(exact_, AttributeID, ShareAxis{true, 0.0});
  }
  const double others = OthersStored(exact_, AttributeID);
  return others == 0.0 ? SteppedBand(exact_, AttributeID) : LinearBand(exact_, AttributeID, ShareAxis{false, others});
}

}  // namespace tarvelin
