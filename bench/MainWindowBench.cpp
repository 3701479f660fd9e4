#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
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

// The window benchmarks share one offscreen application, created on first use. It is never destroyed:
// destroyed among the statics at exit, it crashed the program after every window benchmark.
void EnsureApplication() {
  static int argc = 1;
  static char name[] = "tarvelin_bench";
  static char* argv[] = {name, nullptr};
  static QApplication* application = nullptr;
  if (application == nullptr) {
    const QString screens = QDir::temp().filePath("tarvelin-bench-screens.json");
    QFile file(screens);
    if (file.open(QIODevice::WriteOnly)) {
      file.write(kScreens);
      file.close();
    }
    setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screens).toLocal8Bit().constData(), 0);
    setenv("TARVELIN_REGISTRY_DIR", "/tmp/tarvelin-bench-registry", 0);
    application = new QApplication(argc, argv);
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

// The same change with the insight into how robust the best option is off (0) and on (1). On, the bands, ticks
// and line follow the change, and the share the best option holds in is computed in the idle moment after it.
void BM_RatingSliderChangeByInsight(benchmark::State& state) {
  EnsureApplication();
  MakeTenByTenTopic();
  // Spread ratings and weightings, so that one option leads and every band and tipping point is there to find.
  for (int16_t a = 0; a < 10; ++a) {
    Program().Topic->SetWeighting(a, 0.1 + 0.08 * a);
    for (int16_t o = 0; o < 10; ++o) {
      Program().Topic->SetRating(o, a, ((o * 37 + a * 53) % 101) / 100.0);
    }
  }
  Program().ShowInsight = state.range(0) != 0;
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
  Program().ShowInsight = true;
}
BENCHMARK(BM_RatingSliderChangeByInsight)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// Undo and redo of deleting an option on a 10 x 10 topic: each rebuilds the rows (one iteration is two steps).
void BM_UndoRedoDeleteWithRebuild(benchmark::State& state) {
  EnsureApplication();
  MakeTenByTenTopic();
  frmMain window;
  bool rowsChanged = false;
  window.UpdateSliderArrays(rowsChanged);
  window.show();
  window.findChild<QAbstractButton*>("btnRemoveOption")->click();
  QApplication::processEvents();
  const auto press = [&window](Qt::Key Key) {
    QKeyEvent event(QEvent::KeyPress, Key, Qt::ControlModifier);
    QApplication::sendEvent(&window, &event);
    QApplication::processEvents();
  };
  for (auto _ : state) {
    press(Qt::Key_Z);
    press(Qt::Key_Y);
  }
}
BENCHMARK(BM_UndoRedoDeleteWithRebuild)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvelin
