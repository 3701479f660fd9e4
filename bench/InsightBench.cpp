#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "insight/InsightText.h"
#include "insight/TopicInsight.h"
#include "model/TarvelinTopic.h"

namespace {

using tarvelin::TarvelinTopic;

constexpr int16_t GridSize = 10;

// A full 10 x 10 topic, its weightings and ratings spread over 0 to 1. The arguments are the normalisation and
// the rounding setting (-1 for none, 3 for the one new and loaded topics get).
TarvelinTopic FullTopic(bool Normalise, int16_t Rounding) {
  TarvelinTopic topic;
  topic.SetTotalAttributes(GridSize);
  topic.SetTotalOptions(GridSize);
  for (int16_t attributeID = 0; attributeID < GridSize; ++attributeID) {
    topic.SetWeighting(attributeID, 0.05 + 0.09 * attributeID);
    for (int16_t optionID = 0; optionID < GridSize; ++optionID) {
      topic.SetRating(optionID, attributeID, ((optionID * 7 + attributeID * 3) % 11) / 10.0);
    }
  }
  topic.SetNormaliseWeights(Normalise);
  topic.SetRounding(Rounding);
  return topic;
}

// Everything the window shows on a slider change: ten bands, the flip, a tipping point and a contribution for
// every cell.
void BM_InsightAll(benchmark::State& state) {
  const TarvelinTopic topic = FullTopic(state.range(0) != 0, static_cast<int16_t>(state.range(1)));
  for (auto _ : state) {
    for (int16_t attributeID = 0; attributeID < GridSize; ++attributeID) {
      benchmark::DoNotOptimize(tarvelin::GetWeightingBand(topic, attributeID));
    }
    benchmark::DoNotOptimize(tarvelin::ClosestWinnerFlip(topic));
    for (int16_t optionID = 0; optionID < GridSize; ++optionID) {
      for (int16_t attributeID = 0; attributeID < GridSize; ++attributeID) {
        benchmark::DoNotOptimize(tarvelin::RatingTippingPoint(topic, optionID, attributeID));
        benchmark::DoNotOptimize(tarvelin::ScoreContribution(topic, optionID, attributeID));
      }
    }
  }
}
BENCHMARK(BM_InsightAll)->ArgsProduct({{0, 1}, {-1, 3}})->Unit(benchmark::kMicrosecond);

// The same through one reading of the topic, as the window asks.
void BM_InsightAllAtOnce(benchmark::State& state) {
  const TarvelinTopic topic = FullTopic(state.range(0) != 0, static_cast<int16_t>(state.range(1)));
  for (auto _ : state) {
    const tarvelin::TopicInsight insight(topic);
    for (int16_t attributeID = 0; attributeID < GridSize; ++attributeID) {
      benchmark::DoNotOptimize(insight.Band(attributeID));
    }
    benchmark::DoNotOptimize(insight.ClosestFlip());
    for (int16_t optionID = 0; optionID < GridSize; ++optionID) {
      for (int16_t attributeID = 0; attributeID < GridSize; ++attributeID) {
        benchmark::DoNotOptimize(insight.TippingPoint(optionID, attributeID));
        benchmark::DoNotOptimize(insight.Contribution(optionID, attributeID));
      }
    }
  }
}
BENCHMARK(BM_InsightAllAtOnce)->ArgsProduct({{0, 1}, {-1, 3}})->Unit(benchmark::kMicrosecond);

// Every sentence the window can show for one state, all from one TopicInsight: ten weighting tooltips, a
// hundred rating tooltips, the insight line and ten score bar tooltips.
void BM_InsightTexts(benchmark::State& state) {
  const TarvelinTopic topic = FullTopic(true, 3);
  const tarvelin::NumberFormat format = [](double Value) { return std::to_string(Value); };
  for (auto _ : state) {
    const tarvelin::TopicInsight insight(topic);
    for (int16_t attributeID = 0; attributeID < GridSize; ++attributeID) {
      benchmark::DoNotOptimize(tarvelin::WeightingBandText(topic, insight, attributeID, format));
      benchmark::DoNotOptimize(tarvelin::ScoreWhyText(topic, insight, attributeID, format));
      for (int16_t optionID = 0; optionID < GridSize; ++optionID) {
        benchmark::DoNotOptimize(tarvelin::RatingTippingText(topic, insight, optionID, attributeID, format));
      }
    }
    benchmark::DoNotOptimize(tarvelin::InsightLineText(topic, insight, format));
  }
}
BENCHMARK(BM_InsightTexts)->Unit(benchmark::kMicrosecond);

void BM_InsightHoldShare(benchmark::State& state) {
  const TarvelinTopic topic = FullTopic(state.range(0) != 0, 3);
  for (auto _ : state) {
    benchmark::DoNotOptimize(tarvelin::BestOptionHoldShare(topic, 0.1));
  }
}
BENCHMARK(BM_InsightHoldShare)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace
