#include <windows.h>

#include "startup/ProcessCommandLine.h"
#include "startup/modUtf16.h"

namespace tarvelin {

std::string ProcessCommandLine() {
  const wchar_t* commandLine = GetCommandLineW();
  const std::wstring wide = commandLine != nullptr ? std::wstring(commandLine) : std::wstring();
  return Utf8FromUtf16(std::u16string(wide.begin(), wide.end()));
}

}  // namespace tarvelin
