#include "graphics/cDIBSection.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <limits>
#include <new>
#include <random>

#include "graphics/ClipboardService.h"
#include "util/TarvelinError.h"

namespace tarvelin {

namespace {

constexpr const char* kSource = "cDIBSection";
constexpr int32_t kErrOutOfMemory = 7;

int64_t StrideFor(int64_t Width) {
  return (Width * 3 + 3) & ~int64_t{3};
}

// A rectangle copy between two images, cut down to the part that lies inside both.
struct BlitArea {
  int64_t SrcLeft, SrcTop, DestLeft, DestTop, Width, Height;
};

// Moves the area's start inwards until neither the source nor the destination start lies before 0.
void ClipLeading(int64_t& Src, int64_t& Dest, int64_t& Extent) {
  const int64_t shift = std::max({int64_t{0}, -Src, -Dest});
  Src += shift;
  Dest += shift;
  Extent -= shift;
}

void CopyArea(const cDIBSection& Source, cDIBSection& Destination, BlitArea Area, uint32_t Rop) {
  if (Rop != RopSrcCopy) {
    throw TarvelinError(ErrInvalidCall, kSource, "Only the copying raster operation (SRCCOPY) is supported.");
  }
  if (&Source == &Destination) {
    const cDIBSection copy = Source;
    CopyArea(copy, Destination, Area, Rop);
    return;
  }
  ClipLeading(Area.SrcLeft, Area.DestLeft, Area.Width);
  ClipLeading(Area.SrcTop, Area.DestTop, Area.Height);
  Area.Width = std::min({Area.Width, Source.Width() - Area.SrcLeft, Destination.Width() - Area.DestLeft});
  Area.Height = std::min({Area.Height, Source.Height() - Area.SrcTop, Destination.Height() - Area.DestTop});
  if (Area.Width <= 0 || Area.Height <= 0) {
    return;
  }
  for (int64_t row = 0; row < Area.Height; ++row) {
    const uint8_t* from = Source.ScanLine(static_cast<int32_t>(Area.SrcTop + row)) + Area.SrcLeft * 3;
    uint8_t* to = Destination.ScanLine(static_cast<int32_t>(Area.DestTop + row)) + Area.DestLeft * 3;
    std::memcpy(to, from, static_cast<size_t>(Area.Width * 3));
  }
}

// Where a destination pixel samples the source along one axis: two neighbours and the weight of the second.
struct Sample {
  int32_t First, Second;
  double Weight;
};

std::vector<Sample> SamplesAlong(int32_t SourceLength, int32_t DestinationLength) {
  std::vector<Sample> samples(static_cast<size_t>(DestinationLength));
  const double scale = static_cast<double>(SourceLength) / DestinationLength;
  for (int32_t d = 0; d < DestinationLength; ++d) {
    const double position = std::clamp((d + 0.5) * scale - 0.5, 0.0, SourceLength - 1.0);
    const auto first = static_cast<int32_t>(position);
    samples[static_cast<size_t>(d)] = {first, std::min(first + 1, SourceLength - 1), position - first};
  }
  return samples;
}

uint8_t Blend(uint8_t A, uint8_t B, uint8_t C, uint8_t D, double Across, double Down) {
  const double top = A + (B - A) * Across;
  const double bottom = C + (D - C) * Across;
  return static_cast<uint8_t>(top + (bottom - top) * Down + 0.5);
}

}  // namespace

void cDIBSection::Create(int32_t lWidth, int32_t lHeight) {
  ClearUp();
  if (lWidth < 0 || lHeight < 0) {
    throw TarvelinError::RuntimeFault(ErrInvalidCall, kSource);
  }
  const int64_t size = StrideFor(lWidth) * lHeight;
  if (size > std::numeric_limits<int32_t>::max()) {
    throw TarvelinError::RuntimeFault(ErrOverflow, kSource);
  }
  try {
    bits_.assign(static_cast<size_t>(size), 0);
  } catch (const std::bad_alloc&) {
    throw TarvelinError(kErrOutOfMemory, kSource, "Out of memory");
  }
  width_ = lWidth;
  height_ = lHeight;
}

void cDIBSection::CreateFromPicture(const uint8_t* Bits, int32_t lWidth, int32_t lHeight,
                                    std::ptrdiff_t lBytesPerLine) {
  const bool hasPixels = lWidth > 0 && lHeight > 0;
  if (hasPixels && (Bits == nullptr || lBytesPerLine < std::ptrdiff_t{4} * lWidth)) {
    throw TarvelinError::RuntimeFault(ErrInvalidCall, kSource);
  }
  Create(lWidth, lHeight);
  for (int32_t y = 0; y < height_; ++y) {
    const uint8_t* from = Bits + y * lBytesPerLine;
    uint8_t* to = ScanLine(y);
    for (int32_t x = 0; x < width_; ++x, from += 4, to += 3) {
      uint32_t argb = 0;
      std::memcpy(&argb, from, sizeof argb);
      to[0] = static_cast<uint8_t>(argb);
      to[1] = static_cast<uint8_t>(argb >> 8);
      to[2] = static_cast<uint8_t>(argb >> 16);
    }
  }
}

void cDIBSection::ClearUp() {
  bits_ = {};
  width_ = 0;
  height_ = 0;
}

int32_t cDIBSection::BytesPerScanLine() const {
  return static_cast<int32_t>(StrideFor(width_));
}

uint8_t* cDIBSection::ScanLine(int32_t lTop) {
  return bits_.data() + static_cast<size_t>(height_ - 1 - lTop) * static_cast<size_t>(BytesPerScanLine());
}

const uint8_t* cDIBSection::ScanLine(int32_t lTop) const {
  return bits_.data() + static_cast<size_t>(height_ - 1 - lTop) * static_cast<size_t>(BytesPerScanLine());
}

void cDIBSection::LoadPictureBlt(const cDIBSection& Source, int32_t lSrcLeft, int32_t lSrcTop, int32_t lSrcWidth,
                                 int32_t lSrcHeight, uint32_t eRop) {
  const int32_t width = lSrcWidth < 0 ? width_ : lSrcWidth;
  const int32_t height = lSrcHeight < 0 ? height_ : lSrcHeight;
  CopyArea(Source, *this, {lSrcLeft, lSrcTop, 0, 0, width, height}, eRop);
}

void cDIBSection::PaintPicture(cDIBSection& Destination, int32_t lDestLeft, int32_t lDestTop, int32_t lDestWidth,
                               int32_t lDestHeight, int32_t lSrcLeft, int32_t lSrcTop, uint32_t eRop) const {
  const int32_t width = lDestWidth < 0 ? width_ : lDestWidth;
  const int32_t height = lDestHeight < 0 ? height_ : lDestHeight;
  CopyArea(*this, Destination, {lSrcLeft, lSrcTop, lDestLeft, lDestTop, width, height}, eRop);
}

std::optional<std::string> cDIBSection::CopyToClipboard(ClipboardService& Clipboard, bool bAsDIB) const {
  if (bAsDIB) {
    return "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!";
  }
  Clipboard.SetImage(*this);
  return std::nullopt;
}

void cDIBSection::RandomiseBits(bool bGray) {
  std::mt19937 engine(static_cast<uint32_t>(std::chrono::system_clock::now().time_since_epoch().count()));
  // A uniform r in [0, 1) scaled by 255 and truncated, done in integers.
  const auto randomByte = [&engine] { return static_cast<uint8_t>((uint64_t{engine()} * 255) >> 32); };
  for (int32_t y = 0; y < height_; ++y) {
    uint8_t* pixel = ScanLine(y);
    for (int32_t x = 0; x < width_; ++x, pixel += 3) {
      if (bGray) {
        pixel[0] = pixel[1] = pixel[2] = randomByte();
      } else {
        pixel[0] = randomByte();
        pixel[1] = randomByte();
        pixel[2] = randomByte();
      }
    }
  }
}

cDIBSection cDIBSection::Resample(int32_t lNewHeight, int32_t lNewWidth) const {
  cDIBSection result;
  result.Create(lNewWidth, lNewHeight);
  if (width_ == 0 || height_ == 0) {
    return result;
  }
  const std::vector<Sample> across = SamplesAlong(width_, lNewWidth);
  const std::vector<Sample> down = SamplesAlong(height_, lNewHeight);
  for (int32_t y = 0; y < lNewHeight; ++y) {
    const Sample& row = down[static_cast<size_t>(y)];
    const uint8_t* upper = ScanLine(row.First);
    const uint8_t* lower = ScanLine(row.Second);
    uint8_t* to = result.ScanLine(y);
    for (const Sample& column : across) {
      const int32_t left = column.First * 3;
      const int32_t right = column.Second * 3;
      for (int32_t channel = 0; channel < 3; ++channel, ++to) {
        *to = Blend(upper[left + channel], upper[right + channel], lower[left + channel], lower[right + channel],
                    column.Weight, row.Weight);
      }
    }
  }
  return result;
}

}  // namespace tarvelin
