#include "graphics/clsGradientFill.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "graphics/cDIBSection.h"

namespace tarvelin {

namespace {

// Colour channels in memory order (blue, green, red), in byte units: a 16-bit component divided by 256.
using Channels = std::array<double, 3>;

Channels ChannelsOf(const TriVertex& Vertex) {
  return {Vertex.Blue / 256.0, Vertex.Green / 256.0, Vertex.Red / 256.0};
}

constexpr int kFractionBits = 40;
constexpr int64_t kFixedUnit = int64_t{1} << kFractionBits;
constexpr double kFixedOne = static_cast<double>(kFixedUnit);

// One channel along a run of pixels, in byte units as fixed point with 40 fraction bits. The start is raised
// by more than the rounding of all the steps together, so a run never falls below the exact value (a flat
// gradient stays exactly its colour) and never rises more than a few billionths above it.
struct ChannelRamp {
  int64_t Value;
  int64_t Step;
};
using ColourRamp = std::array<ChannelRamp, 3>;

ColourRamp MakeRamp(const Channels& Start, const Channels& Slope, int64_t Length) {
  ColourRamp ramp{};
  for (size_t c = 0; c < 3; ++c) {
    ramp[c] = {static_cast<int64_t>(std::ceil(Start[c] * kFixedOne)) + 2 * Length + 2,
               static_cast<int64_t>(std::floor(Slope[c] * kFixedOne))};
  }
  return ramp;
}

void Advance(ColourRamp& Ramp, int64_t Pixels) {
  for (ChannelRamp& channel : Ramp) {
    channel.Value += Pixels * channel.Step;
  }
}

uint8_t ByteOf(const ChannelRamp& Channel) {
  return static_cast<uint8_t>(Channel.Value >> kFractionBits);
}

// How many pixels from a channel's current value on share its byte (at least one); none when it never
// changes. The decoration's sweeps change by a few dozen levels over hundreds of pixels, so whole runs can be
// filled at once; a channel that changes more often than every fourth pixel is taken a pixel at a time rather
// than paying for the division.
int64_t SameByteRun(const ChannelRamp& Channel) {
  if (Channel.Step == 0) {
    return std::numeric_limits<int64_t>::max();
  }
  if (Channel.Step >= kFixedUnit / 4 || Channel.Step <= -kFixedUnit / 4) {
    return 1;
  }
  const int64_t levelStart = Channel.Value >> kFractionBits << kFractionBits;
  if (Channel.Step > 0) {
    return (levelStart + kFixedUnit - Channel.Value + Channel.Step - 1) / Channel.Step;
  }
  return (Channel.Value - levelStart) / -Channel.Step + 1;
}

// Pixels as a DIB stores them: blue, green, red.
struct BgrPixels {
  uint8_t* Next;

  void Put(int64_t Count, uint8_t Blue, uint8_t Green, uint8_t Red) {
    for (; Count > 0; --Count, Next += 3) {
      Next[0] = Blue;
      Next[1] = Green;
      Next[2] = Red;
    }
  }
};

// Pixels as 0xFFRRGGBB words.
struct WordPixels {
  uint32_t* Next;

  void Put(int64_t Count, uint8_t Blue, uint8_t Green, uint8_t Red) {
    const uint32_t word = 0xFF000000u | uint32_t{Red} << 16 | uint32_t{Green} << 8 | Blue;
    Next = std::fill_n(Next, Count, word);
  }
};

// Each channel's next change is worked out only when it has changed, so a run costs a division only for the
// channel that ends it.
template <class Pixels>
void FillSpan(Pixels Out, int64_t Count, ColourRamp Ramp) {
  std::array<int64_t, 3> nextChange{};
  for (size_t c = 0; c < 3; ++c) {
    nextChange[c] = SameByteRun(Ramp[c]);
  }
  int64_t done = 0;
  while (done < Count) {
    const int64_t end = std::min({Count, nextChange[0], nextChange[1], nextChange[2]});
    Out.Put(end - done, ByteOf(Ramp[0]), ByteOf(Ramp[1]), ByteOf(Ramp[2]));
    Advance(Ramp, end - done);
    for (size_t c = 0; c < 3; ++c) {
      if (nextChange[c] == end) {
        nextChange[c] = end + SameByteRun(Ramp[c]);
      }
    }
    done = end;
  }
}

// The pixels a fill may write: [Left, Right) x [Top, Bottom) of a picture of WholeWidth x WholeHeight, whose
// size places the gradient's vertices.
class DibRows {
 public:
  explicit DibRows(cDIBSection& Picture) : picture_(Picture) {}

