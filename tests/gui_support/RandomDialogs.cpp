#include "gui_support/RandomDialogs.h"

#include <array>
#include <utility>

namespace tarvelin::testing {

namespace {

template <typename T, size_t N>
const T& PickFrom(std::mt19937& Random, const std::array<T, N>& Choices) {
  return Choices[std::uniform_int_distribution<size_t>(0, N - 1)(Random)];
}

const char* NameOf(MsgResult Result) {
  static constexpr std::array<const char*, 4> names{"OK", "Yes", "No", "Cancel"};
  return names.at(static_cast<size_t>(Result));
}

}  // namespace

RandomDialogs::RandomDialogs(std::mt19937& Random, std::filesystem::path Folder)
    : random_(Random), folder_(std::move(Folder)) {}

MsgResult RandomDialogs::ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon, const std::string&) {
  static constexpr std::array<MsgResult, 2> yesNo{MsgResult::Yes, MsgResult::No};
  static constexpr std::array<MsgResult, 3> yesNoCancel{MsgResult::Yes, MsgResult::No, MsgResult::Cancel};
  MsgResult answer = MsgResult::OK;
  if (Buttons == MsgButtons::YesNo) {
    answer = PickFrom(random_, yesNo);
  } else if (Buttons == MsgButtons::YesNoCancel) {
    answer = PickFrom(random_, yesNoCancel);
  }
  transcript_ += " [\"" + Prompt.substr(0, 40) + "\" " + NameOf(answer) + "]";
  return answer;
}

std::optional<std::string> RandomDialogs::OpenFile(const FileDialogRequest&) {
  return RandomFileName("open");
}

std::optional<std::string> RandomDialogs::SaveFile(const FileDialogRequest&) {
  return RandomFileName("save");
}

std::optional<std::string> RandomDialogs::RandomFileName(const char* Verb) {
  static constexpr std::array<const char*, 4> stems{"soak", "other", "Topic 1", "na\xC3\xAFve"};
  static constexpr std::array<const char*, 7> extensions{".tvt", ".tvt", ".csv", ".jpg", ".bmp", ".TVT", ""};
  const int roll = std::uniform_int_distribution<int>(0, 19)(random_);
  std::optional<std::string> chosen;
  if (roll == 4) {
    chosen = folder_.string();  // a folder, not a file
  } else if (roll == 5) {
    chosen = (folder_ / "missing" / "soak.tvt").string();
  } else if (roll > 5) {
    chosen = (folder_ / (std::string(PickFrom(random_, stems)) + PickFrom(random_, extensions))).string();
  }
  transcript_ += std::string(" [") + Verb + " " + chosen.value_or("cancelled") + "]";
  return chosen;
}

}  // namespace tarvelin::testing
