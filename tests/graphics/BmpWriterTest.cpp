#include <gtest/gtest.h>
#include <turbojpeg.h>

#include <cstring>

#include "graphics/BmpWriter.h"
#include "graphics/PictureTestHelpers.h"
#include "graphics/UnwritableTargets.h"
#include "graphics/cDIBSection.h"
#include "support/TempFolder.h"

namespace tarvelin {
namespace {

uint32_t FieldAt(const std::string& Bytes, size_t Offset, int Size) {
  uint32_t value = 0;
  for (int i = Size - 1; i >= 0; --i) {
    value = value << 8 | static_cast<uint8_t>(Bytes[Offset + static_cast<size_t>(i)]);
  }
  return value;
}

TEST(BmpWriterFormat, HeadersDescribeA24BitBottomUpBitmapFollowedByTheRows) {
  const cDIBSection picture = testing::PatternPicture(5, 3);
  const std::string bytes = EncodeBmp(picture);
  const struct {
    size_t Offset;
    int Size;
    uint32_t Value;
  } fields[] = {{0, 2, 0x4D42},  // "BM"
                {2, 4, 102},     // file size: 54 + 3 rows of 16 bytes
                {6, 4, 0},      {10, 4, 54}, {14, 4, 40}, {18, 4, 5},  {22, 4, 3},
                {26, 2, 1},     {28, 2, 24}, {30, 4, 0},  {34, 4, 48}, {46, 4, 0}};
  ASSERT_EQ(bytes.size(), 102u);
  for (const auto& field : fields) {
    EXPECT_EQ(FieldAt(bytes, field.Offset, field.Size), field.Value) << "at offset " << field.Offset;
  }
  EXPECT_EQ(std::memcmp(bytes.data() + 54, picture.DIBSectionBitsPtr(), 48), 0);
}

// Read back by libjpeg-turbo's own bitmap loader, which knows nothing of our layout.
TEST(BmpWriterRoundTrip, AnIndependentReaderGetsEveryPixelBack) {
  testing::TempFolder folder;
  for (const int32_t width : {1, 3, 4, 5, 31}) {
    const cDIBSection picture = testing::PatternPicture(width, 7);
    const std::string file = folder.File("shot" + std::to_string(width) + ".bmp");
    testing::WriteBytes(file, "an older file");
    WriteBmpFile(picture, file);

    int loadedWidth = 0;
    int loadedHeight = 0;
    int format = TJPF_RGB;
    unsigned char* loaded = tjLoadImage(file.c_str(), &loadedWidth, 1, &loadedHeight, &format, 0);
    ASSERT_NE(loaded, nullptr) << tjGetErrorStr2(nullptr);
    EXPECT_EQ(loadedWidth, width);
    EXPECT_EQ(loadedHeight, 7);
    for (int32_t y = 0; y < 7; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        const unsigned char* rgb = loaded + (y * width + x) * 3;
        EXPECT_EQ(uint32_t{rgb[2]} << 16 | uint32_t{rgb[1]} << 8 | rgb[0], testing::PixelAt(picture, x, y))
            << "width " << width << " at " << x << "," << y;
      }
    }
    tjFree(loaded);
  }
}

TEST(BmpWriterErrors, AnEmptyPictureIsRefused) {
  cDIBSection picture;
  picture.Create(4, 0);
  try {
    EncodeBmp(picture);
    FAIL() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Number(), ErrInvalidCall);
  }
}

class BmpWriterUnwritable : public ::testing::TestWithParam<testing::UnwritableTarget> {};

TEST_P(BmpWriterUnwritable, RaisesTheFileErrorAndKeepsTheOldFile) {
  if (GetParam() == testing::UnwritableTarget::ReadOnlyFolder && testing::PermissionsAreIgnored()) {
    GTEST_SKIP() << "permissions do not stop this user";
  }
  const cDIBSection picture = testing::PatternPicture(8, 8);
  const std::string description = testing::ExpectWriteFailsCleanly(
      GetParam(), [&](const std::string& FileName) { WriteBmpFile(picture, FileName); });
  EXPECT_FALSE(description.empty());
}

INSTANTIATE_TEST_SUITE_P(Targets, BmpWriterUnwritable, ::testing::ValuesIn(testing::kUnwritableTargets));

}  // namespace
}  // namespace tarvelin
