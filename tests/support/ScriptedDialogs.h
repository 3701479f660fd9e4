#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "startup/Dialogs.h"

namespace tarvelin::testing {

// A Dialogs fake: records every message and file request and answers from queues. An unscripted
// message is answered with the first button of its kind (OK or Yes); an unscripted file dialog cancels.
class ScriptedDialogs final : public Dialogs {
 public:
  struct Message {
    std::string Prompt;
    MsgButtons Buttons;
    MsgIcon Icon;
    std::string Title;
  };

  std::deque<MsgResult> Answers;
  std::deque<std::optional<std::string>> FileAnswers;
  std::vector<Message> Messages;
  std::vector<FileDialogRequest> OpenRequests, SaveRequests;

  // The prompts of the messages shown so far, in order.
  std::vector<std::string> Prompts() const;

  MsgResult ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon, const std::string& Title) override;
  std::optional<std::string> OpenFile(const FileDialogRequest& Request) override;
  std::optional<std::string> SaveFile(const FileDialogRequest& Request) override;
};

// Points Program().UI at a fresh ScriptedDialogs for the lifetime of the object and restores it after.
class ScopedScriptedDialogs {
 public:
  ScopedScriptedDialogs();
  ~ScopedScriptedDialogs();
  ScopedScriptedDialogs(const ScopedScriptedDialogs&) = delete;
  ScopedScriptedDialogs& operator=(const ScopedScriptedDialogs&) = delete;

  ScriptedDialogs& operator*() { return dialogs_; }
  ScriptedDialogs* operator->() { return &dialogs_; }

 private:
  ScriptedDialogs dialogs_;
  Dialogs* previous_;
};

}  // namespace tarvelin::testing
