#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvelin {

// A deliberately simple comma-separated reader: one line is one row, a field that starts with a double
// quote may hold commas, and no other escaping is known. Rows may be ragged; short rows are not padded.
//
// Two quirks are kept on purpose: a last field of one character (or none) is dropped ("a,b" is the single
// cell "a"), and a doubled quote inside a quoted field ends its quoted part. Counts and character positions
// are 16-bit: more than 32,767 lines, or a separator beyond position 32,766 of a line, raise ErrOverflow.
class CSVFile {
 public:
  CSVFile() = default;

  // No rows; the column count is kept.
  void Reset();
  // Appends the file's rows to what was read before. A relative name is taken from the program's folder
  // and the resolved name is written back. Raises the file's error when it is missing or unreadable.
  bool Load(std::string& FileName);

  int16_t Rows() const { return static_cast<int16_t>(rows_.size()); }
  // The largest number of cells in any row read so far.
  int16_t Columns() const { return columns_; }
  // 0 for a row that does not exist.
  int16_t CellsInRow(int16_t RowID) const;
  // "" for a cell that does not exist.
  std::string GetCellData(int16_t RowID, int16_t ColID) const;

 private:
  // A row's cell texts one after another, and where each ends: a line of commas would otherwise cost a
  // whole string for every byte.
  struct Row {
    std::string Cells;
    std::vector<uint32_t> Ends;
    void Add(std::string_view Text);
  };

  void pParseLine(std::string_view Line);

  std::vector<Row> rows_;
  int16_t columns_ = 0;
};

}  // namespace tarvelin
