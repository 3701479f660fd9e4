// The POSIX form; AtomicFileWin32.cpp holds the Windows one.
#ifndef _WIN32

#include "util/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <new>

#include "util/TarvelinError.h"

#ifndef _WIN32
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <ctime>
#endif

namespace tarvelin {

namespace {

constexpr const char* kSource = "AtomicFile";

FileSinkWrapper& SinkWrapper() {
  static FileSinkWrapper wrapper;
  return wrapper;
}

int32_t ErrorNumberFor(int SystemError) {
  switch (SystemError) {
    case ENOSPC:
    case EFBIG:
#ifdef EDQUOT
    case EDQUOT:
#endif
      return ErrDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
      return ErrPermissionDenied;
    case ENOENT:
    case ENOTDIR:
      return ErrPathNotFound;
    case EIO:
      return ErrDeviceIO;
    default:
      return ErrPathFileAccess;
  }
}

[[noreturn]] void RaiseFor(int SystemError) {
  throw TarvelinError::RuntimeFault(ErrorNumberFor(SystemError), kSource);
}

#ifndef _WIN32
namespace fs = std::filesystem;

constexpr std::string_view kTemporaryMark = ".tmp-";
constexpr size_t kUniqueLength = 6;  // the part mkstemp fills in

// The start of the temporary names of one target: a hidden name made from a hash of the target's name, short
// enough to fit beside a target of any length, and telling the leftovers of that target from others.
std::string TemporaryPrefix(std::string_view TargetName) {
  uint64_t hash = 14695981039346656037ull;
  for (const char character : TargetName) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 1099511628211ull;
  }
  char text[20];
  std::snprintf(text, sizeof text, ".%016llx", static_cast<unsigned long long>(hash));
  return text + std::string(kTemporaryMark);
}

bool HasUniqueEnding(std::string_view Name, std::string_view Start) {
  if (Name.size() != Start.size() + kUniqueLength || !Name.starts_with(Start)) {
    return false;
  }
  for (const char character : Name.substr(Start.size())) {
    if (std::isalnum(static_cast<unsigned char>(character)) == 0) {
      return false;
    }
  }
  return true;
}

// Earlier versions named the temporary file after the target itself, which is why both patterns count.
bool IsTemporaryNameOf(std::string_view Name, const std::string& TargetName, const std::string& Prefix) {
  return HasUniqueEnding(Name, Prefix) || HasUniqueEnding(Name, TargetName + std::string(kTemporaryMark));
}

bool IsOlder(const timespec& Time, const timespec& Than) {
  return Time.tv_sec < Than.tv_sec || (Time.tv_sec == Than.tv_sec && Time.tv_nsec < Than.tv_nsec);
}

// Removes what interrupted saves of the target left behind: files of exactly its temporary pattern, older
// than Start, that no running save holds locked. Failures only leave a leftover in place.
void RemoveLeftovers(const fs::path& Folder, const std::string& TargetName, const std::string& Prefix,
                     const timespec& Start) {
  DIR* folder = opendir(Folder.c_str());
  if (folder == nullptr) {
    return;
  }
  const int folderFd = dirfd(folder);
  while (const dirent* entry = readdir(folder)) {
    struct stat info {};
    if (!IsTemporaryNameOf(entry->d_name, TargetName, Prefix) ||
        fstatat(folderFd, entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(info.st_mode) ||
        !IsOlder(info.st_mtim, Start)) {
      continue;
    }
    const int fd = openat(folderFd, entry->d_name, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (fd >= 0) {
      if (flock(fd, LOCK_EX | LOCK_NB) == 0) {
        unlinkat(folderFd, entry->d_name, 0);
      }
      close(fd);
    }
  }
  closedir(folder);
}

// So that a renamed name survives a power cut. Some file systems cannot sync a folder; the save stands.
void SyncFolder(const fs::path& Folder) {
  const int fd = open(Folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd >= 0) {
    fsync(fd);
    close(fd);
  }
}

// A temporary file, locked for as long as it is open so that no other save takes it for a leftover, and
// removed on every path out unless committed.
class TemporaryFile final : public FileSink {
 public:
  TemporaryFile(const fs::path& Folder, const std::string& Prefix)
      : name_((Folder / (Prefix + std::string(kUniqueLength, 'X'))).string()) {
    fd_ = mkostemp(name_.data(), O_CLOEXEC);
    if (fd_ < 0) {
      RaiseFor(errno);
    }
    flock(fd_, LOCK_EX);
  }
  ~TemporaryFile() override {
    if (!committed_) {
      unlink(name_.c_str());
    }
    close(fd_);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void Write(std::string_view Contents) override {
    while (!Contents.empty()) {
      const ssize_t written = write(fd_, Contents.data(), Contents.size());
      if (written < 0) {
        if (errno == EINTR) {
          continue;
        }
        RaiseFor(errno);
      }
      Contents.remove_prefix(static_cast<size_t>(written));
    }
  }

  // Gives the new file the old one's permissions, or the usual ones for a new file.
  void TakePermissionsOf(const std::string& Target) {
    struct stat existing {};
    mode_t mode = 0;
    if (stat(Target.c_str(), &existing) == 0) {
      mode = existing.st_mode & 07777;
    } else {
      const mode_t mask = umask(0);
      umask(mask);
      mode = 0666 & ~mask;
    }
    fchmod(fd_, mode);
  }

  // The file stays open, and so locked, until the rename is done.
  void CommitAs(const std::string& Target) {
    if (fsync(fd_) != 0 || rename(name_.c_str(), Target.c_str()) != 0) {
      RaiseFor(errno);
    }
    committed_ = true;
  }

 private:
  std::string name_;
  int fd_ = -1;
  bool committed_ = false;
};
#endif

}  // namespace

void SetFileSinkWrapper(FileSinkWrapper Wrapper) {
  SinkWrapper() = std::move(Wrapper);
}

#ifndef _WIN32
// The file that a name finally stands for: a link is followed, so that the link stays and the file it
// points to is replaced. Anything but a regular file or a new name (a folder, a device such as /dev/full,
// a pipe) is refused: renaming over it would destroy it.
std::string ReplaceableTarget(const std::string& FileName) {
  std::error_code error;
  const auto status = std::filesystem::status(FileName, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    return FileName;
  }
  if (status.type() != std::filesystem::file_type::regular) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  return std::filesystem::is_symlink(std::filesystem::symlink_status(FileName, error))
             ? std::filesystem::canonical(FileName, error).string()
             : FileName;
}

void WriteFileAtomically(const std::string& FileName, std::string_view Contents) {
  timespec start{};
  clock_gettime(CLOCK_REALTIME, &start);
  const fs::path target = ReplaceableTarget(FileName);
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  const std::string targetName = target.filename().string();
  const std::string prefix = TemporaryPrefix(targetName);
  RemoveLeftovers(folder, targetName, prefix, start);
  TemporaryFile temporary(folder, prefix);
  if (SinkWrapper()) {
    SinkWrapper()(temporary)->Write(Contents);
  } else {
    temporary.Write(Contents);
  }
  temporary.TakePermissionsOf(target);
  temporary.CommitAs(target);
  SyncFolder(folder);
}
#endif

// A stream would throw on a read error (a bad sector, a failing network file system); stdio reports it.
std::string ReadWholeFile(const std::string& FileName) {
  std::error_code error;
  if (!std::filesystem::exists(FileName, error)) {
    throw TarvelinError::RuntimeFault(ErrFileNotFound, kSource);
  }
  // Only a regular file has an end: a device such as /dev/zero or /dev/full would be read forever.
  if (!std::filesystem::is_regular_file(FileName, error)) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(FileName.c_str(), "rb"), &std::fclose);
  if (!file) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  try {
    std::string bytes;
    const auto size = std::filesystem::file_size(FileName, error);
    bytes.reserve(error ? 0 : size);
    char buffer[65536];
    for (size_t got = 0; (got = std::fread(buffer, 1, sizeof buffer, file.get())) > 0;) {
      bytes.append(buffer, got);
    }
    if (std::ferror(file.get()) != 0) {
      throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
    }
    return bytes;
  } catch (const std::bad_alloc&) {
    throw TarvelinError::RuntimeFault(ErrOutOfMemory, kSource);
  } catch (const std::length_error&) {
    throw TarvelinError::RuntimeFault(ErrOutOfMemory, kSource);
  }
}

}  // namespace tarvelin

#endif
