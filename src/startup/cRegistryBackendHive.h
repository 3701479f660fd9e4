#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "startup/cRegistryBackend.h"
#include "startup/cRegistryHive.h"

namespace tarvelin {

// The file that holds a hive where there is no platform registry: TARVELIN_REGISTRY_DIR/user.reg and
// TARVELIN_REGISTRY_DIR/machine.reg when that variable is set; otherwise $XDG_CONFIG_HOME/tarvelin/user.reg
// (~/.config when XDG_CONFIG_HOME is unset or not absolute) for the current user and
// /etc/tarvelin/machine.reg for the local machine. Empty for every other hive, which is kept nowhere.
std::string HiveFileName(ERegistryClassKey ClassKey);

// The registry kept as one .reg text file per hive. Every operation reads the file afresh, so several
// processes share the settings; it is parsed again only when its bytes have changed. A write re-reads and rewrites the
// whole file under an inter-process lock and replaces it atomically, so a reader sees the old file or the new one,
// never a mixture. A hive that is damaged or unreadable reads as empty; a damaged one is replaced by the next write, an
// unreadable one is never overwritten. Only this computer's registry is available.
class cRegistryBackendHive final : public cRegistryBackend {
 public:
  bool SupportsRemoteMachines() const override { return false; }

  bool KeyExists(const RegistryKeyPath& Key) override;
  bool CreateKey(const RegistryKeyPath& Key) override;
  bool DeleteKey(const RegistryKeyPath& Key) override;
  RegistryDeleteResult DeleteValue(const RegistryKeyPath& Key, const std::string& Name) override;
  std::optional<RegistryData> QueryValue(const RegistryKeyPath& Key, const std::string& Name) override;
  bool SetValue(const RegistryKeyPath& Key, const std::string& Name, const RegistryData& Data) override;
  std::vector<std::string> EnumerateValues(const RegistryKeyPath& Key) override;
  std::vector<std::string> EnumerateSections(const RegistryKeyPath& Key) override;

 private:
  using HiveChange = std::function<cRegistryHive::Edit(cRegistryHive&)>;

  static std::shared_ptr<const cRegistryHive> pRead(const RegistryKeyPath& Key);
  static bool pModify(const RegistryKeyPath& Key, const HiveChange& Change);
};

}  // namespace tarvelin
