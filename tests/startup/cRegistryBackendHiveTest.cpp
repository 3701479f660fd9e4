#include <gtest/gtest.h>

#include <filesystem>

#include "startup/RegistryTestFolder.h"
#include "startup/cRegistryBackendHive.h"
#include "startup/cRegistry_Wrapper.h"
#include "startup/modSettings.h"
#include "support/ChildProcess.h"

namespace tarvelin {
namespace {

using testing::ReadBytes;
using testing::ScopedEnvironment;
using testing::ScopedRegistryFolder;

const RegistryKeyPath SettingsPath{"", ERegistryClassKey::CurrentUser, SettingsKey};

struct HiveLocation {
  const char* Case;
  std::optional<std::string> RegistryDir, ConfigHome;
  ERegistryClassKey Hive;
  std::string Expected;
};

class cRegistryBackendHiveLocation : public ::testing::TestWithParam<HiveLocation> {};

TEST_P(cRegistryBackendHiveLocation, FollowsTheEnvironment) {
  const HiveLocation& location = GetParam();
  const ScopedEnvironment registryDir("TARVELIN_REGISTRY_DIR", location.RegistryDir);
  const ScopedEnvironment configHome("XDG_CONFIG_HOME", location.ConfigHome);
  const ScopedEnvironment home("HOME", "/home/me");
  EXPECT_EQ(std::filesystem::path(HiveFileName(location.Hive)).generic_string(), location.Expected);
}

INSTANTIATE_TEST_SUITE_P(
    Hives, cRegistryBackendHiveLocation,
    ::testing::Values(
        HiveLocation{"SharedUser", "/tmp/r", "/cfg", ERegistryClassKey::CurrentUser, "/tmp/r/user.reg"},
        HiveLocation{"SharedMachine", "/tmp/r", "/cfg", ERegistryClassKey::LocalMachine, "/tmp/r/machine.reg"},
        HiveLocation{"ConfigHome", std::nullopt, "/cfg", ERegistryClassKey::CurrentUser, "/cfg/tarvelin/user.reg"},
        HiveLocation{"RelativeConfigHome", "", "cfg", ERegistryClassKey::CurrentUser,
                     "/home/me/.config/tarvelin/user.reg"},
        HiveLocation{"Machine", std::nullopt, "/cfg", ERegistryClassKey::LocalMachine, "/etc/tarvelin/machine.reg"},
        HiveLocation{"OtherHive", "/tmp/r", "/cfg", ERegistryClassKey::ClassesRoot, ""}),
    [](const auto& Info) { return std::string(Info.param.Case); });

constexpr int Rounds = 15;

void WriteSettingsAs(int Writer) {
  ApplicationSettings settings;
  settings.LastUsedDir = "/writer" + std::to_string(Writer);
  for (int round = 1; round <= Rounds; ++round) {
    settings.WindowLeft = round;
    WriteSettings(settings);
    SetRegistryNumber(ERegistryClassKey::CurrentUser, "Software\\Writer" + std::to_string(Writer), "Round", round);
  }
}

const testing::ChildJob SecondWriter("hive-writer", [] { WriteSettingsAs(1); });

// Each process rewrites the whole file for every value; without the lock one process's update would be
// lost when the other writes back the file it read before.
TEST(cRegistryBackendHiveSharing, TwoProcessesWritingAtOnceLoseNothing) {
  const ScopedRegistryFolder registry;
  testing::ChildProcess child("hive-writer");
  WriteSettingsAs(2);
  ASSERT_TRUE(child.Succeeded());

  const auto hive = cRegistryHive::Parse(ReadBytes(registry.UserHive()), "HKEY_CURRENT_USER");
  ASSERT_TRUE(hive);
  EXPECT_EQ(hive->Value("Software\\Writer1", "Round"), RegistryDataFromNumber(Rounds));
  EXPECT_EQ(hive->Value("Software\\Writer2", "Round"), RegistryDataFromNumber(Rounds));
  EXPECT_EQ(hive->Value(SettingsKey, "WindowLeft"), RegistryDataFromNumber(Rounds));
}

TEST(cRegistryBackendHiveFiles, ReadsAFileSavedAsUtf16ByTheRegistryEditor) {
  const ScopedRegistryFolder registry;
  const std::string text = testing::SettingsHiveText("\"LastUsedDir\"=\"C:\\\\Dat\xC3\xA9n\"\r\n");
  const RegistryData utf16 = RegistryDataFromText(text);
  testing::WriteHiveFile(registry.UserHive(), "\xFF\xFE" + utf16.Bytes.substr(0, utf16.Bytes.size() - 2));
  EXPECT_EQ(cRegistryBackendHive().QueryValue(SettingsPath, "LastUsedDir"), RegistryDataFromText("C:\\Dat\xC3\xA9n"));
}

// Something in the hive's place that cannot be read reads as empty. That it is never replaced (it may hold
// settings that a later start can read again) is checked with the settings among the writers' faults.
TEST(cRegistryBackendHiveFiles, AnUnreadableHiveReadsEmpty) {
  const ScopedRegistryFolder registry;
  std::filesystem::create_directories(registry.UserHive());
  EXPECT_FALSE(cRegistryBackendHive().KeyExists({"", ERegistryClassKey::CurrentUser, "Software"}));
}

}  // namespace
}  // namespace tarvelin
