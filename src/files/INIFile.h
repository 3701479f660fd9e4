#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "files/PackedEntries.h"

namespace tarvelin {

// The number and source of the error raised for a missing parameter when RaiseErrorOnBadRequest is set.
inline constexpr int32_t ErrINIBadRequest = 1976;
inline constexpr const char* INIFileSource = "INIFile";

// An ordered INI document in memory: sections of parameters, comments and blank lines, kept in the order
// they were added so that a written file keeps its header comments, blank lines and key order.
//
// Section 0 always exists with the empty name and holds what comes before the first named section. Every
// section ends with one spare blank entry, which the writer prints as the empty line after the section.
// Section and key names compare without regard to case; keys and values are stored trimmed of blanks.
class INIFile {
 public:
  INIFile();

  // One nameless section 0 holding only its spare entry; the current section becomes section 0.
  void Reset();
  // Makes the section of that (trimmed) name current, appending it when there is none yet.
  void UseSection(std::string Section);
  // The Add... operations append to the current section; adding a key twice keeps both.
  void AddComment(std::string Comment);  // a blank comment is stored as " " and written as ";"
  void AddBlankLine();
  // Whole numbers are written without a separator, others with "."; a value outside the 16-bit integer
  // range raises ErrOverflow, and one between -1 and 0 is written with a doubled point ("0..5").
  void AddNumericParameter(std::string Name, double Value, std::string Comment = {});
  void AddParameter(std::string Name, std::string Value, std::string Comment = {});

  // The named sections, plus one when section 0 holds a parameter.
  int16_t CountSections() const;

  // The value of the first entry of that key in the section of that name; otherwise Default, or else
  // nullopt, or ErrINIBadRequest when RaiseErrorOnBadRequest is set.
  std::optional<std::string> GetParameterValue(std::string Section, std::string Parameter,
                                               std::optional<std::string> Default = std::nullopt) const;
  // GetParameterValue read as a number, "." or "," being the separator; nullopt when it is not one. The
  // integer and fraction parts are 16-bit integers (ErrOverflow beyond), and the sign of the integer part
  // does not reach the fraction ("-1.5" is -0.5). A missing value raises ErrInvalidUseOfNull.
  std::optional<double> GetNumericParameterValue(std::string Section, std::string Parameter,
                                                 std::optional<std::string> Default = std::nullopt) const;

  // The whole document as the text of a file: CR LF line ends, no empty lines before the first written
  // line, and one empty line after each section.
  std::string FileText() const;
  // Writes FileText(); false on any failure, the previous file left as it was.
  bool WriteFile(const std::string& FileName) const;
  // Reads a file in place of the document. A relative name is taken from the program's folder and the
  // resolved name is written back. Raises the file's error when it is missing or unreadable, and an error
  // for an empty file (the document untouched in these cases), a lone "[" line, or a section of nothing
  // but blank lines. Returns true.
  bool ReadFile(std::string& FileName);

  bool RaiseErrorOnBadRequest() const { return raiseErrorOnBadRequest_; }
  void SetRaiseErrorOnBadRequest(bool Raise) { raiseErrorOnBadRequest_ = Raise; }

 private:
  struct SectionRecord {
    std::string Name;
    PackedEntries Entries;  // the spare blank entry is not stored
  };

  size_t pFindOrAddSection(const std::string& TrimmedName);
  const SectionRecord* pFindSection(const std::string& TrimmedName) const;
  void pAddEntry(std::string Key, std::string Value, std::string Comment);
  void pReadLine(const std::string& Line);
  void pTidyTrailingBlankLines();

  std::vector<SectionRecord> sections_;
  std::unordered_map<std::string, size_t> sectionIndex_;  // lower-case name -> position in sections_
  size_t currentSection_ = 0;
  bool raiseErrorOnBadRequest_ = false;
};

}  // namespace tarvelin
