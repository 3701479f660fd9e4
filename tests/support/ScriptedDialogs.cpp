#include "support/ScriptedDialogs.h"

#include "startup/modStartup.h"

namespace tarvelin::testing {

namespace {

template <typename T>
std::optional<T> PopFront(std::deque<T>& queue) {
  if (queue.empty()) {
    return std::nullopt;
  }
  T front = std::move(queue.front());
  queue.pop_front();
  return front;
}

}  // namespace

MsgResult ScriptedDialogs::ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon,
                                       const std::string& Title) {
  Messages.push_back({Prompt, Buttons, Icon, Title});
  const auto answer = PopFront(Answers);
  if (answer) {
    return *answer;
  }
  return Buttons == MsgButtons::OK ? MsgResult::OK : MsgResult::Yes;
}

std::vector<std::string> ScriptedDialogs::Prompts() const {
  std::vector<std::string> prompts;
  for (const Message& message : Messages) {
    prompts.push_back(message.Prompt);
  }
  return prompts;
}

std::optional<std::string> ScriptedDialogs::OpenFile(const FileDialogRequest& Request) {
  OpenRequests.push_back(Request);
  return PopFront(FileAnswers).value_or(std::nullopt);
}

std::optional<std::string> ScriptedDialogs::SaveFile(const FileDialogRequest& Request) {
  SaveRequests.push_back(Request);
  return PopFront(FileAnswers).value_or(std::nullopt);
}

ScopedScriptedDialogs::ScopedScriptedDialogs() : previous_(Program().UI) {
  Program().UI = &dialogs_;
}

ScopedScriptedDialogs::~ScopedScriptedDialogs() {
  Program().UI = previous_;
}

}  // namespace tarvelin::testing
