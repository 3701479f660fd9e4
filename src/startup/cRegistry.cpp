#include "startup/cRegistry.h"

#include <cstdio>
#include <cstdlib>
#include <optional>

#include "startup/modStartup.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

constexpr std::string_view ClassesKey = "SOFTWARE\\Classes\\";

std::string ErrorSource() {
  return Program().ProductName + ".cRegistry";
}

// Replaces every %NAME% with the environment variable NAME. A reference to a variable that is not set
// stays as written, and its closing "%" may open the next reference, as the platform's expansion does.
std::string ExpandEnvironmentText(std::string_view Text) {
  std::string result;
  size_t position = 0;
  while (position < Text.size()) {
    const size_t open = Text.find('%', position);
    const size_t close = open == std::string_view::npos ? open : Text.find('%', open + 1);
    if (close == std::string_view::npos) {
      result += Text.substr(position);
      break;
    }
    result += Text.substr(position, open - position);
    const std::string name(Text.substr(open + 1, close - open - 1));
    const char* value = name.empty() ? nullptr : std::getenv(name.c_str());
    if (value != nullptr) {
      result += value;
      position = close + 1;
    } else {
      result += Text.substr(open, close - open);
      position = close;
    }
  }
  return result;
}

std::string KindName(const RegistryValue& Value) {
  constexpr const char* Names[] = {"an empty value", "a text", "a number", "a byte array"};
  return Names[Value.index()];
}

// The value as the failure messages show it; bytes as hex pairs.
std::string DisplayText(const RegistryValue& Value) {
  if (const auto* text = std::get_if<std::string>(&Value)) {
    return *text;
  }
  if (const auto* number = std::get_if<int32_t>(&Value)) {
    return std::to_string(*number);
  }
  std::string result;
  if (const auto* bytes = std::get_if<std::vector<uint8_t>>(&Value)) {
    for (const uint8_t byte : *bytes) {
      char pair[4];
      std::snprintf(pair, sizeof pair, "%02X", static_cast<unsigned>(byte));
      result += (result.empty() ? "" : " ") + std::string(pair);
    }
  }
  return result;
}

// The stored form of a value written with a type; nothing when the value's kind does not fit the type.
std::optional<RegistryData> Encode(ERegistryValueType Type, const RegistryValue& Value) {
  if (Type == ERegistryValueType::String || Type == ERegistryValueType::ExpandString) {
    const auto* text = std::get_if<std::string>(&Value);
    const auto* number = std::get_if<int32_t>(&Value);
    if (text == nullptr && number == nullptr) {
      return std::nullopt;
    }
    const std::string written = text != nullptr ? *text : std::to_string(*number);
    const bool expandable = Type == ERegistryValueType::ExpandString || written.find('%') != std::string::npos;
    return RegistryDataFromText(written, expandable ? ERegistryValueType::ExpandString : ERegistryValueType::String);
  }
  if (const auto* number = std::get_if<int32_t>(&Value); number != nullptr && Type == ERegistryValueType::DWord) {
    return RegistryDataFromNumber(static_cast<uint32_t>(*number));
  }
  if (const auto* bytes = std::get_if<std::vector<uint8_t>>(&Value);
      bytes != nullptr && Type == ERegistryValueType::Binary) {
    return RegistryData{Type, std::string(bytes->begin(), bytes->end())};
  }
  return std::nullopt;
}

RegistryValue Decode(const RegistryData& Data) {
  switch (Data.Type) {
    case ERegistryValueType::String:
      return TextFromRegistryBytes(Data.Bytes);
    case ERegistryValueType::ExpandString:
      return ExpandEnvironmentText(TextFromRegistryBytes(Data.Bytes));
    case ERegistryValueType::DWord:
    case ERegistryValueType::DWordBigEndian:
      if (Data.Bytes.size() == 4) {
        return static_cast<int32_t>(NumberFromRegistryBytes(Data.Bytes, Data.Type));
      }
      break;
    default:
      break;
  }
  return std::vector<uint8_t>(Data.Bytes.begin(), Data.Bytes.end());
}

// Trimmed, with a double quote put in front and behind where there is none.
std::string QuotedProgramPath(std::string_view ProgramPath) {
  std::string path = TrimBlanks(ProgramPath);
  if (!path.starts_with('"')) {
    path.insert(0, 1, '"');
  }
  if (!path.ends_with('"')) {
    path += '"';
  }
  return path;
}

}  // namespace

cRegistry::cRegistry(std::shared_ptr<cRegistryBackend> Backend) : backend_(std::move(Backend)) {}

RegistryValue cRegistry::Value() const {
  return pRead(pAddress(), default_);
}

void cRegistry::SetValue(const RegistryValue& NewValue) {
  pWrite(pAddress(), NewValue);
}

RegistryValue cRegistry::ValueEx(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                                 ERegistryValueType ValueType, const RegistryValue& Default) const {
  return pRead({ClassKey, SectionKey, ValueKey, ValueType}, Default);
}

void cRegistry::SetValueEx(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                           ERegistryValueType ValueType, const RegistryValue& NewValue) {
  pWrite({ClassKey, SectionKey, ValueKey, ValueType}, NewValue);
}

bool cRegistry::KeyExists() const {
  return backend_->KeyExists(pKeyPath(classKey_, sectionKey_));
}

bool cRegistry::ValueExists() const {
  return backend_->QueryValue(pKeyPath(classKey_, sectionKey_), valueKey_).has_value();
}

bool cRegistry::CreateKey() {
  if (!backend_->CreateKey(pKeyPath(classKey_, sectionKey_))) {
    pRaise("Failed to create registry Key: '" + sectionKey_ + "'");
  }
  return true;
}

