#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "graphics/PictureTestHelpers.h"
#include "graphics/cDIBSection.h"
#include "graphics/clsGradientFill.h"

namespace tarvelin {
namespace {

using testing::PixelAt;

// Each channel of the exact weighted mean sum(Weight[i] * Colour[i]) / Total, rounded down.
template <size_t N>
uint32_t Mix(const std::array<uint32_t, N>& Colours, const std::array<int64_t, N>& Weights, int64_t Total) {
  uint32_t result = 0;
  for (const int shift : {0, 8, 16}) {
    int64_t sum = 0;
    for (size_t i = 0; i < N; ++i) {
      sum += Weights[i] * ((Colours[i] >> shift) & 0xFF);
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

// The four-corner gradient against barycentric weights computed directly from the two triangles
// (top-left, top-right, bottom-right) and (top-left, bottom-right, bottom-left).
uint32_t FourCornerReference(const std::array<uint32_t, 4>& Corners, int64_t W, int64_t H, int64_t X, int64_t Y) {
  const int64_t area = W * H;
  if (Y * W <= X * H) {
    return Mix<3>({Corners[0], Corners[1], Corners[2]}, {area - X * H, X * H - Y * W, Y * W}, area);
  }
  return Mix<3>({Corners[0], Corners[2], Corners[3]}, {area - Y * W, X * H, Y * W - X * H}, area);
}

// The whole picture against the reference (every Stride-th pixel of big pictures); then a part drawn on its
// own must get exactly the whole picture's pixels there, and nothing outside the whole picture is written
// (those words keep their marker).
TEST(clsGradientFillTri, MatchesBothTrianglesAndAPartGetsTheWholePicturesPixels) {
  const std::array<uint32_t, 4> mixed = {0xFFEFDF, 0x00FF00, 0x8080FF, 0x123456};  // tl, tr, br, bl
  const std::array<uint32_t, 4> flat = {0xFFEFDF, 0xFFEFDF, 0xFFEFDF, 0xFFEFDF};
  const std::array<uint32_t, 4> sweep = {0xFFEFDF, 0xFFEFDF, 0xFFC891, 0xFFEFDF};
  const struct {
    std::array<uint32_t, 4> Corners;
    int32_t Width, Height, Stride, Left, Top, PartWidth, PartHeight;
  } cases[] = {{mixed, 9, 6, 1, 2, 1, 5, 3},
               {mixed, 5, 13, 1, 0, 0, 5, 13},
               {mixed, 1920, 1080, 37, 0, 0, 1, 1},
               {flat, 333, 77, 1, 0, 0, 1, 1},
               {mixed, 40, 70, 1, -3, 60, 50, 20},
               {sweep, 866, 3203, 7, 0, 1500, 866, 700},
               {sweep, 1732, 6406, 13, 500, 6300, 1300, 200},
               {sweep, 50, 50, 1, 60, 0, 10, 10}};
  constexpr uint32_t marker = 0x12345678;
  for (const auto& c : cases) {
    cDIBSection whole = Blank(c.Width, c.Height);
    clsGradientFill().GradientFillTri(whole, c.Corners[0], c.Corners[1], c.Corners[2], c.Corners[3]);
    EXPECT_EQ(PixelAt(whole, 0, 0), c.Corners[0]);
    for (int32_t y = 0; y < c.Height; y += c.Stride) {
      for (int32_t x = 0; x < c.Width; x += c.Stride) {
        ASSERT_EQ(PixelAt(whole, x, y), FourCornerReference(c.Corners, c.Width, c.Height, x, y))
            << c.Width << "x" << c.Height << " at " << x << "," << y;
      }
    }
    std::vector<uint32_t> words(static_cast<size_t>(c.PartWidth * c.PartHeight), marker);
    const PicturePart part{words.data(), c.PartWidth, c.Left, c.Top, c.PartWidth, c.PartHeight, c.Width, c.Height};
    clsGradientFill().GradientFillTri(part, c.Corners[0], c.Corners[1], c.Corners[2], c.Corners[3]);
    for (int32_t y = 0; y < c.PartHeight; ++y) {
      for (int32_t x = 0; x < c.PartWidth; ++x) {
        const int32_t wholeX = c.Left + x;
        const int32_t wholeY = c.Top + y;
        const bool inside = wholeX >= 0 && wholeX < c.Width && wholeY >= 0 && wholeY < c.Height;
        const uint32_t bgr = inside ? PixelAt(whole, wholeX, wholeY) : 0;
        const uint32_t expected =
            inside ? 0xFF000000u | (bgr & 0xFF) << 16 | (bgr & 0xFF00) | (bgr >> 16 & 0xFF) : marker;
        ASSERT_EQ(words[static_cast<size_t>(y * c.PartWidth + x)], expected)
            << c.Width << "x" << c.Height << " at " << wholeX << "," << wholeY;
      }
    }
  }
}

// A straight ramp from FromColour at position From to ToColour at To (exclusive) along a gradient's direction.
struct Ramp {
  int64_t From, To;
  uint32_t FromColour, ToColour;
};

uint32_t RampReference(const std::vector<Ramp>& Ramps, int64_t Along) {
  for (const Ramp& r : Ramps) {
    if (Along >= r.From && Along < r.To) {
      return Mix<2>({r.FromColour, r.ToColour}, {r.To - Along, Along - r.From}, r.To - r.From);
    }
  }
  return 0;
}

TEST(clsGradientFillRectangles, RampLinearlyFromTheirVerticesAlongTheirDirection) {
  const uint32_t a = 0xFFEFDF;
  const uint32_t b = 0x102080;
  const int64_t length = 11;
  const int64_t half = 5;
  for (const bool vertical : {false, true}) {
    const clsGradientFill gradient;
    const struct {
      const char* Name;
      std::function<void(cDIBSection&)> Draw;
      std::vector<Ramp> Ramps;
    } cases[] = {
        {"rectangle", [&](cDIBSection& p) { gradient.GradientFillRec(p, a, b, vertical); }, {{0, length, a, b}}},
        {"tube",
         [&](cDIBSection& p) { gradient.DrawGradientTube(p, a, b, false, vertical); },
         {{0, half, a, b}, {half, length, b, a}}},
        {"extra wide tube",
         [&](cDIBSection& p) { gradient.DrawGradientTube(p, a, b, true, vertical); },
         {{-length, half, a, b}, {half, 2 * length, b, a}}}};
    for (const auto& c : cases) {
      cDIBSection picture = Blank(vertical ? 4 : 11, vertical ? 11 : 4);
      c.Draw(picture);
      for (int32_t along = 0; along < length; ++along) {
        for (int32_t across = 0; across < 4; ++across) {
          EXPECT_EQ(PixelAt(picture, vertical ? across : along, vertical ? along : across),
                    RampReference(c.Ramps, along))
              << c.Name << (vertical ? " top to bottom" : " left to right") << " at " << along;
        }
      }
    }
  }
}

// Pictures too small to have two corners or two ends must not be reached outside their bounds.
TEST(clsGradientFillMode, ModeZeroDrawsNothingAndEmptyPicturesAreSafe) {
  cDIBSection picture = Blank(6, 4);
  clsGradientFill(GradientModeUnavailable).GradientFillTri(picture, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF);
  EXPECT_EQ(PixelAt(picture, 0, 0) | PixelAt(picture, 5, 3), 0u);
  for (const auto& [width, height] : {std::array{0, 0}, std::array{0, 3}, std::array{3, 0}, std::array{1, 1}}) {
    cDIBSection small = Blank(width, height);
    clsGradientFill().DrawGradientTube(small, 1, 2, true, true);
    clsGradientFill().GradientFillRec(small, 1, 2, false);
    clsGradientFill().GradientFillTri(small, 0x010203, 2, 3, 4);
  }
}

}  // namespace
}  // namespace tarvelin
