#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "graphics/PictureTestHelpers.h"
#include "graphics/cDIBSection.h"
#include "graphics/clsGradientFill.h"

namespace tarvelin {
namespace {

using testing::PixelAt;

uint32_t Byte(uint32_t Colour, int Shift) {
  return (Colour >> Shift) & 0xFF;
}

// Each channel of the exact weighted mean sum(Weight[i] * Colour[i]) / Total, rounded down.
template <size_t N>
uint32_t Mix(const std::array<uint32_t, N>& Colours, const std::array<int64_t, N>& Weights, int64_t Total) {
  uint32_t result = 0;
  for (const int shift : {0, 8, 16}) {
    int64_t sum = 0;
    for (size_t i = 0; i < N; ++i) {
      sum += Weights[i] * Byte(Colours[i], shift);
    }
    result |= static_cast<uint32_t>(sum / Total) << shift;
  }
  return result;
}

cDIBSection Blank(int32_t Width, int32_t Height) {
  cDIBSection picture;
  picture.Create(Width, Height);
  return picture;
}

TEST(clsGradientFillVertexColour, MovesEachByteIntoTheHighByteOfItsComponent) {
  const struct {
    uint32_t Colour;
    uint16_t Red, Green, Blue;
  } cases[] = {{0xFFEFDF, 0xDF00, 0xEF00, 0xFF00},
               {0x7F8081, 0x8100, 0x8000, 0x7F00},
               {0x000000, 0, 0, 0},
               {0xFF123456, 0x5600, 0x3400, 0x1200}};
  for (const auto& c : cases) {
    TriVertex vertex;
    vertex.Alpha = 0x1234;
    SetTriVertexColour(vertex, c.Colour);
    EXPECT_EQ(vertex.Red, c.Red) << std::hex << c.Colour;
    EXPECT_EQ(vertex.Green, c.Green) << std::hex << c.Colour;
    EXPECT_EQ(vertex.Blue, c.Blue) << std::hex << c.Colour;
    EXPECT_EQ(vertex.Alpha, 0);
  }
}

TEST(clsGradientFillRec, RampsLinearlyFromTheFirstEdgeToJustShortOfTheSecond) {
  const uint32_t from = 0xFFEFDF;
  const uint32_t to = 0x102080;
  for (const bool vertical : {false, true}) {
    cDIBSection picture = Blank(7, 5);
    clsGradientFill().GradientFillRec(picture, from, to, vertical);
    const int64_t length = vertical ? 5 : 7;
    for (int32_t y = 0; y < 5; ++y) {
      for (int32_t x = 0; x < 7; ++x) {
        const int64_t position = vertical ? y : x;
        EXPECT_EQ(PixelAt(picture, x, y), Mix<2>({from, to}, {length - position, position}, length))
            << "vertical " << vertical << " at " << x << "," << y;
      }
    }
  }
}

// The four-corner gradient against barycentric weights computed directly from the two triangles
// (top-left, top-right, bottom-right) and (top-left, bottom-right, bottom-left).
uint32_t FourCornerReference(const std::array<uint32_t, 4>& Corners, int64_t W, int64_t H, int64_t X, int64_t Y) {
  const int64_t area = W * H;
  if (Y * W <= X * H) {
    return Mix<3>({Corners[0], Corners[1], Corners[2]}, {area - X * H, X * H - Y * W, Y * W}, area);
  }
  return Mix<3>({Corners[0], Corners[2], Corners[3]}, {area - Y * W, X * H, Y * W - X * H}, area);
}

TEST(clsGradientFillTri, MatchesBarycentricInterpolationOfBothTriangles) {
  const std::array<uint32_t, 4> corners = {0xFFEFDF, 0x00FF00, 0x8080FF, 0x123456};  // tl, tr, br, bl
  const struct {
    int32_t Width, Height, Stride;  // Stride: check every Stride-th pixel of big pictures
  } sizes[] = {{9, 6, 1}, {5, 13, 1}, {1920, 1080, 37}};
  for (const auto& size : sizes) {
    cDIBSection picture = Blank(size.Width, size.Height);
    clsGradientFill().GradientFillTri(picture, corners[0], corners[1], corners[2], corners[3]);
    EXPECT_EQ(PixelAt(picture, 0, 0), corners[0]);
    for (int32_t y = 0; y < size.Height; y += size.Stride) {
      for (int32_t x = 0; x < size.Width; x += size.Stride) {
        ASSERT_EQ(PixelAt(picture, x, y), FourCornerReference(corners, size.Width, size.Height, x, y))
            << size.Width << "x" << size.Height << " at " << x << "," << y;
      }
    }
  }
}

TEST(clsGradientFillTri, OneColourEverywhereStaysExactlyThatColour) {
  cDIBSection picture = Blank(333, 77);
  clsGradientFill().GradientFillTri(picture, 0xFFEFDF, 0xFFEFDF, 0xFFEFDF, 0xFFEFDF);
  for (int32_t y = 0; y < 77; ++y) {
    for (int32_t x = 0; x < 333; ++x) {
      ASSERT_EQ(PixelAt(picture, x, y), 0xFFEFDFu) << x << "," << y;
    }
  }
}

TEST(clsGradientFillTube, PutsColourOneAtTheEndsAndColourTwoAlongTheMiddle) {
  const uint32_t ends = 0x2040FF;
  const uint32_t middle = 0xE0D0C0;
  for (const bool vertical : {false, true}) {
    for (const bool extraWide : {false, true}) {
      const int32_t width = vertical ? 4 : 11;
      const int32_t height = vertical ? 11 : 4;
      cDIBSection picture = Blank(width, height);
      clsGradientFill().DrawGradientTube(picture, ends, middle, extraWide, vertical);
      const int64_t length = 11;
      const int64_t half = 5;
      const int64_t beyond = extraWide ? length : 0;
      for (int64_t along = 0; along < length; ++along) {
        const uint32_t expected =
            along < half ? Mix<2>({ends, middle}, {half - along, along + beyond}, half + beyond)
                         : Mix<2>({middle, ends}, {length + beyond - along, along - half}, length + beyond - half);
        for (int32_t across = 0; across < 4; ++across) {
          const auto x = static_cast<int32_t>(vertical ? across : along);
          const auto y = static_cast<int32_t>(vertical ? along : across);
          EXPECT_EQ(PixelAt(picture, x, y), expected)
              << "vertical " << vertical << " extra wide " << extraWide << " at " << along;
        }
      }
      EXPECT_EQ(PixelAt(picture, vertical ? 0 : 5, vertical ? 5 : 0), middle);
      EXPECT_EQ(PixelAt(picture, 0, 0) == ends, !extraWide);
    }
  }
}

TEST(clsGradientFillMode, ModeZeroAndEmptyPicturesDrawNothing) {
  const clsGradientFill unavailable(GradientModeUnavailable);
  cDIBSection picture = Blank(6, 4);
  unavailable.GradientFillTri(picture, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF);
  unavailable.GradientFillRec(picture, 0xFFFFFF, 0xFFFFFF, true);
  unavailable.DrawGradientTube(picture, 0xFFFFFF, 0xFFFFFF, true, false);
  for (int32_t y = 0; y < 4; ++y) {
    for (int32_t x = 0; x < 6; ++x) {
      EXPECT_EQ(PixelAt(picture, x, y), 0u);
    }
  }

  const clsGradientFill available;
  EXPECT_NE(available.GradientMode(), GradientModeUnavailable);
  for (const auto& size : {std::array{0, 0}, std::array{0, 3}, std::array{3, 0}}) {
    cDIBSection empty = Blank(size[0], size[1]);
    available.GradientFillTri(empty, 1, 2, 3, 4);
    available.GradientFillRec(empty, 1, 2, false);
    available.DrawGradientTube(empty, 1, 2, true, true);
    EXPECT_EQ(empty.DIBSectionBitsPtr(), nullptr);
  }
  cDIBSection single = Blank(1, 1);
  available.GradientFillTri(single, 0x010203, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF);
  EXPECT_EQ(PixelAt(single, 0, 0), 0x010203u);
}

}  // namespace
}  // namespace tarvelin
