#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "files/modLoadSave.h"
#include "model/TarvelinTopic.h"
#include "startup/Dialogs.h"
#include "startup/modStartup.h"

namespace tarvelin {
namespace {

// Answers every message with its first button; failures show in the results of the measured calls.
class QuietDialogs final : public Dialogs {
 public:
  MsgResult ShowMessage(const std::string&, MsgButtons Buttons, MsgIcon, const std::string&) override {
    return Buttons == MsgButtons::OK ? MsgResult::OK : MsgResult::Yes;
  }
  std::optional<std::string> OpenFile(const FileDialogRequest&) override { return std::nullopt; }
  std::optional<std::string> SaveFile(const FileDialogRequest&) override { return std::nullopt; }
};

// A fresh folder for the run's files, removed afterwards.
class BenchFolder {
 public:
  BenchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tarvelin-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("cannot create a temporary folder");
    }
    path_ = pattern;
    previousUI_ = Program().UI;
    Program().UI = &dialogs_;
  }
  ~BenchFolder() {
    Program().UI = previousUI_;
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  BenchFolder(const BenchFolder&) = delete;
  BenchFolder& operator=(const BenchFolder&) = delete;

  std::string File(const char* Name) const { return (path_ / Name).string(); }

 private:
  std::filesystem::path path_;
  QuietDialogs dialogs_;
  Dialogs* previousUI_ = nullptr;
};

std::unique_ptr<TarvelinTopic> FullTopic() {
  auto topic = std::make_unique<TarvelinTopic>();
  topic->SetName("Benchmark topic");
  topic->SetTotalAttributes(10);
  topic->SetTotalOptions(10);
  for (int16_t attribute = 0; attribute < 10; ++attribute) {
    topic->SetAttributeName(attribute, "Attribute number " + std::to_string(attribute));
    topic->SetWeighting(attribute, attribute / 9.0);
    for (int16_t option = 0; option < 10; ++option) {
      topic->SetOptionName(option, "Option number " + std::to_string(option));
      topic->SetRating(option, attribute, (option * 10 + attribute) / 99.0);
    }
  }
  return topic;
}

void BM_TopicFileSaveAndLoad(benchmark::State& state) {
  BenchFolder folder;
  const std::string name = folder.File("topic.tvt");
  const auto saved = FullTopic();
  std::unique_ptr<TarvelinTopic> loaded;
  for (auto _ : state) {
    if (!SaveTopicFile(name, *saved) || !LoadTopicFile(name, loaded)) {
      state.SkipWithError("save or load failed");
      break;
    }
    benchmark::DoNotOptimize(loaded.get());
  }
}
BENCHMARK(BM_TopicFileSaveAndLoad)->Unit(benchmark::kMicrosecond);

// Loading alone: the difference to the pair above is the save, most of it the flush to disk.
void BM_TopicFileLoad(benchmark::State& state) {
  BenchFolder folder;
  const std::string name = folder.File("topic.tvt");
  std::unique_ptr<TarvelinTopic> loaded;
  if (!SaveTopicFile(name, *FullTopic())) {
    state.SkipWithError("save failed");
  }
  for (auto _ : state) {
    if (!LoadTopicFile(name, loaded)) {
      state.SkipWithError("load failed");
      break;
    }
    benchmark::DoNotOptimize(loaded.get());
  }
}
BENCHMARK(BM_TopicFileLoad)->Unit(benchmark::kMicrosecond);

// 32,000 rows of 12 columns (name, 10 values, score): the keyword rows, then option rows, of which the
// import uses the first 10.
std::string LargeCSVText() {
  std::string text = "Topic: Benchmark\r\nAttributes";
  std::string weightings = "Weightings";
  for (int attribute = 1; attribute <= 10; ++attribute) {
    text += ",Attribute " + std::to_string(attribute);
    weightings += ",50%";
  }
  text += ",Score\r\n" + weightings + ",\r\nRatings" + std::string(10, ',') + ",Score\r\n";
  for (int row = 4; row < 32000; ++row) {
    text += "Option " + std::to_string(row);
    for (int attribute = 1; attribute <= 11; ++attribute) {
      text += "," + std::to_string((row + attribute) % 100) + "%";
    }
    text += "\r\n";
  }
  return text;
}

void BM_ImportTopicCSV32000Rows(benchmark::State& state) {
  BenchFolder folder;
  const std::string name = folder.File("large.csv");
  std::ofstream(name, std::ios::binary) << LargeCSVText();
  std::unique_ptr<TarvelinTopic> topic;
  for (auto _ : state) {
    if (!ImportTopicCSV(name, topic)) {
      state.SkipWithError("import failed");
      break;
    }
    benchmark::DoNotOptimize(topic.get());
  }
}
BENCHMARK(BM_ImportTopicCSV32000Rows)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvelin
