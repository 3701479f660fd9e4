#include "graphics/BmpWriter.h"

#include <cstdint>

#include "graphics/cDIBSection.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"

namespace tarvelin {

namespace {

constexpr uint32_t kFileHeaderSize = 14;
constexpr uint32_t kInfoHeaderSize = 40;

// Appends a little-endian field of the given byte width.
void Put(std::string& Out, uint32_t Value, int Bytes) {
  for (int i = 0; i < Bytes; ++i) {
    Out.push_back(static_cast<char>((Value >> (8 * i)) & 0xFF));
  }
}

}  // namespace

std::string EncodeBmp(const cDIBSection& Picture) {
  if (Picture.Width() == 0 || Picture.Height() == 0) {
    throw TarvelinError::RuntimeFault(ErrInvalidCall, "BmpWriter");
  }
  const uint32_t imageSize =
      static_cast<uint32_t>(Picture.BytesPerScanLine()) * static_cast<uint32_t>(Picture.Height());
  const uint32_t pixelOffset = kFileHeaderSize + kInfoHeaderSize;
  std::string file;
  file.reserve(pixelOffset + imageSize);
  file += "BM";
  Put(file, pixelOffset + imageSize, 4);  // file size
  Put(file, 0, 4);                        // two reserved words
  Put(file, pixelOffset, 4);
  Put(file, kInfoHeaderSize, 4);
  Put(file, static_cast<uint32_t>(Picture.Width()), 4);
  Put(file, static_cast<uint32_t>(Picture.Height()), 4);  // positive: rows bottom-up
  Put(file, 1, 2);                                        // planes
  Put(file, 24, 2);                                       // bits per pixel
  Put(file, 0, 4);                                        // uncompressed
  Put(file, imageSize, 4);
  Put(file, 0, 4);  // horizontal resolution not given
  Put(file, 0, 4);  // vertical resolution not given
  Put(file, 0, 4);  // no colour table
  Put(file, 0, 4);  // all colours important
  file.append(reinterpret_cast<const char*>(Picture.DIBSectionBitsPtr()), imageSize);
  return file;
}

void WriteBmpFile(const cDIBSection& Picture, const std::string& FileName) {
  WriteFileAtomically(FileName, EncodeBmp(Picture));
}

}  // namespace tarvelin
