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
constexpr const char* UsageText =
    "Usage: tarvelin [FILE.tvt]\n"
    "       tarvelin /uninstall\n"
    "\n"
    "Tarvelin weighs the options of a decision against its attributes and shows which scores best.\n"
    "\n"
    "  FILE.tvt     open this topic file (the extension in lower case)\n"
    "  /uninstall   ask, then remove Tarvelin's settings, and end\n"
    "  --help       print this help and end\n"
    "  --version    print the version and end\n";

void Warn(const std::string& Text) {
  Program().UI->ShowMessage(Text, MsgButtons::OK, MsgIcon::Exclamation, Program().AppTitle);
}

// The text after the last "." of the whole argument; empty without one.
std::string ExtensionOf(std::string_view Name) {
  const size_t dot = Name.rfind('.');
  return dot == std::string_view::npos ? std::string() : std::string(Name.substr(dot + 1));
}

// Only a file counts, as a directory listing of the name would show: a folder, a device or a pipe given
// as a topic is refused before the reader could block on it or fail less clearly.
bool IsExistingFile(const std::string& Name) {
  std::error_code error;
  return std::filesystem::is_regular_file(Name, error);
}

// A file manager passes absolute paths but a terminal passes names as typed, meant from the current folder
// rather than the program's folder that the reader would resolve them against.
std::string FromCurrentFolder(const std::string& Name) {
  if constexpr (NativePathStyle == PathStyle::Posix) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(Name, error);
    if (!error) {
      return absolute.lexically_normal().string();
    }
  }
  return Name;
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
  const std::string file = FromCurrentFolder(argument);
  if (LowerCase(argument) == UninstallSwitch) {
    state.UninstallRequested = true;
  } else if (!IsValidFileName(argument, true)) {
    Warn("Invalid filename: " + argument);
  } else if (!IsExistingFile(file)) {
    Warn("File does not exist: " + argument);
  } else if (ExtensionOf(argument) != TopicFileExtension) {  // case-sensitive: "x.TVT" is refused
    Warn("Unrecognised file type: " + argument);
  } else {
    state.FileToOpen = file;
    state.FileTypeToOpen = TopicFileType;
  }
}

std::optional<std::string> CommandLineInformation(const std::vector<std::string>& Arguments) {
  if (Arguments.size() != 1) {
    return std::nullopt;
  }
  if (Arguments.front() == "--version") {
    return std::string(ProductTitle) + " " + TARVELIN_VERSION + "\n";
  }
  if (Arguments.front() == "--help") {
    return UsageText;
  }
  return std::nullopt;
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
  state.ShowInsight = settings.ShowInsight;
  state.SplitScoreBars = settings.SplitScoreBars;
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
