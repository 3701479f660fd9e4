#include "util/AtomicFileWin32.h"

#include <windows.h>

#include <atomic>
#include <cstdio>

#include "util/AtomicFile.h"
#include "util/TarvelinError.h"

namespace tarvelin {

namespace {

constexpr const char* kSource = "AtomicFile";

// File names are UTF-8 inside the program; the narrow Windows API would read them in the ANSI code page.
std::wstring Wide(const std::string& Text) {
  if (Text.empty()) {
    return {};
  }
  const int size = static_cast<int>(Text.size());
  std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, Text.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, Text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

[[noreturn]] void RaiseFor(DWORD SystemError) {
  throw TarvelinError::RuntimeFault(ErrorNumberForWin32Error(SystemError), kSource);
}

std::wstring FolderOf(const std::wstring& FileName) {
  const size_t separator = FileName.find_last_of(L"\\/:");
  return separator == std::wstring::npos ? std::wstring() : FileName.substr(0, separator + 1);
}

// A short name that no other writer uses, in the target's folder so that the rename stays on one volume:
// the process id tells processes apart, the counter the writes of one process.
std::wstring TemporaryNameBeside(const std::wstring& Target) {
  static std::atomic<unsigned> counter{0};
  wchar_t name[40] = {};
  std::swprintf(name, std::size(name), L"~tvt%lx-%x.tmp", GetCurrentProcessId(), counter++);
  return FolderOf(Target) + name;
}

// A handle that is closed on every path out; its temporary file is removed unless committed.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::wstring& Target) {
    for (int attempt = 0; handle_ == INVALID_HANDLE_VALUE; ++attempt) {
      name_ = TemporaryNameBeside(Target);
      handle_ = CreateFileW(name_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
      if (handle_ == INVALID_HANDLE_VALUE && (GetLastError() != ERROR_FILE_EXISTS || attempt == 100)) {
        RaiseFor(GetLastError());
      }
    }
  }
  ~TemporaryFile() {
    if (handle_ != INVALID_HANDLE_VALUE) {
      CloseHandle(handle_);
    }
    if (!committed_) {
      DeleteFileW(name_.c_str());
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void Write(std::string_view Contents) {
    while (!Contents.empty()) {
      const DWORD chunk = static_cast<DWORD>(std::min<size_t>(Contents.size(), 1u << 30));
      DWORD written = 0;
      if (!WriteFile(handle_, Contents.data(), chunk, &written, nullptr)) {
        RaiseFor(GetLastError());
      }
      Contents.remove_prefix(written);
    }
  }

  // The data reaches the disk before the name changes, so a crash leaves the old file or the new one.
  void CommitAs(const std::wstring& Target) {
    const bool flushed = FlushFileBuffers(handle_);
    const DWORD flushError = GetLastError();
    CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
    if (!flushed) {
      RaiseFor(flushError);
    }
    if (!ReplaceTarget(Target)) {
      RaiseFor(GetLastError());
    }
    committed_ = true;
  }

 private:
  // Another process reading the target, or a virus scanner looking at it, makes Windows refuse the
  // replacement for a moment; a few short waits let it finish rather than lose the save.
  bool ReplaceTarget(const std::wstring& Target) const {
    constexpr int kAttempts = 20;
    constexpr DWORD kWaitMs = 15;
    for (int attempt = 1;; ++attempt) {
      if (MoveFileExW(name_.c_str(), Target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return true;
      }
      const DWORD error = GetLastError();
      if (attempt == kAttempts || (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION)) {
        SetLastError(error);
        return false;
      }
      Sleep(kWaitMs);
    }
  }

  std::wstring name_;
  HANDLE handle_ = INVALID_HANDLE_VALUE;
  bool committed_ = false;
};

// What stands in the target's place and may not be replaced: a folder would be destroyed with what it
// holds, and a read-only file is one the person asked to keep.
void RefuseToReplace(const std::wstring& Target) {
  const DWORD attributes = GetFileAttributesW(Target.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return;
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    throw TarvelinError::RuntimeFault(ErrPermissionDenied, kSource);
  }
}

}  // namespace

int32_t ErrorNumberForWin32Error(unsigned long SystemError) {
  switch (SystemError) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ErrDiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      return ErrPermissionDenied;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      return ErrPathNotFound;
    case ERROR_CRC:
    case ERROR_NOT_READY:
    case ERROR_IO_DEVICE:
      return ErrDeviceIO;
    default:
      return ErrPathFileAccess;
  }
}

void WriteFileAtomically(const std::string& FileName, std::string_view Contents) {
  const std::wstring target = Wide(FileName);
  RefuseToReplace(target);
  TemporaryFile temporary(target);
  temporary.Write(Contents);
  temporary.CommitAs(target);
}

// Only a file on disk has an end: a device such as NUL or CON is refused.
std::string ReadWholeFile(const std::string& FileName) {
  const std::wstring name = Wide(FileName);
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = GetLastError();
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    throw TarvelinError::RuntimeFault(missing ? ErrFileNotFound : ErrPathFileAccess, kSource);
  }
  HANDLE file = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0
                    ? INVALID_HANDLE_VALUE
                    : CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  std::string bytes;
  LARGE_INTEGER size{};
  bool read = GetFileType(file) == FILE_TYPE_DISK && GetFileSizeEx(file, &size);
  if (read) {
    bytes.resize(static_cast<size_t>(size.QuadPart));
    DWORD got = 0;
    for (size_t done = 0; read && done < bytes.size(); done += got) {
      const DWORD chunk = static_cast<DWORD>(std::min<size_t>(bytes.size() - done, 1u << 30));
      read = ReadFile(file, bytes.data() + done, chunk, &got, nullptr) && got > 0;
    }
  }
  CloseHandle(file);
  if (!read) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  return bytes;
}

}  // namespace tarvelin
