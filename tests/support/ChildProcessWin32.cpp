#include <windows.h>

#include <cstdlib>
#include <string>

#include "startup/modUtf16.h"
#include "support/ChildProcess.h"

namespace tarvelin::testing {

namespace {

// Names the job in the child's environment, which it inherits; its command line stays the test's own.
constexpr const char* kJobVariable = "TARVELIN_TEST_CHILD_JOB";

std::wstring Wide(const std::string& Text) {
  const std::u16string units = Utf16FromUtf8(Text);
  return std::wstring(units.begin(), units.end());
}

std::wstring ThisProgram() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& Job, const std::string& Arguments) {
  const std::wstring program = ThisProgram();
  std::wstring commandLine = L"\"" + program + L"\" " + Wide(Arguments);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  _putenv_s(kJobVariable, Job.c_str());
  if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                     &process)) {
    CloseHandle(process.hThread);
    handle_ = reinterpret_cast<std::intptr_t>(process.hProcess);
  }
  _putenv_s(kJobVariable, "");
}

ChildProcess::~ChildProcess() {
  Succeeded();
}

bool ChildProcess::Succeeded() {
  if (handle_ != -1) {
    HANDLE process = reinterpret_cast<HANDLE>(handle_);
    WaitForSingleObject(process, INFINITE);
    DWORD status = 1;
    GetExitCodeProcess(process, &status);
    CloseHandle(process);
    status_ = static_cast<int>(status);
    handle_ = -1;
  }
  return status_ == 0;
}

std::optional<int> RunRequestedChildJob() {
  const char* name = std::getenv(kJobVariable);
  if (name == nullptr || *name == '\0') {
    return std::nullopt;
  }
  return RunChildJob(name);
}

}  // namespace tarvelin::testing
