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

// Saves settings that differ from every default, then puts the program's own back to the defaults, so
// that what is read next can only come from the hive.
void SaveProgramSettings(const WindowPlacement& Placement) {
  ProgramState& program = Program();
  program.Topic = std::make_unique<TarvelinTopic>();
  program.Topic->SetNormaliseWeights(true);
  program.LastUsedDir = "/home/me/topics";
  program.ShowSettingsOnNew = program.DisplayAsDecimal = program.ShowInsight = false;
  program.SplitScoreBars = true;
  SaveSettings(Placement);
  program.ShowSettingsOnNew = program.DisplayAsDecimal = program.ShowInsight = true;
  program.SplitScoreBars = false;
}

TEST(modSettingsWindow, CentresAStoredSizeThatHasNoPosition) {
  const ScopedRegistryFolder registry;
  testing::WriteHiveFile(registry.UserHive(), testing::SettingsHiveText("\"WindowWidth\"=dword:00002710\r\n"
                                                                        "\"WindowHeight\"=dword:00001771\r\n"));
  // The top is 8100 - 3000.5, the half rounded to even.
  EXPECT_EQ(Rectangle(ReadWindowPlacement(Screen)), std::vector<int32_t>({9400, 5100, 10000, 6001}));
}

TEST(modSettingsSave, WritesEveryValueInOrderStartsWithThemAndRewritesADamagedHiveWhole) {
  const ScopedRegistryFolder registry;
  SaveProgramSettings({120, 240, 11000, 7000, true});
  EXPECT_EQ(StoredNames(), (std::vector<std::string>{"LastUsedDir", "ShowSettingsOnNew", "NormaliseWeights",
                                                     "DisplayAsDecimal", "WindowLeft", "WindowTop", "WindowWidth",
                                                     "WindowHeight", "Maximized", "ShowInsight", "SplitScoreBars"}));
  EXPECT_EQ(Rectangle(ReadWindowPlacement(Screen)), std::vector<int32_t>({120, 240, 11000, 7000}));
  // A window that ended maximised comes up normal; only a hand-set AppMaximized holds for every start.
  EXPECT_FALSE(ReadWindowPlacement(Screen).Maximized);
  {
    // The start takes the stored settings and goes on after a bad command line with a fresh topic of its own.
    testing::ScopedScriptedDialogs dialogs;
    Program().CurrentFileName = "old.tvt";
    Program().Modified = true;
    ASSERT_TRUE(StartUp({"a", "b"}));
    const ProgramState& state = Program();
    EXPECT_EQ(state.AppTitle, "Tarvelin");
    EXPECT_EQ(state.LastUsedDir, "/home/me/topics");
    EXPECT_FALSE(state.ShowSettingsOnNew || state.DisplayAsDecimal || state.ShowInsight);
    EXPECT_TRUE(state.SplitScoreBars && state.Topic->NormaliseWeights());
    EXPECT_EQ(state.CurrentFileName, "");
    EXPECT_FALSE(state.Modified);
    EXPECT_EQ(state.MaxOptions + state.MaxAttributes, 20);
    EXPECT_EQ(dialogs->Messages.size(), 1u);
  }

  // A hive cut inside a line reads as the defaults.
  const std::string whole = ReadBytes(registry.UserHive());
  testing::WriteBytes(registry.UserHive(), whole.substr(0, whole.find("dword:") + 4));
  ApplicationSettings settings;
  ReadSettings(SettingsStage::BeforeCommandLine, settings);
  ReadSettings(SettingsStage::StartUp, settings);
  EXPECT_EQ(settings.LastUsedDir, DocumentsFolder());
  EXPECT_FALSE(settings.NormaliseWeights);
  SaveProgramSettings({120, 240, 11000, 7000, true});
  EXPECT_EQ(ReadBytes(registry.UserHive()), whole);

  testing::WriteHiveFile(registry.UserHive(), testing::SettingsHiveText("\"AppMaximized\"=dword:00000001\r\n"));
  SaveProgramSettings({0, 0, 9000, 6000, false});
  EXPECT_TRUE(ReadWindowPlacement(Screen).Maximized);
}

// Start-up only reads, so a settings folder that cannot be written changes nothing: every setting takes its
// default, as on a first run.
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
  EXPECT_TRUE(dialogs->Messages.empty());
}

}  // namespace
}  // namespace tarvelin
