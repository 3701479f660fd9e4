#include "files/modTextLines.h"

#include <algorithm>

namespace tarvelin {

namespace {

bool IsContinuationByte(char Byte) {
  return (static_cast<unsigned char>(Byte) & 0xC0u) == 0x80u;
}

}  // namespace

std::optional<std::string_view> LineReader::Next() {
  if (next_ >= text_.size()) {
    return std::nullopt;
  }
  const size_t end = std::min(text_.find_first_of("\r\n", next_), text_.size());
  const std::string_view line = text_.substr(next_, end - next_);
  next_ = end + 1;
  if (end + 1 < text_.size() && text_[end] == '\r' && text_[end + 1] == '\n') {
    ++next_;
  }
  return line;
}

size_t CharacterCount(std::string_view Text) {
  return static_cast<size_t>(
      std::count_if(Text.begin(), Text.end(), [](char Byte) { return !IsContinuationByte(Byte); }));
}

std::string_view WithoutLastCharacter(std::string_view Text) {
  size_t end = Text.size();
  while (end > 0 && IsContinuationByte(Text[end - 1])) {
    --end;
  }
  return Text.substr(0, end == 0 ? 0 : end - 1);
}

}  // namespace tarvelin
