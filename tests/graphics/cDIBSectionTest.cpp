#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "graphics/ClipboardService.h"
#include "graphics/PictureTestHelpers.h"
#include "graphics/cDIBSection.h"
#include "support/RaisedErrors.h"

namespace tarvelin {
namespace {

using testing::ErrorNumberOf;
using testing::PatternPicture;
using testing::PixelAt;
using testing::SetPixel;

bool SamePixels(const cDIBSection& A, const cDIBSection& B) {
  const size_t size = static_cast<size_t>(A.BytesPerScanLine()) * static_cast<size_t>(A.Height());
  return A.Width() == B.Width() && A.Height() == B.Height() &&
         std::memcmp(A.DIBSectionBitsPtr(), B.DIBSectionBitsPtr(), size) == 0;
}

TEST(cDIBSectionCreateFromPicture, TurnsTopDownWordsIntoBottomUpBlueGreenRedRows) {
  for (const int32_t width : {1, 3, 5}) {
    const std::ptrdiff_t bytesPerLine = width * 4 + 8;  // rows with slack, as image libraries may have
    std::vector<uint8_t> source(static_cast<size_t>(bytesPerLine * 2), 0xEE);
    for (int32_t y = 0; y < 2; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        const uint32_t argb = 0xFF0080C0u | static_cast<uint32_t>(0x10 * y + x) << 16;
        std::memcpy(source.data() + y * bytesPerLine + x * 4, &argb, 4);
      }
    }
    cDIBSection picture;
    picture.CreateFromPicture(source.data(), width, 2, bytesPerLine);
    const uint8_t* bits = picture.DIBSectionBitsPtr();
    EXPECT_EQ(bits[0] << 16 | bits[1] << 8 | bits[2], 0xC08010) << "bottom row first, blue first; width " << width;
    EXPECT_EQ(PixelAt(picture, width - 1, 0), 0xC08000u | static_cast<uint32_t>(width - 1));
    for (int32_t pad = width * 3; pad < picture.BytesPerScanLine(); ++pad) {
      EXPECT_EQ(bits[pad] | bits[picture.BytesPerScanLine() + pad], 0) << "padding of width " << width;
    }
  }
}

TEST(cDIBSectionCreate, RefusesImpossibleSizesAndStartsBlack) {
  cDIBSection picture;
  const uint8_t pixel[4] = {};
  EXPECT_EQ(ErrorNumberOf([&] { picture.Create(-1, 4); }), ErrInvalidCall);
  EXPECT_EQ(ErrorNumberOf([&] { picture.Create(1 << 28, 4); }), ErrOverflow);
  EXPECT_EQ(ErrorNumberOf([&] { picture.CreateFromPicture(pixel, 2, 1, 4); }), ErrInvalidCall);
  EXPECT_EQ(ErrorNumberOf([&] { picture.CreateFromPicture(nullptr, 1, 1, 4); }), ErrInvalidCall);
  picture = PatternPicture(3, 3);
  picture.Create(3, 3);
  cDIBSection black;
  black.Create(3, 3);
  EXPECT_TRUE(SamePixels(picture, black)) << "a new image starts black";
}

// A copy from a 3 x 3 pattern into a black 4 x 4 picture; a negative size means the picture's own, which is
// the source's for PaintPicture and the target's for LoadPictureBlt.
struct BlitCase {
  bool Load;
  int32_t DestLeft, DestTop, Width, Height, SrcLeft, SrcTop;
};

uint32_t ExpectedAfterBlit(const cDIBSection& Source, const BlitCase& c, int32_t X, int32_t Y) {
  const int32_t own = c.Load ? 4 : 3;
  const int32_t dx = X - c.DestLeft;
  const int32_t dy = Y - c.DestTop;
  const int32_t sx = c.SrcLeft + dx;
  const int32_t sy = c.SrcTop + dy;
  const bool copied = dx >= 0 && dy >= 0 && dx < (c.Width < 0 ? own : c.Width) &&
                      dy < (c.Height < 0 ? own : c.Height) && sx >= 0 && sy >= 0 && sx < 3 && sy < 3;
  return copied ? PixelAt(Source, sx, sy) : 0;
}

TEST(cDIBSectionBlit, CopiesTheAreaInsideBothPicturesAndNegativeSizesMeanTheirOwn) {
  const cDIBSection source = PatternPicture(3, 3);
  const BlitCase cases[] = {{false, 0, 0, -1, -1, 0, 0}, {false, 2, 1, 5, 5, 0, 0},   {false, -1, -2, 5, 5, 0, 0},
                            {false, 1, 0, 5, 5, 1, 2},   {false, 0, 1, 2, 1, 1, 1},   {true, 0, 0, -1, -1, 1, 2},
                            {true, 0, 0, 1, 2, 1, 0},    {true, 0, 0, -1, -1, -1, -1}};
  for (const BlitCase& c : cases) {
    cDIBSection target;
    target.Create(4, 4);
    if (c.Load) {
      target.LoadPictureBlt(source, c.SrcLeft, c.SrcTop, c.Width, c.Height);
    } else {
      source.PaintPicture(target, c.DestLeft, c.DestTop, c.Width, c.Height, c.SrcLeft, c.SrcTop);
    }
    for (int32_t y = 0; y < 4; ++y) {
      for (int32_t x = 0; x < 4; ++x) {
        EXPECT_EQ(PixelAt(target, x, y), ExpectedAfterBlit(source, c, x, y))
            << (c.Load ? "load" : "paint") << " to " << c.DestLeft << "," << c.DestTop << " at " << x << "," << y;
      }
    }
  }
  constexpr uint32_t kSrcPaint = 0x00EE0086;  // only a plain copy is carried out
  cDIBSection target;
  target.Create(4, 4);
  EXPECT_EQ(ErrorNumberOf([&] { source.PaintPicture(target, 0, 0, -1, -1, 0, 0, kSrcPaint); }), ErrInvalidCall);
  EXPECT_EQ(ErrorNumberOf([&] { target.LoadPictureBlt(source, 0, 0, -1, -1, kSrcPaint); }), ErrInvalidCall);
}

TEST(cDIBSectionResample, InterpolatesBetweenPixelCentres) {
  cDIBSection corners;
  corners.Create(2, 2);
  SetPixel(corners, 1, 0, 0x0000C8);
  SetPixel(corners, 0, 1, 0x00C800);
  SetPixel(corners, 1, 1, 0xC80000);
  const cDIBSection larger = corners.Resample(4, 4);
  ASSERT_EQ(larger.Width() * larger.Height(), 16);
  EXPECT_EQ(PixelAt(larger, 3, 3), 0xC80000u);
  EXPECT_EQ(PixelAt(larger, 1, 0), 0x000032u);  // a quarter of the way from 0 to 200
  EXPECT_EQ(PixelAt(larger, 2, 0), 0x000096u);
  EXPECT_EQ(PixelAt(larger, 1, 1), 0x0D2626u);  // the corners weighed 9 : 3 : 3 : 1
  EXPECT_EQ(larger.Resample(0, 0).DIBSectionBitsPtr(), nullptr);
  EXPECT_EQ(ErrorNumberOf([&] { larger.Resample(-1, 2); }), ErrInvalidCall);
}

class RecordingClipboard final : public ClipboardService {
 public:
  void SetImage(const cDIBSection& Picture) override { Images.push_back(Picture); }
  std::vector<cDIBSection> Images;
};

TEST(cDIBSectionCopyToClipboard, AsDIBOnlyExplainsAndAsBitmapHandsThePictureOver) {
  RecordingClipboard clipboard;
  const cDIBSection picture = PatternPicture(3, 2);
  EXPECT_EQ(picture.CopyToClipboard(clipboard, true),
            "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!");
  EXPECT_TRUE(clipboard.Images.empty());
  EXPECT_EQ(picture.CopyToClipboard(clipboard, false), std::nullopt);
  ASSERT_EQ(clipboard.Images.size(), 1u);
  EXPECT_TRUE(SamePixels(clipboard.Images[0], picture));
}

}  // namespace
}  // namespace tarvelin
