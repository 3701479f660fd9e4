// Interprets any arguments (the input split at NUL bytes) as the program's command line, run in a folder
// that holds a topic file and a CSV file. At most one thing may be chosen, a file only when it exists
// with the topic file extension, and every refusal is reported once.
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzSupport.h"
#include "startup/modStartup.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

namespace {

std::vector<std::string> ArgumentsOf(std::string_view Input) {
  std::vector<std::string> arguments;
  size_t start = 0;
  while (start <= Input.size() && !Input.empty()) {
    const size_t end = std::min(Input.find('\0', start), Input.size());
    arguments.emplace_back(Input.substr(start, end - start));
    start = end + 1;
  }
  return arguments;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  FuzzEnvironment& environment = FuzzEnvironment::Get();
  environment.WriteInput("a.tvt", "[Topic]\r\n");
  environment.WriteInput("b.csv", "Topic:,b\r\n");
  std::filesystem::current_path(environment.Folder());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  QuietDialogs& dialogs = FuzzEnvironment::Get().FreshDialogs();
  const std::vector<std::string> arguments = ArgumentsOf(AsText(Data, Size));
  InterpretCommandLine(arguments);
  const ProgramState& state = Program();
  const bool chosen = state.UninstallRequested || !state.FileToOpen.empty();
  Require(!(state.UninstallRequested && !state.FileToOpen.empty()), "one thing chosen at most");
  Require(chosen || arguments.empty() || dialogs.Messages == 1, "a refused command line is reported once");
  Require(!chosen || dialogs.Messages == 0, "an accepted command line says nothing");
  if (!state.FileToOpen.empty()) {
    Require(state.FileToOpen.ends_with(".tvt") && std::filesystem::exists(state.FileToOpen),
            "only an existing topic file is opened");
  }
  return 0;
}
