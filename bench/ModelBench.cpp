#include <benchmark/benchmark.h>

#include <cstdint>

#include "model/TarvelinTopic.h"

namespace {

using tarvelin::TarvelinTopic;

constexpr int16_t GridSize = 10;

// A full 10 x 10 topic with normalisation on, its weightings and ratings spread over 0 to 1.
TarvelinTopic FullTopic(int16_t Rounding) {
  TarvelinTopic topic;
  topic.SetTotalAttributes(GridSize);
  topic.SetTotalOptions(GridSize);
  for (int16_t attributeID = 0; attributeID < GridSize; ++attributeID) {
    topic.SetWeighting(attributeID, 0.05 + 0.09 * attributeID);
    for (int16_t optionID = 0; optionID < GridSize; ++optionID) {
      topic.SetRating(optionID, attributeID, ((optionID * 7 + attributeID * 3) % 11) / 10.0);
    }
  }
  topic.SetNormaliseWeights(true);
  topic.SetRounding(Rounding);
  return topic;
}

// What the main window does on every slider movement: score every option. The argument is the rounding
// setting: -1 for none, 3 for the one new and loaded topics get.
void BM_ScoreAllOptions(benchmark::State& state) {
  const TarvelinTopic topic = FullTopic(static_cast<int16_t>(state.range(0)));
  for (auto _ : state) {
    for (int16_t optionID = 0; optionID < GridSize; ++optionID) {
      benchmark::DoNotOptimize(topic.GetScore(optionID));
    }
  }
}
BENCHMARK(BM_ScoreAllOptions)->Arg(-1)->Arg(3);

// Moving one weighting slider with normalisation on rescales the nine others.
void BM_SetWeightingNormalised(benchmark::State& state) {
  TarvelinTopic topic = FullTopic(static_cast<int16_t>(state.range(0)));
  int position = 0;
  for (auto _ : state) {
    topic.SetWeighting(static_cast<int16_t>(position % GridSize), (position % 101) / 100.0);
    ++position;
  }
}
BENCHMARK(BM_SetWeightingNormalised)->Arg(-1)->Arg(3);

}  // namespace
