#include <gtest/gtest.h>
#include <turbojpeg.h>

#include <cstdlib>
#include <filesystem>
#include <vector>

#include "graphics/JpegWriter.h"
#include "graphics/PictureTestHelpers.h"
#include "graphics/UnwritableTargets.h"
#include "graphics/cDIBSection.h"
#include "graphics/clsGradientFill.h"
#include "support/TempFolder.h"

namespace tarvelin {
namespace {

using testing::PixelAt;

struct DecodedJpeg {
  int Width = 0, Height = 0, Subsampling = -1;
  std::vector<uint8_t> Bgr;  // top-down rows without padding
};

DecodedJpeg Decode(const std::string& Bytes) {
  DecodedJpeg decoded;
  tjhandle decompressor = tjInitDecompress();
  const auto* data = reinterpret_cast<const unsigned char*>(Bytes.data());
  int colourspace = 0;
  if (tjDecompressHeader3(decompressor, data, Bytes.size(), &decoded.Width, &decoded.Height, &decoded.Subsampling,
                          &colourspace) == 0) {
    decoded.Bgr.resize(static_cast<size_t>(decoded.Width * decoded.Height * 3));
    EXPECT_EQ(tjDecompress2(decompressor, data, Bytes.size(), decoded.Bgr.data(), decoded.Width, 0, decoded.Height,
                            TJPF_BGR, TJFLAG_ACCURATEDCT),
              0);
  }
  tjDestroy(decompressor);
  return decoded;
}

// The largest difference of any channel between the picture and the decoded image.
int LargestDifference(const cDIBSection& Picture, const DecodedJpeg& Decoded) {
  int largest = 0;
  for (int32_t y = 0; y < Picture.Height(); ++y) {
    for (int32_t x = 0; x < Picture.Width(); ++x) {
      for (int channel = 0; channel < 3; ++channel) {
        const int original = Picture.ScanLine(y)[x * 3 + channel];
        const int decoded = Decoded.Bgr[static_cast<size_t>((y * Picture.Width() + x) * 3 + channel)];
        largest = std::max(largest, std::abs(original - decoded));
      }
    }
  }
  return largest;
}

TEST(JpegWriterRoundTrip, SmoothGradientComesBackWithinThreeAtFullQuality) {
  testing::TempFolder folder;
  cDIBSection picture;
  picture.Create(257, 123);
  // The window background's sweep into the bottom-right corner.
  clsGradientFill().GradientFillTri(picture, 0xFFEFDF, 0xFFEFDF, 0xFFC891, 0xFFEFDF);
  const std::string file = folder.File("gradient.jpg");
  testing::WriteBytes(file, "an older file");
  WriteJpegFile(picture, file, 100);

  const DecodedJpeg decoded = Decode(testing::ReadBytes(file));
  ASSERT_EQ(decoded.Width, 257);
  ASSERT_EQ(decoded.Height, 123);
  EXPECT_EQ(decoded.Subsampling, TJSAMP_444);
  EXPECT_LE(LargestDifference(picture, decoded), 3);
}

TEST(JpegWriterRoundTrip, OddWidthsSkipTheRowPadding) {
  for (const int32_t width : {1, 3, 5}) {
    cDIBSection picture;
    picture.Create(width, 9);
    for (int32_t y = 0; y < 9; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        testing::SetPixel(picture, x, y, 0x405060u + static_cast<uint32_t>(y) * 0x010204u);
      }
    }
    const DecodedJpeg decoded = Decode(EncodeJpeg(picture, 100));
    ASSERT_EQ(decoded.Width, width);
    ASSERT_EQ(decoded.Height, 9);
    EXPECT_LE(LargestDifference(picture, decoded), 3) << "width " << width;
  }
}

TEST(JpegWriterQuality, AcceptsOneToHundredOnly) {
  cDIBSection picture;
  picture.Create(64, 64);
  picture.RandomiseBits(false);
  EXPECT_LT(EncodeJpeg(picture, 1).size(), EncodeJpeg(picture, 100).size());
  for (const int32_t quality : {0, 101, -5}) {
    try {
      EncodeJpeg(picture, quality);
      ADD_FAILURE() << "quality " << quality << " accepted";
    } catch (const TarvelinError& error) {
      EXPECT_EQ(error.Number(), ErrInvalidCall);
    }
  }
}

TEST(JpegWriterErrors, AnEmptyPictureReportsTheEncodersReason) {
  testing::TempFolder folder;
  const cDIBSection empty;
  try {
    WriteJpegFile(empty, folder.File("empty.jpg"), 100);
    FAIL() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Number(), ErrJpegSaveFailed);
    EXPECT_EQ(error.Description().rfind("Failed to save to JPG ", 0), 0u) << error.Description();
    EXPECT_GT(error.Description().size(), std::string("Failed to save to JPG ").size());
  }
  EXPECT_FALSE(std::filesystem::exists(folder.File("empty.jpg")));
}

class JpegWriterUnwritable : public ::testing::TestWithParam<testing::UnwritableTarget> {};

TEST_P(JpegWriterUnwritable, RaisesTheSaveErrorAndKeepsTheOldFile) {
  if (GetParam() == testing::UnwritableTarget::ReadOnlyFolder && testing::PermissionsAreIgnored()) {
    GTEST_SKIP() << "permissions do not stop this user";
  }
  cDIBSection picture;
  picture.Create(8, 8);
  const std::string description = testing::ExpectWriteFailsCleanly(
      GetParam(), [&](const std::string& FileName) { WriteJpegFile(picture, FileName, 100); });
  EXPECT_EQ(description.rfind("Failed to save to JPG ", 0), 0u) << description;
}

INSTANTIATE_TEST_SUITE_P(Targets, JpegWriterUnwritable, ::testing::ValuesIn(testing::kUnwritableTargets));

}  // namespace
}  // namespace tarvelin
