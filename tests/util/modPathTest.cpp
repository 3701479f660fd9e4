#include <gtest/gtest.h>

#include "util/modPath.h"

namespace tarvelin {
namespace {

constexpr auto Win = PathStyle::Windows;
constexpr auto Posix = PathStyle::Posix;

TEST(FolderOfPath, KeepsTheLastSeparatorInBothStyles) {
  EXPECT_EQ(FolderOfPath("C:\\a\\b.tvt", Win), "C:\\a\\");
  EXPECT_EQ(FolderOfPath("  C:\\a\\b.tvt  ", Win), "C:\\a\\");
  EXPECT_EQ(FolderOfPath("b.tvt", Win), "");
  EXPECT_EQ(FolderOfPath("/home/a/b.tvt", Win), "");
  EXPECT_EQ(FolderOfPath("/home/a/b.tvt", Posix), "/home/a/");
  EXPECT_EQ(FolderOfPath("/b.tvt", Posix), "/");
  EXPECT_EQ(FolderOfPath("b.tvt", Posix), "");
}

TEST(ResolvePath, FollowsTheDriveAndRootRules) {
  EXPECT_EQ(ResolvePath("\\x", "C:\\data", Win), "C:\\x");
  EXPECT_EQ(ResolvePath("D:\\x", "C:\\data", Win), "D:\\x");
  EXPECT_EQ(ResolvePath("D:x", "C:\\data", Win), "D:x");
  EXPECT_EQ(ResolvePath("x", "C:\\data", Win), "C:\\data\\x");
  EXPECT_EQ(ResolvePath("/x", "/opt/data", Posix), "/x");
  EXPECT_EQ(ResolvePath("x", "/opt/data", Posix), "/opt/data/x");
  EXPECT_EQ(ResolvePath("D:x", "/opt/data", Posix), "/opt/data/D:x");
}

struct FileNameCase {
  const char* Name;
  bool PathAllowed;
  PathStyle Style;
  bool Valid;
};

class IsValidFileNameTest : public ::testing::TestWithParam<FileNameCase> {};

TEST_P(IsValidFileNameTest, RejectsReservedCharacters) {
  const auto& c = GetParam();
  EXPECT_EQ(IsValidFileName(c.Name, c.PathAllowed, c.Style), c.Valid) << c.Name;
}

INSTANTIATE_TEST_SUITE_P(
    BothStyles, IsValidFileNameTest,
    ::testing::Values(FileNameCase{"C:\\x.tvt", true, Win, true}, FileNameCase{"C:\\x.tvt", false, Win, false},
                      FileNameCase{"ab:c.tvt", true, Win, false}, FileNameCase{"x.tvt", false, Win, true},
                      FileNameCase{"a/b.tvt", true, Win, false}, FileNameCase{"a?.tvt", true, Win, false},
                      FileNameCase{"a*.tvt", false, Win, false}, FileNameCase{"a|b", false, Win, false},
                      FileNameCase{"<a>", false, Win, false}, FileNameCase{"\"a\"", false, Win, false},
                      FileNameCase{"C:x.tvt", false, Win, false}, FileNameCase{"/home/x.tvt", true, Posix, true},
                      FileNameCase{"/home/x.tvt", false, Posix, false}, FileNameCase{"x.tvt", false, Posix, true},
                      FileNameCase{"a\\b.tvt", true, Posix, false}, FileNameCase{"C:/x.tvt", true, Posix, false},
                      FileNameCase{"a?.tvt", true, Posix, false}));

}  // namespace
}  // namespace tarvelin
