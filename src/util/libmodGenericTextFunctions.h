#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvelin {

// Replaces every occurrence from the left; the search resumes after each inserted replacement, so a
// replacement that contains the search text does not loop. An empty search text changes nothing.
std::string ReplaceAll(std::string_view Text, std::string_view Search, std::string_view Replacement);

// The text from the 1-based Position to its end; empty past the end. Position < 1 raises error 5.
std::string TextFrom(std::string_view Text, long long Position);

// True for a missing value or an empty text; a text of blanks is not blank.
bool IsBlankValue(const std::optional<std::string>& Value);
bool IsBlankValue(std::string_view Value);
inline bool IsBlankValue(const std::string& Value) {
  return Value.empty();
}
inline bool IsBlankValue(const char* Value) {
  return Value == nullptr || *Value == '\0';
}

// Removes leading and trailing blanks (spaces only, as the file formats define blanks).
std::string TrimBlanks(std::string_view Text);

// ASCII case-insensitive comparison, for section, parameter and keyword names.
bool EqualsIgnoreCase(std::string_view A, std::string_view B);
std::string LowerCase(std::string_view Text);

// Splits a command line into arguments (see the rules in the implementation). MaxCount 0 means no limit;
// otherwise the walk stops when a further argument would begin.
std::vector<std::string> SplitCommandLine(std::string_view CommandLine, int MaxCount = 0);

// File bytes as UTF-8 text: valid UTF-8 is kept (a leading byte-order mark dropped); anything else is read
// as Windows-1252, the encoding of files written by older Windows versions of the program.
std::string TextFromFileBytes(std::string_view Bytes);

}  // namespace tarvelin
