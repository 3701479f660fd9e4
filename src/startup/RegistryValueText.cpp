#include "startup/RegistryValueText.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

int HexDigitValue(char Digit) {
  if (Digit >= '0' && Digit <= '9') {
    return Digit - '0';
  }
  if (Digit >= 'a' && Digit <= 'f') {
    return Digit - 'a' + 10;
  }
  if (Digit >= 'A' && Digit <= 'F') {
    return Digit - 'A' + 10;
  }
  return -1;
}

// The number written by 1 to MaxDigits hex digits and nothing else.
std::optional<uint32_t> ParseHexNumber(std::string_view Digits, size_t MaxDigits) {
  if (Digits.empty() || Digits.size() > MaxDigits) {
    return std::nullopt;
  }
  uint32_t number = 0;
  for (const char digit : Digits) {
    const int value = HexDigitValue(digit);
    if (value < 0) {
      return std::nullopt;
    }
    number = (number << 4) | static_cast<uint32_t>(value);
  }
  return number;
}

// Comma-separated pairs of hex digits; an empty list is no bytes, a trailing comma is damage.
std::optional<std::string> ParseHexBytes(std::string_view List) {
  std::string bytes;
  if (TrimRegistrySpace(List).empty()) {
    return bytes;
  }
  size_t start = 0;
  while (start <= List.size()) {
    const size_t end = std::min(List.find(',', start), List.size());
    const std::string_view item = TrimRegistrySpace(List.substr(start, end - start));
    const auto value = item.size() == 2 ? ParseHexNumber(item, 2) : std::nullopt;
    if (!value) {
      return std::nullopt;
    }
    bytes += static_cast<char>(*value);
    start = end + 1;
  }
  return bytes;
}

bool IsTextType(ERegistryValueType Type) {
  return Type == ERegistryValueType::String || Type == ERegistryValueType::ExpandString ||
         Type == ERegistryValueType::MultiString;
}

// Text stored in hex must be whole UTF-16 units closed by a NUL; anything else is a cut list.
bool IsWholeText(std::string_view Bytes) {
  return Bytes.size() >= 2 && Bytes.size() % 2 == 0 && Bytes.ends_with(std::string_view("\0\0", 2));
}

std::optional<RegistryData> ParseHexData(std::string_view Data) {
  RegistryData value{ERegistryValueType::Binary, {}};
  std::string_view list;
  if (StartsWithIgnoreCase(Data, "hex:")) {
    list = Data.substr(4);
  } else {
    const size_t close = Data.find("):");
    const auto type = close == std::string_view::npos ? std::nullopt : ParseHexNumber(Data.substr(4, close - 4), 8);
    if (!type) {
      return std::nullopt;
    }
    value.Type = static_cast<ERegistryValueType>(*type);
    list = Data.substr(close + 2);
  }
  auto bytes = ParseHexBytes(list);
  if (!bytes || (IsTextType(value.Type) && !IsWholeText(*bytes))) {
    return std::nullopt;
  }
  value.Bytes = std::move(*bytes);
  return value;
}

std::string FormatHex(uint32_t Number, int Digits) {
  char text[16];
  std::snprintf(text, sizeof text, "%0*x", Digits, static_cast<unsigned>(Number));
  return text;
}

}  // namespace

std::string_view TrimRegistrySpace(std::string_view Text) {
  const size_t first = Text.find_first_not_of(" \t");
  if (first == std::string_view::npos) {
    return {};
  }
  return Text.substr(first, Text.find_last_not_of(" \t") - first + 1);
}

bool StartsWithIgnoreCase(std::string_view Text, std::string_view Prefix) {
  return Text.size() >= Prefix.size() && EqualsIgnoreCase(Text.substr(0, Prefix.size()), Prefix);
}

bool HasLineBreak(std::string_view Text) {
  return Text.find_first_of("\r\n") != std::string_view::npos;
}

std::optional<std::string> ReadRegistryQuoted(std::string_view Text, size_t& Position) {
  std::string result;
  for (++Position; Position < Text.size(); ++Position) {
    const char character = Text[Position];
    if (character == '"') {
      ++Position;
      return result;
    }
    const bool escape = character == '\\' && Position + 1 < Text.size();
    if (escape && (Text[Position + 1] == '\\' || Text[Position + 1] == '"')) {
      result += Text[++Position];
    } else {
      result += character;
    }
  }
  return std::nullopt;
}

std::string RegistryQuoted(std::string_view Text) {
  std::string result = "\"";
  for (const char character : Text) {
    if (character == '\\' || character == '"') {
      result += '\\';
    }
    result += character;
  }
  return result + '"';
}

std::optional<RegistryData> ParseRegistryValueText(std::string_view Data) {
  if (Data.starts_with('"')) {
    size_t position = 0;
    const auto text = ReadRegistryQuoted(Data, position);
    if (!text || !TrimRegistrySpace(Data.substr(position)).empty()) {
      return std::nullopt;
    }
    return RegistryDataFromText(*text);
  }
  if (StartsWithIgnoreCase(Data, "dword:")) {
    const std::string_view digits = TrimRegistrySpace(Data.substr(6));
    const auto number = digits.size() == 8 ? ParseHexNumber(digits, 8) : std::nullopt;
    return number ? std::optional(RegistryDataFromNumber(*number)) : std::nullopt;
  }
  if (StartsWithIgnoreCase(Data, "hex:") || StartsWithIgnoreCase(Data, "hex(")) {
    return ParseHexData(Data);
  }
  return std::nullopt;
}

std::string RegistryValueText(const RegistryData& Data) {
  if (Data.Type == ERegistryValueType::String) {
    const std::string text = TextFromRegistryBytes(Data.Bytes);
    if (!HasLineBreak(text) && RegistryDataFromText(text).Bytes == Data.Bytes) {
      return RegistryQuoted(text);
    }
  }
  if (Data.Type == ERegistryValueType::DWord && Data.Bytes.size() == 4) {
    return "dword:" + FormatHex(NumberFromRegistryBytes(Data.Bytes), 8);
  }
  std::string result =
      Data.Type == ERegistryValueType::Binary ? "hex:" : "hex(" + FormatHex(static_cast<uint32_t>(Data.Type), 1) + "):";
  for (size_t i = 0; i < Data.Bytes.size(); ++i) {
    result += (i == 0 ? "" : ",") + FormatHex(static_cast<unsigned char>(Data.Bytes[i]), 2);
  }
  return result;
}

}  // namespace tarvelin
