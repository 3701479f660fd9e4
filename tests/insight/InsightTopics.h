#pragma once

#include <cstdint>
#include <vector>

#include "model/TarvelinTopic.h"

namespace tarvelin::testing {

// A topic with the given weightings and one row of ratings per option, stored as given.
inline TarvelinTopic MakeTopic(const std::vector<double>& Weightings, const std::vector<std::vector<double>>& Ratings,
                               bool Normalise = false, bool Invert = false) {
  TarvelinTopic topic;
  topic.SetTotalAttributes(static_cast<int16_t>(Weightings.size()));
  topic.SetTotalOptions(static_cast<int16_t>(Ratings.size()));
  for (size_t a = 0; a < Weightings.size(); ++a) {
    topic.SetWeighting(static_cast<int16_t>(a), Weightings[a]);
    for (size_t o = 0; o < Ratings.size(); ++o) {
      topic.SetRating(static_cast<int16_t>(o), static_cast<int16_t>(a), Ratings[o][a]);
    }
  }
  topic.SetNormaliseWeights(Normalise);
  topic.SetInvertWeights(Invert);
  return topic;
}

}  // namespace tarvelin::testing
