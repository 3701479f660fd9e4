#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "startup/RegistryTestFolder.h"
#include "startup/cRegistry_Wrapper.h"
#include "startup/modSettings.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "util/libmodGenericTextFunctions.h"
#include "util/modPath.h"

namespace tarvelin {
namespace {

using testing::ReadBytes;
using testing::ScopedRegistryFolder;
using testing::ScopedScriptedDialogs;

struct CommandLine {
  const char* Case;
  std::vector<std::string> Arguments;  // "@" stands for the test files' folder, which is the current folder
  std::string Warning;                 // shown with the argument as given; empty for none
  std::string Opens = "";              // the file to open; empty for none
  bool Uninstall = false;
  bool LinuxOnly = false;  // names taken from the current folder, which only Linux does
};

class modStartupCommandLine : public ::testing::TestWithParam<CommandLine> {
 protected:
  void SetUp() override {
    // Windows cannot hold a "?" or a line break in a name; there the odd names are refused with no file behind
    // them.
    for (const std::string name : {"topic file.tvt", "UPPER.TVT", "nodot", "odd?.tvt", "line\nbreak.tvt"}) {
      if (NativePathStyle == PathStyle::Posix || name.find_first_of("?\n") == std::string::npos) {
        testing::WriteBytes(folder_.File(name), "");
      }
    }
    std::filesystem::create_directory(folder_.File("folder.tvt"));
    std::filesystem::current_path(folder_.Path());
  }
  void TearDown() override { std::filesystem::current_path(startFolder_); }
  // The current folder as the system reports it, links resolved, since relative names are made absolute from it.
  std::string Expand(const std::string& Argument) const {
    return ReplaceAll(Argument, "@/", (std::filesystem::canonical(folder_.Path()) / "").string());
  }

