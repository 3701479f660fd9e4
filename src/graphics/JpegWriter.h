#pragma once

#include <cstdint>
#include <string>

#include "util/TarvelinError.h"

namespace tarvelin {

class cDIBSection;

// Numbers of the errors the JPEG writer raises itself; their descriptions end with the encoder's reason.
inline constexpr int32_t ErrJpegInitFailed = ObjectErrorBase + 1101;
inline constexpr int32_t ErrJpegSaveFailed = ObjectErrorBase + 1102;

// The picture as the bytes of a baseline JPEG file: YCbCr without chroma subsampling, accurate DCT,
// Quality from 1 to 100 (the program uses 100). Raises error 5 for a quality outside that range,
// ErrJpegInitFailed ("Failed to initialise the IJL library: " and the reason) when no encoder can be made and
// ErrJpegSaveFailed ("Failed to save to JPG " and the reason) when encoding fails, as for an empty picture.
std::string EncodeJpeg(const cDIBSection& Picture, int32_t Quality);

// Encodes the picture and writes it to FileName, replacing an existing file only once the new one is
// complete. Raises the errors of EncodeJpeg; a file that cannot be written raises "Failed to save to JPG "
// and the reason, under the file error's own number (70 permission denied, 76 path not found, ...), and
// leaves any old file as it was.
void WriteJpegFile(const cDIBSection& Picture, const std::string& FileName, int32_t Quality);

}  // namespace tarvelin
