#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "files/CSVFile.h"
#include "support/RaisedErrors.h"
#include "support/TempFolder.h"
#include "util/TarvelinError.h"
#include "util/libmodSpecialFolders.h"
#include "util/modPath.h"

namespace tarvelin {
namespace {

using testing::ErrorNumberOf;
using testing::Repeated;
using testing::TempFolder;
using testing::WriteBytes;
using Cells = std::vector<std::string>;

CSVFile LoadText(const TempFolder& Folder, std::string_view Bytes) {
  std::string name = Folder.File("data.csv");
  WriteBytes(name, Bytes);
  CSVFile csv;
  csv.Load(name);
  return csv;
}

Cells RowCells(const CSVFile& Csv, int16_t Row) {
  Cells cells;
  for (int16_t column = 0; column < Csv.CellsInRow(Row); ++column) {
    cells.push_back(Csv.GetCellData(Row, column));
  }
  return cells;
}

// A field that starts with a quote runs to the next quote (doubled quotes are not an escape) and loses only
// its outer pair; a last field shorter than two characters, counted as characters, is dropped.
TEST(CSVFileLoad, LinesSplitIntoCells) {
  const std::pair<const char*, Cells> rows[] = {
      {"Name,0.5,1", {"Name", "0.5"}},
      {"a,\xC3\xA9", {"a"}},
      {",ab", {"", "ab"}},
      {"\"Smith, J\",12", {"Smith, J", "12"}},
      {"\"abc,def", {"\"abc,def"}},
      {"\"a\"\"b,c\",de", {"\"a\"\"b", "c\"", "de"}},
      {"\"\",xy", {"", "xy"}},
      {"", {}},
  };
  TempFolder folder;
  for (const auto& [line, expected] : rows) {
    const CSVFile csv = LoadText(folder, std::string(line) + "\r\n");
    ASSERT_EQ(csv.Rows(), 1) << line;
    EXPECT_EQ(RowCells(csv, 0), expected) << line;
    EXPECT_EQ(csv.Columns(), static_cast<int16_t>(expected.size())) << line;
  }
}

// Loading again appends rows; a reset keeps the column count.
TEST(CSVFileLoad, RowsAreRaggedAndOutOfRangeCellsAreEmpty) {
  TempFolder folder;
  CSVFile csv = LoadText(folder, "a1,b1,c1,d1\n\nx2,y2\r\"q\",z3");
  EXPECT_EQ(csv.Rows(), 4);
  EXPECT_EQ(csv.Columns(), 4);
  EXPECT_EQ(csv.CellsInRow(1), 0);
  EXPECT_EQ(csv.CellsInRow(4), 0);
  EXPECT_EQ(csv.GetCellData(2, 1), "y2");
  EXPECT_EQ(csv.GetCellData(2, 3), "");
  EXPECT_EQ(csv.GetCellData(3, 0), "q");
  for (const auto& [row, column] : {std::pair{0, 4}, std::pair{4, 0}, std::pair{-1, 0}, std::pair{0, -1}}) {
    EXPECT_EQ(csv.GetCellData(static_cast<int16_t>(row), static_cast<int16_t>(column)), "");
  }
  std::string second = folder.File("data.csv");
  WriteBytes(second, "e,fg\r\n");
  csv.Load(second);
  EXPECT_EQ(csv.GetCellData(4, 1), "fg");
  csv.Reset();
  EXPECT_EQ(csv.Rows(), 0);
  EXPECT_EQ(csv.Columns(), 4);
}

TEST(CSVFileLoad, MissingFileRaisesAndRelativeNamesUseTheProgramFolder) {
  std::string name = "no-such-data.csv";
  CSVFile csv;
  EXPECT_EQ(ErrorNumberOf([&] { csv.Load(name); }), ErrFileNotFound);
  EXPECT_EQ(name, ProgramFolder() + PathSeparator() + "no-such-data.csv");
}

// Rows and character positions are 16-bit: past them the load raises, it never runs away. A field without a
// comma after it may be any length.
TEST(CSVFileLoad, LoadsUpToTheLimitsAndOverflowsCleanlyPastThem) {
  const std::pair<std::string, int32_t> rows[] = {
      {Repeated("r,ab\r\n", 32767), 0},
      {Repeated("r,ab\r\n", 32768), ErrOverflow},
      {std::string(32765, 'x') + ",ab", 0},
      {std::string(32766, 'x') + ",ab", ErrOverflow},
      {std::string("\0\xFF,\0\r\n", 6) + std::string(1 << 20, 'z') + "\r\nr,ab", 0},
  };
  TempFolder folder;
  for (const auto& [bytes, number] : rows) {
    SCOPED_TRACE(bytes.substr(0, 12) + "... of " + std::to_string(bytes.size()) + " bytes");
    CSVFile csv;
    EXPECT_EQ(ErrorNumberOf([&] { csv = LoadText(folder, bytes); }), number);
    if (number == 0) {
      EXPECT_EQ(csv.GetCellData(static_cast<int16_t>(csv.Rows() - 1), 1), "ab");
    }
  }
}

}  // namespace
}  // namespace tarvelin
