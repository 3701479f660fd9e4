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
  CSVFile csv = LoadText(folder, "a,b,cd\r\n");
  std::string second = folder.File("data.csv");
  WriteBytes(second, "e,fg\r\n");
  csv.Load(second);
  EXPECT_EQ(csv.GetCellData(1, 1), "fg");
  csv.Reset();
  EXPECT_EQ(csv.Rows(), 0);
  EXPECT_EQ(csv.Columns(), 3);
}

TEST(CSVFileLoad, MissingFileRaisesAndRelativeNamesUseTheProgramFolder) {
  std::string name = "no-such-data.csv";
  CSVFile csv;
  EXPECT_EQ(ErrorNumberOf([&] { csv.Load(name); }), ErrFileNotFound);
  EXPECT_EQ(name, ProgramFolder() + PathSeparator() + "no-such-data.csv");
}

std::string Repeated(std::string_view Text, int Count) {
  std::string text;
  for (int copy = 0; copy < Count; ++copy) {
    text.append(Text);
  }
  return text;
}

struct LimitCase {
  const char* Label;
  std::string Bytes;
  int32_t Number;  // 0: loads
};

class CSVFileLimits : public ::testing::TestWithParam<LimitCase> {};

// Rows and character positions are 16-bit: past them the load raises, it never runs away.
TEST_P(CSVFileLimits, LoadOrOverflowCleanly) {
  TempFolder folder;
  std::string name = folder.File("limit.csv");
  WriteBytes(name, GetParam().Bytes);
  CSVFile csv;
  EXPECT_EQ(ErrorNumberOf([&] { csv.Load(name); }), GetParam().Number);
  if (GetParam().Number == 0) {
    EXPECT_EQ(csv.GetCellData(static_cast<int16_t>(csv.Rows() - 1), 1), "ab");
  }
}

INSTANTIATE_TEST_SUITE_P(
    CSVFile, CSVFileLimits,
    ::testing::Values(LimitCase{"MostRows", Repeated("r,ab\r\n", 32767), 0},
                      LimitCase{"TooManyRows", Repeated("r,ab\r\n", 32768), ErrOverflow},
                      LimitCase{"LastSeparatorPosition", std::string(32765, 'x') + ",ab", 0},
                      LimitCase{"SeparatorTooFar", std::string(32766, 'x') + ",ab", ErrOverflow},
                      LimitCase{"MegabyteLineAndBinary",
                                std::string("\0\xFF,\0\r\n", 6) + std::string(1 << 20, 'z') + "\r\nr,ab", 0},
                      LimitCase{"MegabyteOfCommas", Repeated("a,", 1 << 19), ErrOverflow}),
    [](const auto& testCase) { return std::string(testCase.param.Label); });

}  // namespace
}  // namespace tarvelin
