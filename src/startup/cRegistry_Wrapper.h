#pragma once

#include <cstdint>
#include <string>

#include "startup/RegistryData.h"

namespace tarvelin {

// One-call helpers over cRegistry for the program's settings: each makes a fresh cRegistry, performs one
// operation and lets it go. Settings problems must never stop the program, so these never raise: a read
// that fails gives its default, and a failed write or deletion answers false.

// A text value; a stored number reads as its decimal text.
std::string GetRegistryText(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                            const std::string& Default);
bool SetRegistryText(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                     const std::string& Text);

// A double-word value; a stored text holding a whole number (a hand edit) reads as that number.
int32_t GetRegistryNumber(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                          int32_t Default);
bool SetRegistryNumber(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                       int32_t Number);

// A double-word value read as true when non-zero; written as -1 (true) or 0.
bool GetRegistryBoolean(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                        bool Default);
bool SetRegistryBoolean(ERegistryClassKey ClassKey, const std::string& SectionKey, const std::string& ValueKey,
                        bool Value);

// False when the key is missing, still has sub-keys or cannot be deleted.
bool DeleteRegistryKey(ERegistryClassKey ClassKey, const std::string& SectionKey);
bool RegistryKeyExists(ERegistryClassKey ClassKey, const std::string& SectionKey);

}  // namespace tarvelin
