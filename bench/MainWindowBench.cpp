#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <cstdlib>
#include <memory>

#include "mainwindow/frmMain.h"
#include "startup/modStartup.h"
#include "widgets/ctlSlider.h"

namespace tarvelin {
namespace {

// The offscreen platform is given two screens, at 100% and at 200%, so that one program measures both.
constexpr char kScreens[] =
    R"({"screens": [{"name": "100%", "x": 0, "y": 0, "width": 1920, "height": 1200, "dpr": 1},
                    {"name": "200%", "x": 1920, "y": 0, "width": 1920, "height": 1200, "dpr": 2}]})";

// The window benchmarks share one offscreen application, created on first use.
void EnsureApplication() {
  static int argc = 1;
  static char name[] = "tarvelin_bench";
  static char* argv[] = {name, nullptr};
  static std::unique_ptr<QApplication> application;
  if (!application) {
    const QString screens = QDir::temp().filePath("tarvelin-bench-screens.json");
    QFile file(screens);
    if (file.open(QIODevice::WriteOnly)) {
      file.write(kScreens);
      file.close();
    }
    setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screens).toLocal8Bit().constData(), 0);
    setenv("TARVELIN_REGISTRY_DIR", "/tmp/tarvelin-bench-registry", 0);
    application = std::make_unique<QApplication>(argc, argv);
  }
}

// Puts the window on the screen of the given scale in percent; false when there is no such screen.
bool PlaceOnScreen(QWidget& Window, int Percent) {
  for (QScreen* screen : QGuiApplication::screens()) {
    if (screen->name() == QString("%1%").arg(Percent)) {
      Window.setScreen(screen);
      Window.move(screen->geometry().topLeft());
      return true;
    }
  }
  return false;
}

void MakeTenByTenTopic() {
  Program().Topic = std::make_unique<TarvelinTopic>();
  Program().Topic->SetRounding(3);
  Program().Topic->SetTotalOptions(10);
  Program().Topic->SetTotalAttributes(10);
  Program().FileToOpen.clear();
  Program().FileTypeToOpen.clear();
}

// Building the window for a 10 x 10 topic up to its first complete rendering, at 100% and 200%.
void BM_MainWindowFirstRendering(benchmark::State& state) {
  EnsureApplication();
  for (auto _ : state) {
    MakeTenByTenTopic();
    frmMain window;
    if (!PlaceOnScreen(window, static_cast<int>(state.range(0)))) {
      state.SkipWithError("the offscreen platform has no screen at this scale");
      return;
    }
    bool rowsChanged = false;
    window.UpdateSliderArrays(rowsChanged);
    window.show();
    benchmark::DoNotOptimize(window.grab());
  }
}
BENCHMARK(BM_MainWindowFirstRendering)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);

// Scrolling the canvas of a 10 x 10 window at 200% from top to bottom, a mouse-wheel step (three lines) at a
// time: each iteration is one step and the repaint of what it uncovers. The jump back to the top is not timed.
void BM_CanvasScrollStep(benchmark::State& state) {
  EnsureApplication();
  MakeTenByTenTopic();
  frmMain window;
  if (!PlaceOnScreen(window, 200)) {
    state.SkipWithError("the offscreen platform has no screen at 200%");
    return;
  }
  bool rowsChanged = false;
  window.UpdateSliderArrays(rowsChanged);
  window.show();
  QApplication::processEvents();
  QScrollBar* bar = window.findChild<QScrollArea*>("scrollClient")->verticalScrollBar();
  for (auto _ : state) {
    if (bar->value() >= bar->maximum()) {
      state.PauseTiming();
      bar->setValue(0);
      QApplication::processEvents();
      state.ResumeTiming();
    }
    bar->setValue(bar->value() + 3 * bar->singleStep());
    QApplication::processEvents();
  }
}
BENCHMARK(BM_CanvasScrollStep)->Unit(benchmark::kMillisecond);

// One rating slider change: the handler, the refresh of every value and the repaint of what changed.
void BM_RatingSliderChange(benchmark::State& state) {
  EnsureApplication();
  MakeTenByTenTopic();
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
}
BENCHMARK(BM_RatingSliderChange)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvelin
