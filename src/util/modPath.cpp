#include "util/modPath.h"

#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

char PathSeparator(PathStyle Style) {
  return Style == PathStyle::Windows ? '\\' : '/';
}

std::string FolderOfPath(std::string_view Path, PathStyle Style) {
  const std::string trimmed = TrimBlanks(Path);
  const size_t last = trimmed.find_last_of(PathSeparator(Style));
  return last == std::string::npos ? std::string() : trimmed.substr(0, last + 1);
}

std::string ResolvePath(std::string_view RelativePath, std::string_view BaseFolder, PathStyle Style) {
  const char separator = PathSeparator(Style);
  const bool rooted = !RelativePath.empty() && RelativePath.front() == separator;
  if (Style == PathStyle::Windows) {
    if (rooted) {
      return std::string(BaseFolder.substr(0, 2)).append(RelativePath);
    }
    if (RelativePath.size() >= 2 && RelativePath[1] == ':') {
      return std::string(RelativePath);
    }
  } else if (rooted) {
    return std::string(RelativePath);
  }
  return std::string(BaseFolder).append(1, separator).append(RelativePath);
}

// On POSIX the backslash is reserved like the slash on Windows, and a colon is never accepted: there are no
// drive letters, and names must stay valid when the files move to Windows.
bool IsValidFileName(std::string_view Name, bool PathAllowed, PathStyle Style) {
  const char separator = PathSeparator(Style);
  const char foreignSeparator = Style == PathStyle::Windows ? '/' : '\\';
  if (Name.find_first_of("?*|<>\"") != std::string_view::npos ||
      Name.find(foreignSeparator) != std::string_view::npos) {
    return false;
  }
  if (!PathAllowed && Name.find(separator) != std::string_view::npos) {
    return false;
  }
  const size_t colon = Name.find(':');
  if (colon == std::string_view::npos) {
    return true;
  }
  return Style == PathStyle::Windows && PathAllowed && colon == 1;
}

std::string StripInvalidFileNameChars(std::string_view Name) {
  std::string result(Name);
  for (const char reserved : std::string_view("?*/\\|:><\"")) {
    result = ReplaceAll(result, std::string_view(&reserved, 1), "");
  }
  return result;
}

std::string LastCharacters(std::string_view Text, size_t Count) {
  return std::string(Count >= Text.size() ? Text : Text.substr(Text.size() - Count));
}

}  // namespace tarvelin
