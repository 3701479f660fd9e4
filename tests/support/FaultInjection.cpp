#include "support/FaultInjection.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <set>
#include <string_view>

#include "support/TempFolder.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"

namespace tarvelin::testing {

namespace {

namespace fs = std::filesystem;

// Passes the first bytes on to the temporary file, then fails as the file system would.
class FailingSink final : public FileSink {
 public:
  FailingSink(FileSink& File, WriteFault Fault) : file_(File), fault_(Fault) {}

  void Write(std::string_view Bytes) override {
    const size_t passed = std::min(Bytes.size(), fault_.Cut);
    file_.Write(Bytes.substr(0, passed));
    fault_.Cut -= passed;
    if (passed < Bytes.size()) {
      throw TarvelinError::RuntimeFault(fault_.Number, "AtomicFile");
    }
  }

 private:
  FileSink& file_;
  WriteFault fault_;
};

// Mounts made from here on stay within this process.
bool PrivateMountNamespace() {
  static const bool made = unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
  return made;
}

}  // namespace

size_t PageSize() {
  return static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

FolderState StateOf(const fs::path& Folder) {
  FolderState state;
  std::error_code error;
  for (auto entry = fs::recursive_directory_iterator(Folder, error); entry != fs::recursive_directory_iterator();
       entry.increment(error)) {
    // Lexically: relative() would follow a link and file it under its target's name.
    const std::string name = entry->path().lexically_relative(Folder).string();
    if (entry->is_symlink()) {
      state[name] = "<link to " + fs::read_symlink(entry->path(), error).string() + ">";
    } else if (entry->is_directory()) {
      state[name] = "<folder>";
    } else if (!entry->is_regular_file()) {
      state[name] = "<special file>";  // a pipe would never end
    } else {
      state[name] = ReadBytes(entry->path().string());
    }
  }
  return state;
}

std::vector<WriteFault> WriteFaults(size_t Size) {
  // 2 bytes: a JPEG's start marker; 14 and 54: a bitmap's file header and both its headers; 20: a JPEG's
  // start and JFIF segment.
  std::set<size_t> cuts{0, 1, 2, 14, 20, 54, 100, 511, 512, 513, Size / 2, Size - 1, Size - 2};
  for (size_t boundary = PageSize(); boundary <= Size; boundary += PageSize()) {
    cuts.insert({boundary - 1, boundary, boundary + 1});
  }
  std::vector<WriteFault> faults;
  for (auto cut = cuts.begin(); cut != cuts.lower_bound(Size); ++cut) {
    faults.push_back({*cut, ErrDiskFull});
    faults.push_back({*cut, ErrDeviceIO});
  }
  return faults;
}

ScopedWriteFault::ScopedWriteFault(WriteFault Fault) {
  SetFileSinkWrapper([Fault](FileSink& File) { return std::make_unique<FailingSink>(File, Fault); });
}

ScopedWriteFault::~ScopedWriteFault() {
  SetFileSinkWrapper({});
}

ScopedPrivateDisk::ScopedPrivateDisk(const fs::path& Folder, size_t Size) : folder_(Folder) {
  const std::string options = "size=" + std::to_string(Size);
  mounted_ = PrivateMountNamespace() && mount("tmpfs", Folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

ScopedPrivateDisk::~ScopedPrivateDisk() {
  if (mounted_) {
    umount2(folder_.c_str(), MNT_DETACH);
  }
}

bool ScopedPrivateDisk::MakeReadOnly() {
  return mounted_ && mount(nullptr, folder_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

}  // namespace tarvelin::testing