  const std::filesystem::path startFolder_ = std::filesystem::current_path();
  testing::TempFolder folder_;
};

TEST_P(modStartupCommandLine, IsInterpretedAndReported) {
  if (GetParam().LinuxOnly && NativePathStyle != PathStyle::Posix) {
    GTEST_SKIP() << "Windows resolves a relative name against the program's folder";
  }
  ScopedScriptedDialogs dialogs;
  std::vector<std::string> arguments = GetParam().Arguments;
  std::transform(arguments.begin(), arguments.end(), arguments.begin(),
                 [&](auto& Argument) { return Expand(Argument); });
  Program().FileToOpen = "left over";
  InterpretCommandLine(arguments);

  const ProgramState& state = Program();
  EXPECT_EQ(state.UninstallRequested, GetParam().Uninstall);
  EXPECT_EQ(state.FileToOpen, Expand(GetParam().Opens));
  EXPECT_EQ(state.FileTypeToOpen, GetParam().Opens.empty() ? "" : "TVT");
  if (GetParam().Warning.empty()) {
    EXPECT_TRUE(dialogs->Messages.empty());
  } else {
    ASSERT_EQ(dialogs->Messages.size(), 1u);
    EXPECT_EQ(dialogs->Messages[0].Prompt, Expand(GetParam().Warning));
    EXPECT_EQ(dialogs->Messages[0].Icon, MsgIcon::Exclamation);
    EXPECT_EQ(dialogs->Messages[0].Buttons, MsgButtons::OK);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, modStartupCommandLine,
    ::testing::Values(
        CommandLine{"Nothing", {}, ""}, CommandLine{"TopicFile", {"@/topic file.tvt"}, "", "@/topic file.tvt"},
        CommandLine{"NameWithANewLine", {"line\nbreak.tvt"}, "", "@/line\nbreak.tvt", false, true},
        CommandLine{"RelativeToTheCurrentFolder", {"./topic file.tvt"}, "", "@/topic file.tvt", false, true},
        CommandLine{"RelativeAndMissing", {"missing.tvt"}, "File does not exist: missing.tvt"},
        CommandLine{"Folder", {"folder.tvt"}, "File does not exist: folder.tvt"},
        CommandLine{"SwitchInMixedCase", {"/UnInstall"}, "", "", true},
        CommandLine{"PrintVerb", {"/p", "@/topic file.tvt"}, "Invalid number of command line arguments!"},
        CommandLine{"UpperCaseExtension", {"@/UPPER.TVT"}, "Unrecognised file type: @/UPPER.TVT"},
        CommandLine{"NoDot", {"nodot"}, "Unrecognised file type: nodot"},
        CommandLine{"QuestionMarkBeforeExistence", {"@/odd?.tvt"}, "Invalid filename: @/odd?.tvt"},
        CommandLine{"OtherSwitch",
                    {"/n"},
                    // A slash is the separator on POSIX; on Windows it is reserved.
                    NativePathStyle == PathStyle::Posix ? "File does not exist: /n" : "Invalid filename: /n"}),
    [](const auto& Info) { return std::string(Info.param.Case); });

TEST(modStartupInformation, AnswersHelpAndVersionAloneAndNothingElse) {
  EXPECT_EQ(CommandLineInformation({"--version"}), "Tarvelin " TARVELIN_VERSION "\n");
  EXPECT_TRUE(CommandLineInformation({"--help"}).value_or("").starts_with("Usage: tarvelin"));
  for (const std::vector<std::string>& others :
       {std::vector<std::string>{}, {"--VERSION"}, {"-h"}, {"--version", "now"}, {"topic.tvt"}}) {
    EXPECT_EQ(CommandLineInformation(others), std::nullopt) << others.size();
  }
}

TEST(modStartupArguments, WindowsCommandLineLosesTheProgramNameAndKeepsQuotedBlanks) {
  const auto arguments = [](std::string_view Line) { return SplitCommandLine(CommandLineAfterProgramName(Line)); };
  EXPECT_EQ(arguments("\"C:\\Program Files\\tarvelin.exe\" \"C:\\My Topics\\a.tvt\""),
            std::vector<std::string>{"C:\\My Topics\\a.tvt"});
  EXPECT_EQ(arguments("tarvelin.exe /p \"a b.tvt\""), (std::vector<std::string>{"/p", "a b.tvt"}));
  EXPECT_EQ(arguments("tarvelin.exe\t/uninstall"), std::vector<std::string>{"/uninstall"});
  EXPECT_TRUE(arguments("\"tarvelin.exe\"").empty() && arguments("tarvelin.exe").empty());
}

class modStartupUninstall : public ::testing::TestWithParam<MsgResult> {};

// Uninstalling asks and ends without a window. It removes the program's key in both hives and the vendor's
// where nothing else is left under it, never another program's keys.
TEST_P(modStartupUninstall, AsksThenRemovesOnlyTheProgramsKeys) {
  const ScopedRegistryFolder registry;
  RemoveSettings();
  EXPECT_FALSE(std::filesystem::exists(registry.Folder())) << "no settings, no files";
  constexpr ERegistryClassKey User = ERegistryClassKey::CurrentUser, Machine = ERegistryClassKey::LocalMachine;
  for (const auto hive : {User, Machine}) {
    SetRegistryText(hive, SettingsKey, "LastUsedDir", "/data");
    SetRegistryText(hive, "Software\\Unrelated", "Kept", "yes");
  }
  SetRegistryText(User, "Software\\Pelvora\\Other", "Kept", "yes");
  const std::string userHive = ReadBytes(registry.UserHive());
  ScopedScriptedDialogs dialogs;
  dialogs->Answers.push_back(GetParam());

  EXPECT_FALSE(StartUp({"/uninstall"}));

  ASSERT_EQ(dialogs->Messages.size(), 1u);
  EXPECT_EQ(dialogs->Messages[0].Buttons, MsgButtons::YesNo);
  const bool kept = GetParam() == MsgResult::No;
  EXPECT_EQ(ReadBytes(registry.UserHive()) == userHive, kept);
  EXPECT_EQ(RegistryKeyExists(User, SettingsKey), kept);
  EXPECT_EQ(RegistryKeyExists(Machine, SettingsKey), kept);
  EXPECT_EQ(RegistryKeyExists(Machine, VendorKey), kept);
  EXPECT_TRUE(RegistryKeyExists(User, "Software\\Pelvora\\Other"));
  EXPECT_TRUE(RegistryKeyExists(User, "Software\\Unrelated") && RegistryKeyExists(Machine, "Software\\Unrelated"));
}

INSTANTIATE_TEST_SUITE_P(Answers, modStartupUninstall, ::testing::Values(MsgResult::Yes, MsgResult::No),
                         [](const auto& Info) { return Info.param == MsgResult::Yes ? "Yes" : "No"; });

}  // namespace
}  // namespace tarvelin
