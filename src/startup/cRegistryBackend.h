#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "startup/RegistryData.h"

namespace tarvelin {

// Where an operation applies: a computer (empty = this one), a hive and a key path below the hive.
struct RegistryKeyPath {
  std::string Machine;
  ERegistryClassKey ClassKey = ERegistryClassKey::CurrentUser;
  std::string Section;
};

enum class RegistryDeleteResult { Deleted, KeyNotOpened, ValueNotDeleted };

// The store behind cRegistry: the platform's registry on Windows, hive files elsewhere. Operations report
// failure through their result and never throw; cRegistry turns failures into its numbered errors.
class cRegistryBackend {
 public:
  virtual ~cRegistryBackend() = default;

  // Whether a non-empty Machine can be reached at all.
  virtual bool SupportsRemoteMachines() const = 0;

  virtual bool KeyExists(const RegistryKeyPath& Key) = 0;
  // Creates the key and its missing parents; true when it exists afterwards.
  virtual bool CreateKey(const RegistryKeyPath& Key) = 0;
  // Deletes a key that has no sub-keys (its values go with it); false for a key that still has sub-keys.
  virtual bool DeleteKey(const RegistryKeyPath& Key) = 0;
  virtual RegistryDeleteResult DeleteValue(const RegistryKeyPath& Key, const std::string& Name) = 0;
  // Nothing when the value is missing or cannot be read.
  virtual std::optional<RegistryData> QueryValue(const RegistryKeyPath& Key, const std::string& Name) = 0;
  // Creates the key as needed.
  virtual bool SetValue(const RegistryKeyPath& Key, const std::string& Name, const RegistryData& Data) = 0;
  // In the store's order; empty when the key is missing.
  virtual std::vector<std::string> EnumerateValues(const RegistryKeyPath& Key) = 0;
  virtual std::vector<std::string> EnumerateSections(const RegistryKeyPath& Key) = 0;
};

// The platform's store: the Windows registry on Windows, hive files elsewhere.
std::shared_ptr<cRegistryBackend> DefaultRegistryBackend();

}  // namespace tarvelin
