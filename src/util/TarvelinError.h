#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tarvelin {

// Numbered errors raised by objects are offset from this base, as in 0x80040000 + 1001.
inline constexpr int32_t ObjectErrorBase = static_cast<int32_t>(0x80040000u);

// Runtime faults keep the classic runtime error numbers.
inline constexpr int32_t ErrInvalidCall = 5;          // "Invalid procedure call or argument"
inline constexpr int32_t ErrOverflow = 6;             // "Overflow"
inline constexpr int32_t ErrOutOfMemory = 7;          // "Out of memory"
inline constexpr int32_t ErrTypeMismatch = 13;        // "Type mismatch"
inline constexpr int32_t ErrFileNotFound = 53;        // "File not found"
inline constexpr int32_t ErrDeviceIO = 57;            // "Device I/O error"
inline constexpr int32_t ErrDiskFull = 61;            // "Disk full"
inline constexpr int32_t ErrInputPastEndOfFile = 62;  // "Input past end of file"
inline constexpr int32_t ErrPermissionDenied = 70;    // "Permission denied"
inline constexpr int32_t ErrPathFileAccess = 75;      // "Path/File access error"
inline constexpr int32_t ErrPathNotFound = 76;        // "Path not found"
inline constexpr int32_t ErrInvalidUseOfNull = 94;    // "Invalid use of Null"

// The error every core class raises: a number, the object that raised it and a text for the person.
class TarvelinError : public std::runtime_error {
 public:
  TarvelinError(int32_t number, std::string source, std::string description);

  int32_t Number() const { return number_; }
  const std::string& Source() const { return source_; }
  const std::string& Description() const { return description_; }

  // A runtime fault with its classic number and text, e.g. RuntimeFault(ErrOverflow, "INIFile").
  static TarvelinError RuntimeFault(int32_t number, std::string source);

 private:
  int32_t number_;
  std::string source_;
  std::string description_;
};

}  // namespace tarvelin
