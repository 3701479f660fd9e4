#include "startup/modUtf16.h"

#include <cstdint>

namespace tarvelin {

namespace {

constexpr char32_t ReplacementCharacter = 0xFFFD;

bool IsContinuationByte(unsigned char Byte) {
  return (Byte & 0xC0) == 0x80;
}

// The three multi-byte forms: which lead bytes start them, how many bytes follow, and the smallest code
// point each may carry (anything smaller is an overlong form).
struct MultiByteForm {
  unsigned char Mask, Pattern;
  int Continuations;
  char32_t Smallest;
};
constexpr MultiByteForm MultiByteForms[] = {{0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}};

// Decodes the code point starting at Text[Position] and advances Position past the bytes it used.
char32_t NextCodePoint(std::string_view Text, size_t& Position) {
  const auto lead = static_cast<unsigned char>(Text[Position++]);
  if (lead < 0x80) {
    return lead;
  }
  for (const MultiByteForm& form : MultiByteForms) {
    if ((lead & form.Mask) != form.Pattern) {
      continue;
    }
    char32_t codePoint = lead & static_cast<unsigned char>(~form.Mask);
    for (int i = 0; i < form.Continuations; ++i) {
      if (Position >= Text.size() || !IsContinuationByte(static_cast<unsigned char>(Text[Position]))) {
        return ReplacementCharacter;
      }
      codePoint = (codePoint << 6) | (static_cast<unsigned char>(Text[Position++]) & 0x3F);
    }
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return (codePoint < form.Smallest || codePoint > 0x10FFFF || surrogate) ? ReplacementCharacter : codePoint;
  }
  return ReplacementCharacter;
}

void AppendUtf8(std::string& Out, char32_t CodePoint) {
  if (CodePoint < 0x80) {
    Out += static_cast<char>(CodePoint);
  } else if (CodePoint < 0x800) {
    Out += static_cast<char>(0xC0 | (CodePoint >> 6));
    Out += static_cast<char>(0x80 | (CodePoint & 0x3F));
  } else if (CodePoint < 0x10000) {
    Out += static_cast<char>(0xE0 | (CodePoint >> 12));
    Out += static_cast<char>(0x80 | ((CodePoint >> 6) & 0x3F));
    Out += static_cast<char>(0x80 | (CodePoint & 0x3F));
  } else {
    Out += static_cast<char>(0xF0 | (CodePoint >> 18));
    Out += static_cast<char>(0x80 | ((CodePoint >> 12) & 0x3F));
    Out += static_cast<char>(0x80 | ((CodePoint >> 6) & 0x3F));
    Out += static_cast<char>(0x80 | (CodePoint & 0x3F));
  }
}

bool IsHighSurrogate(char16_t Unit) {
  return Unit >= 0xD800 && Unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t Unit) {
  return Unit >= 0xDC00 && Unit <= 0xDFFF;
}

}  // namespace

std::u16string Utf16FromUtf8(std::string_view Text) {
  std::u16string result;
  result.reserve(Text.size());
  size_t position = 0;
  while (position < Text.size()) {
    const char32_t codePoint = NextCodePoint(Text, position);
    if (codePoint < 0x10000) {
      result += static_cast<char16_t>(codePoint);
    } else {
      result += static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10));
      result += static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
    }
  }
  return result;
}

std::string Utf8FromUtf16(std::u16string_view Text) {
  std::string result;
  result.reserve(Text.size());
  for (size_t i = 0; i < Text.size(); ++i) {
    const char16_t unit = Text[i];
    if (IsHighSurrogate(unit) && i + 1 < Text.size() && IsLowSurrogate(Text[i + 1])) {
      AppendUtf8(result, 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) + (Text[i + 1] - 0xDC00));
      ++i;
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendUtf8(result, ReplacementCharacter);
    } else {
      AppendUtf8(result, unit);
    }
  }
  return result;
}

}  // namespace tarvelin
