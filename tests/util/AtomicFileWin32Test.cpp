#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/RaisedErrors.h"
#include "support/TempFolder.h"
#include "util/AtomicFile.h"
#include "util/AtomicFileWin32.h"
#include "util/TarvelinError.h"

namespace tarvelin {
namespace {

using testing::ErrorNumberOf;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;

size_t EntriesIn(const std::filesystem::path& Folder) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(Folder), {}));
}

TEST(AtomicFileWin32, ReplacesTheFileAndReadsUtf8Names) {
  const TempFolder folder;
  const std::string target = folder.File("Caf\xC3\xA9.tvt");
  WriteFileAtomically(target, "old");
  WriteFileAtomically(target, "new\r\n");
  EXPECT_EQ(ReadWholeFile(target), "new\r\n");
  EXPECT_EQ(EntriesIn(folder.Path()), 1u);
}

// Each failure keeps the old file, leaves no temporary file and gives its own error number.
TEST(AtomicFileWin32, FailuresKeepTheOldFileAndGiveTheirErrorNumber) {
  const TempFolder folder;
  EXPECT_EQ(ErrorNumberOf([&] { WriteFileAtomically(folder.File("missing\\a.tvt"), "x"); }), ErrPathNotFound);

  std::filesystem::create_directory(folder.Path() / "a folder");
  EXPECT_EQ(ErrorNumberOf([&] { WriteFileAtomically(folder.File("a folder"), "x"); }), ErrPathFileAccess);

  const std::string readOnly = folder.File("read-only.tvt");
  WriteBytes(readOnly, "old");
  const std::wstring wide = std::filesystem::path(readOnly).wstring();
  ASSERT_TRUE(SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_EQ(ErrorNumberOf([&] { WriteFileAtomically(readOnly, "new"); }), ErrPermissionDenied);
  EXPECT_EQ(ReadBytes(readOnly), "old");
  SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_NORMAL);

  EXPECT_EQ(EntriesIn(folder.Path()), 2u);
}

// A full disk cannot be arranged here, so the mapping of the codes it gives is checked directly.
TEST(AtomicFileWin32, SystemErrorsMapToTheRuntimeErrors) {
  const std::vector<std::pair<DWORD, int32_t>> cases{{ERROR_DISK_FULL, ErrDiskFull},
                                                     {ERROR_HANDLE_DISK_FULL, ErrDiskFull},
                                                     {ERROR_ACCESS_DENIED, ErrPermissionDenied},
                                                     {ERROR_WRITE_PROTECT, ErrPermissionDenied},
                                                     {ERROR_PATH_NOT_FOUND, ErrPathNotFound},
                                                     {ERROR_INVALID_DRIVE, ErrPathNotFound},
                                                     {ERROR_SHARING_VIOLATION, ErrPathFileAccess},
                                                     {ERROR_NOT_READY, ErrDeviceIO}};
  for (const auto& [code, number] : cases) {
    EXPECT_EQ(ErrorNumberForWin32Error(code), number) << "Win32 error " << code;
  }
}

TEST(AtomicFileWin32, ReadingRefusesAFolder) {
  const TempFolder folder;
  EXPECT_EQ(ErrorNumberOf([&] { ReadWholeFile(folder.Path().string()); }), ErrPathFileAccess);
}

}  // namespace
}  // namespace tarvelin
