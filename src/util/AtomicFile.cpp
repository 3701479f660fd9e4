// The POSIX form; AtomicFileWin32.cpp holds the Windows one.
#ifndef _WIN32

#include "util/AtomicFile.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "util/TarvelinError.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tarvelin {

namespace {

constexpr const char* kSource = "AtomicFile";

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
// A file descriptor that is closed on every path out; its temporary file is removed unless committed.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& Target) : name_(Target + ".tmp-XXXXXX") {
    fd_ = mkstemp(name_.data());
    if (fd_ < 0) {
      RaiseFor(errno);
    }
  }
  ~TemporaryFile() {
    if (fd_ >= 0) {
      close(fd_);
    }
    if (!committed_) {
      unlink(name_.c_str());
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void Write(std::string_view Contents) {
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

  void CommitAs(const std::string& Target) {
    if (fsync(fd_) != 0 || close(fd_) != 0) {
      fd_ = -1;
      RaiseFor(errno);
    }
    fd_ = -1;
    if (rename(name_.c_str(), Target.c_str()) != 0) {
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
  const std::string target = ReplaceableTarget(FileName);
  TemporaryFile temporary(target);
  temporary.Write(Contents);
  temporary.TakePermissionsOf(target);
  temporary.CommitAs(target);
}
#endif

std::string ReadWholeFile(const std::string& FileName) {
  std::error_code error;
  if (!std::filesystem::exists(FileName, error)) {
    throw TarvelinError::RuntimeFault(ErrFileNotFound, kSource);
  }
  // Only a regular file has an end: a device such as /dev/zero or /dev/full would be read forever.
  if (!std::filesystem::is_regular_file(FileName, error)) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  std::ifstream in(FileName, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad() || !in.is_open()) {
    throw TarvelinError::RuntimeFault(ErrPathFileAccess, kSource);
  }
  return bytes;
}

}  // namespace tarvelin

#endif
