#pragma once

#include <cstdint>

namespace tarvelin {

// Windows only: the runtime error number for a Win32 error code met while writing or reading a file
// (61 disk full, 70 permission denied, 76 path not found, 57 device I/O, 75 for anything else).
int32_t ErrorNumberForWin32Error(unsigned long SystemError);

}  // namespace tarvelin
