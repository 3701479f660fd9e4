#pragma once

#include <cstdint>

#include "graphics/cDIBSection.h"

namespace tarvelin::testing {

// The colour of a pixel counted from the top-left, as 0x00BBGGRR.
inline uint32_t PixelAt(const cDIBSection& Picture, int32_t X, int32_t Y) {
  const uint8_t* pixel = Picture.ScanLine(Y) + X * 3;
  return uint32_t{pixel[0]} << 16 | uint32_t{pixel[1]} << 8 | pixel[2];
}

inline void SetPixel(cDIBSection& Picture, int32_t X, int32_t Y, uint32_t Colour) {
  uint8_t* pixel = Picture.ScanLine(Y) + X * 3;
  pixel[0] = static_cast<uint8_t>(Colour >> 16);
  pixel[1] = static_cast<uint8_t>(Colour >> 8);
  pixel[2] = static_cast<uint8_t>(Colour);
}

// A picture whose every pixel differs from its neighbours in all three channels.
inline cDIBSection PatternPicture(int32_t Width, int32_t Height) {
  cDIBSection picture;
  picture.Create(Width, Height);
  for (int32_t y = 0; y < Height; ++y) {
    for (int32_t x = 0; x < Width; ++x) {
      SetPixel(
          picture, x, y,
          static_cast<uint32_t>((x * 37 + y * 11 + 1) << 16 | (x * 5 + y * 29 + 2) << 8 | (x + y * 7 + 3)) & 0xFFFFFFu);
    }
  }
  return picture;
}

}  // namespace tarvelin::testing
