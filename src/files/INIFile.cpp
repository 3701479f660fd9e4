#include "files/INIFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>
#include <string_view>
#include <utility>

#include "files/modNumberText.h"
#include "files/modTextLines.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"
#include "util/libmodSpecialFolders.h"
#include "util/modPath.h"

namespace tarvelin {

namespace {

constexpr int32_t ErrSubscriptOutOfRange = 9;

// Whole values as plain integers; others as the integer part, ".", and the digits that follow the
// separator in the value's own text. The integer part is taken by truncation but the whole-number test by
// rounding to a 16-bit integer, which is why -0.5 comes out as "0..5" and 40000 overflows.
std::string NumberTextForFile(double Value) {
  const std::string text = PlainNumberText(Value);
  if (text.empty()) {
    return text;
  }
  if (std::to_string(ToInteger16(Value, INIFileSource)) == text) {
    return text;
  }
  const std::string integerText = std::to_string(static_cast<int>(std::trunc(Value)));
  const size_t fractionStart = integerText.size() + 1;
  const std::string fractionText = fractionStart < text.size() ? text.substr(fractionStart) : std::string();
  return integerText + "." + fractionText;
}

// The separator is the first "." or ","; a second one anywhere after it makes the text no number.
std::optional<double> NumberFromFileText(std::string_view Text) {
  const size_t separator = Text.find_first_of(".,");
  if (separator == std::string_view::npos) {
    const auto whole = NumberFromText(Text);
    if (!whole) {
      return std::nullopt;
    }
    return ToInteger16(*whole, INIFileSource);
  }
  if (Text.find_first_of(".,", separator + 1) != std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view fractionText = Text.substr(separator + 1);
  const auto integerPart = NumberFromText(Text.substr(0, separator));
  const auto fractionPart = NumberFromText(fractionText);
  if (!integerPart || !fractionPart) {
    return std::nullopt;
  }
  const int16_t integer = ToInteger16(*integerPart, INIFileSource);
  const int16_t fraction = ToInteger16(*fractionPart, INIFileSource);
  const double scale = std::pow(10.0, static_cast<double>(fractionText.size()));
  if (std::isinf(scale)) {
    throw TarvelinError::RuntimeFault(ErrOverflow, INIFileSource);
  }
  return integer + fraction / scale;
}

}  // namespace

INIFile::INIFile() {
  Reset();
}

void INIFile::Reset() {
  sections_.assign(1, SectionRecord{"", {}});
  sectionIndex_.clear();
  sectionIndex_.emplace("", 0);
  currentSection_ = 0;
}

void INIFile::UseSection(std::string Section) {
  currentSection_ = pFindOrAddSection(TrimBlanks(Section));
}

void INIFile::AddComment(std::string Comment) {
  if (Comment.empty()) {
    Comment = " ";
  }
  pAddEntry({}, {}, std::move(Comment));
}

void INIFile::AddBlankLine() {
  pAddEntry({}, {}, {});
}

void INIFile::AddNumericParameter(std::string Name, double Value, std::string Comment) {
  pAddEntry(std::move(Name), NumberTextForFile(Value), std::move(Comment));
}

void INIFile::AddParameter(std::string Name, std::string Value, std::string Comment) {
  pAddEntry(std::move(Name), std::move(Value), std::move(Comment));
}

int16_t INIFile::CountSections() const {
  const bool headerHasParameter =
      sections_.front().Entries.FindIf([](const EntryView& entry) { return !entry.Key.empty(); }).has_value();
  return ToInteger16(static_cast<double>(sections_.size() - 1 + (headerHasParameter ? 1 : 0)), INIFileSource);
}

std::optional<std::string> INIFile::GetParameterValue(std::string Section, std::string Parameter,
                                                      std::optional<std::string> Default) const {
  Parameter = TrimBlanks(Parameter);
  if (!Parameter.empty()) {
    if (const auto* section = pFindSection(TrimBlanks(Section))) {
      const auto found =
          section->Entries.FindIf([&](const EntryView& entry) { return EqualsIgnoreCase(entry.Key, Parameter); });
      if (found) {
        return std::string(found->Value);
      }
    }
  }
  if (Default) {
    return Default;
  }
  if (raiseErrorOnBadRequest_) {
    throw TarvelinError(ErrINIBadRequest, INIFileSource, "The requested parameter does not exist.");
  }
  return std::nullopt;
}

std::optional<double> INIFile::GetNumericParameterValue(std::string Section, std::string Parameter,
                                                        std::optional<std::string> Default) const {
  const auto value = GetParameterValue(std::move(Section), std::move(Parameter), std::move(Default));
  if (!value) {
    throw TarvelinError::RuntimeFault(ErrInvalidUseOfNull, INIFileSource);
  }
  return NumberFromFileText(*value);
}

std::string INIFile::FileText() const {
  std::string text;
  bool anythingWritten = false;
  const auto write = [&](const EntryView& entry) {
    if (!entry.Key.empty()) {
      text.append(entry.Key).append("=").append(entry.Value);
      anythingWritten = true;
    }
    if (!entry.Comment.empty()) {
      if (!entry.Key.empty()) {
        text.append(" ");
      }
      text.append(entry.Comment == " " ? std::string_view(";") : std::string_view("; "));
      text.append(entry.Comment == " " ? std::string_view() : entry.Comment).append("\r\n");
      anythingWritten = true;
    } else if (anythingWritten) {
      text.append("\r\n");
    }
    return false;
  };
  for (const SectionRecord& section : sections_) {
    if (!section.Name.empty()) {
      text.append("[").append(section.Name).append("]\r\n");
    }
    section.Entries.FindIf(write);
    write(EntryView{});  // the spare entry: the empty line after the section
  }
  return text;
}

bool INIFile::WriteFile(const std::string& FileName) const {
  try {
    WriteFileAtomically(FileName, FileText());
    return true;
  } catch (const TarvelinError&) {
    return false;
  }
}

bool INIFile::ReadFile(std::string& FileName) {
  FileName = ResolvePath(FileName, ProgramFolder());
  try {
    const std::string text = TextFromFileBytes(ReadWholeFile(FileName));
    LineReader lines(text);
    auto line = lines.Next();
    if (!line) {
      throw TarvelinError::RuntimeFault(ErrInputPastEndOfFile, INIFileSource);
    }
    Reset();
    UseSection("");
    for (; line; line = lines.Next()) {
      pReadLine(TrimBlanks(*line));
      // No more sections than a 16-bit count holds: a hostile file stops here, not when memory runs out.
      if (sections_.size() > static_cast<size_t>(INT16_MAX) + 1) {
        throw TarvelinError::RuntimeFault(ErrOverflow, INIFileSource);
      }
    }
  } catch (const std::bad_alloc&) {
    throw TarvelinError::RuntimeFault(ErrOutOfMemory, INIFileSource);
  }
  pTidyTrailingBlankLines();
  return true;
}

size_t INIFile::pFindOrAddSection(const std::string& TrimmedName) {
  const auto [found, added] = sectionIndex_.emplace(LowerCase(TrimmedName), sections_.size());
  if (added) {
    sections_.push_back(SectionRecord{TrimmedName, {}});
  }
  return found->second;
}

const INIFile::SectionRecord* INIFile::pFindSection(const std::string& TrimmedName) const {
  const auto found = sectionIndex_.find(LowerCase(TrimmedName));
  return found == sectionIndex_.end() ? nullptr : &sections_[found->second];
}

void INIFile::pAddEntry(std::string Key, std::string Value, std::string Comment) {
  sections_[currentSection_].Entries.Append(TrimBlanks(Key), TrimBlanks(Value), Comment);
}

// A section line names the section by what stands between its first and last characters, whatever the
// last one is; a ";" starts a comment anywhere; the first "=" splits key from value, and a bare word is a
// key with an empty value.
void INIFile::pReadLine(const std::string& Line) {
  if (Line.empty()) {
    AddBlankLine();
    return;
  }
  if (Line.front() == '[') {
    if (Line.size() < 2) {
      throw TarvelinError::RuntimeFault(ErrInvalidCall, INIFileSource);
    }
    UseSection(std::string(WithoutLastCharacter(Line).substr(1)));
    return;
  }
  std::string_view content = Line;
  std::string comment;
  const size_t semicolon = Line.find(';');
  if (semicolon != std::string::npos) {
    std::string_view after = content.substr(semicolon + 1);
    if (!after.empty() && after.front() == ' ') {
      after.remove_prefix(1);
    }
    comment = after;
    content = content.substr(0, semicolon);
    if (semicolon == 0) {
      AddComment(std::move(comment));
      return;
    }
  }
  const size_t equals = content.find('=');
  if (equals == std::string_view::npos) {
    AddParameter(std::string(content), {}, std::move(comment));
  } else {
    AddParameter(std::string(content.substr(0, equals)), std::string(content.substr(equals + 1)), std::move(comment));
  }
}

// Runs of blank lines at the end of a section shrink to the one spare entry. A section that held only
// blank lines runs out of entries to compare, which is an error.
void INIFile::pTidyTrailingBlankLines() {
  for (SectionRecord& section : sections_) {
    if (section.Entries.Count() > 0 && section.Entries.TrailingBlanks() == section.Entries.Count()) {
      throw TarvelinError(ErrSubscriptOutOfRange, INIFileSource, "Subscript out of range");
    }
    section.Entries.DropTrailingBlanks();
  }
}

}  // namespace tarvelin
