#include "support/TempFolder.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace tarvelin::testing {

// A random name rather than a counter: test programs may run side by side in the same temporary folder.
TempFolder::TempFolder() {
  std::random_device seed;
  std::mt19937_64 random(seed());
  const auto parent = std::filesystem::temp_directory_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    const auto candidate = parent / ("tarvelin-test-" + std::to_string(random() % 1000000000));
    std::error_code error;
    if (std::filesystem::create_directory(candidate, error)) {
      path_ = candidate;
      return;
    }
  }
  throw std::runtime_error("cannot create a temporary folder");
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  // Tests may have made parts read-only; give write access back so that everything can be removed. A link
  // is left alone: changing it would change what it points to, which may be a device such as /dev/full.
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path_, ignored)) {
    if (!entry.is_symlink()) {
      std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                   ignored);
    }
  }
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ignored);
  std::filesystem::remove_all(path_, ignored);
}

void WriteBytes(const std::string& FileName, std::string_view Bytes) {
  std::ofstream out(FileName, std::ios::binary | std::ios::trunc);
  out.write(Bytes.data(), static_cast<std::streamsize>(Bytes.size()));
  if (!out) {
    throw std::runtime_error("cannot write " + FileName);
  }
}

std::string ReadBytes(const std::string& FileName) {
  std::ifstream in(FileName, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace tarvelin::testing
