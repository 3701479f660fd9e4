#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvelin {

// The root hives, with the platform's predefined handle values.
enum class ERegistryClassKey : uint32_t {
  ClassesRoot = 0x80000000u,
  CurrentUser = 0x80000001u,
  LocalMachine = 0x80000002u,
  Users = 0x80000003u,
};

// The platform's value types; any other number is carried as it is.
enum class ERegistryValueType : uint32_t {
  None = 0,
  String = 1,
  ExpandString = 2,
  Binary = 3,
  DWord = 4,
  DWordBigEndian = 5,
  Link = 6,
  MultiString = 7,
};

// The hive as the .reg format and the error messages name it ("HKEY_CURRENT_USER"); a hive without a
// name is shown as its number in hex.
std::string RegistryHiveName(ERegistryClassKey ClassKey);

// One stored value in the platform's own layout: texts as UTF-16LE closed by a NUL, double-words as four
// little-endian bytes, anything else as the bytes given.
struct RegistryData {
  ERegistryValueType Type = ERegistryValueType::None;
  std::string Bytes;

  bool operator==(const RegistryData&) const = default;
};

RegistryData RegistryDataFromText(std::string_view Text, ERegistryValueType Type = ERegistryValueType::String);
RegistryData RegistryDataFromNumber(uint32_t Number);

// The text of stored string bytes, up to the first NUL; an odd trailing byte is ignored.
std::string TextFromRegistryBytes(std::string_view Bytes);

// The number held by four stored bytes, little-endian or, for DWordBigEndian, big-endian; 0 for any other
// length.
uint32_t NumberFromRegistryBytes(std::string_view Bytes, ERegistryValueType Type = ERegistryValueType::DWord);

}  // namespace tarvelin
