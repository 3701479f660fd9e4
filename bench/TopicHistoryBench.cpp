#include <benchmark/benchmark.h>

#include <memory>

#include "mainwindow/TopicHistory.h"
#include "startup/modStartup.h"

namespace tarvelin {
namespace {

void MakeTenByTenTopic() {
  Program().Topic = std::make_unique<TarvelinTopic>();
  Program().Topic->SetRounding(3);
  Program().Topic->SetTotalOptions(10);
  Program().Topic->SetTotalAttributes(10);
  Program().Modified = false;
}

// One rating slider change as the history records it, with the history full so that the oldest step is
// dropped each time.
void BM_HistoryRecordSliderStep(benchmark::State& state) {
  MakeTenByTenTopic();
  TopicHistory history(nullptr);
  int position = 0;
  for (auto _ : state) {
    position = (position + 37) % 101;
    Program().Topic->SetRating(5, 5, position / 100.0);
    history.Record();
  }
}
BENCHMARK(BM_HistoryRecordSliderStep)->Unit(benchmark::kMicrosecond);

// Undo and redo of one step of a 10 x 10 topic, up to the point where the window is asked to show it.
void BM_HistoryUndoRedo(benchmark::State& state) {
  MakeTenByTenTopic();
  TopicHistory history(nullptr);
  Program().Topic->DeleteOption(3);
  history.Record();
  for (auto _ : state) {
    history.Undo();
    history.Redo();
  }
}
BENCHMARK(BM_HistoryUndoRedo)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvelin
