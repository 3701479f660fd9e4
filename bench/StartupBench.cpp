#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "startup/cRegistryHive.h"
#include "startup/modSettings.h"
#include "startup/modStartup.h"

namespace tarvelin {
namespace {

// Points the registry at a fresh folder for one benchmark and removes it afterwards.
class BenchRegistry {
 public:
  BenchRegistry() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tarvelin-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("cannot create a temporary folder");
    }
    path_ = pattern;
    setenv("TARVELIN_REGISTRY_DIR", path_.c_str(), 1);
  }
  ~BenchRegistry() {
    unsetenv("TARVELIN_REGISTRY_DIR");
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  BenchRegistry(const BenchRegistry&) = delete;
  BenchRegistry& operator=(const BenchRegistry&) = delete;

 private:
  std::filesystem::path path_;
};

// The unload's work: nine values, each a locked read, change and atomic rewrite of the hive file.
void BM_SaveSettings(benchmark::State& State) {
  const BenchRegistry registry;
  Program().Topic = std::make_unique<TarvelinTopic>();
  Program().LastUsedDir = "/home/me/topics";
  int32_t left = 0;
  for (auto _ : State) {
    SaveSettings({++left, 240, 11000, 7000, false});
  }
}
BENCHMARK(BM_SaveSettings)->Unit(benchmark::kMillisecond);

// Everything start-up and the window's load read from an existing hive.
void BM_ReadAllSettings(benchmark::State& State) {
  const BenchRegistry registry;
  Program().Topic = std::make_unique<TarvelinTopic>();
  SaveSettings({120, 240, 11000, 7000, false});
  for (auto _ : State) {
    ApplicationSettings settings;
    ReadSettings(SettingsStage::BeforeCommandLine, settings);
    ReadSettings(SettingsStage::StartUp, settings);
    benchmark::DoNotOptimize(settings);
    benchmark::DoNotOptimize(ReadWindowPlacement({9000, 6000, 28800, 16200}));
  }
}
BENCHMARK(BM_ReadAllSettings)->Unit(benchmark::kMicrosecond);

// Parsing a hive far larger than the settings need: 200 keys of 10 values each.
void BM_ParseLargeHive(benchmark::State& State) {
  cRegistryHive hive("HKEY_CURRENT_USER");
  for (int key = 0; key < 200; ++key) {
    for (int value = 0; value < 10; ++value) {
      hive.SetValue("Software\\Vendor\\Key" + std::to_string(key), "Value" + std::to_string(value),
                    RegistryDataFromText("C:\\Some\\Path\\" + std::to_string(value)));
    }
  }
  const std::string text = hive.Serialise();
  for (auto _ : State) {
    benchmark::DoNotOptimize(cRegistryHive::Parse(text, "HKEY_CURRENT_USER"));
  }
  State.SetBytesProcessed(static_cast<int64_t>(State.iterations() * text.size()));
}
BENCHMARK(BM_ParseLargeHive)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvelin
