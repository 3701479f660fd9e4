#pragma once

#include <filesystem>
#include <optional>
#include <random>
#include <string>

#include "startup/Dialogs.h"

namespace tarvelin::testing {

// A Dialogs that answers like a person clicking at random: every message with one of the buttons it
// offers, every file dialog with a cancel or a name from a small pool inside Folder (so that later loads
// find earlier saves), with each of the extensions the save command tells apart and a few bad names.
class RandomDialogs final : public Dialogs {
 public:
  RandomDialogs(std::mt19937& Random, std::filesystem::path Folder);

  MsgResult ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon, const std::string& Title) override;
  std::optional<std::string> OpenFile(const FileDialogRequest& Request) override;
  std::optional<std::string> SaveFile(const FileDialogRequest& Request) override;

  // What was asked since the last Forget, for the action log.
  const std::string& Transcript() const { return transcript_; }
  void Forget() { transcript_.clear(); }

 private:
  // A cancel (nullopt) or a name, logged in the transcript under Verb.
  std::optional<std::string> RandomFileName(const char* Verb);

  std::mt19937& random_;
  std::filesystem::path folder_;
  std::string transcript_;
};

}  // namespace tarvelin::testing
