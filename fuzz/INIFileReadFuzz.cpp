// Reads any bytes as an INI file. Every lookup on what the reader builds must answer or raise a
// TarvelinError, and its text must read back to the same document. (A section that holds nothing is
// written with its empty line after it, which the reader refuses as a section of blank lines; so the
// text may also raise.)
#include <array>

#include "FuzzSupport.h"
#include "files/INIFile.h"
#include "util/TarvelinError.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

namespace {

void LookUpEverywhere(const INIFile& Ini) {
  static constexpr std::array<const char*, 4> Sections = {"", "Topic", "Attributes", "Option0"};
  static constexpr std::array<const char*, 4> Keys = {"Name", "TotalOptions", "Attribute0_Weighting", "Rating0"};
  Ini.CountSections();
  for (const char* section : Sections) {
    for (const char* key : Keys) {
      try {
        Ini.GetNumericParameterValue(section, key, "0");
      } catch (const TarvelinError&) {
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  FuzzEnvironment& environment = FuzzEnvironment::Get();
  environment.FreshDialogs();
  std::string fileName = environment.WriteInput("input.ini", AsText(Data, Size));
  INIFile ini;
  try {
    ini.ReadFile(fileName);
  } catch (const TarvelinError&) {
    return 0;
  }
  LookUpEverywhere(ini);
  const std::string text = ini.FileText();
  // A key that begins with a byte-order mark, written first, is read back as the file's mark.
  if (text.empty() || text.starts_with("\xEF\xBB\xBF")) {
    return 0;
  }
  std::string againName = environment.WriteInput("again.ini", text);
  INIFile again;
  try {
    again.ReadFile(againName);
  } catch (const TarvelinError&) {
    return 0;
  }
  Require(again.FileText() == text, "a written INI document reads back unchanged");
  return 0;
}
