#pragma once

#include <string_view>
#include <vector>

namespace tarvelin {

// The lines of a text. A line ends at a carriage return, a line feed, or the pair CR LF; a break at the
// very end does not start another, empty line. The views point into Text.
std::vector<std::string_view> SplitLines(std::string_view Text);

// The number of characters (code points) of a UTF-8 text.
size_t CharacterCount(std::string_view Text);

// The text without its last character (a whole code point, however many bytes it takes).
std::string_view WithoutLastCharacter(std::string_view Text);

}  // namespace tarvelin
