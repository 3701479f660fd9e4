#include "util/libmodGenericTextFunctions.h"

#include <array>
#include <cstdint>

#include "util/TarvelinError.h"

namespace tarvelin {

std::string ReplaceAll(std::string_view Text, std::string_view Search, std::string_view Replacement) {
  if (Search.empty()) {
    return std::string(Text);
  }
  std::string result;
  size_t from = 0;
  for (size_t found = Text.find(Search); found != std::string_view::npos; found = Text.find(Search, from)) {
    result.append(Text.substr(from, found - from));
    result.append(Replacement);
    from = found + Search.size();
  }
  result.append(Text.substr(from));
  return result;
}

std::string TextFrom(std::string_view Text, long long Position) {
  if (Position < 1) {
    throw TarvelinError::RuntimeFault(ErrInvalidCall, "TextFrom");
  }
  const auto start = static_cast<unsigned long long>(Position - 1);
  return start >= Text.size() ? std::string() : std::string(Text.substr(start));
}

bool IsBlankValue(const std::optional<std::string>& Value) {
  return !Value || Value->empty();
}

bool IsBlankValue(std::string_view Value) {
  return Value.empty();
}

std::string TrimBlanks(std::string_view Text) {
  const size_t first = Text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  const size_t last = Text.find_last_not_of(' ');
  return std::string(Text.substr(first, last - first + 1));
}

namespace {

char LowerAscii(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool EqualsIgnoreCase(std::string_view A, std::string_view B) {
  if (A.size() != B.size()) {
    return false;
  }
  for (size_t i = 0; i < A.size(); ++i) {
    if (LowerAscii(A[i]) != LowerAscii(B[i])) {
      return false;
    }
  }
  return true;
}

std::string LowerCase(std::string_view Text) {
  std::string result(Text);
  for (char& c : result) {
    c = LowerAscii(c);
  }
  return result;
}

// Blanks and tabs separate arguments outside quotes. A double quote at the start of an argument opens
// quoting (and is dropped); inside quotes everything but the closing quote is kept, and the closing quote
// ends the argument, so a character right behind it starts the next one. A quote inside an unquoted
// argument is an ordinary character.
std::vector<std::string> SplitCommandLine(std::string_view CommandLine, int MaxCount) {
  std::vector<std::string> arguments;
  bool inArgument = false;
  bool inQuotes = false;
  for (const char c : CommandLine) {
    const bool separator = c == ' ' || c == '\t';
    if (inQuotes) {
      if (c == '"') {
        inQuotes = false;
        inArgument = false;
      } else {
        arguments.back().push_back(c);
      }
    } else if (inArgument) {
      if (separator) {
        inArgument = false;
      } else {
        arguments.back().push_back(c);
      }
    } else if (!separator) {
      if (MaxCount >= 1 && static_cast<int>(arguments.size()) >= MaxCount) {
        break;
      }
      inArgument = true;
      inQuotes = c == '"';
      arguments.emplace_back(inQuotes ? "" : std::string(1, c));
    }
  }
  return arguments;
}

namespace {

// Length of the UTF-8 sequence starting at Text[i], or 0 when it is not well-formed there.
size_t Utf8SequenceLength(std::string_view Text, size_t i) {
  const auto byte = [&](size_t k) { return static_cast<uint8_t>(Text[k]); };
  const uint8_t lead = byte(i);
  if (lead < 0x80) {
    return 1;
  }
  size_t length = 0;
  uint32_t minimum = 0;
  uint32_t code = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2, minimum = 0x80, code = lead & 0x1Fu;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, minimum = 0x800, code = lead & 0x0Fu;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, minimum = 0x10000, code = lead & 0x07u;
  } else {
    return 0;
  }
  if (i + length > Text.size()) {
    return 0;
  }
  for (size_t k = 1; k < length; ++k) {
    if ((byte(i + k) & 0xC0) != 0x80) {
      return 0;
    }
    code = (code << 6) | (byte(i + k) & 0x3Fu);
  }
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  return (code < minimum || code > 0x10FFFF || surrogate) ? 0 : length;
}

bool IsValidUtf8(std::string_view Text) {
  for (size_t i = 0; i < Text.size();) {
    const size_t length = Utf8SequenceLength(Text, i);
    if (length == 0) {
      return false;
    }
    i += length;
  }
  return true;
}

void AppendUtf8(std::string& Out, uint32_t Code) {
  if (Code < 0x80) {
    Out.push_back(static_cast<char>(Code));
  } else if (Code < 0x800) {
    Out.push_back(static_cast<char>(0xC0 | (Code >> 6)));
    Out.push_back(static_cast<char>(0x80 | (Code & 0x3F)));
  } else {
    Out.push_back(static_cast<char>(0xE0 | (Code >> 12)));
    Out.push_back(static_cast<char>(0x80 | ((Code >> 6) & 0x3F)));
    Out.push_back(static_cast<char>(0x80 | (Code & 0x3F)));
  }
}

// Windows-1252 bytes 0x80..0x9F; the five undefined ones map to the C1 control of the same value.
constexpr std::array<uint16_t, 32> kWindows1252High = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                       0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::string Utf8FromWindows1252(std::string_view Bytes) {
  std::string result;
  result.reserve(Bytes.size() + Bytes.size() / 4);
  for (const char c : Bytes) {
    const auto b = static_cast<uint8_t>(c);
    AppendUtf8(result, (b >= 0x80 && b <= 0x9F) ? kWindows1252High[b - 0x80] : b);
  }
  return result;
}

}  // namespace

std::string TextFromFileBytes(std::string_view Bytes) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (Bytes.starts_with(kByteOrderMark)) {
    Bytes.remove_prefix(kByteOrderMark.size());
  }
  return IsValidUtf8(Bytes) ? std::string(Bytes) : Utf8FromWindows1252(Bytes);
}

}  // namespace tarvelin
