#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvelin {

class cDIBSection;

// A gradient vertex: a position in pixels and a colour with 16 bits per component (the byte value times 256).
struct TriVertex {
  int32_t x = 0;
  int32_t y = 0;
  uint16_t Red = 0;
  uint16_t Green = 0;
  uint16_t Blue = 0;
  uint16_t Alpha = 0;
};

// Fills a vertex's colour from a 0x00BBGGRR colour: each byte moves to the high byte of its component, so a
// byte of 0x80 or more gives a component of 0x8000 or more. Alpha is always 0.
void SetTriVertexColour(TriVertex& Vertex, uint32_t Colour);

// A part of a larger picture held as 32-bit pixels: native-endian 0xFFRRGGBB words, rows top-down
// WordsPerLine apart, as a QImage in Format_RGB32 holds them. The part is the Width x Height pixels from
// (Left, Top) of a picture of WholeWidth x WholeHeight; pixels of the part outside that picture are left alone.
struct PicturePart {
  uint32_t* Bits = nullptr;
  std::ptrdiff_t WordsPerLine = 0;
  int32_t Left = 0;
  int32_t Top = 0;
  int32_t Width = 0;
  int32_t Height = 0;
  int32_t WholeWidth = 0;
  int32_t WholeHeight = 0;
};

// Values of GradientMode.
inline constexpr int32_t GradientModeUnavailable = 0;  // every drawing method does nothing
inline constexpr int32_t GradientModeAvailable = 2;

// Paints smooth colour gradients over a whole picture. Vertices sit on pixel corners: a vertex at (Width, y)
// lies just right of the last column, so the first row and column carry their vertex colours exactly and the
// far ones are one step short of theirs. Between vertices the colour is interpolated linearly (rectangles) or
// barycentrically (triangles). Colours are 0x00BBGGRR.
class clsGradientFill {
 public:
  explicit clsGradientFill(int32_t Mode = GradientModeAvailable) : mode_(Mode) {}

  int32_t GradientMode() const { return mode_; }

  // iColor1 at both ends and iColor2 along the middle line, top to bottom when bDirectionVert, else left to
  // right. bExtraWide pushes the ends one whole picture size beyond the edges, so only the gentler inner part
  // of each ramp shows.
  void DrawGradientTube(cDIBSection& Drawable, uint32_t iColor1, uint32_t iColor2, bool bExtraWide,
                        bool bDirectionVert) const;
  // iColor1 at the top (bDirectionVert) or left edge, changing to iColor2 towards the opposite edge.
  void GradientFillRec(cDIBSection& Drawable, uint32_t iColor1, uint32_t iColor2, bool bDirectionVert) const;
  // A colour per corner, drawn as two triangles meeting on the diagonal from top-left to bottom-right.
  void GradientFillTri(cDIBSection& Drawable, uint32_t tlColor, uint32_t trColor, uint32_t brColor,
                       uint32_t blColor) const;
  // The same gradient laid over the whole picture, with only the part's pixels written: every pixel gets
  // exactly the colour it gets when the whole picture is drawn, so a picture too large to keep can be drawn
  // a part at a time.
  void GradientFillTri(const PicturePart& Part, uint32_t tlColor, uint32_t trColor, uint32_t brColor,
                       uint32_t blColor) const;

 private:
  int32_t mode_;
};

}  // namespace tarvelin
