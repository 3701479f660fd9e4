#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/TarvelinTopic.h"

namespace tarvelin {

// The numbers a topic's scores are made of, read once and never rounded: each attribute's stored weighting
// and share, each option's ratings as the score reads them (inverted when InvertWeights) and its score
// summed in the topic's own order, so that it equals the topic's score before rounding to the last bit.
class ExactScores {
 public:
  explicit ExactScores(const TarvelinTopic& Topic);

  int16_t TotalAttributes() const { return static_cast<int16_t>(shares_.size()); }
  int16_t TotalOptions() const { return static_cast<int16_t>(scores_.size()); }
  bool Normalised() const { return normalised_; }
  bool Inverted() const { return inverted_; }
  // As stored, so not normalised; a lone attribute reads 1.0.
  double StoredWeighting(int16_t AttributeID) const { return stored_[AttributeID]; }
  // What SetWeighting takes and GetWeighting gives, unrounded: the share with normalisation on, else stored.
  double Weighting(int16_t AttributeID) const {
    return normalised_ ? Share(AttributeID) : StoredWeighting(AttributeID);
  }
  double Share(int16_t AttributeID) const { return shares_[AttributeID]; }
  double Rating(int16_t OptionID, int16_t AttributeID) const {
    return ratings_[static_cast<std::size_t>(OptionID) * shares_.size() + AttributeID];
  }
  double Score(int16_t OptionID) const { return scores_[OptionID]; }
  // The lowest-numbered option with the highest score.
  int16_t Best() const { return best_; }
  bool AmongBest(int16_t OptionID) const { return scores_[OptionID] == scores_[best_]; }
  // The best option once the best one is left out; -1 when there is no other option.
  int16_t RunnerUp() const { return runnerUp_; }

 private:
  void pReadWeightings(const TarvelinTopic& Topic);
  void pReadRatings(const TarvelinTopic& Topic);
  int16_t pBestExcept(int16_t Excluded) const;

  bool normalised_ = false;
  bool inverted_ = false;
  std::vector<double> stored_;
  std::vector<double> shares_;
  std::vector<double> ratings_;
  std::vector<double> scores_;
  int16_t best_ = 0;
  int16_t runnerUp_ = -1;
};

}  // namespace tarvelin
