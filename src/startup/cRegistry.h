#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "startup/RegistryData.h"
#include "startup/cRegistryBackend.h"
#include "util/TarvelinError.h"

namespace tarvelin {

// A value as cRegistry reads and writes it: nothing (a Default left unset), a text (string and
// expandable string values), a number (double-word values) or bytes (binary and every other type).
using RegistryValue = std::variant<std::monostate, std::string, int32_t, std::vector<uint8_t>>;

// Raised for every failed platform operation, with the source ProductName + ".cRegistry".
inline constexpr int32_t ErrRegistry = 26001;
// Raised when a value of the wrong kind is written for the ValueType (e.g. bytes as a double-word).
inline constexpr int32_t ErrRegistryValueKind = ObjectErrorBase + 1048 + ErrRegistry;

// A small object over the registry: set the hive, key and value through the properties, then read,
// write, test, enumerate or delete. Failed operations raise TarvelinError ErrRegistry; the tests
// (KeyExists, ValueExists) and reads (a missing value gives Default) do not.
class cRegistry final {
 public:
  explicit cRegistry(std::shared_ptr<cRegistryBackend> Backend = DefaultRegistryBackend());

  // The computer whose registry is used; empty = this one. Hive files serve this computer only, so there
  // any other name is refused with ErrRegistry.
  const std::string& Machine() const { return machine_; }
  void SetMachine(std::string Machine) { machine_ = std::move(Machine); }
  ERegistryClassKey ClassKey() const { return classKey_; }
  void SetClassKey(ERegistryClassKey ClassKey) { classKey_ = ClassKey; }
  // Key path below the hive, parts separated by "\".
  const std::string& SectionKey() const { return sectionKey_; }
  void SetSectionKey(std::string SectionKey) { sectionKey_ = std::move(SectionKey); }
  // Value name; empty = the key's default value.
  const std::string& ValueKey() const { return valueKey_; }
  void SetValueKey(std::string ValueKey) { valueKey_ = std::move(ValueKey); }
  ERegistryValueType ValueType() const { return valueType_; }
  void SetValueType(ERegistryValueType ValueType) { valueType_ = ValueType; }
  const RegistryValue& Default() const { return default_; }
  void SetDefault(RegistryValue Default) { default_ = std::move(Default); }

  // The stored value, or Default when it does not exist (reading never creates it). Expandable strings
  // come back with their %NAME% references replaced from the environment.
  RegistryValue Value() const;
  // Creates the key as needed and stores the value with ValueType; a String holding "%" is stored as an
  // ExpandString. Texts take String and ExpandString types (numbers are written as decimal text), numbers
  // DWord, bytes Binary; anything else raises ErrRegistryValueKind.
  void SetValue(const RegistryValue& NewValue);
  // As Value and SetValue, addressed by the arguments instead of the properties (Machine still applies).
  RegistryValue ValueEx(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                        ERegistryValueType ValueType, const RegistryValue& Default) const;
  void SetValueEx(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                  ERegistryValueType ValueType, const RegistryValue& NewValue);

  bool KeyExists() const;
  bool ValueExists() const;
  // Creates SectionKey and its missing parents.
  bool CreateKey();
  // Deletes SectionKey with its values. A key that still has sub-keys is not deleted: the call raises
  // ErrRegistry and the key stays whole. This is what the platform's own deletion does, and it keeps a
  // clean-up of a shared parent key (the vendor's) from taking other programs' settings with it.
  bool DeleteKey();
  bool DeleteValue();
  std::vector<std::string> EnumerateValues() const;
  std::vector<std::string> EnumerateSections() const;

  // Registers a file type under the hive's SOFTWARE\Classes: the extension, the class with its
  // description, the open verb and optionally the print and new verbs, and the icon when DefaultIcon > -1.
  // Empty texts take "&Open", "&Print" and "&New". The program path is trimmed and put in double quotes
  // where it lacks them.
  void CreateEXEAssociation(const std::string& ProgramPath, const std::string& ClassName,
                            const std::string& ClassDescription, const std::string& Extension,
                            const std::string& OpenMenuText = {}, bool SupportPrint = false,
                            const std::string& PrintMenuText = {}, bool SupportNew = false,
                            const std::string& NewMenuText = {}, int32_t DefaultIcon = -1);
  // Adds a verb per name, menu text and command triple to the class of the last CreateEXEAssociation.
  // Raises ErrInvalidCall before any class is registered and for a list that is not made of triples.
  void CreateAdditionalEXEAssociations(const std::vector<std::string>& NameTextCommandTriples);

 private:
  struct Address {
    ERegistryClassKey ClassKey;
    std::string SectionKey;
    std::string ValueKey;
    ERegistryValueType ValueType;
  };

  Address pAddress() const { return {classKey_, sectionKey_, valueKey_, valueType_}; }
  RegistryKeyPath pKeyPath(ERegistryClassKey ClassKey, const std::string& SectionKey) const;
  RegistryValue pRead(const Address& Where, const RegistryValue& Default) const;
  void pWrite(const Address& Where, const RegistryValue& NewValue);
  void pSetDefaultText(const std::string& SectionKey, const std::string& Text);
  [[noreturn]] void pRaise(const std::string& Description) const;

  std::shared_ptr<cRegistryBackend> backend_;
  std::string machine_;
  ERegistryClassKey classKey_ = ERegistryClassKey::CurrentUser;
  std::string sectionKey_;
  std::string valueKey_;
  ERegistryValueType valueType_ = ERegistryValueType::String;
  RegistryValue default_;
  std::string associatedClass_;  // set by CreateEXEAssociation
};

}  // namespace tarvelin
