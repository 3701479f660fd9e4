#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tarvelin::testing {

// Everything under a folder, by path relative to it: a file's bytes, "<folder>", "<link to TARGET>" or
// "<special file>".
using FolderState = std::map<std::string, std::string>;
FolderState StateOf(const std::filesystem::path& Folder);

// A write that stops: after Cut bytes of the new file, with the error a failing file system gives.
struct WriteFault {
  size_t Cut = 0;
  int32_t Number = 0;
};
// Cuts at nothing, the first bytes, inside the usual file headers, on either side of the page boundaries
// and at the last byte of a file of Size bytes, each with a full disk and an I/O error.
std::vector<WriteFault> WriteFaults(size_t Size);

// While it lives, every file the program writes fails as Fault says, the bytes before the cut reaching
// the temporary file.
class ScopedWriteFault {
 public:
  explicit ScopedWriteFault(WriteFault Fault);
  ~ScopedWriteFault();
  ScopedWriteFault(const ScopedWriteFault&) = delete;
  ScopedWriteFault& operator=(const ScopedWriteFault&) = delete;
};

// A small file system of its own over Folder while it lives, seen only by this process, so that a test
// meets a real full or read-only disk. Mounted() is false where the system does not allow it (it takes
// root, or a user allowed to make mount namespaces).
class ScopedPrivateDisk {
 public:
  ScopedPrivateDisk(const std::filesystem::path& Folder, size_t Size);
  ~ScopedPrivateDisk();
  ScopedPrivateDisk(const ScopedPrivateDisk&) = delete;
  ScopedPrivateDisk& operator=(const ScopedPrivateDisk&) = delete;

  bool Mounted() const { return mounted_; }
  // False where the disk cannot be made read-only.
  bool MakeReadOnly();

 private:
  std::filesystem::path folder_;
  bool mounted_ = false;
};

size_t PageSize();

}  // namespace tarvelin::testing
