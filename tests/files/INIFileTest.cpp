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

// Locale-free text whatever the locale; the integer part is truncated but the whole-number test rounds to
// 16 bits, which is why -0.5 is written "0..5" and 32767.5 overflows.
TEST(INIFileNumberFormat, WritesLocaleFreeTextOrOverflowsOutsideSixteenBits) {
  const std::pair<double, const char*> written[] = {
      {0.25, "0.25"},     {3, "3"},       {-0.0, "0"},
      {2.5, "2.5"},       {-1.5, "-1.5"}, {0.1 + 0.2, "0.3"},
      {-32768, "-32768"}, {-0.5, "0..5"}, {std::numeric_limits<double>::quiet_NaN(), ""}};
  for (const auto& [value, text] : written) {
    INIFile ini;
    ini.AddNumericParameter("N", value);
    EXPECT_EQ(ini.GetParameterValue("", "N"), text) << value;
  }
  for (const double value : {40000.0, 32767.5, -32768.51, 1e300}) {
    INIFile ini;
    EXPECT_EQ(ErrorNumberOf([&] { ini.AddNumericParameter("N", value); }), ErrOverflow) << value;
  }
}

// The first "." or "," separates; a second one, or an empty part on either side, makes the text no number.
// Either part beyond 16 bits overflows.
TEST(INIFileNumberParse, ReadsTheStoredText) {
  const auto parse = [](const std::string& Text) {
    INIFile ini;
    ini.AddParameter("N", Text);
    return ini.GetNumericParameterValue("", "N");
  };
  const std::pair<const char*, std::optional<double>> rows[] = {
      {"0,5", 0.5},         {"1,5.0", std::nullopt}, {"abc", std::nullopt}, {"-1.5", -0.5},
      {".5", std::nullopt}, {"5.", std::nullopt},    {"0.0001", 0.0001},    {"1e2", 100.0}};
  for (const auto& [text, value] : rows) {
    EXPECT_EQ(parse(text), value) << text;
  }
  for (const std::string& text : {std::string("0.33333"), std::string("40000"), "0." + std::string(400, '0')}) {
    EXPECT_EQ(ErrorNumberOf([&] { parse(text); }), ErrOverflow) << text;
  }
}

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
  // A section line loses its last character, whatever it is, and any line end splits.
  const INIFile ends = ReadText(folder, "[Topic\nA=1\r[ Spaced ]\r\nB=2\r\n[Caf\xC3\xA9\r\nC=3\n\r[x\rD=4");
  EXPECT_EQ(ends.GetParameterValue("Topi", "A"), "1");
  EXPECT_EQ(ends.GetParameterValue("Spaced", "B"), "2");
  EXPECT_EQ(ends.GetParameterValue("Caf", "C"), "3");
  EXPECT_EQ(ends.GetParameterValue("", "D"), "4");
}

// A failed read keeps the document only when it fails before the first line. A relative name is resolved
// against the program's folder.
TEST(INIFileRead, BrokenFilesRaiseToTheCaller) {
  TempFolder folder;
  const struct {
    std::string Name;
    const char* Bytes;  // nullptr: no file at all
    int32_t Number;
    bool DocumentKept;
  } rows[] = {{folder.File("missing.ini"), nullptr, ErrFileNotFound, true},
              {folder.File("empty.ini"), "", ErrInputPastEndOfFile, true},
              {folder.File("lone.ini"), "[A]\r\nk=v\r\n[\r\n", ErrInvalidCall, false},
              {folder.File("blank.ini"), "[A]\r\nk=v\r\n[B]\r\n\r\n\r\n", 9, false},
              {folder.File("leading.ini"), "\r\n[A]\r\nk=v\r\n", 9, false}};
  for (const auto& row : rows) {
    std::string name = row.Name;
    if (row.Bytes != nullptr) {
      WriteBytes(name, row.Bytes);
    }
    INIFile ini;
    ini.AddParameter("k", "v");
    EXPECT_EQ(ErrorNumberOf([&] { ini.ReadFile(name); }), row.Number) << name;
    EXPECT_EQ(ini.GetParameterValue("", "k").has_value(), row.DocumentKept) << name;
  }
  std::string name = "no-such-topic-file.tvt";
  EXPECT_EQ(ErrorNumberOf([&] { INIFile().ReadFile(name); }), ErrFileNotFound);
  EXPECT_EQ(name, ProgramFolder() + PathSeparator() + "no-such-topic-file.tvt");
}

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
