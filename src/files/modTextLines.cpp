#include "files/modTextLines.h"

#include <algorithm>

namespace tarvelin {

namespace {

bool IsContinuationByte(char Byte) {
  return (static_cast<unsigned char>(Byte) & 0xC0u) == 0x80u;
}

}  // namespace

std::vector<std::string_view> SplitLines(std::string_view Text) {
  std::vector<std::string_view> lines;
  size_t start = 0;
  while (start < Text.size()) {
    size_t end = start;
    while (end < Text.size() && Text[end] != '\r' && Text[end] != '\n') {
      ++end;
    }
    lines.push_back(Text.substr(start, end - start));
    start = end + 1;
    if (end + 1 < Text.size() && Text[end] == '\r' && Text[end + 1] == '\n') {
      ++start;
    }
  }
  return lines;
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
