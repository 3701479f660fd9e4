#include <gtest/gtest.h>

#ifdef __linux__
#include <sys/resource.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "files/modLoadSave.h"
#include "model/TarvelinTopic.h"
#include "startup/RegistryTestFolder.h"
#include "startup/cRegistryBackendHive.h"
#include "startup/modSettings.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

// Hostile files of a plain shape must cost memory in proportion to their size, and no reader may run past
// its format's limits before it stops. Under CTest each case runs in a process of its own; run together,
// a case after a hungrier one reads low, never high.

namespace tarvelin {
namespace {

using testing::Repeated;
using testing::ScopedScriptedDialogs;

size_t PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<size_t>(usage.ru_maxrss) * 1024;
}

void Load(const std::string& FileName) {
  ScopedScriptedDialogs dialogs;
  auto topic = std::make_unique<TarvelinTopic>();
  LoadTopicReportingErrors(FileName, topic);
}

void ReadSettingsFrom(const std::string& FileName) {
  const testing::ScopedEnvironment registry("TARVELIN_REGISTRY_DIR",
                                            std::filesystem::path(FileName).parent_path().string());
  ApplicationSettings settings;
  ReadSettings(SettingsStage::StartUp, settings, {});
}

struct HostileFile {
  const char* Name;
  const char* FileName;
  std::string (*Bytes)();
  void (*Read)(const std::string& FileName);
};

class ReaderMemory : public ::testing::TestWithParam<HostileFile> {};

TEST_P(ReaderMemory, StaysWithinEightTimesTheFile) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the address sanitizer keeps freed memory and its own records, so peaks say nothing here";
#endif
  testing::TempFolder folder;
  const std::string name = folder.File(GetParam().FileName);
  size_t size = 0;
  {
    const std::string bytes = GetParam().Bytes();
    size = bytes.size();
    testing::WriteBytes(name, bytes);
  }
  const size_t before = PeakMemory();
  GetParam().Read(name);
  // The allocator's own slack comes on top.
  EXPECT_LE(PeakMemory() - before, 8 * size + (16 << 20)) << "for " << size << " bytes";
}

INSTANTIATE_TEST_SUITE_P(
    Readers, ReaderMemory,
    ::testing::Values(
        HostileFile{"TopicOfBlankLines", "t.tvt", [] { return std::string(16 << 20, '\n'); }, &Load},
        HostileFile{"TopicOfBareWords", "t.tvt", [] { return "[Topic]\n" + Repeated("a\n", 8 << 20); }, &Load},
        HostileFile{"CSVOfBlankLines", "t.csv", [] { return std::string(16 << 20, '\n'); }, &Load},
        HostileFile{"CSVOfCommas", "t.csv", [] { return Repeated(std::string(32000, ',') + "ab\n", 500); }, &Load},
        HostileFile{"HiveKeyTooDeep", "user.reg",
                    [] {
                      return "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER" +
                             Repeated("\\k", 100000) + "]\r\n";
                    },
                    &ReadSettingsFrom}),
    [](const auto& Info) { return std::string(Info.param.Name); });

}  // namespace
}  // namespace tarvelin

#endif
