#pragma once

#include <cstdint>
#include <string>

namespace tarvelin {

// Serialises the writers of one hive file, between processes as well as threads: an exclusive lock on a
// lock file beside the hive, held for the object's lifetime. Waits while another writer holds it.
class HiveFileLock final {
 public:
  explicit HiveFileLock(const std::string& LockFileName);
  ~HiveFileLock();
  HiveFileLock(const HiveFileLock&) = delete;
  HiveFileLock& operator=(const HiveFileLock&) = delete;

  // False when the lock file could not be opened or locked; the hive must then not be written.
  bool Locked() const { return handle_ != -1; }

 private:
  std::intptr_t handle_ = -1;  // the platform's handle of the open lock file
};

}  // namespace tarvelin