  int64_t WholeWidth() const { return picture_.Width(); }
  int64_t Left() const { return 0; }
  int64_t Right() const { return picture_.Width(); }
  int64_t Top() const { return 0; }
  int64_t Bottom() const { return picture_.Height(); }
  BgrPixels At(int64_t X, int64_t Y) { return {picture_.ScanLine(static_cast<int32_t>(Y)) + X * 3}; }

 private:
  cDIBSection& picture_;
};

class PartRows {
 public:
  explicit PartRows(const PicturePart& Part) : part_(Part) {}

  int64_t WholeWidth() const { return part_.WholeWidth; }
  int64_t Left() const { return std::max(part_.Left, 0); }
  int64_t Right() const { return std::min(int64_t{part_.Left} + part_.Width, int64_t{part_.WholeWidth}); }
  int64_t Top() const { return std::max(part_.Top, 0); }
  int64_t Bottom() const { return std::min(int64_t{part_.Top} + part_.Height, int64_t{part_.WholeHeight}); }
  WordPixels At(int64_t X, int64_t Y) { return {part_.Bits + (Y - part_.Top) * part_.WordsPerLine + (X - part_.Left)}; }

 private:
  const PicturePart& part_;
};

// A rectangle from UpperLeft to LowerRight (both edges exclusive there) whose colour runs from UpperLeft's at
// its left (or top) edge towards LowerRight's at the opposite edge.
void FillRectangle(cDIBSection& Target, const TriVertex& UpperLeft, const TriVertex& LowerRight, bool Vertical) {
  const int64_t left = std::max(UpperLeft.x, 0);
  const int64_t right = std::min(LowerRight.x, Target.Width());
  const int64_t top = std::max(UpperLeft.y, 0);
  const int64_t bottom = std::min(LowerRight.y, Target.Height());
  if (left >= right || top >= bottom) {
    return;
  }
  const Channels from = ChannelsOf(UpperLeft);
  const Channels to = ChannelsOf(LowerRight);
  const int64_t length = Vertical ? int64_t{LowerRight.y} - UpperLeft.y : int64_t{LowerRight.x} - UpperLeft.x;
  Channels slope{};
  for (size_t c = 0; c < 3; ++c) {
    slope[c] = (to[c] - from[c]) / static_cast<double>(length);
  }
  const auto valueAt = [&](int64_t Offset) {
    Channels value{};
    for (size_t c = 0; c < 3; ++c) {
      value[c] = from[c] + slope[c] * static_cast<double>(Offset);
    }
    return value;
  };
  const int64_t width = right - left;
  if (Vertical) {
    for (int64_t y = top; y < bottom; ++y) {
      FillSpan(BgrPixels{Target.ScanLine(static_cast<int32_t>(y)) + left * 3}, width,
               MakeRamp(valueAt(y - UpperLeft.y), {}, width));
    }
    return;
  }
  uint8_t* firstRow = Target.ScanLine(static_cast<int32_t>(top)) + left * 3;
  FillSpan(BgrPixels{firstRow}, width, MakeRamp(valueAt(left - UpperLeft.x), slope, width));
  for (int64_t y = top + 1; y < bottom; ++y) {
    std::memcpy(Target.ScanLine(static_cast<int32_t>(y)) + left * 3, firstRow, static_cast<size_t>(width * 3));
  }
}

// One edge of a triangle as E(x, y) = A x + B y + C, positive inside. A point on the edge belongs to the
// triangle only when the edge is a left or top one, so two triangles sharing an edge never both paint it
// and a rectangle's right and bottom edges stay outside, as with the rectangle gradient.
struct Edge {
  int64_t A, B, C;
  bool Inclusive;

