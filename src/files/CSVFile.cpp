#include "files/CSVFile.h"

#include <algorithm>
#include <cstdint>
#include <new>

#include "files/modTextLines.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"
#include "util/libmodSpecialFolders.h"
#include "util/modPath.h"

namespace tarvelin {

namespace {

constexpr const char* kSource = "CSVFile";
constexpr size_t kMaxRows = 32767;
constexpr size_t kMaxSeparatorPosition = 32766;

// The byte index of the comma that ends the field starting at Start, or npos. A field that starts with a
// double quote runs to the next double quote before its comma is looked for.
size_t NextSeparator(std::string_view Line, size_t Start) {
  if (Start < Line.size() && Line[Start] == '"') {
    const size_t closingQuote = Line.find('"', Start + 1);
    return closingQuote == std::string_view::npos ? closingQuote : Line.find(',', closingQuote + 1);
  }
  return Line.find(',', Start);
}

}  // namespace

void CSVFile::Reset() {
  rows_.clear();
}

bool CSVFile::Load(std::string& FileName) {
  FileName = ResolvePath(FileName, ProgramFolder());
  try {
    const std::string text = TextFromFileBytes(ReadWholeFile(FileName));
    LineReader lines(text);
    while (const auto line = lines.Next()) {
      pParseLine(*line);
    }
  } catch (const std::bad_alloc&) {
    throw TarvelinError::RuntimeFault(ErrOutOfMemory, kSource);
  }
  return true;
}

int16_t CSVFile::CellsInRow(int16_t RowID) const {
  if (RowID < 0 || RowID >= Rows()) {
    return 0;
  }
  return static_cast<int16_t>(rows_[static_cast<size_t>(RowID)].Ends.size());
}

std::string CSVFile::GetCellData(int16_t RowID, int16_t ColID) const {
  if (ColID < 0 || ColID >= columns_ || ColID >= CellsInRow(RowID)) {
    return {};
  }
  const Row& row = rows_[static_cast<size_t>(RowID)];
  const size_t start = ColID == 0 ? 0 : row.Ends[static_cast<size_t>(ColID) - 1];
  return row.Cells.substr(start, row.Ends[static_cast<size_t>(ColID)] - start);
}

// Only the outer pair of quotes is removed; doubled quotes inside stay doubled. (A field of a lone quote
// cannot reach here: a field that starts with a quote ends after its closing quote.)
void CSVFile::Row::Add(std::string_view Text) {
  if (Text.size() >= 2 && Text.front() == '"' && Text.back() == '"') {
    Text = Text.substr(1, Text.size() - 2);
  }
  if (Cells.size() + Text.size() > UINT32_MAX) {
    throw TarvelinError::RuntimeFault(ErrOverflow, kSource);
  }
  Cells += Text;
  Ends.push_back(static_cast<uint32_t>(Cells.size()));
}

// Positions are counted in characters, as the 16-bit limit on them is.
void CSVFile::pParseLine(std::string_view Line) {
  if (rows_.size() >= kMaxRows) {
    throw TarvelinError::RuntimeFault(ErrOverflow, kSource);
  }
  Row cells;
  size_t start = 0;
  size_t startPosition = 1;
  for (size_t separator = NextSeparator(Line, start); separator != std::string_view::npos;
       separator = NextSeparator(Line, start)) {
    const std::string_view field = Line.substr(start, separator - start);
    const size_t separatorPosition = startPosition + CharacterCount(field);
    if (separatorPosition > kMaxSeparatorPosition) {
      throw TarvelinError::RuntimeFault(ErrOverflow, kSource);
    }
    cells.Add(field);
    start = separator + 1;
    startPosition = separatorPosition + 1;
  }
  const std::string_view lastField = Line.substr(start);
  if (CharacterCount(lastField) >= 2) {
    cells.Add(lastField);
  }
  columns_ = std::max(columns_, static_cast<int16_t>(cells.Ends.size()));
  cells.Ends.shrink_to_fit();
  rows_.push_back(std::move(cells));
}

}  // namespace tarvelin
