#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <set>
#include <vector>

#include "graphics/ClipboardService.h"
#include "graphics/PictureTestHelpers.h"
#include "graphics/cDIBSection.h"
#include "support/ScriptedDialogs.h"
#include "util/TarvelinError.h"

namespace tarvelin {
namespace {

using testing::PatternPicture;
using testing::PixelAt;
using testing::SetPixel;

bool SamePixels(const cDIBSection& A, const cDIBSection& B) {
  const size_t size = static_cast<size_t>(A.BytesPerScanLine()) * static_cast<size_t>(A.Height());
  return A.Width() == B.Width() && A.Height() == B.Height() &&
         std::memcmp(A.DIBSectionBitsPtr(), B.DIBSectionBitsPtr(), size) == 0;
}

int32_t ErrorNumberOf(const std::function<void()>& Action) {
  try {
    Action();
  } catch (const TarvelinError& error) {
    return error.Number();
  }
  return 0;
}

TEST(cDIBSectionLayout, RowsArePaddedToWholeWordsAndStoredBottomUp) {
  const struct { int32_t Width, Stride; } cases[] = {{0, 0}, {1, 4}, {3, 12}, {4, 12}, {5, 16}, {1920, 5760}};
  for (const auto& c : cases) {
    cDIBSection picture;
    picture.Create(c.Width, 3);
    EXPECT_EQ(picture.BytesPerScanLine(), c.Stride) << "width " << c.Width;
    if (c.Width > 0) {
      EXPECT_EQ(picture.ScanLine(0) - picture.DIBSectionBitsPtr(), 2 * c.Stride) << "width " << c.Width;
    }
  }
}

TEST(cDIBSectionCreateFromPicture, TurnsTopDownWordsIntoBottomUpBlueGreenRedRows) {
  for (const int32_t width : {1, 3, 5}) {
    const int32_t height = 2;
    const std::ptrdiff_t bytesPerLine = width * 4 + 8;  // rows with slack, as image libraries may have
    std::vector<uint8_t> source(static_cast<size_t>(bytesPerLine * height), 0xEE);
    for (int32_t y = 0; y < height; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        const uint32_t argb = 0xFF000000u | static_cast<uint32_t>(0x10 * y + x) << 16 | 0x8000u | 0xC0u;
        std::memcpy(source.data() + y * bytesPerLine + x * 4, &argb, 4);
      }
    }
    cDIBSection picture;
    picture.CreateFromPicture(source.data(), width, height, bytesPerLine);
    const uint8_t* bottomRow = picture.DIBSectionBitsPtr();
    EXPECT_EQ(bottomRow[0], 0xC0) << "blue first, bottom row first; width " << width;
    EXPECT_EQ(bottomRow[1], 0x80);
    EXPECT_EQ(bottomRow[2], 0x10);
    EXPECT_EQ(PixelAt(picture, width - 1, 0), 0xC08000u | static_cast<uint32_t>(width - 1));
    for (int32_t row = 0; row < height; ++row) {
      for (int32_t pad = width * 3; pad < picture.BytesPerScanLine(); ++pad) {
        EXPECT_EQ(picture.DIBSectionBitsPtr()[row * picture.BytesPerScanLine() + pad], 0) << "width " << width;
      }
    }
  }
}

TEST(cDIBSectionCreate, RefusesImpossibleSizesAndStartsBlack) {
  cDIBSection picture;
  EXPECT_EQ(ErrorNumberOf([&] { picture.Create(-1, 4); }), ErrInvalidCall);
  EXPECT_EQ(ErrorNumberOf([&] { picture.Create(1 << 28, 4); }), ErrOverflow);
  const uint8_t pixel[4] = {};
  EXPECT_EQ(ErrorNumberOf([&] { picture.CreateFromPicture(pixel, 2, 1, 4); }), ErrInvalidCall);
  EXPECT_EQ(ErrorNumberOf([&] { picture.CreateFromPicture(nullptr, 1, 1, 4); }), ErrInvalidCall);

  picture = PatternPicture(3, 3);
  picture.Create(3, 3);
  cDIBSection black;
  black.Create(3, 3);
  EXPECT_TRUE(SamePixels(picture, black));
  picture.ClearUp();
  EXPECT_EQ(picture.DIBSectionBitsPtr(), nullptr);
  EXPECT_EQ(picture.Width() + picture.Height(), 0);
}

TEST(cDIBSectionBlit, NegativeSizesCopyTheWholePicture) {
  const cDIBSection source = PatternPicture(5, 3);
  cDIBSection painted;
  painted.Create(5, 3);
  source.PaintPicture(painted, 0, 0, -1, -1, 0, 0);
  EXPECT_TRUE(SamePixels(painted, source));

  cDIBSection loaded;
  loaded.Create(5, 3);
  loaded.LoadPictureBlt(source, 0, 0, -1, -1);
  EXPECT_TRUE(SamePixels(loaded, source));
}

TEST(cDIBSectionBlit, CopiesOnlyTheAreaInsideBothPictures) {
  const cDIBSection source = PatternPicture(3, 3);
  cDIBSection target;
  target.Create(4, 4);
  source.PaintPicture(target, 2, 1);
  for (int32_t y = 0; y < 4; ++y) {
    for (int32_t x = 0; x < 4; ++x) {
      const bool inside = x >= 2 && y >= 1;
      EXPECT_EQ(PixelAt(target, x, y), inside ? PixelAt(source, x - 2, y - 1) : 0u) << x << "," << y;
    }
  }

  target.Create(4, 4);
  source.PaintPicture(target, -1, -2);
  EXPECT_EQ(PixelAt(target, 0, 0), PixelAt(source, 1, 2));
  EXPECT_EQ(PixelAt(target, 1, 0), PixelAt(source, 2, 2));
  EXPECT_EQ(PixelAt(target, 0, 1), 0u);

  target.Create(4, 4);
  target.LoadPictureBlt(source, 1, 2, 5, 5);
  EXPECT_EQ(PixelAt(target, 0, 0), PixelAt(source, 1, 2));
  EXPECT_EQ(PixelAt(target, 1, 0), PixelAt(source, 2, 2));
  EXPECT_EQ(PixelAt(target, 2, 0), 0u);
  EXPECT_EQ(PixelAt(target, 0, 1), 0u);
}

TEST(cDIBSectionBlit, OverlappingCopyWithinOnePictureReadsTheOriginal) {
  const cDIBSection original = PatternPicture(6, 4);
  cDIBSection picture = original;
  picture.PaintPicture(picture, 1, 1);
  for (int32_t y = 1; y < 4; ++y) {
    for (int32_t x = 1; x < 6; ++x) {
      EXPECT_EQ(PixelAt(picture, x, y), PixelAt(original, x - 1, y - 1)) << x << "," << y;
    }
  }
}

TEST(cDIBSectionBlit, RefusesRasterOperationsOtherThanCopy) {
  const cDIBSection source = PatternPicture(2, 2);
  cDIBSection target;
  target.Create(2, 2);
  constexpr uint32_t kSrcPaint = 0x00EE0086;
  try {
    source.PaintPicture(target, 0, 0, -1, -1, 0, 0, kSrcPaint);
    FAIL() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Number(), ErrInvalidCall);
    EXPECT_NE(error.Description().find("SRCCOPY"), std::string::npos);
  }
  EXPECT_EQ(ErrorNumberOf([&] { target.LoadPictureBlt(source, 0, 0, -1, -1, kSrcPaint); }), ErrInvalidCall);
  EXPECT_EQ(PixelAt(target, 0, 0), 0u);
}

