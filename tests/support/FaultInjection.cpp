#include "support/FaultInjection.h"

#include <grp.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <set>
#include <stdexcept>

#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

namespace tarvelin::testing {

namespace {

namespace fs = std::filesystem;

enum ExitCode { kFinished = 0, kThrew = 3, kFaultUnavailable = 4 };

// A writer that takes longer than this is taken to hang.
constexpr auto kTimeLimit = std::chrono::seconds(30);

// The child's report: length-prefixed strings, the number of messages first.
void Put(std::string& Report, std::string_view Text) {
  const uint64_t size = Text.size();
  Report.append(reinterpret_cast<const char*>(&size), sizeof size);
  Report.append(Text);
}

std::string Take(std::string_view& Report) {
  uint64_t size = 0;
  if (Report.size() < sizeof size) {
    throw std::runtime_error("the writer's report is cut short");
  }
  std::memcpy(&size, Report.data(), sizeof size);
  Report.remove_prefix(sizeof size);
  const std::string text(Report.substr(0, size));
  Report.remove_prefix(text.size());
  return text;
}

// Recreates the folder's files on a small disk of its own, seen only by this process, with FreeSpace bytes
// left. False when this system does not let the process mount one.
bool MoveOntoPrivateDisk(const fs::path& Folder, size_t FreeSpace) {
  const size_t page = PageSize();
  size_t pages = (FreeSpace + page - 1) / page;
  FolderState files;
  for (const auto& entry : fs::directory_iterator(Folder)) {
    if (!entry.is_regular_file() || entry.is_symlink()) {
      return false;
    }
    const std::string& bytes = files[entry.path().filename().string()] = ReadBytes(entry.path().string());
    pages += (bytes.size() + page - 1) / page;
  }
  // A size of nothing would mean no limit at all.
  const std::string options = "size=" + std::to_string(std::max<size_t>(pages, 1) * page);
  if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      mount("tmpfs", Folder.c_str(), "tmpfs", 0, options.c_str()) != 0) {
    return false;
  }
  for (const auto& [name, bytes] : files) {
    WriteBytes((Folder / name).string(), bytes);
  }
  return true;
}

bool BecomeOrdinaryUser() {
  constexpr id_t Nobody = 65534;
  return geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(Nobody) == 0 && setuid(Nobody) == 0);
}

bool Apply(const fs::path& Folder, const Fault& Fault) {
  if (Fault.FreeDiskSpace && !MoveOntoPrivateDisk(Folder, *Fault.FreeDiskSpace)) {
    return false;
  }
  if (Fault.FileSizeLimit) {
    // Without this the kernel ends the process instead of failing the write.
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{*Fault.FileSizeLimit, *Fault.FileSizeLimit};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
      return false;
    }
  }
  return !Fault.Unprivileged || BecomeOrdinaryUser();
}

void WriteAll(int Pipe, std::string_view Bytes) {
  while (!Bytes.empty()) {
    const ssize_t written = write(Pipe, Bytes.data(), Bytes.size());
    if (written <= 0) {
      return;
    }
    Bytes.remove_prefix(static_cast<size_t>(written));
  }
}

[[noreturn]] void RunChild(int Pipe, const fs::path& Folder, const Fault& Fault,
                           const std::function<void(ScriptedDialogs&)>& Write) {
  std::string report;
  try {
    if (!Apply(Folder, Fault)) {
      _exit(kFaultUnavailable);
    }
    ScopedScriptedDialogs dialogs;
    Write(*dialogs);
    Put(report, std::to_string(dialogs->Messages.size()));
    for (const auto& message : dialogs->Messages) {
      Put(report, message.Prompt);
    }
    for (const auto& [name, contents] : StateOf(Folder)) {
      Put(report, name);
      Put(report, contents);
    }
  } catch (...) {
    _exit(kThrew);
  }
  WriteAll(Pipe, report);
  _exit(kFinished);
}

