#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "startup/Dialogs.h"

namespace tarvelin {
class TarvelinTopic;
}

namespace tarvelin::fuzzing {

// Says nothing and answers every question the same way; counts the messages of the current input.
class QuietDialogs final : public Dialogs {
 public:
  MsgResult Answer = MsgResult::Yes;
  int Messages = 0;

  MsgResult ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon, const std::string& Title) override;
  std::optional<std::string> OpenFile(const FileDialogRequest&) override { return std::nullopt; }
  std::optional<std::string> SaveFile(const FileDialogRequest&) override { return std::nullopt; }
};

// What every harness shares: one scratch folder per process (made once, removed at exit) with the
// settings pointed into it, and quiet dialogs behind Program().UI.
class FuzzEnvironment {
 public:
  static FuzzEnvironment& Get();
  ~FuzzEnvironment();
  FuzzEnvironment(const FuzzEnvironment&) = delete;
  FuzzEnvironment& operator=(const FuzzEnvironment&) = delete;

  const std::string& Folder() const { return folder_; }
  std::string File(std::string_view Name) const { return folder_ + "/" + std::string(Name); }
  // Writes the bytes to a file of that name in the scratch folder and returns its full name.
  std::string WriteInput(std::string_view Name, std::string_view Bytes) const;
  // Points Program().UI at the quiet dialogs, message count reset, answering every question with Answer.
  QuietDialogs& FreshDialogs(MsgResult Answer = MsgResult::Yes);

 private:
  FuzzEnvironment();

  std::string folder_;
  QuietDialogs dialogs_;
};

inline std::string_view AsText(const uint8_t* Data, size_t Size) {
  return {reinterpret_cast<const char*>(Data), Size};
}

// Ends the process with a message when a property the code promises does not hold, so that the fuzzer
// records the input as a finding.
void Require(bool Condition, const char* What);

// A loaded topic must be one the window can show: 1 to 10 options and attributes, every weighting, rating
// and score from 0 to 1.
void RequireSoundTopic(const TarvelinTopic& Topic);

}  // namespace tarvelin::fuzzing
