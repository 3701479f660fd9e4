#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "graphics/BmpWriter.h"
#include "graphics/JpegWriter.h"
#include "graphics/cDIBSection.h"
#include "graphics/clsGradientFill.h"

namespace tarvelin {
namespace {

constexpr int32_t kWidth = 1920;
constexpr int32_t kHeight = 1080;

void FillRect(cDIBSection& Picture, int32_t Left, int32_t Top, int32_t Width, int32_t Height, uint32_t Colour) {
  for (int32_t y = Top; y < Top + Height; ++y) {
    uint8_t* pixel = Picture.ScanLine(y) + Left * 3;
    for (int32_t x = 0; x < Width; ++x, pixel += 3) {
      pixel[0] = static_cast<uint8_t>(Colour >> 16);
      pixel[1] = static_cast<uint8_t>(Colour >> 8);
      pixel[2] = static_cast<uint8_t>(Colour);
    }
  }
}

// Rows of glyph-like strokes: the hard dark-on-light edges that text puts into a window picture.
void DrawTextLine(cDIBSection& Picture, int32_t Left, int32_t Top, int32_t Characters) {
  uint32_t seed = static_cast<uint32_t>(Left * 7919 + Top);
  for (int32_t c = 0; c < Characters; ++c) {
    seed = seed * 1103515245u + 12345u;
    const int32_t x = Left + c * 9;
    FillRect(Picture, x, Top + static_cast<int32_t>(seed >> 29), 1, 9, 0x202020);
    FillRect(Picture, x + 1 + static_cast<int32_t>((seed >> 26) & 3), Top + 4, 3, 1, 0x202020);
    FillRect(Picture, x + 5, Top + 2 + static_cast<int32_t>((seed >> 24) & 3), 1, 7, 0x202020);
  }
}

// A picture like a captured main window: the background sweep, three framed panels with their own
// sweep, labels, and slider bars.
cDIBSection WindowPicture() {
  const clsGradientFill gradient;
  cDIBSection picture;
  picture.Create(kWidth, kHeight);
  gradient.GradientFillTri(picture, 0xFFEFDF, 0xFFEFDF, 0xFFC891, 0xFFEFDF);
  for (int32_t panel = 0; panel < 3; ++panel) {
    const int32_t top = 60 + panel * 340;
    cDIBSection fill;
    fill.Create(kWidth - 80, 300);
    gradient.GradientFillTri(fill, 0xFFFFFB, 0xFFFFFB, 0xF8ECE0, 0xFFFFFB);
    fill.PaintPicture(picture, 40, top);
    FillRect(picture, 40, top, kWidth - 80, 1, 0x9C9586);
    FillRect(picture, 40, top + 299, kWidth - 80, 1, 0x9C9586);
    for (int32_t row = 0; row < 10; ++row) {
      const int32_t y = top + 20 + row * 28;
      DrawTextLine(picture, 70, y, 24);
      FillRect(picture, 400, y + 2, 200 + row * 120, 12, row % 3 == 0 ? 0x0CC0FE : 0x0980FD);
      DrawTextLine(picture, 1700, y, 5);
    }
  }
  return picture;
}

std::string TemporaryFileName(const char* Extension) {
  return (std::filesystem::temp_directory_path() / ("tarvelin-bench-" + std::to_string(getpid()) + Extension)).string();
}

void BM_GradientFillTri(benchmark::State& state) {
  cDIBSection picture;
  picture.Create(kWidth, kHeight);
  const clsGradientFill gradient;
  for (auto _ : state) {
    gradient.GradientFillTri(picture, 0xFFEFDF, 0x00FF00, 0xFFC891, 0x123456);
    benchmark::DoNotOptimize(picture.DIBSectionBitsPtr());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}
BENCHMARK(BM_GradientFillTri)->Unit(benchmark::kMillisecond);

void BM_EncodeJpeg(benchmark::State& state) {
  const cDIBSection picture = WindowPicture();
  for (auto _ : state) {
    benchmark::DoNotOptimize(EncodeJpeg(picture, 100));
  }
}
BENCHMARK(BM_EncodeJpeg)->Unit(benchmark::kMillisecond);

// Includes making the file durable before it replaces the old one.
void BM_WriteJpegFile(benchmark::State& state) {
  const cDIBSection picture = WindowPicture();
  const std::string file = TemporaryFileName(".jpg");
  for (auto _ : state) {
    WriteJpegFile(picture, file, 100);
  }
  std::filesystem::remove(file);
}
BENCHMARK(BM_WriteJpegFile)->Unit(benchmark::kMillisecond);

void BM_EncodeBmp(benchmark::State& state) {
  const cDIBSection picture = WindowPicture();
  for (auto _ : state) {
    benchmark::DoNotOptimize(EncodeBmp(picture));
  }
  state.SetBytesProcessed(state.iterations() * picture.BytesPerScanLine() * kHeight);
}
BENCHMARK(BM_EncodeBmp)->Unit(benchmark::kMillisecond);

void BM_WriteBmpFile(benchmark::State& state) {
  const cDIBSection picture = WindowPicture();
  const std::string file = TemporaryFileName(".bmp");
  for (auto _ : state) {
    WriteBmpFile(picture, file);
  }
  std::filesystem::remove(file);
}
BENCHMARK(BM_WriteBmpFile)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvelin
