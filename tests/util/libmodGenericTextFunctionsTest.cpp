#include <gtest/gtest.h>

#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {
namespace {

TEST(ReplaceAll, ReplacesEveryOccurrenceWithoutRescanningTheReplacement) {
  EXPECT_EQ(ReplaceAll("a,b,,c", ",", ";"), "a;b;;c");
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(ReplaceAll("aaaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("", "a", "x"), "");
}

TEST(TextFrom, CountsFromOneAndRefusesPositionsBeforeTheStart) {
  EXPECT_EQ(TextFrom("Tarvelin", 1), "Tarvelin");
  EXPECT_EQ(TextFrom("Tarvelin", 4), "velin");
  EXPECT_EQ(TextFrom("Tarvelin", 9), "");
  EXPECT_EQ(TextFrom("Tarvelin", 100), "");
  try {
    TextFrom("x", 0);
    FAIL() << "position 0 must raise";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Number(), ErrInvalidCall);
  }
}

TEST(IsBlankValue, OnlyMissingOrEmptyIsBlank) {
  EXPECT_TRUE(IsBlankValue(std::optional<std::string>()));
  EXPECT_TRUE(IsBlankValue(std::optional<std::string>("")));
  EXPECT_TRUE(IsBlankValue(std::string_view()));
  EXPECT_FALSE(IsBlankValue(std::string_view("   ")));
  EXPECT_FALSE(IsBlankValue(std::optional<std::string>("0")));
}

TEST(TrimBlanks, TrimsSpacesButKeepsInnerOnesAndTabs) {
  EXPECT_EQ(TrimBlanks("  a b  "), "a b");
  EXPECT_EQ(TrimBlanks("    "), "");
  EXPECT_EQ(TrimBlanks("\ta\t"), "\ta\t");
}

TEST(EqualsIgnoreCase, ComparesAsciiLettersWithoutCase) {
  EXPECT_TRUE(EqualsIgnoreCase("Topic", "tOPIC"));
  EXPECT_FALSE(EqualsIgnoreCase("Topic", "Topics"));
  EXPECT_FALSE(EqualsIgnoreCase("a", "b"));
}

struct SplitCase {
  const char* CommandLine;
  int MaxCount;
  std::vector<std::string> Expected;
};

class SplitCommandLineTest : public ::testing::TestWithParam<SplitCase> {};

TEST_P(SplitCommandLineTest, SplitsLikeTheProgramsOwnCommandLine) {
  EXPECT_EQ(SplitCommandLine(GetParam().CommandLine, GetParam().MaxCount), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SplitCommandLineTest,
    ::testing::Values(SplitCase{"", 0, {}}, SplitCase{" \t ", 0, {}}, SplitCase{"one  two", 0, {"one", "two"}},
                      SplitCase{"\"one  two\"", 0, {"one  two"}}, SplitCase{"\"one\"two", 0, {"one", "two"}},
                      SplitCase{"on\"e two", 0, {"on\"e", "two"}}, SplitCase{"a\tb", 0, {"a", "b"}},
                      SplitCase{"a b c", 2, {"a", "b"}}, SplitCase{"a b c", 1, {"a"}},
                      SplitCase{"\"unterminated arg", 0, {"unterminated arg"}}, SplitCase{"\"\" x", 0, {"", "x"}}));

TEST(TextFromFileBytes, KeepsUtf8AndConvertsWindows1252) {
  EXPECT_EQ(TextFromFileBytes("caf\xC3\xA9"), "caf\xC3\xA9");
  EXPECT_EQ(TextFromFileBytes("\xEF\xBB\xBFplain"), "plain");
  EXPECT_EQ(TextFromFileBytes("caf\xE9"), "caf\xC3\xA9");
  EXPECT_EQ(TextFromFileBytes("\x80 \x85"), "\xE2\x82\xAC \xE2\x80\xA6");
  // A truncated sequence and an overlong encoding are not UTF-8.
  EXPECT_EQ(TextFromFileBytes("a\xC3"), "a\xC3\x83");
  EXPECT_EQ(TextFromFileBytes("\xC0\xAF"), "\xC3\x80\xC2\xAF");
  EXPECT_EQ(TextFromFileBytes(std::string("a\0b", 3)), std::string("a\0b", 3));
}

}  // namespace
}  // namespace tarvelin
