#include <gtest/gtest.h>

#include <filesystem>

#include "startup/RegistryTestFolder.h"
#include "startup/cRegistry_Wrapper.h"
#include "startup/modSettings.h"

namespace tarvelin {
namespace {

using testing::ScopedRegistryFolder;

constexpr ERegistryClassKey User = ERegistryClassKey::CurrentUser;

struct StoredLine {
  const char* Case;
  std::string Line;  // the value "V" as the hive file holds it; empty for none
  std::string Text;
  int32_t Number;
  bool Boolean;
};

class cRegistryWrapperRead : public ::testing::TestWithParam<StoredLine> {};

// The defaults asked for are "default", 99 and false, so every fallback shows.
TEST_P(cRegistryWrapperRead, ConvertsWhatIsStoredOrFallsBack) {
  const ScopedRegistryFolder registry;
  testing::WriteHiveFile(registry.UserHive(), testing::SettingsHiveText(GetParam().Line));
  EXPECT_EQ(GetRegistryText(User, SettingsKey, "V", "default"), GetParam().Text);
  EXPECT_EQ(GetRegistryNumber(User, SettingsKey, "V", 99), GetParam().Number);
  EXPECT_EQ(GetRegistryBoolean(User, SettingsKey, "V", false), GetParam().Boolean);
}

INSTANTIATE_TEST_SUITE_P(Stored, cRegistryWrapperRead,
                         ::testing::Values(StoredLine{"Missing", "", "default", 99, false},
                                           StoredLine{"True", "\"V\"=dword:ffffffff\r\n", "-1", -1, true},
                                           StoredLine{"Zero", "\"V\"=dword:00000000\r\n", "0", 0, false},
                                           StoredLine{"NumberAsText", "\"V\"=\" 42 \"\r\n", " 42 ", 42, true},
                                           StoredLine{"Text", "\"V\"=\"abc\"\r\n", "abc", 99, false},
                                           StoredLine{"Bytes", "\"V\"=hex:01\r\n", "default", 99, false}),
                         [](const auto& Info) { return std::string(Info.param.Case); });

// True is stored as -1, as the settings have always held it; a failed write answers false, never raises.
TEST(cRegistryWrapperWrite, StoresTrueAsMinusOneAndFailsWithoutRaising) {
  const ScopedRegistryFolder registry;
  EXPECT_TRUE(SetRegistryBoolean(User, SettingsKey, "B", true));
  EXPECT_EQ(GetRegistryNumber(User, SettingsKey, "B", 0), -1);
  std::filesystem::remove_all(registry.Folder());
  testing::WriteBytes(registry.Folder(), "a file where the hive folder belongs");
  EXPECT_FALSE(SetRegistryText(User, SettingsKey, "T", "x"));
  EXPECT_FALSE(SetRegistryNumber(User, SettingsKey, "N", 1));
  EXPECT_FALSE(SetRegistryBoolean(User, SettingsKey, "B", true));
  EXPECT_FALSE(DeleteRegistryKey(User, SettingsKey));
  EXPECT_FALSE(RegistryKeyExists(User, SettingsKey));
  EXPECT_EQ(GetRegistryText(User, SettingsKey, "T", "default"), "default");
}

}  // namespace
}  // namespace tarvelin
