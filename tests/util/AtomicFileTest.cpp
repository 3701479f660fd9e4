#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

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

int32_t ErrorNumberOfWrite(const std::string& FileName, std::string_view Contents) {
  try {
    WriteFileAtomically(FileName, Contents);
  } catch (const TarvelinError& error) {
    return error.Number();
  }
  return 0;
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

TEST(WriteFileAtomically, FailuresRaiseAndLeaveTheOldFileAlone) {
  TempFolder folder;
  EXPECT_EQ(ErrorNumberOfWrite(folder.File("missing/topic.tvt"), "x"), ErrPathNotFound);

  const auto directory = folder.File("a folder");
  std::filesystem::create_directory(directory);
  EXPECT_EQ(ErrorNumberOfWrite(directory, "x"), ErrPathFileAccess);
  EXPECT_TRUE(std::filesystem::is_directory(directory));
  EXPECT_EQ(EntriesIn(folder.Path()), 1u);
}

TEST(WriteFileAtomically, ADeviceIsRefusedAndALinkKeptWhileItsFileIsReplaced) {
  EXPECT_EQ(ErrorNumberOfWrite("/dev/full", "x"), ErrPathFileAccess);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));

  TempFolder folder;
  const auto real = folder.File("real.tvt");
  const auto link = folder.File("link.tvt");
  WriteBytes(real, "old");
  std::filesystem::create_symlink(real, link);
  WriteFileAtomically(link, "new");
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ReadBytes(real), "new");
}

TEST(WriteFileAtomically, AFolderWithoutWriteAccessIsRefused) {
  if (geteuid() == 0) {
    GTEST_SKIP() << "permission bits do not stop the superuser";
  }
  TempFolder folder;
  const auto target = folder.File("topic.tvt");
  WriteBytes(target, "old");
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0555));
  EXPECT_EQ(ErrorNumberOfWrite(target, "new"), ErrPermissionDenied);
  EXPECT_EQ(ReadBytes(target), "old");
}

// A write that fails part-way: in a child process whose file size limit stops the temporary file after
// a given number of bytes.
TEST(WriteFileAtomically, AWriteThatFailsPartWayKeepsTheOldFile) {
  TempFolder folder;
  const auto target = folder.File("topic.tvt");
  const std::string old = "the previous topic\r\n";
  const std::string replacement(20000, 'n');
  for (const rlim_t limit : {rlim_t{0}, rlim_t{1}, rlim_t{4096}, rlim_t{19999}}) {
    WriteBytes(target, old);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      signal(SIGXFSZ, SIG_IGN);
      const rlimit fileSize{limit, limit};
      setrlimit(RLIMIT_FSIZE, &fileSize);
      _exit(ErrorNumberOfWrite(target, replacement) == ErrDiskFull ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "limit " << limit;
    EXPECT_EQ(ReadBytes(target), old) << "limit " << limit;
    EXPECT_EQ(EntriesIn(folder.Path()), 1u) << "limit " << limit;
  }
}

TEST(ReadWholeFile, ReadsBytesAndRaisesForMissingFilesFoldersAndDevices) {
  TempFolder folder;
  const auto file = folder.File("data.bin");
  WriteBytes(file, std::string("a\0b\r\n", 5));
  EXPECT_EQ(ReadWholeFile(file), std::string("a\0b\r\n", 5));
  EXPECT_THROW(
      try { ReadWholeFile(folder.File("none")); } catch (const TarvelinError& error) {
        EXPECT_EQ(error.Number(), ErrFileNotFound);
        throw;
      },
      TarvelinError);
  EXPECT_THROW(ReadWholeFile(folder.Path().string()), TarvelinError);
  // A device is refused even when it reads as empty; others never end.
  EXPECT_THROW(ReadWholeFile("/dev/null"), TarvelinError);
}

}  // namespace
}  // namespace tarvelin
