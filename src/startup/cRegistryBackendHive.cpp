#include "startup/cRegistryBackendHive.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>

#include "startup/HiveFileLock.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

using Edit = cRegistryHive::Edit;

std::string EnvironmentValue(const char* Name) {
  const char* value = std::getenv(Name);
  return value == nullptr ? std::string() : std::string(value);
}

// Hive files are normally UTF-8; one saved by the platform's registry editor is UTF-16LE with a BOM.
std::string HiveText(std::string_view Bytes) {
  constexpr std::string_view Utf16Mark = "\xFF\xFE";
  if (Bytes.starts_with(Utf16Mark)) {
    return TextFromRegistryBytes(Bytes.substr(Utf16Mark.size()));
  }
  return TextFromFileBytes(Bytes);
}

// The hive last parsed from each file, with the bytes it was parsed from. Settings are read one at a time,
// and a large hive must not be parsed again for each of them while its file stays the same.
struct ParsedHive {
  std::string Bytes;
  std::shared_ptr<const cRegistryHive> Hive;
};

ParsedHive& LastParsed(const std::string& FileName, const std::string& RootName) {
  static std::map<std::string, ParsedHive> parsed;
  return parsed[RootName + "\n" + FileName];
}

// The hive as stored: empty when the file is missing or damaged, nothing when it exists but cannot be read
// (or not held in memory).
std::shared_ptr<const cRegistryHive> ReadHiveFile(const std::string& FileName, ERegistryClassKey ClassKey) {
  const std::string rootName = RegistryHiveName(ClassKey);
  const auto empty = std::make_shared<const cRegistryHive>(rootName);
  if (FileName.empty()) {
    return empty;
  }
  try {
    std::string bytes = ReadWholeFile(FileName);
    ParsedHive& last = LastParsed(FileName, rootName);
    if (!last.Hive || last.Bytes != bytes) {
      auto hive = cRegistryHive::Parse(HiveText(bytes), rootName);
      last = {std::move(bytes), hive ? std::make_shared<const cRegistryHive>(std::move(*hive)) : empty};
    }
    return last.Hive;
  } catch (const TarvelinError& error) {
    return error.Number() == ErrFileNotFound ? empty : nullptr;
  } catch (const std::exception&) {
    return nullptr;
  }
}

// A copy of the stored hive to change; nothing when the file cannot be read.
std::optional<cRegistryHive> HiveToChange(const std::string& FileName, ERegistryClassKey ClassKey) {
  const auto hive = ReadHiveFile(FileName, ClassKey);
  return hive ? std::optional(*hive) : std::nullopt;
}

}  // namespace

std::string HiveFileName(ERegistryClassKey ClassKey) {
  const char* fileName = ClassKey == ERegistryClassKey::CurrentUser    ? "user.reg"
                         : ClassKey == ERegistryClassKey::LocalMachine ? "machine.reg"
                                                                       : nullptr;
  if (fileName == nullptr) {
    return {};
  }
  const std::string shared = EnvironmentValue("TARVELIN_REGISTRY_DIR");
  if (!shared.empty()) {
    return (std::filesystem::path(shared) / fileName).string();
  }
  if (ClassKey == ERegistryClassKey::LocalMachine) {
    return "/etc/tarvelin/machine.reg";
  }
  std::string config = EnvironmentValue("XDG_CONFIG_HOME");
  if (config.empty() || config.front() != '/') {
    const std::string home = EnvironmentValue("HOME");
    if (home.empty()) {
      return {};
    }
    config = home + "/.config";
  }
  return config + "/tarvelin/" + fileName;
}

bool cRegistryBackendHive::KeyExists(const RegistryKeyPath& Key) {
  return pRead(Key)->KeyExists(Key.Section);
}

bool cRegistryBackendHive::CreateKey(const RegistryKeyPath& Key) {
  return pModify(Key, [&](cRegistryHive& hive) { return hive.CreateKey(Key.Section); });
}

bool cRegistryBackendHive::DeleteKey(const RegistryKeyPath& Key) {
  return pModify(Key, [&](cRegistryHive& hive) { return hive.DeleteKey(Key.Section); });
}

RegistryDeleteResult cRegistryBackendHive::DeleteValue(const RegistryKeyPath& Key, const std::string& Name) {
  bool keyFound = false;
  const bool deleted = pModify(Key, [&](cRegistryHive& hive) {
    keyFound = hive.KeyExists(Key.Section);
    return hive.DeleteValue(Key.Section, Name);
  });
  if (deleted) {
    return RegistryDeleteResult::Deleted;
  }
  return keyFound ? RegistryDeleteResult::ValueNotDeleted : RegistryDeleteResult::KeyNotOpened;
}

std::optional<RegistryData> cRegistryBackendHive::QueryValue(const RegistryKeyPath& Key, const std::string& Name) {
  return pRead(Key)->Value(Key.Section, Name);
}

bool cRegistryBackendHive::SetValue(const RegistryKeyPath& Key, const std::string& Name, const RegistryData& Data) {
  return pModify(Key, [&](cRegistryHive& hive) { return hive.SetValue(Key.Section, Name, Data); });
}

std::vector<std::string> cRegistryBackendHive::EnumerateValues(const RegistryKeyPath& Key) {
  return pRead(Key)->ValueNames(Key.Section);
}

std::vector<std::string> cRegistryBackendHive::EnumerateSections(const RegistryKeyPath& Key) {
  return pRead(Key)->SubKeyNames(Key.Section);
}

std::shared_ptr<const cRegistryHive> cRegistryBackendHive::pRead(const RegistryKeyPath& Key) {
  const std::string fileName = Key.Machine.empty() ? HiveFileName(Key.ClassKey) : std::string();
  auto hive = ReadHiveFile(fileName, Key.ClassKey);
  return hive ? hive : std::make_shared<const cRegistryHive>(RegistryHiveName(Key.ClassKey));
}

// Applies a change and writes the hive back. A change that turns out to do nothing (or to be impossible)
// is answered from an unlocked read, so that it neither creates folders nor takes the lock; a real change
// is made again on the hive read under the lock, which is what gets written.
bool cRegistryBackendHive::pModify(const RegistryKeyPath& Key, const HiveChange& Change) {
  const std::string fileName = HiveFileName(Key.ClassKey);
  if (!Key.Machine.empty() || fileName.empty()) {
    return false;
  }
  auto current = HiveToChange(fileName, Key.ClassKey);
  const Edit edit = current ? Change(*current) : Edit::Failed;
  if (edit != Edit::Changed) {
    return edit == Edit::Unchanged;
  }
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(fileName).parent_path(), error);
  HiveFileLock lock(fileName + ".lock");
  if (error || !lock.Locked()) {
    return false;
  }
  current = HiveToChange(fileName, Key.ClassKey);
  const Edit lockedEdit = current ? Change(*current) : Edit::Failed;
  if (lockedEdit != Edit::Changed) {
    return lockedEdit == Edit::Unchanged;
  }
  try {
    WriteFileAtomically(fileName, current->Serialise());
  } catch (const TarvelinError&) {
    return false;
  }
  return true;
}

#ifndef _WIN32
std::shared_ptr<cRegistryBackend> DefaultRegistryBackend() {
  static const auto backend = std::make_shared<cRegistryBackendHive>();
  return backend;
}
#endif

}  // namespace tarvelin
