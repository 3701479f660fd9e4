#include "support/ChildProcess.h"

#include <map>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tarvelin::testing {

namespace {

std::map<std::string, std::function<void()>>& Jobs() {
  static std::map<std::string, std::function<void()>> jobs;
  return jobs;
}

}  // namespace

ChildJob::ChildJob(const char* Name, std::function<void()> Job) {
  Jobs().emplace(Name, std::move(Job));
}

int RunChildJob(const std::string& Name) {
  const auto job = Jobs().find(Name);
  if (job == Jobs().end()) {
    return 1;
  }
  try {
    job->second();
  } catch (...) {
    return 1;
  }
  return 0;
}

#ifndef _WIN32
ChildProcess::ChildProcess(const std::string& Job, const std::string& /*Arguments*/) {
  const pid_t child = fork();
  if (child == 0) {
    _exit(RunChildJob(Job));
  }
  handle_ = child;
}

ChildProcess::~ChildProcess() {
  Succeeded();
}

bool ChildProcess::Succeeded() {
  if (handle_ > 0) {
    int status = 0;
    const auto child = static_cast<pid_t>(handle_);
    if (waitpid(child, &status, 0) == child && WIFEXITED(status)) {
      status_ = WEXITSTATUS(status);
    }
    handle_ = -1;
  }
  return status_ == 0;
}
#endif

}  // namespace tarvelin::testing
