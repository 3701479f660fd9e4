#include <gtest/gtest.h>

#include <limits>

#include "files/INIFile.h"
#include "support/RaisedErrors.h"
#include "support/TempFolder.h"
#include "util/TarvelinError.h"
#include "util/libmodSpecialFolders.h"
#include "util/modPath.h"

namespace tarvelin {
namespace {

using testing::ErrorNumberOf;
using testing::ErrorOf;
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

TEST(INIFileWrite, HeaderCommentsThenSectionsEachFollowedByOneEmptyLine) {
  INIFile ini;
  ini.AddBlankLine();  // nothing written yet: produces no line
  ini.AddComment("");
  ini.AddComment("Title");
  ini.UseSection(" Topic ");
  ini.AddParameter(" Name ", "  Choosing a car  ");
  ini.AddParameter("Key", "Value", "note");
  ini.UseSection("Empty");
  ini.UseSection("TOPIC");  // the same section, keeping its first spelling
  ini.AddParameter("Bare", "");
  EXPECT_EQ(ini.FileText(),
            ";\r\n; Title\r\n\r\n[Topic]\r\nName=Choosing a car\r\nKey=Value ; note\r\nBare=\r\n\r\n[Empty]\r\n\r\n");
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
                         ::testing::Values(NumberCase{0.25, "0.25"}, NumberCase{3, "3"}, NumberCase{-0.0, "0"},
                                           NumberCase{0.5, "0.5"}, NumberCase{2.5, "2.5"}, NumberCase{-1.5, "-1.5"},
                                           NumberCase{0.1 + 0.2, "0.3"}, NumberCase{-32768, "-32768"},
                                           NumberCase{-0.5, "0..5"},
                                           NumberCase{std::numeric_limits<double>::quiet_NaN(), ""}));

TEST(INIFileNumberFormat, OutsideTheSixteenBitRangeOverflows) {
  for (const double value : {40000.0, 32767.5, -32768.51, 1e300}) {
    INIFile ini;
    EXPECT_EQ(ErrorNumberOf([&] { ini.AddNumericParameter("N", value); }), ErrOverflow) << value;
  }
}

struct ParseCase {
  std::string Text;
  std::optional<double> Value;
  int32_t Error = 0;
};

class INIFileNumberParse : public ::testing::TestWithParam<ParseCase> {};

TEST_P(INIFileNumberParse, ReadsTheStoredText) {
  INIFile ini;
  ini.AddParameter("N", GetParam().Text);
  std::optional<double> value;
  EXPECT_EQ(ErrorNumberOf([&] { value = ini.GetNumericParameterValue("", "N"); }), GetParam().Error);
  EXPECT_EQ(value, GetParam().Value);
}

INSTANTIATE_TEST_SUITE_P(
    INIFile, INIFileNumberParse,
    ::testing::Values(ParseCase{"0,5", 0.5}, ParseCase{"0.75", 0.75}, ParseCase{"1.2.3", std::nullopt},
                      ParseCase{"1,5.0", std::nullopt}, ParseCase{"12", 12.0}, ParseCase{"abc", std::nullopt},
                      ParseCase{"", std::nullopt}, ParseCase{"-1.5", -0.5}, ParseCase{".5", std::nullopt},
                      ParseCase{"5.", std::nullopt}, ParseCase{"0.0001", 0.0001}, ParseCase{"1e2", 100.0},
                      ParseCase{"0.33333", std::nullopt, ErrOverflow}, ParseCase{"40000", std::nullopt, ErrOverflow},
                      ParseCase{"0." + std::string(400, '0'), std::nullopt, ErrOverflow}));

TEST(INIFileLookup, MissingParameterGivesDefaultThenNullThenTheError) {
  INIFile ini;
  ini.UseSection("Topic");
  ini.AddParameter("TotalOptions", "3");
  ini.AddParameter("totaloptions", "4");
  EXPECT_EQ(ini.GetParameterValue(" topic ", " TOTALOPTIONS "), "3");
  EXPECT_EQ(ini.GetParameterValue("Topic", "Other", "fallback"), "fallback");
  EXPECT_EQ(ini.GetParameterValue("Nowhere", "TotalOptions"), std::nullopt);
  EXPECT_EQ(ErrorNumberOf([&] { ini.GetNumericParameterValue("Topic", "Other"); }), ErrInvalidUseOfNull);

  ini.SetRaiseErrorOnBadRequest(true);
  EXPECT_EQ(ini.GetParameterValue("Topic", "Other", ""), "");
  for (const char* parameter : {"Other", "  "}) {
    EXPECT_EQ(ErrorOf([&] { ini.GetParameterValue("Topic", parameter); }),
              "1976 [INIFile] The requested parameter does not exist.")
        << parameter;
  }
}

TEST(INIFileRead, LinesBecomeParametersCommentsAndBlankLines) {
  TempFolder folder;
  const INIFile ini = ReadText(folder,
                               "  ;  \r\n;text\r\n; spaced\r\n\r\n\r\n[Topic]\r\nKey = Value ; note\r\nbare\r\n"
                               "a=b=c\r\n=hidden\r\nName=Caf\xE9;y\r\n\r\n\r\n[B]\r\n\r\nx=1");
  EXPECT_EQ(ini.GetParameterValue("Topic", "Key"), "Value");
  EXPECT_EQ(ini.GetParameterValue("Topic", "a"), "b=c");
  EXPECT_EQ(ini.GetParameterValue("Topic", "Name"), "Caf\xC3\xA9");
  EXPECT_EQ(ini.FileText(),
            ";\r\n; text\r\n; spaced\r\n\r\n[Topic]\r\nKey=Value ; note\r\nbare=\r\na=b=c\r\n\r\n"
            "Name=Caf\xC3\xA9 ; y\r\n\r\n[B]\r\n\r\nx=1\r\n\r\n");
}

TEST(INIFileRead, SectionLineDropsLastCharacterAndAnyLineEndSplits) {
  TempFolder folder;
  const INIFile ini = ReadText(folder, "[Topic\nA=1\r[ Spaced ]\r\nB=2\r\n[Caf\xC3\xA9\r\nC=3\n\r[x\rD=4");
  EXPECT_EQ(ini.GetParameterValue("Topi", "A"), "1");
  EXPECT_EQ(ini.GetParameterValue("Spaced", "B"), "2");
  EXPECT_EQ(ini.GetParameterValue("Caf", "C"), "3");
  EXPECT_EQ(ini.GetParameterValue("", "D"), "4");
}

TEST(INIFileRead, RelativeNameIsResolvedAgainstTheProgramFolder) {
  std::string name = "no-such-topic-file.tvt";
  INIFile ini;
  EXPECT_EQ(ErrorNumberOf([&] { ini.ReadFile(name); }), ErrFileNotFound);
  EXPECT_EQ(name, ProgramFolder() + PathSeparator() + "no-such-topic-file.tvt");
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
  ini.AddParameter("k", "v");
  EXPECT_EQ(ErrorNumberOf([&] { ini.ReadFile(name); }), GetParam().Number);
  EXPECT_EQ(ini.GetParameterValue("", "k").has_value(), GetParam().DocumentKept);
}

INSTANTIATE_TEST_SUITE_P(INIFile, INIFileReadErrors,
                         ::testing::Values(BrokenFileCase{"Missing", nullptr, ErrFileNotFound, true},
                                           BrokenFileCase{"Empty", "", ErrInputPastEndOfFile, true},
                                           BrokenFileCase{"LoneBracket", "[A]\r\nk=v\r\n[\r\n", ErrInvalidCall, false},
                                           BrokenFileCase{"OnlyBlankLines", "[A]\r\nk=v\r\n[B]\r\n\r\n\r\n", 9, false},
                                           BrokenFileCase{"LeadingBlankLine", "\r\n[A]\r\nk=v\r\n", 9, false}),
                         [](const auto& testCase) { return std::string(testCase.param.Label); });

// Sections are counted in 16 bits, so a file with more is refused while it is read, before a hostile one
// can take much memory.
TEST(INIFileRead, GarbageHugeLinesAndTheMostSectionsReadWithoutHarm) {
  TempFolder folder;
  std::string bytes = "[S]\r\nBinary=\x01\x02";
  bytes.append(1, '\0').append("\xFF\xFE\r\nLong=").append(1 << 20, 'x').append("\r\n");
  for (int section = 1; section < 32767; ++section) {
    bytes.append("[s").append(std::to_string(section)).append("]\r\nk=").append(std::to_string(section)).append("\r\n");
  }
  const INIFile ini = ReadText(folder, bytes);
  EXPECT_EQ(ini.GetParameterValue("S", "Long")->size(), 1u << 20);
  EXPECT_EQ(ini.GetParameterValue("s32766", "k"), "32766");
  EXPECT_EQ(ini.CountSections(), 32767);
  EXPECT_EQ(ErrorNumberOf([&] { ReadText(folder, bytes + "[one more]"); }), ErrOverflow);
}

}  // namespace
}  // namespace tarvelin
