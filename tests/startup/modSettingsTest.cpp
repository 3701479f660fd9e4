#include <gtest/gtest.h>

#include "startup/RegistryTestFolder.h"
#include "startup/cRegistry.h"
#include "startup/modSettings.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "util/libmodSpecialFolders.h"

namespace tarvelin {
namespace {

using testing::ReadBytes;
using testing::ScopedRegistryFolder;

const SettingsDefaults Screen{9000, 6000, 28800, 16200};  // design size, then a 1920 x 1080 screen

std::vector<std::string> StoredNames() {
  cRegistry registry;
  registry.SetClassKey(ERegistryClassKey::CurrentUser);
  registry.SetSectionKey(SettingsKey);
  return registry.EnumerateValues();
}

std::vector<int32_t> Rectangle(const WindowPlacement& Placement) {
  return {Placement.Left, Placement.Top, Placement.Width, Placement.Height};
}

ApplicationSettings ReadStartSettings() {
  ApplicationSettings settings;
  ReadSettings(SettingsStage::BeforeCommandLine, settings);
  ReadSettings(SettingsStage::StartUp, settings);
  return settings;
}

void SaveProgramSettings(const WindowPlacement& Placement) {
  Program().Topic = std::make_unique<TarvelinTopic>();
  Program().Topic->SetNormaliseWeights(true);
  Program().LastUsedDir = "/home/me/topics";
  SaveSettings(Placement);
}

TEST(modSettingsWindow, CentresAStoredSizeThatHasNoPosition) {
  const ScopedRegistryFolder registry;
  testing::WriteHiveFile(registry.UserHive(), testing::SettingsHiveText("\"WindowWidth\"=dword:00002710\r\n"
                                                                        "\"WindowHeight\"=dword:00001771\r\n"));
  // The top is 8100 - 3000.5, the half rounded to even.
  EXPECT_EQ(Rectangle(ReadWindowPlacement(Screen)), std::vector<int32_t>({9400, 5100, 10000, 6001}));
}

TEST(modSettingsSave, WritesEveryValueInOrderAndIsReadBack) {
  const ScopedRegistryFolder registry;
  Program().ShowSettingsOnNew = false;
  Program().DisplayAsDecimal = false;
  Program().ShowInsight = false;
  Program().SplitScoreBars = true;
  SaveProgramSettings({120, 240, 11000, 7000, false});
  Program().ShowSettingsOnNew = Program().DisplayAsDecimal = Program().ShowInsight = true;
  Program().SplitScoreBars = false;
  EXPECT_EQ(StoredNames(), (std::vector<std::string>{"LastUsedDir", "ShowSettingsOnNew", "NormaliseWeights",
                                                     "DisplayAsDecimal", "WindowLeft", "WindowTop", "WindowWidth",
                                                     "WindowHeight", "Maximized", "ShowInsight", "SplitScoreBars"}));
  const ApplicationSettings settings = ReadStartSettings();
  EXPECT_EQ(settings.LastUsedDir, "/home/me/topics");
  EXPECT_FALSE(settings.ShowSettingsOnNew);
  EXPECT_FALSE(settings.DisplayAsDecimal);
  EXPECT_TRUE(settings.NormaliseWeights);
  EXPECT_FALSE(settings.ShowInsight);
  EXPECT_EQ(Rectangle(ReadWindowPlacement(Screen)), std::vector<int32_t>({120, 240, 11000, 7000}));
  const testing::ScopedScriptedDialogs dialogs;
  ASSERT_TRUE(StartUp({}));
  EXPECT_TRUE(Program().SplitScoreBars);
  Program().SplitScoreBars = false;
}

// A window that ended maximised comes up normal; only a hand-set AppMaximized holds for every start.
TEST(modSettingsMaximised, OnlyAHandSetAppMaximizedBringsTheWindowUpMaximised) {
  const ScopedRegistryFolder registry;
  SaveProgramSettings({0, 0, 9000, 6000, true});
  EXPECT_FALSE(ReadWindowPlacement(Screen).Maximized);
  testing::WriteHiveFile(registry.UserHive(), testing::SettingsHiveText("\"AppMaximized\"=dword:00000001\r\n"));
  SaveProgramSettings({0, 0, 9000, 6000, false});
  EXPECT_TRUE(ReadWindowPlacement(Screen).Maximized);
}

TEST(modSettingsDamage, AHiveCutInALineReadsAsDefaultsAndIsRewrittenWhole) {
  const ScopedRegistryFolder registry;
  SaveProgramSettings({120, 240, 11000, 7000, false});
  const std::string whole = ReadBytes(registry.UserHive());
  testing::WriteBytes(registry.UserHive(), whole.substr(0, whole.find("dword:") + 4));
  const ApplicationSettings settings = ReadStartSettings();
  EXPECT_EQ(settings.LastUsedDir, DocumentsFolder());
  EXPECT_FALSE(settings.NormaliseWeights);

  SaveProgramSettings({120, 240, 11000, 7000, false});
  EXPECT_EQ(ReadBytes(registry.UserHive()), whole);
}

// Start-up only reads, so a settings folder that cannot be written changes nothing but the saving, which
// fails without a word. Every setting takes its default, as on a first run.
TEST(modSettingsUnwritable, StartUpGoesOnWithDefaults) {
  const ScopedRegistryFolder registry;
  testing::WriteBytes(registry.Folder(), "a file where the hive folder belongs");
  testing::ScopedScriptedDialogs dialogs;
  EXPECT_TRUE(StartUp({}));
  EXPECT_EQ(Program().LastUsedDir, DocumentsFolder());
  EXPECT_TRUE(Program().ShowSettingsOnNew && Program().DisplayAsDecimal && Program().ShowInsight);
  EXPECT_FALSE(Program().SplitScoreBars);
  EXPECT_FALSE(Program().Topic->NormaliseWeights());
  EXPECT_EQ(Rectangle(ReadWindowPlacement(Screen)), std::vector<int32_t>({9900, 5100, 9000, 6000}));
  EXPECT_FALSE(ReadWindowPlacement(Screen).Maximized);
  EXPECT_NO_THROW(SaveSettings({1, 2, 3, 4, true}));
  EXPECT_TRUE(dialogs->Messages.empty());
}

}  // namespace
}  // namespace tarvelin
