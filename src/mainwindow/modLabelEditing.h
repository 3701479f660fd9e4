#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvelin {

// What the in-place editor does with a typed character.
enum class EditKeyAction { Accept, Discard, Cancel, Commit };

inline constexpr char32_t KeyBackspace = 8;
inline constexpr char32_t KeyEnter = 13;
inline constexpr char32_t KeyEscape = 27;

// The editor's key filter. Remaining is the text that would be left if the key replaced the selection.
// Numeric mode takes digits and one decimal separator only: "." or the display's DecimalSeparator (the one
// the value labels show); every mode refuses characters once Remaining has reached MaxLength. Backspace
// is always accepted, Escape cancels and Enter commits.
EditKeyAction FilterEditBoxKey(char32_t Key, std::u32string_view Remaining, bool Numeric, size_t MaxLength,
                               char32_t DecimalSeparator = U'.');

// The default name for a new entry: Prefix + " " + (n + 1), where n is the larger of Count and the highest
// whole number that ends a name of the form Prefix + " " + number, so a default name never repeats a
// numbered one.
std::string NextDefaultName(std::string_view Prefix, const std::vector<std::string>& Names, int Count);

}  // namespace tarvelin