// Reads until the child closes its end; false when it has not done so within the time limit.
bool ReadReport(int Pipe, std::string& Report) {
  const auto deadline = std::chrono::steady_clock::now() + kTimeLimit;
  char buffer[65536];
  for (;;) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd ready{Pipe, POLLIN, 0};
    const int polled = left.count() > 0 ? poll(&ready, 1, static_cast<int>(left.count())) : 0;
    if (polled == 0) {
      return false;
    }
    const ssize_t got = polled > 0 ? read(Pipe, buffer, sizeof buffer) : -1;
    if (got == 0) {
      return true;
    }
    if (got > 0) {
      Report.append(buffer, static_cast<size_t>(got));
    } else if (errno != EINTR) {
      throw std::runtime_error("cannot read the writer's report");
    }
  }
}

ChildOutcome::End HowItEnded(int Status) {
  if (!WIFEXITED(Status)) {
    return ChildOutcome::End::Crashed;
  }
  switch (WEXITSTATUS(Status)) {
    case kFinished:
      return ChildOutcome::End::Finished;
    case kThrew:
      return ChildOutcome::End::Threw;
    case kFaultUnavailable:
      return ChildOutcome::End::FaultUnavailable;
    default:
      return ChildOutcome::End::Crashed;
  }
}

void ParseReport(std::string_view Report, ChildOutcome& Outcome) {
  const size_t messages = std::stoul(Take(Report));
  for (size_t message = 0; message < messages; ++message) {
    Outcome.Messages.push_back(Take(Report));
  }
  while (!Report.empty()) {
    std::string name = Take(Report);
    Outcome.After[name] = Take(Report);
  }
}

}  // namespace

std::ostream& operator<<(std::ostream& Out, ChildOutcome::End How) {
  constexpr const char* Names[] = {"finished", "crashed", "threw", "timed out", "could not set the fault up"};
  return Out << Names[static_cast<size_t>(How)];
}

size_t PageSize() {
  return static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

FolderState StateOf(const fs::path& Folder) {
  FolderState state;
  std::error_code error;
  for (auto entry = fs::recursive_directory_iterator(Folder, error); entry != fs::recursive_directory_iterator();
       entry.increment(error)) {
    const std::string name = fs::relative(entry->path(), Folder).string();
    if (entry->is_symlink()) {
      state[name] = "<link to " + fs::read_symlink(entry->path(), error).string() + ">";
    } else if (entry->is_directory()) {
      state[name] = "<folder>";
    } else {
      state[name] = ReadBytes(entry->path().string());
    }
  }
  return state;
}

ChildOutcome RunWithFault(const fs::path& Folder, const Fault& Fault,
                          const std::function<void(ScriptedDialogs&)>& Write) {
  int pipeEnds[2];
  if (pipe(pipeEnds) != 0) {
    throw std::runtime_error("cannot make a pipe");
  }
  const pid_t child = fork();
  if (child < 0) {
    throw std::runtime_error("cannot fork");
  }
  if (child == 0) {
    close(pipeEnds[0]);
    RunChild(pipeEnds[1], Folder, Fault, Write);
  }
  close(pipeEnds[1]);
  std::string report;
  const bool reported = ReadReport(pipeEnds[0], report);
  close(pipeEnds[0]);
  if (!reported) {
    kill(child, SIGKILL);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ChildOutcome outcome;
  outcome.How = reported ? HowItEnded(status) : ChildOutcome::End::TimedOut;
  if (outcome.How == ChildOutcome::End::Finished) {
    ParseReport(report, outcome);
  }
  return outcome;
}

std::vector<size_t> CutPoints(size_t Size) {
  // 2 bytes: a JPEG's start marker; 14 and 54: a bitmap's file header and both its headers; 20: a JPEG's
  // start and JFIF segment.
  std::set<size_t> cuts{0, 1, 2, 14, 20, 54, 100, 511, 512, 513, Size / 2, Size - 1, Size - 2};
  for (size_t boundary = PageSize(); boundary <= Size; boundary += PageSize()) {
    cuts.insert({boundary - 1, boundary, boundary + 1});
  }
  return {cuts.begin(), cuts.lower_bound(Size)};
}

}  // namespace tarvelin::testing
