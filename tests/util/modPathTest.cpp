#include <gtest/gtest.h>

#include "util/modPath.h"

namespace tarvelin {
namespace {

constexpr auto Win = PathStyle::Windows;
constexpr auto Posix = PathStyle::Posix;

TEST(FolderOfPath, KeepsTheLastSeparatorInBothStyles) {
  EXPECT_EQ(FolderOfPath("C:\\a\\b.tvt", Win), "C:\\a\\");
  EXPECT_EQ(FolderOfPath("  C:\\a\\b.tvt  ", Win), "C:\\a\\");
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

// Reserved characters and the other style's separator are refused everywhere; a path only where one is
// allowed, and a colon only after a Windows drive letter.
TEST(IsValidFileName, RejectsReservedCharactersInBothStyles) {
  const struct {
    const char* Name;
    bool PathAllowed;
    PathStyle Style;
    bool Valid;
  } rows[] = {
      {"C:\\x.tvt", true, Win, true},       {"C:\\x.tvt", false, Win, false}, {"ab:c.tvt", true, Win, false},
      {"x.tvt", false, Win, true},          {"a/b.tvt", true, Win, false},    {"a?.tvt", true, Win, false},
      {"a*.tvt", false, Win, false},        {"a|b", false, Win, false},       {"<a>", false, Win, false},
      {"\"a\"", false, Win, false},         {"C:x.tvt", false, Win, false},   {"/home/x.tvt", true, Posix, true},
      {"/home/x.tvt", false, Posix, false}, {"a\\b.tvt", true, Posix, false}, {"C:/x.tvt", true, Posix, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(IsValidFileName(row.Name, row.PathAllowed, row.Style), row.Valid) << row.Name;
  }
}

}  // namespace
}  // namespace tarvelin
