#include "startup/cRegistryBackendWin32.h"

#include <windows.h>

#include <cstdlib>

#include "startup/cRegistryBackendHive.h"
#include "startup/modUtf16.h"

namespace tarvelin {

namespace {

std::wstring Wide(const std::string& Text) {
  const std::u16string units = Utf16FromUtf8(Text);
  return std::wstring(units.begin(), units.end());
}

std::string Narrow(const wchar_t* Text, DWORD Length) {
  return Utf8FromUtf16(std::u16string(Text, Text + Length));
}

// An open key, closed when the object goes.
class OpenKey final {
 public:
  OpenKey() = default;
  ~OpenKey() {
    if (key_ != nullptr) {
      RegCloseKey(key_);
    }
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  HKEY* Receive() { return &key_; }
  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

// The hive of a key path, on this computer or connected on another one. Members close in reverse order, so
// a key opened below a remote hive is closed before the hive.
class OpenHive final {
 public:
  explicit OpenHive(const RegistryKeyPath& Key)
      : root_(reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(Key.ClassKey)))) {
    if (!Key.Machine.empty()) {
      const std::wstring machine = Wide(Key.Machine);
      reachable_ = RegConnectRegistryW(machine.c_str(), root_, remote_.Receive()) == ERROR_SUCCESS;
      root_ = remote_.Get();
    }
  }

  bool Reachable() const { return reachable_; }
  HKEY Root() const { return root_; }

 private:
  HKEY root_;
  OpenKey remote_;
  bool reachable_ = true;
};

class OpenSection final {
 public:
  OpenSection(const RegistryKeyPath& Key, REGSAM Access) : hive_(Key) {
    const std::wstring section = Wide(Key.Section);
    open_ =
        hive_.Reachable() && RegOpenKeyExW(hive_.Root(), section.c_str(), 0, Access, key_.Receive()) == ERROR_SUCCESS;
  }

  bool IsOpen() const { return open_; }
  HKEY Get() const { return key_.Get(); }

 private:
  OpenHive hive_;
  OpenKey key_;
  bool open_ = false;
};

// The Windows registry itself.
class cRegistryBackendWin32 final : public cRegistryBackend {
 public:
  bool SupportsRemoteMachines() const override { return true; }

  bool KeyExists(const RegistryKeyPath& Key) override { return OpenSection(Key, KEY_READ).IsOpen(); }

  bool CreateKey(const RegistryKeyPath& Key) override {
    OpenHive hive(Key);
    OpenKey created;
    const std::wstring section = Wide(Key.Section);
    return hive.Reachable() && RegCreateKeyExW(hive.Root(), section.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                               KEY_WRITE, nullptr, created.Receive(), nullptr) == ERROR_SUCCESS;
  }

  // RegDeleteKeyW refuses a key that still has sub-keys, which is the behaviour cRegistry promises.
  bool DeleteKey(const RegistryKeyPath& Key) override {
    OpenHive hive(Key);
    const std::wstring section = Wide(Key.Section);
    return hive.Reachable() && RegDeleteKeyW(hive.Root(), section.c_str()) == ERROR_SUCCESS;
  }

  RegistryDeleteResult DeleteValue(const RegistryKeyPath& Key, const std::string& Name) override {
    OpenSection section(Key, KEY_SET_VALUE);
    if (!section.IsOpen()) {
      return RegistryDeleteResult::KeyNotOpened;
    }
    const std::wstring name = Wide(Name);
    return RegDeleteValueW(section.Get(), name.c_str()) == ERROR_SUCCESS ? RegistryDeleteResult::Deleted
                                                                         : RegistryDeleteResult::ValueNotDeleted;
  }

  // The first query gives the size; the value may grow in between, so it is asked again until it fits.
  std::optional<RegistryData> QueryValue(const RegistryKeyPath& Key, const std::string& Name) override {
    OpenSection section(Key, KEY_QUERY_VALUE);
    if (!section.IsOpen()) {
      return std::nullopt;
    }
    const std::wstring name = Wide(Name);
    DWORD type = 0;
    DWORD size = 0;
    LONG result = RegQueryValueExW(section.Get(), name.c_str(), nullptr, &type, nullptr, &size);
    RegistryData data;
    while (result == ERROR_SUCCESS || result == ERROR_MORE_DATA) {
      data.Bytes.resize(size);
      result = RegQueryValueExW(section.Get(), name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.Bytes.data()),
                                &size);
      if (result == ERROR_SUCCESS) {
        data.Bytes.resize(size);
        data.Type = static_cast<ERegistryValueType>(type);
        return data;
      }
    }
    return std::nullopt;
  }

  bool SetValue(const RegistryKeyPath& Key, const std::string& Name, const RegistryData& Data) override {
    OpenHive hive(Key);
    OpenKey key;
    const std::wstring section = Wide(Key.Section);
    const std::wstring name = Wide(Name);
    return hive.Reachable() &&
           RegCreateKeyExW(hive.Root(), section.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr,
                           key.Receive(), nullptr) == ERROR_SUCCESS &&
           RegSetValueExW(key.Get(), name.c_str(), 0, static_cast<DWORD>(Data.Type),
                          reinterpret_cast<const BYTE*>(Data.Bytes.data()),
                          static_cast<DWORD>(Data.Bytes.size())) == ERROR_SUCCESS;
  }

  std::vector<std::string> EnumerateValues(const RegistryKeyPath& Key) override {
    return pEnumerate(Key, [](HKEY key, DWORD index, wchar_t* name, DWORD* length) {
      return RegEnumValueW(key, index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
  }

  std::vector<std::string> EnumerateSections(const RegistryKeyPath& Key) override {
    return pEnumerate(Key, [](HKEY key, DWORD index, wchar_t* name, DWORD* length) {
      return RegEnumKeyExW(key, index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
  }

 private:
  // Walks the names from index 0 until the platform reports no more; the buffer is sized from the
  // longest name the key reports.
  template <typename EnumerateOne>
  static std::vector<std::string> pEnumerate(const RegistryKeyPath& Key, EnumerateOne Enumerate) {
    std::vector<std::string> names;
    OpenSection section(Key, KEY_READ);
    DWORD longestKey = 0;
    DWORD longestValue = 0;
    if (!section.IsOpen() || RegQueryInfoKeyW(section.Get(), nullptr, nullptr, nullptr, nullptr, &longestKey, nullptr,
                                              nullptr, &longestValue, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
      return names;
    }
    std::wstring buffer((longestKey > longestValue ? longestKey : longestValue) + 1, L'\0');
    for (DWORD index = 0;; ++index) {
      DWORD length = static_cast<DWORD>(buffer.size());
      if (Enumerate(section.Get(), index, buffer.data(), &length) != ERROR_SUCCESS) {
        return names;
      }
      names.push_back(Narrow(buffer.data(), length));
    }
  }
};

}  // namespace

std::shared_ptr<cRegistryBackend> Win32RegistryBackend() {
  static const auto backend = std::make_shared<cRegistryBackendWin32>();
  return backend;
}

// A registry folder given for tests or portable use holds the settings instead of the registry, so that a
// test run never writes into the person's own settings or file associations.
std::shared_ptr<cRegistryBackend> DefaultRegistryBackend() {
  const char* folder = std::getenv("TARVELIN_REGISTRY_DIR");
  if (folder != nullptr && *folder != '\0') {
    static const auto hive = std::make_shared<cRegistryBackendHive>();
    return hive;
  }
  return Win32RegistryBackend();
}

}  // namespace tarvelin
