#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "support/FaultInjection.h"
#include "support/RaisedErrors.h"
#include "support/TempFolder.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"

namespace tarvelin {

namespace {

namespace fs = std::filesystem;
using testing::ErrorNumberOf;
using testing::TempFolder;
using testing::WriteBytes;

// A link stays a link while the file it points to is replaced, and the temporary name must fit beside a
// target whose name is as long as the file system allows.
TEST(WriteFileAtomically, ReplacesTheWholeFileKeepingItsPermissionsAndLinksAndLeavesNothingElse) {
  TempFolder folder;
  const std::string name = std::string(255 - 4, 'n') + ".tvt";
  WriteBytes(folder.File(name), "an older and much longer content");
  fs::permissions(folder.File(name), fs::perms(0640));
  fs::create_symlink(folder.File(name), folder.File("link.tvt"));
  WriteFileAtomically(folder.File("link.tvt"), "new\r\n");
  EXPECT_EQ(testing::StateOf(folder.Path()),
            testing::FolderState({{name, "new\r\n"}, {"link.tvt", "<link to " + folder.File(name) + ">"}}));
  EXPECT_EQ(fs::status(folder.File(name)).permissions(), fs::perms(0640));
}

TEST(WriteFileAtomically, AWriteStoppedAtAnyByteRaisesItsErrorAndChangesNothing) {
  TempFolder folder;
  const auto target = folder.File("topic.tvt");
  WriteBytes(target, "old");
  const std::string contents(3 * testing::PageSize() + 5, 'x');
  for (const testing::WriteFault& fault : testing::WriteFaults(contents.size())) {
    SCOPED_TRACE(std::to_string(fault.Cut) + " bytes, error " + std::to_string(fault.Number));
    const testing::ScopedWriteFault failing(fault);
    EXPECT_EQ(ErrorNumberOf([&] { WriteFileAtomically(target, contents); }), fault.Number);
    EXPECT_EQ(testing::StateOf(folder.Path()), testing::FolderState({{"topic.tvt", "old"}}));
  }
}

// What a save killed part-way leaves: a temporary file of the target's pattern, found as the only file in
// an empty folder while the target's first save writes.
std::string TemporaryNameOfASave(const std::string& Target) {
  struct Discard final : FileSink {
    void Write(std::string_view) override {}
  };
  std::string name;
  SetFileSinkWrapper([&](FileSink&) {
    name = fs::directory_iterator(fs::path(Target).parent_path())->path().string();
    return std::make_unique<Discard>();
  });
  WriteFileAtomically(Target, "");
  SetFileSinkWrapper({});
  return name;
}

// Only leftovers of this target, older than the save, that no running save holds, are removed.
TEST(WriteFileAtomically, RemovesWhatInterruptedSavesOfTheSameTargetLeft) {
  TempFolder folder;
  const auto target = folder.File("topic.tvt");
  const std::string pattern = TemporaryNameOfASave(target);
  ASSERT_FALSE(pattern.empty());
  const auto leftover = [&](const std::string& Ending) { return pattern.substr(0, pattern.size() - 6) + Ending; };
  const std::vector<std::string> removed{leftover("a1B2c3"), target + ".tmp-Zz9Zz9"};
  const std::vector<std::string> kept{leftover("a1B2c"),      leftover("a1B2c3d"),
                                      leftover("a1-2c3"),     folder.File("other.tvt.tmp-Zz9Zz9"),
                                      target + ".tmp-new999", leftover("locked")};
  const auto saved = fs::last_write_time(target);
  for (const auto* names : {&removed, &kept}) {
    for (const auto& name : *names) {
      WriteBytes(name, "left");
      fs::last_write_time(name, saved - std::chrono::hours(1));
    }
  }
  fs::last_write_time(target + ".tmp-new999", saved + std::chrono::hours(1));
  const int running = open(leftover("locked").c_str(), O_RDONLY);
  ASSERT_EQ(flock(running, LOCK_EX), 0);
  WriteFileAtomically(target, "new");
  close(running);
  for (const auto& name : removed) {
    EXPECT_FALSE(fs::exists(name)) << name;
  }
  for (const auto& name : kept) {
    EXPECT_TRUE(fs::exists(name)) << name;
  }
}

TEST(ReadWholeFile, ReadsBytesAndRaisesForMissingFilesFoldersDevicesAndReadErrors) {
  TempFolder folder;
  const auto file = folder.File("data.bin");
  WriteBytes(file, std::string("a\0b\r\n", 5));
  EXPECT_EQ(ReadWholeFile(file), std::string("a\0b\r\n", 5));
  EXPECT_EQ(ErrorNumberOf([&] { ReadWholeFile(folder.File("none")); }), ErrFileNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { ReadWholeFile(folder.Path().string()); }), ErrPathFileAccess);
  // A device is refused even when it reads as empty; others never end.
  EXPECT_EQ(ErrorNumberOf([&] { ReadWholeFile("/dev/null"); }), ErrPathFileAccess);
  // A regular file whose every read fails, as a bad sector does.
  fs::create_symlink("/proc/self/mem", folder.File("unreadable.tvt"));
  EXPECT_EQ(ErrorNumberOf([&] { ReadWholeFile(folder.File("unreadable.tvt")); }), ErrPathFileAccess);
}

}  // namespace
}  // namespace tarvelin
