#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDate>
#include <cstdlib>
#include <memory>
#include <string>

#include "mainwindow/modDisplay.h"
#include "model/TarvelinTopic.h"
#include "platform/qt/DecisionReport.h"

namespace tarvelin {
namespace {

// The report needs fonts, so an offscreen application; the window benchmarks may have made it already.
void EnsureApplication() {
  static int argc = 1;
  static char name[] = "tarvelin_bench";
  static char* argv[] = {name, nullptr};
  static std::unique_ptr<QApplication> application;
  if (QCoreApplication::instance() == nullptr) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    application = std::make_unique<QApplication>(argc, argv);
  }
}

TarvelinTopic TenByTenTopic() {
  TarvelinTopic topic;
  topic.SetRounding(3);
  topic.SetName("Which car to buy next spring");
  topic.SetTotalOptions(10);
  topic.SetTotalAttributes(10);
  for (int16_t attribute = 0; attribute < 10; ++attribute) {
    topic.SetAttributeName(attribute, "Attribute number " + std::to_string(attribute + 1));
    topic.SetWeighting(attribute, (attribute + 1) / 10.0);
    for (int16_t option = 0; option < 10; ++option) {
      topic.SetRating(option, attribute, ((option * 7 + attribute * 3) % 11) / 10.0);
    }
  }
  for (int16_t option = 0; option < 10; ++option) {
    topic.SetOptionName(option, "Option called " + std::to_string(option + 1));
  }
  return topic;
}

void BM_DecisionReport(benchmark::State& state, ReportFormat Format) {
  EnsureApplication();
  const TarvelinTopic topic = TenByTenTopic();
  const NumberFormat numbers = [](double Value) { return FormatNumberForDisplay(Value, 3, true); };
  for (auto _ : state) {
    benchmark::DoNotOptimize(DecisionReport(topic, Format, numbers, QDate(2026, 11, 23)));
  }
}
BENCHMARK_CAPTURE(BM_DecisionReport, Pdf, ReportFormat::Pdf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_DecisionReport, Html, ReportFormat::Html)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvelin
