// Splits any text as a command line. The first byte limits the count (0 to 3, 0 meaning no limit); the
// rest is the line. Without quotes, splitting must agree with a plain split at blanks and tabs.
#include <string>
#include <string_view>
#include <vector>

#include "FuzzSupport.h"
#include "startup/modStartup.h"
#include "util/libmodGenericTextFunctions.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

namespace {

std::vector<std::string> SplitAtBlanks(std::string_view Line, int MaxCount) {
  std::vector<std::string> words;
  size_t start = Line.find_first_not_of(" \t");
  while (start != std::string_view::npos && (MaxCount == 0 || static_cast<int>(words.size()) < MaxCount)) {
    const size_t end = std::min(Line.find_first_of(" \t", start), Line.size());
    words.emplace_back(Line.substr(start, end - start));
    start = Line.find_first_not_of(" \t", end);
  }
  return words;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  if (Size == 0) {
    return 0;
  }
  const int maxCount = Data[0] % 4;
  const std::string_view line = AsText(Data + 1, Size - 1);
  const std::vector<std::string> arguments = SplitCommandLine(line, maxCount);
  Require(maxCount == 0 || static_cast<int>(arguments.size()) <= maxCount, "no more arguments than asked for");
  size_t characters = 0;
  for (const std::string& argument : arguments) {
    characters += argument.size();
  }
  Require(characters <= line.size(), "arguments hold no more than the line");
  if (line.find('"') == std::string_view::npos) {
    Require(arguments == SplitAtBlanks(line, maxCount), "an unquoted line splits at blanks and tabs");
  }
  const std::string_view rest = CommandLineAfterProgramName(line);
  Require(rest.empty() || (rest.data() > line.data() && rest.data() + rest.size() == line.data() + line.size()),
          "the text after the program name is the end of the line");
  return 0;
}
