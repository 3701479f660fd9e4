#pragma once

#include <string>

namespace tarvelin {

class cDIBSection;

// The picture as the bytes of a standard Windows bitmap file: a 14-byte file header, a 40-byte info header
// (24 bits per pixel, uncompressed, positive height) and the rows bottom-up exactly as the picture holds them.
// Raises error 5 for an empty picture, which no bitmap file can describe.
std::string EncodeBmp(const cDIBSection& Picture);

// Writes EncodeBmp's bytes to FileName, replacing an existing file only once the new one is complete. A file
// that cannot be written raises the file error (70 permission denied, 76 path not found, ...) and leaves any
// old file as it was.
void WriteBmpFile(const cDIBSection& Picture, const std::string& FileName);

}  // namespace tarvelin
