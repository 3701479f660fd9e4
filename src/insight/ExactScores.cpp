#include "insight/ExactScores.h"

#include <cstddef>

namespace tarvelin {

// The topic reads its values rounded and, with normalisation on, as shares; a copy with both off gives the
// stored values themselves.
ExactScores::ExactScores(const TarvelinTopic& Topic)
    : normalised_(Topic.NormaliseWeights()), inverted_(Topic.InvertWeights()) {
  if (Topic.Rounding() == -1 && !Topic.NormaliseWeights()) {
    pReadWeightings(Topic);
    pReadRatings(Topic);
  } else {
    TarvelinTopic stored = Topic;
    stored.SetRounding(-1);
    stored.SetNormaliseWeights(false);
    pReadWeightings(stored);
    pReadRatings(stored);
  }
  runnerUp_ = pBestExcept(best_);
}

int16_t ExactScores::pBestExcept(int16_t Excluded) const {
  int16_t best = -1;
  for (int16_t optionID = 0; optionID < TotalOptions(); ++optionID) {
    if (optionID != Excluded && (best == -1 || scores_[optionID] > scores_[best])) {
      best = optionID;
    }
  }
  return best;
}

// The shares as the topic's score takes them: 1 for a lone attribute, an equal part when every weighting is
// 0, else 1 / (S / w) in that form, which can differ from w / S in the last bit.
void ExactScores::pReadWeightings(const TarvelinTopic& Topic) {
  const int16_t attributes = Topic.TotalAttributes();
  stored_.resize(attributes);
  double total = 0.0;
  for (int16_t attributeID = 0; attributeID < attributes; ++attributeID) {
    stored_[attributeID] = Topic.GetWeighting(attributeID);
    total += stored_[attributeID];
  }
  shares_.resize(attributes);
  for (int16_t attributeID = 0; attributeID < attributes; ++attributeID) {
    const double weighting = stored_[attributeID];
    if (attributes == 1) {
      shares_[attributeID] = 1.0;
    } else if (total == 0.0) {
      shares_[attributeID] = 1.0 / static_cast<double>(attributes);
    } else {
      shares_[attributeID] = weighting == 0.0 ? 0.0 : 1.0 / (total / weighting);
    }
  }
}

void ExactScores::pReadRatings(const TarvelinTopic& Topic) {
  const int16_t attributes = TotalAttributes();
  const int16_t options = Topic.TotalOptions();
  ratings_.resize(static_cast<std::size_t>(options) * static_cast<std::size_t>(attributes));
  scores_.assign(options, 0.0);
  best_ = 0;
  for (int16_t optionID = 0; optionID < options; ++optionID) {
    for (int16_t attributeID = 0; attributeID < attributes; ++attributeID) {
      const double rating = Topic.GetRating(optionID, attributeID);
      const double effective = inverted_ ? 1.0 - rating : rating;
      ratings_[static_cast<std::size_t>(optionID) * attributes + attributeID] = effective;
      scores_[optionID] += shares_[attributeID] * effective;
    }
    if (scores_[optionID] > scores_[best_]) {
      best_ = optionID;
    }
  }
}

}  // namespace tarvelin
