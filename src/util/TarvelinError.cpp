#include "util/TarvelinError.h"

#include <utility>

namespace tarvelin {

namespace {

std::string RuntimeFaultText(int32_t number) {
  switch (number) {
    case ErrInvalidCall:
      return "Invalid procedure call or argument";
    case ErrOverflow:
      return "Overflow";
    case ErrOutOfMemory:
      return "Out of memory";
    case ErrTypeMismatch:
      return "Type mismatch";
    case ErrFileNotFound:
      return "File not found";
    case ErrDeviceIO:
      return "Device I/O error";
    case ErrDiskFull:
      return "Disk full";
    case ErrPermissionDenied:
      return "Permission denied";
    case ErrPathNotFound:
      return "Path not found";
    case ErrInputPastEndOfFile:
      return "Input past end of file";
    case ErrPathFileAccess:
      return "Path/File access error";
    case ErrInvalidUseOfNull:
      return "Invalid use of Null";
    default:
      return "Application-defined or object-defined error";
  }
}

}  // namespace

TarvelinError::TarvelinError(int32_t number, std::string source, std::string description)
    : std::runtime_error(description),
      number_(number),
      source_(std::move(source)),
      description_(std::move(description)) {}

TarvelinError TarvelinError::RuntimeFault(int32_t number, std::string source) {
  return TarvelinError(number, std::move(source), RuntimeFaultText(number));
}

}  // namespace tarvelin
