#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <turbojpeg.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "graphics/JpegWriter.h"
#include "graphics/PictureTestHelpers.h"
#include "graphics/cDIBSection.h"
#include "graphics/clsGradientFill.h"
#include "support/RaisedErrors.h"
#include "support/TempFolder.h"

namespace tarvelin {
namespace {

// Decodes a JPEG file's bytes and returns the largest difference of any channel from the picture, after
// checking the size and that colour was kept at full resolution.
int LargestDifferenceAfterDecoding(const std::string& Bytes, const cDIBSection& Picture) {
  tjhandle decompressor = tjInitDecompress();
  const auto* data = reinterpret_cast<const unsigned char*>(Bytes.data());
  int width = 0, height = 0, subsampling = 0, colourspace = 0;
  tjDecompressHeader3(decompressor, data, Bytes.size(), &width, &height, &subsampling, &colourspace);
  EXPECT_EQ(width, Picture.Width());
  EXPECT_EQ(height, Picture.Height());
  EXPECT_EQ(subsampling, TJSAMP_444);
  std::vector<uint8_t> bgr(static_cast<size_t>(width * height * 3));
  tjDecompress2(decompressor, data, Bytes.size(), bgr.data(), width, 0, height, TJPF_BGR, TJFLAG_ACCURATEDCT);
  tjDestroy(decompressor);
  int largest = 0;
  for (int32_t y = 0; y < height && y < Picture.Height(); ++y) {
    for (int32_t x = 0; x < width * 3 && x < Picture.Width() * 3; ++x) {
      largest = std::max(largest, std::abs(Picture.ScanLine(y)[x] - bgr[static_cast<size_t>(y * width * 3 + x)]));
    }
  }
  return largest;
}

// Odd widths check that the row padding is skipped.
TEST(JpegWriterRoundTrip, SmoothGradientComesBackWithinThreeAtFullQuality) {
  for (const auto& [width, height] : {std::array{257, 123}, std::array{1, 9}, std::array{3, 9}, std::array{5, 9}}) {
    cDIBSection picture;
    picture.Create(width, height);
    // The window background's sweep into the bottom-right corner.
    clsGradientFill().GradientFillTri(picture, 0xFFEFDF, 0xFFEFDF, 0xFFC891, 0xFFEFDF);
    EXPECT_LE(LargestDifferenceAfterDecoding(EncodeJpeg(picture, 100), picture), 3) << "width " << width;
  }
}

TEST(JpegWriterErrors, QualityOutOfRangeAndEmptyPicturesAreRefused) {
  cDIBSection picture;
  picture.Create(64, 64);
  picture.RandomiseBits(false);
  EXPECT_LT(EncodeJpeg(picture, 1).size(), EncodeJpeg(picture, 100).size());
  for (const int32_t quality : {0, 101, -5}) {
    EXPECT_EQ(testing::ErrorNumberOf([&] { EncodeJpeg(picture, quality); }), ErrInvalidCall) << quality;
  }

  testing::TempFolder folder;
  // The message must carry the encoder's reason after its fixed start.
  EXPECT_THAT(testing::ErrorOf([&] { WriteJpegFile(cDIBSection(), folder.File("empty.jpg"), 100); }),
              ::testing::MatchesRegex(std::to_string(ErrJpegSaveFailed) + " \\[.*\\] Failed to save to JPG .+"));
  EXPECT_FALSE(std::filesystem::exists(folder.File("empty.jpg")));
}

}  // namespace
}  // namespace tarvelin
