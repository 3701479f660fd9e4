#pragma once

#include <stdlib.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "support/TempFolder.h"

namespace tarvelin::testing {

// Sets an environment variable (or removes it, for nothing) for the lifetime of the object.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* Name, const std::optional<std::string>& Value) : name_(Name) {
    if (const char* previous = getenv(Name)) {
      previous_ = previous;
    }
    Set(Value);
  }
  ~ScopedEnvironment() { Set(previous_); }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  void Set(const std::optional<std::string>& Value) {
#ifdef _WIN32
    // An empty value removes the variable; the process's own environment changes too, so a child sees it.
    _putenv_s(name_, Value ? Value->c_str() : "");
#else
    if (Value) {
      setenv(name_, Value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
#endif
  }

  const char* name_;
  std::optional<std::string> previous_;
};

// A fresh temporary folder for both hive files: TARVELIN_REGISTRY_DIR points at its "registry" sub-folder,
// which does not exist until something is written.
class ScopedRegistryFolder {
 public:
  ScopedRegistryFolder() : environment_("TARVELIN_REGISTRY_DIR", Folder()) {}

  std::string Folder() const { return temp_.File("registry"); }
  std::string UserHive() const { return temp_.File("registry/user.reg"); }
  const TempFolder& Temp() const { return temp_; }

 private:
  TempFolder temp_;
  ScopedEnvironment environment_;
};

// Writes a hive file by hand, making its folder first.
inline void WriteHiveFile(const std::string& FileName, std::string_view Text) {
  std::filesystem::create_directories(std::filesystem::path(FileName).parent_path());
  WriteBytes(FileName, Text);
}

// A current-user hive file holding the given lines (CR LF ended) under the settings key.
inline std::string SettingsHiveText(std::string_view ValueLines) {
  return "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\Pelvora\\Tarvelin]\r\n" +
         std::string(ValueLines);
}

}  // namespace tarvelin::testing
