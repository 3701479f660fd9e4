#pragma once

#include <cstdint>
#include <optional>

#include "insight/ExactScores.h"
#include "model/TarvelinTopic.h"

namespace tarvelin {

// How robust the best option is. Everything is computed from the topic's exact values: unrounded shares and
// ratings as the score reads them. "The best option" is the lowest-numbered option whose unrounded score equals
// the highest; "among the best" includes exact ties. An identifier out of range raises ErrAttributeNotFound or
// ErrOptionNotFound.

struct WeightingBand {
  double Low = 0, High = 1;
  int16_t LowerRival = -1, UpperRival = -1;
};
// The stretch [Low, High] of attribute k's weighting, in the units SetWeighting takes and GetWeighting gives
// (unrounded), over which the best option stays among the best when only that weighting is set as SetWeighting
// sets it (with normalisation on, the others rescale). Contains the current value. LowerRival / UpperRival: the
// option that is best just below Low / just above High; -1 where that end is 0 or 1 with no rival taking over.
// Without normalisation, when every other weighting is 0, 0 itself is a point of its own (every attribute then
// counts equally): a rival best only there is given as LowerRival with Low = 0.
WeightingBand GetWeightingBand(const TarvelinTopic& Topic, int16_t AttributeID);

struct WinnerFlip {
  int16_t AttributeID = 0;
  double From = 0, To = 0;
  int16_t NewBest = -1;
};
// The nearest band end set by a rival over all attributes (From = current value, To = that end, the tie point);
// nullopt when no single weighting can make another option the best.
std::optional<WinnerFlip> ClosestWinnerFlip(const TarvelinTopic& Topic);

// The rating of one cell at which, all else fixed, the best option stops being among the best (for a rating of
// the best option) or the option ties the best (for any other option); nullopt when no rating from 0 to 1 does it.
std::optional<double> RatingTippingPoint(const TarvelinTopic& Topic, int16_t OptionID, int16_t AttributeID);

// Share times effective rating: the attribute's part of the option's unrounded score (they sum to it).
double ScoreContribution(const TarvelinTopic& Topic, int16_t OptionID, int16_t AttributeID);

// The fraction of weightings, drawn uniformly from the box of every stored weighting +/- Radius (clamped to 0..1),
// under which the best option stays among the best. Deterministic: a fixed low-discrepancy sample.
double BestOptionHoldShare(const TarvelinTopic& Topic, double Radius);

// The same answers for one state of a topic, which is read once: a window that shows every band and tipping
// point at each change asks this, not the functions above, each of which reads the whole topic again.
class TopicInsight {
 public:
  explicit TopicInsight(const TarvelinTopic& Topic) : exact_(Topic) {}

  WeightingBand Band(int16_t AttributeID) const;
  std::optional<WinnerFlip> ClosestFlip() const;
  std::optional<double> TippingPoint(int16_t OptionID, int16_t AttributeID) const;
  double Contribution(int16_t OptionID, int16_t AttributeID) const;
  double HoldShare(double Radius) const;
  // The values everything is computed from.
  const ExactScores& Exact() const { return exact_; }

 private:
  WeightingBand pBand(int16_t AttributeID) const;

  ExactScores exact_;
};

}  // namespace tarvelin
