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

// Sets the case up in a fresh folder, runs Write on its target and checks that it raised a TarvelinError and
// that the folder holds exactly what it held before. Returns the error's description.
inline std::string ExpectWriteFailsCleanly(UnwritableTarget Case,
                                           const std::function<void(const std::string&)>& Write) {
  namespace fs = std::filesystem;
  TempFolder folder;
  const fs::path old = folder.Path() / "old";
  if (Case == UnwritableTarget::FileInPlaceOfFolder) {
    WriteBytes(old.string(), "old contents");
  } else if (Case != UnwritableTarget::MissingFolder) {
    fs::create_directory(old);
  }
  if (Case == UnwritableTarget::ReadOnlyFolder) {
    WriteBytes((old / "shot").string(), "old contents");
    fs::permissions(old, fs::perms::owner_read | fs::perms::owner_exec);
  }
  const fs::path target = Case == UnwritableTarget::FolderInPlaceOfFile ? old : old / "shot";
  std::string description;
  try {
    Write(target.string());
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
  const size_t entriesBefore[] = {0, 1, 1, 2};  // in the order of UnwritableTarget
  EXPECT_EQ(entries, entriesBefore[static_cast<size_t>(Case)]) << "stray or missing files";
  return description;
}

}  // namespace tarvelin::testing
