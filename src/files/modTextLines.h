#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tarvelin {

// The lines of a text, one at a time, so that no list of them is ever built. A line ends at a carriage
// return, a line feed, or the pair CR LF; a break at the very end does not start another, empty line. The
// views point into Text.
class LineReader {
 public:
  explicit LineReader(std::string_view Text) : text_(Text) {}
  // The next line; nothing after the last.
  std::optional<std::string_view> Next();

 private:
  std::string_view text_;
  size_t next_ = 0;
};

// The number of characters (code points) of a UTF-8 text.
size_t CharacterCount(std::string_view Text);

// The text without its last character (a whole code point, however many bytes it takes).
std::string_view WithoutLastCharacter(std::string_view Text);

}  // namespace tarvelin