  int64_t At(int64_t X, int64_t Y) const { return A * X + B * Y + C; }
};

Edge EdgeThrough(const TriVertex& P, const TriVertex& Q, int64_t Orientation) {
  const int64_t a = (int64_t{P.y} - Q.y) * Orientation;
  const int64_t b = (int64_t{Q.x} - P.x) * Orientation;
  return {a, b, -a * P.x - b * P.y, a > 0 || (a == 0 && b > 0)};
}

int64_t FloorDiv(int64_t Numerator, int64_t Divisor) {  // Divisor > 0
  return Numerator >= 0 ? Numerator / Divisor : -((-Numerator + Divisor - 1) / Divisor);
}

// Narrows the run [Left, Right) of row Y to the points on the inner side of the edge.
void ClipRunToEdge(const Edge& Side, int64_t Y, int64_t& Left, int64_t& Right) {
  const int64_t rowPart = Side.B * Y + Side.C;
  const int64_t least = Side.Inclusive ? 0 : 1;  // the smallest value of E that counts as inside
  if (Side.A > 0) {
    Left = std::max(Left, -FloorDiv(rowPart - least, Side.A));
  } else if (Side.A < 0) {
    Right = std::min(Right, FloorDiv(rowPart - least, -Side.A) + 1);
  } else if (rowPart < least) {
    Right = Left;
  }
}

// Each row's run is found and its colours started at its left end as over the whole picture, then cut to the
// pixels the target holds, so a part gets exactly the whole picture's colours.
template <class Rows>
void FillTriangle(Rows Target, const TriVertex& V0, const TriVertex& V1, const TriVertex& V2) {
  const int64_t area =
      (int64_t{V1.x} - V0.x) * (int64_t{V2.y} - V0.y) - (int64_t{V1.y} - V0.y) * (int64_t{V2.x} - V0.x);
  if (area == 0) {
    return;
  }
  const int64_t orientation = area > 0 ? 1 : -1;
  // Edge i lies opposite vertex i, so its value over the area is vertex i's barycentric weight.
  const std::array<Edge, 3> edges = {EdgeThrough(V1, V2, orientation), EdgeThrough(V2, V0, orientation),
                                     EdgeThrough(V0, V1, orientation)};
  const std::array<Channels, 3> colours = {ChannelsOf(V0), ChannelsOf(V1), ChannelsOf(V2)};
  const double weightScale = 1.0 / static_cast<double>(area * orientation);
  const int64_t top = std::max(int64_t{std::min({V0.y, V1.y, V2.y})}, Target.Top());
  const int64_t bottom = std::min(int64_t{std::max({V0.y, V1.y, V2.y})}, Target.Bottom() - 1);
  for (int64_t y = top; y <= bottom; ++y) {
    int64_t left = 0;
    int64_t right = Target.WholeWidth();
    for (const Edge& side : edges) {
      ClipRunToEdge(side, y, left, right);
    }
    const int64_t from = std::max(left, Target.Left());
    const int64_t to = std::min(right, Target.Right());
    if (from >= to) {
      continue;
    }
    Channels start{};
    Channels slope{};
    for (size_t vertex = 0; vertex < 3; ++vertex) {
      const double weight = static_cast<double>(edges[vertex].At(left, y)) * weightScale;
      const double weightStep = static_cast<double>(edges[vertex].A) * weightScale;
      for (size_t c = 0; c < 3; ++c) {
        start[c] += colours[vertex][c] * weight;
        slope[c] += colours[vertex][c] * weightStep;
      }
    }
    ColourRamp ramp = MakeRamp(start, slope, right - left);
    Advance(ramp, from - left);
    FillSpan(Target.At(from, y), to - from, ramp);
  }
}

TriVertex VertexAt(int32_t X, int32_t Y, uint32_t Colour) {
  TriVertex vertex;
  vertex.x = X;
  vertex.y = Y;
  SetTriVertexColour(vertex, Colour);
  return vertex;
}

template <class Rows>
void FillFourCorners(Rows Target, int32_t Width, int32_t Height, uint32_t tlColor, uint32_t trColor, uint32_t brColor,
                     uint32_t blColor) {
  const TriVertex topLeft = VertexAt(0, 0, tlColor);
  const TriVertex bottomRight = VertexAt(Width, Height, brColor);
  FillTriangle(Target, topLeft, VertexAt(Width, 0, trColor), bottomRight);
  FillTriangle(Target, topLeft, bottomRight, VertexAt(0, Height, blColor));
}

// A band across the whole picture from position From to To along the gradient's direction.
void FillBand(cDIBSection& Target, int32_t From, int32_t To, uint32_t FromColour, uint32_t ToColour, bool Vertical) {
  if (Vertical) {
    FillRectangle(Target, VertexAt(0, From, FromColour), VertexAt(Target.Width(), To, ToColour), true);
  } else {
    FillRectangle(Target, VertexAt(From, 0, FromColour), VertexAt(To, Target.Height(), ToColour), false);
  }
}

}  // namespace

void SetTriVertexColour(TriVertex& Vertex, uint32_t Colour) {
  Vertex.Red = static_cast<uint16_t>((Colour & 0xFFu) << 8);
  Vertex.Green = static_cast<uint16_t>(Colour & 0xFF00u);
  Vertex.Blue = static_cast<uint16_t>((Colour >> 8) & 0xFF00u);
  Vertex.Alpha = 0;
}

void clsGradientFill::DrawGradientTube(cDIBSection& Drawable, uint32_t iColor1, uint32_t iColor2, bool bExtraWide,
                                       bool bDirectionVert) const {
  if (mode_ == GradientModeUnavailable) {
    return;
  }
  const int32_t length = bDirectionVert ? Drawable.Height() : Drawable.Width();
  const int32_t half = length / 2;
  const int32_t beyond = bExtraWide ? length : 0;
  FillBand(Drawable, -beyond, half, iColor1, iColor2, bDirectionVert);
  FillBand(Drawable, half, length + beyond, iColor2, iColor1, bDirectionVert);
}

void clsGradientFill::GradientFillRec(cDIBSection& Drawable, uint32_t iColor1, uint32_t iColor2,
                                      bool bDirectionVert) const {
  if (mode_ == GradientModeUnavailable) {
    return;
  }
  const int32_t length = bDirectionVert ? Drawable.Height() : Drawable.Width();
  FillBand(Drawable, 0, length, iColor1, iColor2, bDirectionVert);
}

void clsGradientFill::GradientFillTri(cDIBSection& Drawable, uint32_t tlColor, uint32_t trColor, uint32_t brColor,
                                      uint32_t blColor) const {
  if (mode_ == GradientModeUnavailable) {
    return;
  }
  FillFourCorners(DibRows(Drawable), Drawable.Width(), Drawable.Height(), tlColor, trColor, brColor, blColor);
}

void clsGradientFill::GradientFillTri(const PicturePart& Part, uint32_t tlColor, uint32_t trColor, uint32_t brColor,
                                      uint32_t blColor) const {
  if (mode_ == GradientModeUnavailable) {
    return;
  }
  FillFourCorners(PartRows(Part), Part.WholeWidth, Part.WholeHeight, tlColor, trColor, brColor, blColor);
}

}  // namespace tarvelin
