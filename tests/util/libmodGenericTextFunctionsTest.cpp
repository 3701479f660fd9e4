#include <gtest/gtest.h>

#include "support/RaisedErrors.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {
namespace {

TEST(TextHelpers, ReplaceAllTextFromAndTrimBlanksKeepTheirEdges) {
  // The replacement is never scanned again, and an empty pattern must not loop for ever.
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(ReplaceAll("aaaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  // Positions count from one; past the end is empty, before the start is an error.
  EXPECT_EQ(TextFrom("Tarvelin", 4), "velin");
  EXPECT_EQ(TextFrom("Tarvelin", 100), "");
  EXPECT_EQ(testing::ErrorNumberOf([] { TextFrom("x", 0); }), ErrInvalidCall);
  // Only spaces are blanks.
  EXPECT_EQ(TrimBlanks("  a b  "), "a b");
  EXPECT_EQ(TrimBlanks("\ta\t"), "\ta\t");
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
