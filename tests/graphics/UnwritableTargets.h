#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "support/TempFolder.h"
#include "util/TarvelinError.h"

namespace tarvelin::testing {

// Places a file cannot be written to. Only the read-only folder depends on permissions, which root ignores.
enum class UnwritableTarget { MissingFolder, FileInPlaceOfFolder, FolderInPlaceOfFile, ReadOnlyFolder };

inline constexpr UnwritableTarget kUnwritableTargets[] = {
    UnwritableTarget::MissingFolder, UnwritableTarget::FileInPlaceOfFolder, UnwritableTarget::FolderInPlaceOfFile,
    UnwritableTarget::ReadOnlyFolder};

inline bool PermissionsAreIgnored() {
  return geteuid() == 0;
}

// Sets the case up in a fresh folder, runs Write on its target and checks that it raised a TarvelinError,
// that what stood there before is unchanged and that no stray file was left. Returns the error's description.
inline std::string ExpectWriteFailsCleanly(UnwritableTarget Case,
                                           const std::function<void(const std::string&)>& Write) {
  namespace fs = std::filesystem;
  TempFolder folder;
  const fs::path old = folder.Path() / "old";
  std::string target;
  switch (Case) {
    case UnwritableTarget::MissingFolder:
      target = (folder.Path() / "missing" / "shot").string();
      break;
    case UnwritableTarget::FileInPlaceOfFolder:
      WriteBytes(old.string(), "old contents");
      target = (old / "shot").string();
      break;
    case UnwritableTarget::FolderInPlaceOfFile:
      fs::create_directory(old);
      target = old.string();
      break;
    case UnwritableTarget::ReadOnlyFolder:
      fs::create_directory(old);
      WriteBytes((old / "shot").string(), "old contents");
      fs::permissions(old, fs::perms::owner_read | fs::perms::owner_exec);
      target = (old / "shot").string();
      break;
  }
  std::string description;
  try {
    Write(target);
    ADD_FAILURE() << "writing " << target << " raised no error";
  } catch (const TarvelinError& error) {
    description = error.Description();
  }
  size_t entries = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
    ++entries;
    if (entry.is_regular_file()) {
      EXPECT_EQ(ReadBytes(entry.path().string()), "old contents") << entry.path();
    }
  }
  const size_t expected = Case == UnwritableTarget::MissingFolder    ? 0
                          : Case == UnwritableTarget::ReadOnlyFolder ? 2
                                                                     : 1;
  EXPECT_EQ(entries, expected) << "stray or missing files";
  return description;
}

}  // namespace tarvelin::testing
