#include <gtest/gtest.h>

#include <filesystem>

#include "support/RaisedErrors.h"
#include "support/TempFolder.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"

namespace tarvelin {
namespace {

using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;

size_t EntriesIn(const std::filesystem::path& Folder) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(Folder), {}));
}

TEST(WriteFileAtomically, ReplacesTheWholeFileAndLeavesNothingElse) {
  TempFolder folder;
  const auto target = folder.File("topic.tvt");
  WriteBytes(target, "an older and much longer content");
  WriteFileAtomically(target, "new\r\n");
  EXPECT_EQ(ReadBytes(target), "new\r\n");
  EXPECT_EQ(EntriesIn(folder.Path()), 1u);
}

TEST(WriteFileAtomically, KeepsTheOldFilesPermissions) {
  TempFolder folder;
  const auto target = folder.File("shared.tvt");
  WriteBytes(target, "old");
  std::filesystem::permissions(target, std::filesystem::perms(0640));
  WriteFileAtomically(target, "new");
  EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms(0640));
}

TEST(WriteFileAtomically, ALinkIsKeptWhileItsFileIsReplaced) {
  TempFolder folder;
  const auto real = folder.File("real.tvt");
  const auto link = folder.File("link.tvt");
  WriteBytes(real, "old");
  std::filesystem::create_symlink(real, link);
  WriteFileAtomically(link, "new");
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ReadBytes(real), "new");
}

TEST(ReadWholeFile, ReadsBytesAndRaisesForMissingFilesFoldersAndDevices) {
  TempFolder folder;
  const auto file = folder.File("data.bin");
  WriteBytes(file, std::string("a\0b\r\n", 5));
  EXPECT_EQ(ReadWholeFile(file), std::string("a\0b\r\n", 5));
  EXPECT_EQ(testing::ErrorNumberOf([&] { ReadWholeFile(folder.File("none")); }), ErrFileNotFound);
  EXPECT_THROW(ReadWholeFile(folder.Path().string()), TarvelinError);
  // A device is refused even when it reads as empty; others never end.
  EXPECT_THROW(ReadWholeFile("/dev/null"), TarvelinError);
}

}  // namespace
}  // namespace tarvelin
