#pragma once

#include <string>
#include <string_view>

namespace tarvelin {

// The path rules are those of Windows paths ("\" separator, "C:" drives). On POSIX the program applies
// the same rules with "/" as the separator and a leading "/" as the root; there are no drive letters.
enum class PathStyle { Windows, Posix };
#ifdef _WIN32
inline constexpr PathStyle NativePathStyle = PathStyle::Windows;
#else
inline constexpr PathStyle NativePathStyle = PathStyle::Posix;
#endif

char PathSeparator(PathStyle Style = NativePathStyle);

// The path trimmed of outer blanks and cut after its last separator (which is kept); empty without one.
std::string FolderOfPath(std::string_view Path, PathStyle Style = NativePathStyle);

// A rooted path takes the base's drive (Windows) or stands as it is (POSIX); a path with a drive stands as
// it is; anything else is appended to the base with one separator.
std::string ResolvePath(std::string_view RelativePath, std::string_view BaseFolder, PathStyle Style = NativePathStyle);

// False when the name holds a reserved character. With PathAllowed the separator is accepted, and on
// Windows a ":" only as the second character.
bool IsValidFileName(std::string_view Name, bool PathAllowed, PathStyle Style = NativePathStyle);

// The name without any of ? * / \ | : > < and the double quote.
std::string StripInvalidFileNameChars(std::string_view Name);

// The last four characters of a name, for the programs' extension checks (case-sensitive by design).
std::string LastCharacters(std::string_view Text, size_t Count);

}  // namespace tarvelin
