#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLabel>
#include <cstdlib>
#include <memory>

#include "mainwindow/frmMain.h"
#include "startup/modStartup.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {
namespace {

// The window benchmarks share one offscreen application, created on first use.
void EnsureApplication() {
  static int argc = 1;
  static char name[] = "tarvelin_bench";
  static char* argv[] = {name, nullptr};
  static std::unique_ptr<QApplication> application;
  if (!application) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("TARVELIN_REGISTRY_DIR", "/tmp/tarvelin-bench-registry", 0);
    application = std::make_unique<QApplication>(argc, argv);
  }
}

void MakeTenByTenTopic() {
  Program().Topic = std::make_unique<TarvelinTopic>();
  Program().Topic->SetRounding(3);
  Program().Topic->SetTotalOptions(10);
  Program().Topic->SetTotalAttributes(10);
  Program().FileToOpen.clear();
  Program().FileTypeToOpen.clear();
}

// Building the window for a 10 x 10 topic up to its first complete rendering.
void BM_MainWindowFirstRendering(benchmark::State& state) {
  EnsureApplication();
  for (auto _ : state) {
    MakeTenByTenTopic();
    frmMain window;
    bool rowsChanged = false;
    window.UpdateSliderArrays(rowsChanged);
    window.show();
    benchmark::DoNotOptimize(window.grab());
  }
}
BENCHMARK(BM_MainWindowFirstRendering)->Unit(benchmark::kMillisecond);

// One rating slider change: the handler, the refresh of every value and the repaint of what changed; with
// the argument 1, the score bars are split by attribute.
void BM_RatingSliderChange(benchmark::State& state) {
  EnsureApplication();
  MakeTenByTenTopic();
  Program().SplitScoreBars = state.range(0) != 0;
  frmMain window;
  bool rowsChanged = false;
  window.UpdateSliderArrays(rowsChanged);
  window.show();
  QApplication::processEvents();
  auto* slider = window.findChild<ctlSlider*>("sliderRating_55");
  int position = 0;
  for (auto _ : state) {
    position = (position + 37) % 101;
    slider->SetValue(position);
    QApplication::processEvents();
  }
  Program().SplitScoreBars = false;
}
BENCHMARK(BM_RatingSliderChange)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvelin
