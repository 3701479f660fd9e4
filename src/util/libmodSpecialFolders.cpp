#include "util/libmodSpecialFolders.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "util/libmodGenericTextFunctions.h"

#ifdef _WIN32
#include <shlobj.h>
#include <windows.h>
#else
#include <pwd.h>
#include <unistd.h>
#endif

namespace tarvelin {

namespace {

std::string WithoutTrailingSeparator(std::string Path) {
  while (Path.size() > 1 && (Path.back() == '/' || Path.back() == '\\')) {
    Path.pop_back();
  }
  return Path;
}

#ifndef _WIN32
std::string EnvironmentValue(const char* Name) {
  const char* value = std::getenv(Name);
  return value ? std::string(value) : std::string();
}

std::string HomeFolder() {
  std::string home = EnvironmentValue("HOME");
  if (home.empty()) {
    if (const passwd* entry = getpwuid(getuid())) {
      home = entry->pw_dir;
    }
  }
  return home;
}

// The XDG_DOCUMENTS_DIR line of user-dirs.dirs, e.g. XDG_DOCUMENTS_DIR="$HOME/Documents".
std::string XdgDocumentsFolder(const std::string& Home) {
  std::string configHome = EnvironmentValue("XDG_CONFIG_HOME");
  if (configHome.empty()) {
    configHome = Home + "/.config";
  }
  std::ifstream dirs(configHome + "/user-dirs.dirs");
  constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=";
  for (std::string line; std::getline(dirs, line);) {
    if (!line.starts_with(kKey)) {
      continue;
    }
    std::string value = line.substr(kKey.size());
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
      value = value.substr(1, value.size() - 2);
    }
    return ReplaceAll(value, "$HOME", Home);
  }
  return {};
}
#endif

}  // namespace

std::string DocumentsFolder() {
#ifdef _WIN32
  char path[MAX_PATH] = {};
  if (SHGetFolderPathA(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path) != S_OK) {
    return {};
  }
  return path;
#else
  const std::string home = HomeFolder();
  const std::string documents = XdgDocumentsFolder(home);
  std::error_code error;
  if (!documents.empty() && std::filesystem::is_directory(documents, error)) {
    return WithoutTrailingSeparator(documents);
  }
  return WithoutTrailingSeparator(home);
#endif
}

std::string ProgramFolder() {
#ifdef _WIN32
  char path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
  return WithoutTrailingSeparator(std::filesystem::path(std::string(path, length)).parent_path().string());
#else
  std::error_code error;
  const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) {
    return WithoutTrailingSeparator(std::filesystem::current_path(error).string());
  }
  return WithoutTrailingSeparator(executable.parent_path().string());
#endif
}

}  // namespace tarvelin
