#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "files/CSVFile.h"
#include "files/FilesTestSupport.h"
#include "support/TempFolder.h"
#include "util/TarvelinError.h"
#include "util/libmodSpecialFolders.h"

namespace tarvelin {
namespace {

using testing::ErrorNumberOf;
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

struct LineCase {
  const char* Label;
  const char* Line;
  Cells Expected;
};

class CSVFileLine : public ::testing::TestWithParam<LineCase> {};

TEST_P(CSVFileLine, SplitsIntoCells) {
  TempFolder folder;
  const CSVFile csv = LoadText(folder, std::string(GetParam().Line) + "\r\n");
  ASSERT_EQ(csv.Rows(), 1);
  EXPECT_EQ(RowCells(csv, 0), GetParam().Expected);
  EXPECT_EQ(csv.Columns(), static_cast<int16_t>(GetParam().Expected.size()));
}

INSTANTIATE_TEST_SUITE_P(
    CSVFile, CSVFileLine,
    ::testing::Values(LineCase{"ThreeFields", "Name,0.5,0.25", {"Name", "0.5", "0.25"}},
                      LineCase{"OneCharacterLastFieldDropped", "Name,0.5,1", {"Name", "0.5"}},
                      LineCase{"MultiByteCharacterCountsAsOne", "a,\xC3\xA9", {"a"}},
                      LineCase{"TwoMultiByteCharactersKept", "a,\xC3\xA9\xC3\xA9", {"a", "\xC3\xA9\xC3\xA9"}},
                      LineCase{"EmptyLastFieldDropped", "a,", {"a"}}, LineCase{"EmptyFirstField", ",ab", {"", "ab"}},
                      LineCase{"QuotedComma", "\"Smith, J\",12", {"Smith, J", "12"}},
                      LineCase{"UnclosedQuoteTakesTheRest", "\"abc,def", {"\"abc,def"}},
                      LineCase{"DoubledQuoteEndsQuotingEarly", "\"a\"\"b,c\",de", {"\"a\"\"b", "c\"", "de"}},
                      LineCase{"DoubledQuoteStaysDoubled", "\"a\"\"b\",cd", {"a\"\"b", "cd"}},
                      LineCase{"EmptyQuotedField", "\"\",xy", {"", "xy"}},
                      LineCase{"NoCommaWholeLine", "whole line", {"whole line"}},
                      LineCase{"SingleCharacterLine", "x", {}}, LineCase{"EmptyLine", "", {}}),
    [](const auto& testCase) { return std::string(testCase.param.Label); });

TEST(CSVFileLoad, RowsAreRaggedAndOutOfRangeCellsAreEmpty) {
  TempFolder folder;
  const CSVFile csv = LoadText(folder, "a1,b1,c1,d1\n\nx2,y2\r\"q\",z3");
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
}

TEST(CSVFileLoad, LoadingAgainAppendsAndResetKeepsTheColumnCount) {
  TempFolder folder;
  std::string first = folder.File("first.csv");
  std::string second = folder.File("second.csv");
  WriteBytes(first, "a,b,cd\r\n");
  WriteBytes(second, "e,fg\r\n");
  CSVFile csv;
  csv.Load(first);
  csv.Load(second);
  EXPECT_EQ(csv.Rows(), 2);
  EXPECT_EQ(csv.GetCellData(1, 1), "fg");
  csv.Reset();
  EXPECT_EQ(csv.Rows(), 0);
  EXPECT_EQ(csv.Columns(), 3);
}

TEST(CSVFileLoad, MissingFileRaisesAndRelativeNamesUseTheProgramFolder) {
  std::string name = "no-such-data.csv";
  CSVFile csv;
  EXPECT_EQ(ErrorNumberOf([&] { csv.Load(name); }), ErrFileNotFound);
  EXPECT_EQ(name, ProgramFolder() + "/no-such-data.csv");
}

TEST(CSVFileLimits, RowCountStopsAtSixteenBits) {
  TempFolder folder;
  std::string name = folder.File("rows.csv");
  std::string lines;
  for (int row = 0; row < 32767; ++row) {
    lines.append("r,12\r\n");
  }
  WriteBytes(name, lines);
  CSVFile fits;
  fits.Load(name);
  EXPECT_EQ(fits.Rows(), 32767);
  EXPECT_EQ(fits.GetCellData(32766, 1), "12");

  for (int row = 32767; row < 40000; ++row) {
    lines.append("r,12\r\n");
  }
  WriteBytes(name, lines);
  CSVFile tooMany;
  EXPECT_EQ(ErrorNumberOf([&] { tooMany.Load(name); }), ErrOverflow);
}

TEST(CSVFileLimits, SeparatorPositionStopsAtSixteenBits) {
  TempFolder folder;
  const std::string lastAllowed = std::string(32765, 'x') + ",ab";
  EXPECT_EQ(LoadText(folder, lastAllowed).GetCellData(0, 1), "ab");

  std::string name = folder.File("wide.csv");
  WriteBytes(name, std::string(32766, 'x') + ",ab");
  CSVFile csv;
  EXPECT_EQ(ErrorNumberOf([&] { csv.Load(name); }), ErrOverflow);
}

TEST(CSVFileLimits, MegabyteLinesAndBinaryBytesEndCleanly) {
  TempFolder folder;
  std::string binary("\0\x01\xFF,\0\0\r\n", 8);
  const std::string oneCell(1 << 20, 'z');
  const CSVFile csv = LoadText(folder, binary + oneCell + "\r\n");
  EXPECT_EQ(csv.CellsInRow(0), 2);
  EXPECT_EQ(csv.GetCellData(0, 1), std::string(2, '\0'));
  EXPECT_EQ(csv.GetCellData(1, 0).size(), oneCell.size());

  std::string manyCells;
  for (int cell = 0; cell < (1 << 19); ++cell) {
    manyCells.append("a,");
  }
  std::string name = folder.File("cells.csv");
  WriteBytes(name, manyCells);
  CSVFile tooWide;
  EXPECT_EQ(ErrorNumberOf([&] { tooWide.Load(name); }), ErrOverflow);
}

}  // namespace
}  // namespace tarvelin
