#include <gtest/gtest.h>
#include <turbojpeg.h>

#include "graphics/BmpWriter.h"
#include "graphics/PictureTestHelpers.h"
#include "graphics/cDIBSection.h"
#include "support/RaisedErrors.h"
#include "support/TempFolder.h"

namespace tarvelin {
namespace {

// Read back by libjpeg-turbo's own bitmap loader, which knows nothing of our layout.
TEST(BmpWriterRoundTrip, AnIndependentReaderGetsEveryPixelBack) {
  testing::TempFolder folder;
  for (const int32_t width : {1, 3, 4, 5, 31}) {
    const cDIBSection picture = testing::PatternPicture(width, 7);
    const std::string file = folder.File("shot" + std::to_string(width) + ".bmp");
    WriteBmpFile(picture, file);
    EXPECT_EQ(testing::ReadBytes(file).size(), 54u + 7u * static_cast<size_t>(picture.BytesPerScanLine()));

    int loadedWidth = 0, loadedHeight = 0, format = TJPF_RGB;
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
  cDIBSection empty;
  empty.Create(4, 0);
  EXPECT_EQ(testing::ErrorNumberOf([&] { EncodeBmp(empty); }), ErrInvalidCall);
}

}  // namespace
}  // namespace tarvelin
