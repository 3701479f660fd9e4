#include <windows.h>

#include "startup/HiveFileLock.h"
#include "startup/modUtf16.h"

namespace tarvelin {

HiveFileLock::HiveFileLock(const std::string& LockFileName) {
  const std::u16string name16 = Utf16FromUtf8(LockFileName);
  const std::wstring name(name16.begin(), name16.end());
  HANDLE file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return;
  }
  OVERLAPPED whole{};
  if (!LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, MAXDWORD, MAXDWORD, &whole)) {
    CloseHandle(file);
    return;
  }
  handle_ = reinterpret_cast<std::intptr_t>(file);
}

HiveFileLock::~HiveFileLock() {
  if (Locked()) {
    HANDLE file = reinterpret_cast<HANDLE>(handle_);
    OVERLAPPED whole{};
    UnlockFileEx(file, 0, MAXDWORD, MAXDWORD, &whole);
    CloseHandle(file);
  }
}

}  // namespace tarvelin
