#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tarvelin::testing {

class ScriptedDialogs;

// Everything under a folder, by path relative to it: a file's bytes, "<folder>" or "<link to TARGET>".
using FolderState = std::map<std::string, std::string>;
FolderState StateOf(const std::filesystem::path& Folder);

// What holds a writer back. Several may be combined; none at all lets the write succeed.
struct Fault {
  // No file may grow beyond this many bytes: the write that crosses it fails (EFBIG).
  std::optional<size_t> FileSizeLimit;
  // The folder's files are moved onto a private disk that then has this many bytes free (ENOSPC). The disk
  // counts whole pages, so this is best a multiple of the page size.
  std::optional<size_t> FreeDiskSpace;
  // The writer runs as an ordinary user, whom permission bits stop even when the tests run as root.
  bool Unprivileged = false;
};

// What a writer did in its child process.
struct ChildOutcome {
  enum class End { Finished, Crashed, Threw, TimedOut, FaultUnavailable };
  End How = End::Crashed;
  std::vector<std::string> Messages;  // every prompt shown to the person, in order
  FolderState After;                  // the watched folder as the child left it
};
std::ostream& operator<<(std::ostream& Out, ChildOutcome::End How);

// Runs Write in a forked child under Fault, with Program().UI pointing at fresh ScriptedDialogs, and reports
// what the person was shown and what the folder held afterwards. The folder is seen from the child, so a
// private disk's contents are reported as the writer left them.
ChildOutcome RunWithFault(const std::filesystem::path& Folder, const Fault& Fault,
                          const std::function<void(ScriptedDialogs&)>& Write);

// Where to cut a write that succeeds with Size bytes: nothing at all, the first bytes, inside the usual file
// headers, on either side of the page boundaries and the last byte; every one below Size.
std::vector<size_t> CutPoints(size_t Size);

size_t PageSize();

}  // namespace tarvelin::testing
