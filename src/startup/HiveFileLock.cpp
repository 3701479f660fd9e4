#ifndef _WIN32

#include "startup/HiveFileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace tarvelin {

HiveFileLock::HiveFileLock(const std::string& LockFileName) {
  const int file = ::open(LockFileName.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) {
    return;
  }
  int result = 0;
  do {
    result = ::flock(file, LOCK_EX);
  } while (result != 0 && errno == EINTR);
  if (result != 0) {
    ::close(file);
    return;
  }
  handle_ = file;
}

HiveFileLock::~HiveFileLock() {
  if (Locked()) {
    const auto file = static_cast<int>(handle_);
    ::flock(file, LOCK_UN);
    ::close(file);
  }
}

}  // namespace tarvelin

#endif
