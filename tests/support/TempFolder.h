#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarvelin::testing {

// A fresh folder under the system's temporary folder, removed with everything in it at the end.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::string File(std::string_view Name) const { return (path_ / Name).string(); }

 private:
  std::filesystem::path path_;
};

// Writes bytes to a file as they are (no line-end translation).
void WriteBytes(const std::string& FileName, std::string_view Bytes);
// Reads a file's bytes as they are.
std::string ReadBytes(const std::string& FileName);

// Text repeated Count times, for files too large to write out.
inline std::string Repeated(std::string_view Text, size_t Count) {
  std::string text;
  text.reserve(Text.size() * Count);
  for (size_t copy = 0; copy < Count; ++copy) {
    text += Text;
  }
  return text;
}

}  // namespace tarvelin::testing
