#pragma once

#include <string>
#include <string_view>

namespace tarvelin {

// Writes a whole file so that the previous file is never destroyed: the bytes go to a temporary file in
// the same folder, which is flushed and renamed over the target only when complete. On any failure the
// temporary file is removed, the old file stays as it was, and a TarvelinError is raised with the
// runtime error number that fits the cause (61 disk full, 70 permission denied, 75 access, 76 path).
void WriteFileAtomically(const std::string& FileName, std::string_view Contents);

// Reads a whole file as bytes, following links. Raises error 53 when it does not exist, 75 when it is not a
// regular file (a folder, a device, a pipe) or cannot be read.
std::string ReadWholeFile(const std::string& FileName);

}  // namespace tarvelin
