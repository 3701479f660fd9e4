#include "startup/RegistryData.h"

#include <cstdio>

#include "startup/modUtf16.h"

namespace tarvelin {

std::string RegistryHiveName(ERegistryClassKey ClassKey) {
  switch (ClassKey) {
    case ERegistryClassKey::ClassesRoot:
      return "HKEY_CLASSES_ROOT";
    case ERegistryClassKey::CurrentUser:
      return "HKEY_CURRENT_USER";
    case ERegistryClassKey::LocalMachine:
      return "HKEY_LOCAL_MACHINE";
    case ERegistryClassKey::Users:
      return "HKEY_USERS";
  }
  char number[16];
  std::snprintf(number, sizeof number, "0x%08X", static_cast<unsigned>(ClassKey));
  return number;
}

RegistryData RegistryDataFromText(std::string_view Text, ERegistryValueType Type) {
  RegistryData data{Type, {}};
  for (const char16_t unit : Utf16FromUtf8(Text)) {
    data.Bytes += static_cast<char>(unit & 0xFF);
    data.Bytes += static_cast<char>(unit >> 8);
  }
  data.Bytes.append(2, '\0');
  return data;
}

RegistryData RegistryDataFromNumber(uint32_t Number) {
  RegistryData data{ERegistryValueType::DWord, {}};
  for (int shift = 0; shift < 32; shift += 8) {
    data.Bytes += static_cast<char>((Number >> shift) & 0xFF);
  }
  return data;
}

std::string TextFromRegistryBytes(std::string_view Bytes) {
  std::u16string units;
  for (size_t i = 0; i + 1 < Bytes.size(); i += 2) {
    const auto unit =
        static_cast<char16_t>(static_cast<unsigned char>(Bytes[i]) | (static_cast<unsigned char>(Bytes[i + 1]) << 8));
    if (unit == 0) {
      break;
    }
    units += unit;
  }
  return Utf8FromUtf16(units);
}

uint32_t NumberFromRegistryBytes(std::string_view Bytes, ERegistryValueType Type) {
  if (Bytes.size() != 4) {
    return 0;
  }
  uint32_t number = 0;
  for (size_t i = 0; i < 4; ++i) {
    const size_t position = Type == ERegistryValueType::DWordBigEndian ? i : 3 - i;
    number = (number << 8) | static_cast<unsigned char>(Bytes[position]);
  }
  return number;
}

}  // namespace tarvelin
