#include "startup/modStartup.h"

#include <filesystem>

#include "startup/modSettings.h"
#include "util/libmodGenericTextFunctions.h"
#include "util/modPath.h"

#ifdef _WIN32
#include "startup/ProcessCommandLine.h"
#endif

namespace tarvelin {

namespace {

constexpr const char* ProductTitle = "Tarvelin";
constexpr const char* UninstallSwitch = "/uninstall";
constexpr const char* TopicFileExtension = "tvt";
constexpr const char* TopicFileType = "TVT";
constexpr int16_t MostOptions = 10;
constexpr int16_t MostAttributes = 10;

void Warn(const std::string& Text) {
  Program().UI->ShowMessage(Text, MsgButtons::OK, MsgIcon::Exclamation, Program().AppTitle);
}

// The text after the last "." of the whole argument; empty without one.
std::string ExtensionOf(std::string_view Name) {
  const size_t dot = Name.rfind('.');
  return dot == std::string_view::npos ? std::string() : std::string(Name.substr(dot + 1));
}

bool Exists(const std::string& Name) {
  std::error_code error;
  return std::filesystem::exists(Name, error);
}

// Asks first; either way the program then ends without a window.
void Uninstall() {
  const MsgResult answer =
      Program().UI->ShowMessage("Remove all of " + Program().AppTitle + "'s settings from the registry?",
                                MsgButtons::YesNo, MsgIcon::Question, Program().AppTitle);
  if (answer == MsgResult::Yes) {
    RemoveSettings();
  }
}

}  // namespace

ProgramState& Program() {
  static ProgramState state;
  return state;
}

void SetModified() {
  if (!Program().IsLoading) {
    Program().Modified = true;
  }
}

void InterpretCommandLine(const std::vector<std::string>& Arguments) {
  ProgramState& state = Program();
  state.UninstallRequested = false;
  state.FileToOpen.clear();
  state.FileTypeToOpen.clear();
  if (Arguments.empty()) {
    return;
  }
  // One argument only, so a switch followed by a file (as the print verb runs it) is refused as well.
  if (Arguments.size() > 1) {
    Warn("Invalid number of command line arguments!");
    return;
  }
  const std::string& argument = Arguments.front();
  if (LowerCase(argument) == UninstallSwitch) {
    state.UninstallRequested = true;
  } else if (!IsValidFileName(argument, true)) {
    Warn("Invalid filename: " + argument);
  } else if (!Exists(argument)) {
    Warn("File does not exist: " + argument);
  } else if (ExtensionOf(argument) != TopicFileExtension) {  // case-sensitive: "x.TVT" is refused
    Warn("Unrecognised file type: " + argument);
  } else {
    state.FileToOpen = argument;
    state.FileTypeToOpen = TopicFileType;
  }
}

bool StartUp(const std::vector<std::string>& Arguments) {
  ProgramState& state = Program();
  state.ProductName = ProductTitle;
  state.AppTitle = ProductTitle;
  ApplicationSettings settings;
  ReadSettings(SettingsStage::BeforeCommandLine, settings);
  state.LastUsedDir = settings.LastUsedDir;
  InterpretCommandLine(Arguments);
  if (state.UninstallRequested) {
    Uninstall();
    return false;
  }
  ReadSettings(SettingsStage::StartUp, settings);
  state.ShowSettingsOnNew = settings.ShowSettingsOnNew;
  state.DisplayAsDecimal = settings.DisplayAsDecimal;
  state.CurrentFileName.clear();
  state.Topic = std::make_unique<TarvelinTopic>();
  state.Topic->SetNormaliseWeights(settings.NormaliseWeights);
  state.Modified = false;
  state.MaxOptions = MostOptions;
  state.MaxAttributes = MostAttributes;
  return true;
}

std::vector<std::string> ProgramArguments(int argc, const char* const* argv) {
#ifdef _WIN32
  static_cast<void>(argc);
  static_cast<void>(argv);
  return SplitCommandLine(CommandLineAfterProgramName(ProcessCommandLine()));
#else
  return std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc);
#endif
}

std::string_view CommandLineAfterProgramName(std::string_view CommandLine) {
  const size_t end = CommandLine.starts_with('"') ? CommandLine.find('"', 1) : CommandLine.find_first_of(" \t");
  return end == std::string_view::npos ? std::string_view() : CommandLine.substr(end + 1);
}

}  // namespace tarvelin
