#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tarvelin {

// Writes a whole file so that the previous file is never destroyed: the bytes go to a temporary file in
// the same folder, which is flushed and renamed over the target only when complete. On any failure the
// temporary file is removed, the old file stays as it was, and a TarvelinError is raised with the
// runtime error number that fits the cause (61 disk full, 70 permission denied, 75 access, 76 path).
// Temporary files that interrupted saves of the same target left behind are removed on the way.
void WriteFileAtomically(const std::string& FileName, std::string_view Contents);

// Where the bytes of an atomic write go.
class FileSink {
 public:
  virtual ~FileSink() = default;
  // Writes all of Bytes, or raises the TarvelinError that fits the failure.
  virtual void Write(std::string_view Bytes) = 0;
};

// While set, every WriteFileAtomically writes through the sink that Wrapper makes around the temporary
// file's own sink, so that a test can make any file write fail after any number of bytes, in process.
// An empty function restores direct writing.
using FileSinkWrapper = std::function<std::unique_ptr<FileSink>(FileSink& TemporaryFile)>;
void SetFileSinkWrapper(FileSinkWrapper Wrapper);

// Reads a whole file as bytes, following links. Raises error 53 when it does not exist, 75 when it is not a
// regular file (a folder, a device, a pipe) or cannot be read, 7 when it does not fit in memory.
std::string ReadWholeFile(const std::string& FileName);

}  // namespace tarvelin
