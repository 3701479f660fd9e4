#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/TarvelinTopic.h"
#include "startup/Dialogs.h"

namespace tarvelin {

class cDIBSection;

// The two file types of the decision report.
enum class ReportFormat { Pdf, Html };

// The program-wide state shared by the main window, the file commands and the settings dialog.
struct ProgramState {
  std::string ProductName = "Tarvelin";  // also names the source of the registry's errors
  std::string AppTitle = "Tarvelin";
  std::string LastUsedDir;
  bool UninstallRequested = false;
  std::string FileToOpen, FileTypeToOpen;  // set by InterpretCommandLine
  std::string CurrentFileName;
  std::unique_ptr<TarvelinTopic> Topic;  // the live topic
  bool Modified = false;                 // set only through SetModified()
  bool ShowSettingsOnNew = true, DisplayAsDecimal = true;
  int16_t MaxOptions = 10, MaxAttributes = 10;
  Dialogs* UI = nullptr;                                         // message boxes and file dialogs
  std::function<void(cDIBSection&)> CaptureDisplay;              // the main window's display area, up to date
  std::function<void()> SettingsDialogHide, SettingsDialogShow;  // set while the settings dialog is open
  bool IsLoading = false;                                        // the main window is between StartLoad and EndLoad
  // The decision report of a topic as a file's bytes, in the display format of the main window, which sets it.
  std::function<std::string(const TarvelinTopic&, ReportFormat)> DecisionReport;
  bool ShowInsight = true;      // bands, ticks and a line in the main window show how robust the best option is
  bool SplitScoreBars = false;  // each score bar in one segment per attribute
};

ProgramState& Program();

// Marks the live topic as changed; does nothing while the main window is loading.
void SetModified();

// Arguments without the program name. Accepts nothing, "/uninstall" in any case, or one existing file
// whose extension is exactly "tvt"; anything else is reported in a warning box, with the argument as
// given, and leaves nothing set. On POSIX a relative file name is taken from the current folder, and the
// file to open is its absolute path.
void InterpretCommandLine(const std::vector<std::string>& Arguments);

// The text that "--help" or "--version", given as the only argument, prints on standard output before the
// program ends without a window; nothing for any other command line. Needs no window system.
std::optional<std::string> CommandLineInformation(const std::vector<std::string>& Arguments);

// Reads the settings, interprets the command line, handles /uninstall and creates the live topic.
// False when the program ends without a window.
bool StartUp(const std::vector<std::string>& Arguments);

// The arguments the program was started with, without the program name: argv on POSIX, where the shell
// has split them; on Windows the process command line, split by SplitCommandLine.
std::vector<std::string> ProgramArguments(int argc, const char* const* argv);

// A process command line without its first word, the program name (quoted or not).
std::string_view CommandLineAfterProgramName(std::string_view CommandLine);

}  // namespace tarvelin
