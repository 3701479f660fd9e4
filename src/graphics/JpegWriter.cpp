#include "graphics/JpegWriter.h"

#include <turbojpeg.h>

#include <memory>

#include "graphics/cDIBSection.h"
#include "util/AtomicFile.h"

namespace tarvelin {

namespace {

constexpr const char* kSource = "JpegWriter";
constexpr const char* kSaveFailed = "Failed to save to JPG ";

struct CompressorRelease {
  void operator()(void* Compressor) const { tjDestroy(Compressor); }
};
struct BufferRelease {
  void operator()(unsigned char* Buffer) const { tjFree(Buffer); }
};

}  // namespace

std::string EncodeJpeg(const cDIBSection& Picture, int32_t Quality) {
  if (Quality < 1 || Quality > 100) {
    throw TarvelinError::RuntimeFault(ErrInvalidCall, kSource);
  }
  const std::unique_ptr<void, CompressorRelease> compressor(tjInitCompress());
  if (!compressor) {
    throw TarvelinError(ErrJpegInitFailed, kSource,
                        std::string("Failed to initialise the IJL library: ") + tjGetErrorStr2(nullptr));
  }
  unsigned char* buffer = nullptr;
  unsigned long size = 0;
  // The rows go in as they lie in memory, bottom-up, so no copy of the picture is made.
  const int result = tjCompress2(compressor.get(), Picture.DIBSectionBitsPtr(), Picture.Width(),
                                 Picture.BytesPerScanLine(), Picture.Height(), TJPF_BGR, &buffer, &size, TJSAMP_444,
                                 Quality, TJFLAG_BOTTOMUP | TJFLAG_ACCURATEDCT);
  const std::unique_ptr<unsigned char, BufferRelease> encoded(buffer);
  if (result != 0) {
    throw TarvelinError(ErrJpegSaveFailed, kSource, kSaveFailed + std::string(tjGetErrorStr2(compressor.get())));
  }
  return std::string(reinterpret_cast<const char*>(encoded.get()), size);
}

void WriteJpegFile(const cDIBSection& Picture, const std::string& FileName, int32_t Quality) {
  const std::string encoded = EncodeJpeg(Picture, Quality);
  try {
    WriteFileAtomically(FileName, encoded);
  } catch (const TarvelinError& error) {
    throw TarvelinError(error.Number(), kSource, kSaveFailed + error.Description());
  }
}

}  // namespace tarvelin
