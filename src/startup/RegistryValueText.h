#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "startup/RegistryData.h"

namespace tarvelin {

// One value's data as a .reg file writes it after the "=":
//
//   "C:\\Users\\me"          plain text, with \\ and \" escaped
//   dword:ffffffff           a double-word, eight hex digits
//   hex:01,02                binary bytes
//   hex(2):25,00,41,00,00,00 any other type: its number and its bytes

// Text without the spaces and tabs a .reg line may carry around its parts.
std::string_view TrimRegistrySpace(std::string_view Text);
bool StartsWithIgnoreCase(std::string_view Text, std::string_view Prefix);
bool HasLineBreak(std::string_view Text);

// A quoted text starting at Text[Position], which holds the opening quote. \\ and \" are escapes; any other
// backslash stands for itself, as hand-written paths expect. Position ends after the closing quote;
// nothing when the closing quote is missing.
std::optional<std::string> ReadRegistryQuoted(std::string_view Text, size_t& Position);
std::string RegistryQuoted(std::string_view Text);

// Nothing for damage: a cut quote, a short double-word, a malformed or cut hex list, or text in hex that
// is not whole UTF-16 units closed by a NUL.
std::optional<RegistryData> ParseRegistryValueText(std::string_view Data);
// Plain text when the value reads back the same that way, otherwise its type's own form.
std::string RegistryValueText(const RegistryData& Data);

}  // namespace tarvelin
