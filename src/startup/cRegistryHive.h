#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "startup/RegistryData.h"

namespace tarvelin {

// One hive held in memory and kept on disk in the .reg text format:
//
//   Windows Registry Editor Version 5.00
//
//   [HKEY_CURRENT_USER\Software\Pelvora\Tarvelin]
//   "LastUsedDir"="C:\\Users\\me"         plain text, with \\ and \" escaped
//   "ShowSettingsOnNew"=dword:ffffffff    a double-word, eight hex digits
//   "Pattern"=hex(2):25,00,41,00,00,00     any other type: its number and its bytes
//   @="..."                                the key's default value
//
// Key and value names compare without regard to ASCII case, as the registry's do; keys and values keep
// the order in which they were first made. A key path is relative to the hive ("" is the hive itself),
// its parts separated by "\".
class cRegistryHive final {
 public:
  enum class Edit { Failed, Unchanged, Changed };

  explicit cRegistryHive(std::string RootName);

  // Nothing when the text is not a whole hive of this root: a damaged or truncated file, whose every
  // line is checked strictly so that a cut in the middle of a line is noticed.
  static std::optional<cRegistryHive> Parse(std::string_view Text, std::string RootName);
  // CR LF line ends; parsing the result gives the same hive.
  std::string Serialise() const;

  bool KeyExists(std::string_view Section) const;
  // Creates the key and any missing parents.
  Edit CreateKey(std::string_view Section);
  // Fails for the hive itself, a missing key and a key that still has sub-keys.
  Edit DeleteKey(std::string_view Section);
  // Creates the key as needed.
  Edit SetValue(std::string_view Section, std::string_view Name, const RegistryData& Data);
  // Fails when the key or the value is missing.
  Edit DeleteValue(std::string_view Section, std::string_view Name);

  // Nothing when the key or the value is missing.
  std::optional<RegistryData> Value(std::string_view Section, std::string_view Name) const;
  std::vector<std::string> ValueNames(std::string_view Section) const;
  std::vector<std::string> SubKeyNames(std::string_view Section) const;

 private:
  // Each key holds only its own name, so that a deep path costs memory in its length, not its square.
  struct Key {
    size_t Parent = 0;  // position in keys_; always before the key itself
    std::string Name;   // the last part of the path; "" for the hive itself
    std::vector<std::pair<std::string, RegistryData>> Values;
  };

  Key* pFindKey(std::string_view Path);
  const Key* pFindKey(std::string_view Path) const;
  std::optional<size_t> pFindPosition(std::string_view Path) const;

  void pIndexKeys();

  std::string rootName_;
  std::vector<Key> keys_;                          // keys_[0] is the hive itself, path ""
  std::unordered_map<std::string, size_t> index_;  // parent position "\\" lower-case name -> position in keys_
};

}  // namespace tarvelin