bool cRegistry::DeleteKey() {
  const RegistryKeyPath key = pKeyPath(classKey_, sectionKey_);
  if (TrimBlanks(sectionKey_).empty() || !backend_->DeleteKey(key)) {
    pRaise("Failed to delete registry Key: '" + RegistryHiveName(classKey_) + "',Section: '" + sectionKey_ + "'");
  }
  return true;
}

bool cRegistry::DeleteValue() {
  const std::string where = "'" + RegistryHiveName(classKey_) + "',Section: '" + sectionKey_ + "'";
  switch (backend_->DeleteValue(pKeyPath(classKey_, sectionKey_), valueKey_)) {
    case RegistryDeleteResult::Deleted:
      return true;
    case RegistryDeleteResult::KeyNotOpened:
      pRaise("Failed to open key " + where + " for delete access");
    case RegistryDeleteResult::ValueNotDeleted:
      break;
  }
  pRaise("Failed to delete registry Key: " + where + ",Key: '" + valueKey_ + "'");
}

std::vector<std::string> cRegistry::EnumerateValues() const {
  return backend_->EnumerateValues(pKeyPath(classKey_, sectionKey_));
}

std::vector<std::string> cRegistry::EnumerateSections() const {
  return backend_->EnumerateSections(pKeyPath(classKey_, sectionKey_));
}

void cRegistry::CreateEXEAssociation(const std::string& ProgramPath, const std::string& ClassName,
                                     const std::string& ClassDescription, const std::string& Extension,
                                     const std::string& OpenMenuText, bool SupportPrint,
                                     const std::string& PrintMenuText, bool SupportNew, const std::string& NewMenuText,
                                     int32_t DefaultIcon) {
  const std::string path = QuotedProgramPath(ProgramPath);
  const std::string classKey = std::string(ClassesKey) + ClassName;
  pSetDefaultText(std::string(ClassesKey) + "." + Extension, ClassName);
  pSetDefaultText(classKey, ClassDescription);
  pSetDefaultText(classKey + "\\shell\\open", OpenMenuText.empty() ? "&Open" : OpenMenuText);
  pSetDefaultText(classKey + "\\shell\\open\\command", path + " \"%1\"");
  if (SupportPrint) {
    pSetDefaultText(classKey + "\\shell\\print", PrintMenuText.empty() ? "&Print" : PrintMenuText);
    pSetDefaultText(classKey + "\\shell\\print\\command", path + " /p \"%1\"");
  }
  if (SupportNew) {
    pSetDefaultText(classKey + "\\shell\\new", NewMenuText.empty() ? "&New" : NewMenuText);
    pSetDefaultText(classKey + "\\shell\\new\\command", path + " /n \"%1\"");
  }
  if (DefaultIcon > -1) {
    pSetDefaultText(classKey + "\\DefaultIcon", path + "," + std::to_string(DefaultIcon));
  }
  associatedClass_ = ClassName;
}

void cRegistry::CreateAdditionalEXEAssociations(const std::vector<std::string>& NameTextCommandTriples) {
  if (NameTextCommandTriples.size() % 3 != 0) {
    throw TarvelinError(ErrInvalidCall, ErrorSource(),
                        "Invalid parameter list passed to CreateAdditionalEXEAssociations - expected "
                        "Name/Text/Command");
  }
  if (associatedClass_.empty()) {
    throw TarvelinError(ErrInvalidCall, ErrorSource(),
                        "Error - attempt to create additional associations before class defined.");
  }
  const std::string shellKey = std::string(ClassesKey) + associatedClass_ + "\\shell\\";
  for (size_t i = 0; i < NameTextCommandTriples.size(); i += 3) {
    const std::string verbKey = shellKey + NameTextCommandTriples[i];
    pSetDefaultText(verbKey, NameTextCommandTriples[i + 1]);
    pSetDefaultText(verbKey + "\\command", NameTextCommandTriples[i + 2]);
  }
}

RegistryKeyPath cRegistry::pKeyPath(ERegistryClassKey ClassKey, const std::string& SectionKey) const {
  if (!machine_.empty() && !backend_->SupportsRemoteMachines()) {
    pRaise("Failed to reach the registry of Machine: '" + machine_ +
           "': only this computer's registry is available on this platform");
  }
  return {machine_, ClassKey, SectionKey};
}

RegistryValue cRegistry::pRead(const Address& Where, const RegistryValue& Default) const {
  const auto data = backend_->QueryValue(pKeyPath(Where.ClassKey, Where.SectionKey), Where.ValueKey);
  return data ? Decode(*data) : Default;
}

void cRegistry::pWrite(const Address& Where, const RegistryValue& NewValue) {
  const RegistryKeyPath key = pKeyPath(Where.ClassKey, Where.SectionKey);
  const auto data = Encode(Where.ValueType, NewValue);
  if (!data) {
    throw TarvelinError(ErrRegistryValueKind, ErrorSource(),
                        "Cannot write " + KindName(NewValue) + " as a registry value of type " +
                            std::to_string(static_cast<uint32_t>(Where.ValueType)));
  }
  if (!backend_->SetValue(key, Where.ValueKey, *data)) {
    pRaise("Failed to set registry value Key: '" + RegistryHiveName(Where.ClassKey) + "',Section: '" +
           Where.SectionKey + "',Key: '" + Where.ValueKey + "' to value: '" + DisplayText(NewValue) + "'");
  }
}

void cRegistry::pSetDefaultText(const std::string& SectionKey, const std::string& Text) {
  pWrite({classKey_, SectionKey, std::string(), ERegistryValueType::String}, Text);
}

void cRegistry::pRaise(const std::string& Description) const {
  throw TarvelinError(ErrRegistry, ErrorSource(), Description);
}

}  // namespace tarvelin
