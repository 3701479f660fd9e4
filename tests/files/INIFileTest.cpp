#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "files/FilesTestSupport.h"
#include "files/INIFile.h"
#include "support/TempFolder.h"
#include "util/TarvelinError.h"
#include "util/libmodSpecialFolders.h"

namespace tarvelin {
namespace {

using testing::ErrorNumberOf;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;

// Reads Bytes as a file into a fresh document.
INIFile ReadText(const TempFolder& Folder, std::string_view Bytes) {
  std::string name = Folder.File("read.ini");
  WriteBytes(name, Bytes);
  INIFile ini;
  ini.ReadFile(name);
  return ini;
}

TEST(INIFileWrite, HeaderCommentsThenSectionThenOneEmptyLine) {
  INIFile ini;
  ini.AddBlankLine();  // nothing written yet: produces no line
  ini.AddComment("");
  ini.AddComment("Title");
  ini.UseSection(" Topic ");
  ini.AddParameter(" Name ", "  Choosing a car  ");
  ini.AddParameter("Key", "Value", "note");
  ini.AddParameter("Empty", "");
  EXPECT_EQ(ini.FileText(), ";\r\n; Title\r\n\r\n[Topic]\r\nName=Choosing a car\r\nKey=Value ; note\r\nEmpty=\r\n\r\n");
}

TEST(INIFileWrite, SectionNamesIgnoreCaseAndKeepTheFirstSpelling) {
  INIFile ini;
  ini.UseSection("Topic");
  ini.AddParameter("A", "1");
  ini.UseSection("Other");
  ini.AddParameter("B", "2");
  ini.UseSection("TOPIC");
  ini.AddParameter("C", "3");
  EXPECT_EQ(ini.FileText(), "[Topic]\r\nA=1\r\nC=3\r\n\r\n[Other]\r\nB=2\r\n\r\n");
}

TEST(INIFileWrite, SectionHeadersAloneDoNotStartTheOutput) {
  INIFile ini;
  ini.UseSection("Empty");
  ini.AddBlankLine();
  ini.UseSection("Full");
  ini.AddParameter("k", "v");
  EXPECT_EQ(ini.FileText(), "[Empty]\r\n[Full]\r\nk=v\r\n\r\n");
}

struct NumberCase {
  double Value;
  const char* Text;
};

class INIFileNumberFormat : public ::testing::TestWithParam<NumberCase> {};

TEST_P(INIFileNumberFormat, WritesLocaleFreeText) {
  INIFile ini;
  ini.AddNumericParameter("N", GetParam().Value);
  EXPECT_EQ(ini.GetParameterValue("", "N"), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(INIFile, INIFileNumberFormat,
                         ::testing::Values(NumberCase{0.25, "0.25"}, NumberCase{3, "3"}, NumberCase{0, "0"},
                                           NumberCase{-0.0, "0"}, NumberCase{1, "1"}, NumberCase{0.5, "0.5"},
                                           NumberCase{2.5, "2.5"}, NumberCase{1.5, "1.5"}, NumberCase{-1.5, "-1.5"},
                                           NumberCase{0.1 + 0.2, "0.3"}, NumberCase{0.3333, "0.3333"},
                                           NumberCase{32767, "32767"}, NumberCase{-32768, "-32768"},
                                           NumberCase{-0.5, "0..5"}, NumberCase{-0.25, "0..25"},
                                           NumberCase{std::numeric_limits<double>::quiet_NaN(), ""}));

TEST(INIFileNumberFormat, OutsideTheSixteenBitRangeOverflows) {
  for (const double value : {40000.0, 32767.5, -32768.51, 1e300}) {
    INIFile ini;
    EXPECT_EQ(ErrorNumberOf([&] { ini.AddNumericParameter("N", value); }), ErrOverflow) << value;
  }
}

struct ParseCase {
  const char* Text;
  std::optional<double> Value;
};

class INIFileNumberParse : public ::testing::TestWithParam<ParseCase> {};

TEST_P(INIFileNumberParse, ReadsTheStoredText) {
  INIFile ini;
  ini.AddParameter("N", GetParam().Text);
  const auto value = ini.GetNumericParameterValue("", "N");
  ASSERT_EQ(value.has_value(), GetParam().Value.has_value()) << GetParam().Text;
  if (value) {
    EXPECT_DOUBLE_EQ(*value, *GetParam().Value) << GetParam().Text;
  }
}

INSTANTIATE_TEST_SUITE_P(INIFile, INIFileNumberParse,
                         ::testing::Values(ParseCase{"0,5", 0.5}, ParseCase{"0.75", 0.75},
                                           ParseCase{"1.2.3", std::nullopt}, ParseCase{"1,5.0", std::nullopt},
                                           ParseCase{"12", 12.0}, ParseCase{"abc", std::nullopt},
                                           ParseCase{"", std::nullopt}, ParseCase{"-1.5", -0.5},
                                           ParseCase{".5", std::nullopt}, ParseCase{"5.", std::nullopt},
                                           ParseCase{"0.0001", 0.0001}, ParseCase{"1.05", 1.05}, ParseCase{"2.5", 2.5},
                                           ParseCase{"1e2", 100.0}, ParseCase{"0.x", std::nullopt},
                                           ParseCase{"0.-5", -0.05}));

TEST(INIFileNumberParse, PartsBeyondSixteenBitsOverflow) {
  for (const char* text : {"0.33333", "40000", "99999.5", "1e5"}) {
    INIFile ini;
    ini.AddParameter("N", text);
    EXPECT_EQ(ErrorNumberOf([&] { ini.GetNumericParameterValue("", "N"); }), ErrOverflow) << text;
  }
}

TEST(INIFileNumberParse, ThousandsOfFractionDigitsOverflowInsteadOfDividingByInfinity) {
  INIFile ini;
  ini.AddParameter("N", "0." + std::string(400, '0'));
  EXPECT_EQ(ErrorNumberOf([&] { ini.GetNumericParameterValue("", "N"); }), ErrOverflow);
}

TEST(INIFileNumberParse, MissingValueWithoutDefaultIsInvalidUseOfNull) {
  INIFile ini;
  EXPECT_EQ(ErrorNumberOf([&] { ini.GetNumericParameterValue("", "Missing"); }), ErrInvalidUseOfNull);
  EXPECT_EQ(ini.GetNumericParameterValue("", "Missing", "0,25"), 0.25);
}

TEST(INIFileLookup, FindsKeysWithoutRegardToCaseAndTakesTheFirst) {
  INIFile ini;
  ini.UseSection("Topic");
  ini.AddParameter("TotalOptions", "3");
  ini.AddParameter("totaloptions", "4");
  EXPECT_EQ(ini.GetParameterValue(" topic ", " TOTALOPTIONS "), "3");
}

TEST(INIFileLookup, MissingParameterGivesDefaultThenNullThenTheError) {
  INIFile ini;
  ini.UseSection("Topic");
  ini.AddParameter("Name", "");
  EXPECT_EQ(ini.GetParameterValue("Topic", "Name"), "");
  EXPECT_EQ(ini.GetParameterValue("Topic", "Other", "fallback"), "fallback");
  EXPECT_EQ(ini.GetParameterValue("Nowhere", "Name"), std::nullopt);

  ini.SetRaiseErrorOnBadRequest(true);
  EXPECT_EQ(ini.GetParameterValue("Topic", "Other", ""), "");
  for (const char* parameter : {"Other", "", "  "}) {
    try {
      ini.GetParameterValue("Topic", parameter);
      ADD_FAILURE() << "no error for '" << parameter << "'";
    } catch (const TarvelinError& error) {
      EXPECT_EQ(error.Number(), 1976);
      EXPECT_EQ(error.Source(), "INIFile");
      EXPECT_EQ(error.Description(), "The requested parameter does not exist.");
    }
  }
}

TEST(INIFileLookup, CountSectionsCountsSectionZeroOnlyWithAParameter) {
  INIFile ini;
  EXPECT_EQ(ini.CountSections(), 0);
  ini.AddComment("header");
  EXPECT_EQ(ini.CountSections(), 0);
  ini.UseSection("A");
  ini.UseSection("B");
  EXPECT_EQ(ini.CountSections(), 2);
  ini.UseSection("");
  ini.AddParameter("k", "v");
  EXPECT_EQ(ini.CountSections(), 3);
  ini.Reset();
  EXPECT_EQ(ini.CountSections(), 0);
  EXPECT_EQ(ini.GetParameterValue("", "k"), std::nullopt);
}

TEST(INIFileRead, LinesBecomeParametersCommentsAndBlankLines) {
  TempFolder folder;
  const INIFile ini = ReadText(folder,
                               "  ;  \r\n;text\r\n; spaced\r\n\r\n[Topic]\r\nKey = Value ; note\r\nbare\r\n"
                               "a=b=c\r\n=hidden\r\nName=x;y\r\n");
  EXPECT_EQ(ini.GetParameterValue("Topic", "Key"), "Value");
  EXPECT_EQ(ini.GetParameterValue("Topic", "bare"), "");
  EXPECT_EQ(ini.GetParameterValue("Topic", "a"), "b=c");
  EXPECT_EQ(ini.GetParameterValue("Topic", "Name"), "x");
  EXPECT_EQ(ini.FileText(),
            ";\r\n; text\r\n; spaced\r\n\r\n[Topic]\r\nKey=Value ; note\r\nbare=\r\na=b=c\r\n\r\nName=x ; y\r\n\r\n");
}

TEST(INIFileRead, SectionLineDropsLastCharacter) {
  TempFolder folder;
  const INIFile ini = ReadText(folder, "[Topic\r\nA=1\r\n[ Spaced ]\r\nB=2\r\n[Caf\xC3\xA9\r\nC=3\r\n[x\r\nD=4\r\n");
  EXPECT_EQ(ini.GetParameterValue("Topi", "A"), "1");
  EXPECT_EQ(ini.GetParameterValue("Spaced", "B"), "2");
  EXPECT_EQ(ini.GetParameterValue("Caf", "C"), "3");
  EXPECT_EQ(ini.GetParameterValue("", "D"), "4");
}

TEST(INIFileRead, AnyLineEndingSplitsLines) {
  TempFolder folder;
  for (const char* text : {"[S]\nA=1\nB=2\n", "[S]\rA=1\rB=2", "[S]\r\nA=1\nB=2\r"}) {
    const INIFile ini = ReadText(folder, text);
    EXPECT_EQ(ini.FileText(), "[S]\r\nA=1\r\nB=2\r\n\r\n") << text;
  }
}

TEST(INIFileRead, TrailingBlankLinesShrinkToTheSpareEntry) {
  TempFolder folder;
  const INIFile ini = ReadText(folder, ";c\r\n\r\n\r\n[A]\r\nk=v\r\n\r\n\r\n\r\n[B]\r\n\r\nx=1");
  EXPECT_EQ(ini.FileText(), "; c\r\n\r\n[A]\r\nk=v\r\n\r\n[B]\r\n\r\nx=1\r\n\r\n");
}

TEST(INIFileRead, WrittenFileReadsBackToTheSameBytes) {
  TempFolder folder;
  INIFile ini;
  ini.AddComment("");
  ini.AddComment("header");
  ini.UseSection("One");
  ini.AddParameter("Name", "Caf\xC3\xA9", "with comment");
  ini.AddNumericParameter("W", 0.75);
  ini.AddComment("inside");
  ini.UseSection("Two");
  ini.AddParameter("Empty", "");
  const std::string name = folder.File("round.ini");
  ASSERT_TRUE(ini.WriteFile(name));
  const std::string bytes = ReadBytes(name);
  EXPECT_EQ(ReadText(folder, bytes).FileText(), bytes);
}

TEST(INIFileRead, WindowsCodePageTextIsConverted) {
  TempFolder folder;
  const INIFile ini = ReadText(folder, "[S]\r\nName=Caf\xE9 \x80\r\n");
  EXPECT_EQ(ini.GetParameterValue("S", "Name"), "Caf\xC3\xA9 \xE2\x82\xAC");
}

TEST(INIFileRead, RelativeNameIsResolvedAgainstTheProgramFolder) {
  std::string name = "no-such-topic-file.tvt";
  INIFile ini;
  EXPECT_EQ(ErrorNumberOf([&] { ini.ReadFile(name); }), ErrFileNotFound);
  EXPECT_EQ(name, ProgramFolder() + "/no-such-topic-file.tvt");
}

struct BrokenFileCase {
  const char* Label;
  const char* Bytes;  // nullptr: no file at all
  int32_t Number;
  bool DocumentKept;
};

class INIFileReadErrors : public ::testing::TestWithParam<BrokenFileCase> {};

TEST_P(INIFileReadErrors, RaiseToTheCaller) {
  TempFolder folder;
  std::string name = folder.File("broken.ini");
  if (GetParam().Bytes != nullptr) {
    WriteBytes(name, GetParam().Bytes);
  }
  INIFile ini;
  ini.UseSection("Kept");
  ini.AddParameter("k", "v");
  EXPECT_EQ(ErrorNumberOf([&] { ini.ReadFile(name); }), GetParam().Number);
  EXPECT_EQ(ini.GetParameterValue("Kept", "k").has_value(), GetParam().DocumentKept);
}

INSTANTIATE_TEST_SUITE_P(INIFile, INIFileReadErrors,
                         ::testing::Values(BrokenFileCase{"Missing", nullptr, ErrFileNotFound, true},
                                           BrokenFileCase{"Empty", "", ErrInputPastEndOfFile, true},
                                           BrokenFileCase{"LoneBracket", "[A]\r\nk=v\r\n[\r\n", ErrInvalidCall, false},
                                           BrokenFileCase{"OnlyBlankLines", "[A]\r\nk=v\r\n[B]\r\n\r\n\r\n", 9, false},
                                           BrokenFileCase{"LeadingBlankLine", "\r\n[A]\r\nk=v\r\n", 9, false}),
                         [](const auto& testCase) { return std::string(testCase.param.Label); });

TEST(INIFileRead, FolderInPlaceOfFileRaises) {
  TempFolder folder;
  std::string name = folder.Path().string();
  INIFile ini;
  EXPECT_NE(ErrorNumberOf([&] { ini.ReadFile(name); }), 0);
}

TEST(INIFileRead, GarbageAndHugeLinesReadWithoutHarm) {
  TempFolder folder;
  std::string bytes = "[S]\r\nBinary=\x01\x02";
  bytes.append(1, '\0').append("\xFF\xFE\r\nLong=").append(1 << 20, 'x').append("\r\n");
  for (int section = 0; section < 40000; ++section) {
    bytes.append("[s").append(std::to_string(section)).append("]\r\nk=").append(std::to_string(section)).append("\r\n");
  }
  const INIFile ini = ReadText(folder, bytes);
  EXPECT_EQ(ini.GetParameterValue("S", "Long")->size(), 1u << 20);
  EXPECT_EQ(ini.GetParameterValue("s39999", "k"), "39999");
  EXPECT_EQ(ErrorNumberOf([&] { ini.CountSections(); }), ErrOverflow);
}

TEST(INIFileWrite, FailureReturnsFalseAndKeepsTheTarget) {
  TempFolder folder;
  INIFile ini;
  ini.AddParameter("k", "v");
  EXPECT_FALSE(ini.WriteFile(folder.File("missing/file.ini")));
  const std::string directory = folder.File("directory");
  std::filesystem::create_directory(directory);
  EXPECT_FALSE(ini.WriteFile(directory));
  EXPECT_TRUE(std::filesystem::is_directory(directory));
}

}  // namespace
}  // namespace tarvelin
