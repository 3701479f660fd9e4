#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tarvelin::testing {

// Work that a test runs in a second process of this test program, to see what two processes do at once.
// Jobs are registered by name at namespace scope, so that a program started again for one finds it.
class ChildJob {
 public:
  ChildJob(const char* Name, std::function<void()> Job);
};

// The job registered as Job, running in a second process from construction on. On POSIX the process is a
// fork; on Windows the program is started again, its command line the program's quoted path followed by a
// space and Arguments.
class ChildProcess {
 public:
  explicit ChildProcess(const std::string& Job, const std::string& Arguments = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Waits for the process; true when the job returned without throwing.
  bool Succeeded();

 private:
  std::intptr_t handle_ = -1;
  int status_ = 1;
};

// For the Windows program's main: the exit status of the job this process was started for, if any.
std::optional<int> RunRequestedChildJob();

// Runs a registered job: 0 when it returned, 1 when it threw or does not exist.
int RunChildJob(const std::string& Name);

}  // namespace tarvelin::testing