TEST(cDIBSectionRandomiseBits, FillsEveryPixelAndLeavesPaddingAlone) {
  for (const bool grey : {true, false}) {
    cDIBSection picture;
    picture.Create(5, 60);
    picture.RandomiseBits(grey);
    std::set<uint32_t> colours;
    bool channelsDiffer = false;
    for (int32_t y = 0; y < 60; ++y) {
      const uint8_t* row = picture.ScanLine(y);
      EXPECT_EQ(row[15], 0) << "padding";
      for (int32_t x = 0; x < 5; ++x) {
        const uint8_t* pixel = row + x * 3;
        channelsDiffer = channelsDiffer || pixel[0] != pixel[1] || pixel[1] != pixel[2];
        EXPECT_LE(std::max({pixel[0], pixel[1], pixel[2]}), 254);
        colours.insert(PixelAt(picture, x, y));
      }
    }
    EXPECT_EQ(channelsDiffer, !grey);
    EXPECT_GT(colours.size(), 100u) << "grey " << grey;
  }
}

TEST(cDIBSectionResample, InterpolatesBetweenPixelCentres) {
  cDIBSection corners;
  corners.Create(2, 2);
  SetPixel(corners, 0, 0, 0x000000);
  SetPixel(corners, 1, 0, 0x0000C8);
  SetPixel(corners, 0, 1, 0x00C800);
  SetPixel(corners, 1, 1, 0xC80000);
  const cDIBSection larger = corners.Resample(4, 4);
  ASSERT_EQ(larger.Width(), 4);
  ASSERT_EQ(larger.Height(), 4);
  EXPECT_EQ(PixelAt(larger, 0, 0), 0x000000u);
  EXPECT_EQ(PixelAt(larger, 3, 3), 0xC80000u);
  EXPECT_EQ(PixelAt(larger, 1, 0), 0x000032u);  // a quarter of the way from 0 to 200
  EXPECT_EQ(PixelAt(larger, 2, 0), 0x000096u);
  // (1, 1) weighs the corners 9 : 3 : 3 : 1.
  EXPECT_EQ(PixelAt(larger, 1, 1), 0x0D2626u);

  cDIBSection flat;
  flat.Create(7, 5);
  for (int32_t y = 0; y < 5; ++y) {
    for (int32_t x = 0; x < 7; ++x) {
      SetPixel(flat, x, y, 0x80FF01);
    }
  }
  const cDIBSection smaller = flat.Resample(2, 3);
  ASSERT_EQ(smaller.Width(), 3);
  for (int32_t x = 0; x < 3; ++x) {
    EXPECT_EQ(PixelAt(smaller, x, 1), 0x80FF01u);
  }
  EXPECT_EQ(flat.Resample(0, 0).DIBSectionBitsPtr(), nullptr);
  EXPECT_EQ(ErrorNumberOf([&] { flat.Resample(-1, 2); }), ErrInvalidCall);
}

class RecordingClipboard final : public ClipboardService {
 public:
  void SetImage(const cDIBSection& Picture) override { Images.push_back(Picture); }
  std::vector<cDIBSection> Images;
};

TEST(cDIBSectionCopyToClipboard, AsDIBOnlyExplainsAndAsBitmapHandsThePictureOver) {
  testing::ScopedScriptedDialogs dialogs;
  RecordingClipboard clipboard;
  const cDIBSection picture = PatternPicture(3, 2);

  picture.CopyToClipboard(clipboard, true);
  EXPECT_TRUE(clipboard.Images.empty());
  ASSERT_EQ(dialogs->Messages.size(), 1u);
  EXPECT_EQ(dialogs->Messages[0].Prompt, "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!");
  EXPECT_EQ(dialogs->Messages[0].Buttons, MsgButtons::OK);
  EXPECT_EQ(dialogs->Messages[0].Icon, MsgIcon::None);

  picture.CopyToClipboard(clipboard, false);
  ASSERT_EQ(clipboard.Images.size(), 1u);
  EXPECT_TRUE(SamePixels(clipboard.Images[0], picture));
  EXPECT_EQ(dialogs->Messages.size(), 1u);
}

}  // namespace
}  // namespace tarvelin
