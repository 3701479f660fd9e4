#pragma once

#include <string>
#include <string_view>

namespace tarvelin {

// Conversions between the program's UTF-8 text and UTF-16, the registry's and Windows' own encoding.
// Malformed input (a stray UTF-8 byte, an unpaired surrogate) becomes U+FFFD rather than failing.
std::u16string Utf16FromUtf8(std::string_view Text);
std::string Utf8FromUtf16(std::u16string_view Text);

}  // namespace tarvelin
