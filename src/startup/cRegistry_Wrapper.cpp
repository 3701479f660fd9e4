#include "startup/cRegistry_Wrapper.h"

#include <charconv>
#include <optional>

#include "startup/cRegistry.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

cRegistry RegistryFor(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                      ERegistryValueType ValueType) {
  cRegistry registry;
  registry.SetClassKey(ClassKey);
  registry.SetSectionKey(SectionKey);
  registry.SetValueKey(ValueKey);
  registry.SetValueType(ValueType);
  return registry;
}

// The stored value, or nothing when it is missing or the registry cannot be read.
std::optional<RegistryValue> StoredValue(ERegistryClassKey ClassKey, const std::string& SectionKey,
                                         const std::string& ValueKey, ERegistryValueType ValueType) {
  try {
    const RegistryValue value = RegistryFor(ClassKey, SectionKey, ValueKey, ValueType).Value();
    return std::holds_alternative<std::monostate>(value) ? std::nullopt : std::optional(value);
  } catch (const TarvelinError&) {
    return std::nullopt;
  }
}

std::optional<int32_t> StoredNumber(ERegistryClassKey ClassKey, const std::string& SectionKey,
                                    const std::string& ValueKey) {
  const auto value = StoredValue(ClassKey, SectionKey, ValueKey, ERegistryValueType::DWord);
  if (!value) {
    return std::nullopt;
  }
  if (const auto* number = std::get_if<int32_t>(&*value)) {
    return *number;
  }
  if (const auto* text = std::get_if<std::string>(&*value)) {
    const std::string digits = TrimBlanks(*text);
    int32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc() && end == digits.data() + digits.size()) {
      return number;
    }
  }
  return std::nullopt;
}

bool Write(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
           ERegistryValueType ValueType, const RegistryValue& Value) {
  try {
    RegistryFor(ClassKey, SectionKey, ValueKey, ValueType).SetValue(Value);
    return true;
  } catch (const TarvelinError&) {
    return false;
  }
}

}  // namespace

std::string GetRegistryText(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                            const std::string& Default) {
  const auto value = StoredValue(ClassKey, SectionKey, ValueKey, ERegistryValueType::String);
  if (value) {
    if (const auto* text = std::get_if<std::string>(&*value)) {
      return *text;
    }
    if (const auto* number = std::get_if<int32_t>(&*value)) {
      return std::to_string(*number);
    }
  }
  return Default;
}

bool SetRegistryText(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                     const std::string& Text) {
  return Write(ClassKey, SectionKey, ValueKey, ERegistryValueType::String, Text);
}

int32_t GetRegistryNumber(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                          int32_t Default) {
  return StoredNumber(ClassKey, SectionKey, ValueKey).value_or(Default);
}

bool SetRegistryNumber(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                       int32_t Number) {
  return Write(ClassKey, SectionKey, ValueKey, ERegistryValueType::DWord, Number);
}

bool GetRegistryBoolean(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                        bool Default) {
  const auto number = StoredNumber(ClassKey, SectionKey, ValueKey);
  return number ? *number != 0 : Default;
}

bool SetRegistryBoolean(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                        bool Value) {
  return Write(ClassKey, SectionKey, ValueKey, ERegistryValueType::DWord, Value ? -1 : 0);
}

bool DeleteRegistryKey(ERegistryClassKey ClassKey, const std::string& SectionKey) {
  try {
    return RegistryFor(ClassKey, SectionKey, {}, ERegistryValueType::String).DeleteKey();
  } catch (const TarvelinError&) {
    return false;
  }
}

bool RegistryKeyExists(ERegistryClassKey ClassKey, const std::string& SectionKey) {
  try {
    return RegistryFor(ClassKey, SectionKey, {}, ERegistryValueType::String).KeyExists();
  } catch (const TarvelinError&) {
    return false;
  }
}

}  // namespace tarvelin
