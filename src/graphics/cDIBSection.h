#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvelin {

class ClipboardService;

// The raster operation that copies source pixels unchanged: the only one the blits carry out.
inline constexpr uint32_t RopSrcCopy = 0x00CC0020;

// An off-screen 24-bit picture laid out as a device-independent bitmap, so that its bytes can go to a file or
// an encoder as they are: blue, green, red per pixel, rows stored bottom-up (the first row in memory is the
// picture's bottom row), each row padded to a multiple of 4 bytes. Coordinates in the blits count from the
// top-left pixel, as on screen. Black when created.
class cDIBSection {
 public:
  // Discards any present image and makes a black one. A width or height of 0 gives an empty image.
  // Raises error 5 for a negative size and error 6 when the pixel data would not fit in 2 GB.
  void Create(int32_t lWidth, int32_t lHeight);

  // Makes the image from a 32-bit picture: rows top-down, each pixel a native-endian 0xAARRGGBB word whose
  // alpha is ignored, lBytesPerLine bytes from the start of one row to the next. A captured QImage in
  // Format_RGB32 or Format_ARGB32 is handed over as constBits(), width(), height() and bytesPerLine().
  // Raises error 5 when the rows are shorter than the width or the pixels are missing.
  void CreateFromPicture(const uint8_t* Bits, int32_t lWidth, int32_t lHeight, std::ptrdiff_t lBytesPerLine);

  // Back to the empty state: no pixels, size 0 x 0.
  void ClearUp();

  int32_t Width() const { return width_; }
  int32_t Height() const { return height_; }
  // Row stride in bytes: 3 bytes per pixel rounded up to a multiple of 4.
  int32_t BytesPerScanLine() const;
  // First byte of the bottom row; null when the image is empty.
  uint8_t* DIBSectionBitsPtr() { return bits_.empty() ? nullptr : bits_.data(); }
  const uint8_t* DIBSectionBitsPtr() const { return bits_.empty() ? nullptr : bits_.data(); }
  // First byte of the row lTop pixels down from the top (0 <= lTop < Height()).
  uint8_t* ScanLine(int32_t lTop);
  const uint8_t* ScanLine(int32_t lTop) const;

  // Copies from Source at (lSrcLeft, lSrcTop) into this image at (0, 0); a negative width or height means
  // this image's own. Only the part inside both images is copied. Raises error 5 for a raster operation
  // other than RopSrcCopy.
  void LoadPictureBlt(const cDIBSection& Source, int32_t lSrcLeft, int32_t lSrcTop, int32_t lSrcWidth = -1,
                      int32_t lSrcHeight = -1, uint32_t eRop = RopSrcCopy);
  // Copies from this image at (lSrcLeft, lSrcTop) into Destination at (lDestLeft, lDestTop); a negative width
  // or height means this image's own. Clipping and raster operations as for LoadPictureBlt.
  void PaintPicture(cDIBSection& Destination, int32_t lDestLeft = 0, int32_t lDestTop = 0, int32_t lDestWidth = -1,
                    int32_t lDestHeight = -1, int32_t lSrcLeft = 0, int32_t lSrcTop = 0,
                    uint32_t eRop = RopSrcCopy) const;

  // Puts the image on the clipboard as a bitmap. With bAsDIB nothing is copied and the explanation for the
  // person is returned: the device-independent clipboard format is deliberately not offered.
  std::optional<std::string> CopyToClipboard(ClipboardService& Clipboard, bool bAsDIB = false) const;

  // Fills every pixel with noise from a generator seeded by the clock: one value for all three bytes with
  // bGray, three independent values without. Values run from 0 to 254; padding bytes are left alone.
  void RandomiseBits(bool bGray = false);

  // A bilinear copy of the whole image scaled to the new size (pixel centres mapped onto pixel centres).
  // Raises error 5 for a negative size.
  cDIBSection Resample(int32_t lNewHeight, int32_t lNewWidth) const;

 private:
  int32_t width_ = 0;
  int32_t height_ = 0;
  std::vector<uint8_t> bits_;
};

}  // namespace tarvelin
