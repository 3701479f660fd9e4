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

// Blanks and tabs separate; a leading quote opens quoting, and its closing quote ends the argument.
TEST(SplitCommandLine, SplitsLikeTheProgramsOwnCommandLine) {
  using Arguments = std::vector<std::string>;
  EXPECT_EQ(SplitCommandLine(" \t ", 0), Arguments{});
  EXPECT_EQ(SplitCommandLine("one  two", 0), (Arguments{"one", "two"}));
  EXPECT_EQ(SplitCommandLine("\"one  two\"", 0), Arguments{"one  two"});
  EXPECT_EQ(SplitCommandLine("\"one\"two", 0), (Arguments{"one", "two"}));
  EXPECT_EQ(SplitCommandLine("on\"e two", 0), (Arguments{"on\"e", "two"}));
  EXPECT_EQ(SplitCommandLine("a b c", 2), (Arguments{"a", "b"}));
  EXPECT_EQ(SplitCommandLine("\"unterminated arg", 0), Arguments{"unterminated arg"});
  EXPECT_EQ(SplitCommandLine("\"\" x", 0), (Arguments{"", "x"}));
}

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
