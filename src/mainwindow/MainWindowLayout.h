#pragma once

#include <optional>

namespace tarvelin {

// The main window's layout arithmetic, in pixels, kept free of widgets so that it can be checked
// without a display.

struct PixelSize {
  int Width = 0;
  int Height = 0;
  bool operator==(const PixelSize&) const = default;
};

// The window's fixed measures.
inline constexpr int RowHeight = 20;         // labels and sliders of every row
inline constexpr int NameColumnWidth = 100;  // option and attribute names
inline constexpr int ValueLabelWidth = 64;
inline constexpr int TitleTop = 10;
inline constexpr int TitleHeight = 36;
inline constexpr int PanelsTop = 56;
inline constexpr int PanelMargin = 10;

// The smallest client area the window may have.
inline constexpr PixelSize MinClientSize{640, 420};

// The outer size that brings a too-small client area back to the minimum, one dimension at a time and
// height first (the resize that follows snaps the width). Nothing when maximised or large enough.
std::optional<PixelSize> SnapToMinimumClientSize(PixelSize Outer, PixelSize Client, bool Maximised);

// Lefts of the command buttons, laid right to left from 20 pixels inside the client's right edge with
// 10 pixels between them.
struct CommandRowLefts {
  int New = 0, Load = 0, Save = 0, Settings = 0;
};
CommandRowLefts LayoutCommandRow(int ClientWidth, int NewWidth, int LoadWidth, int SaveWidth, int SettingsWidth);

// Rows of every panel start this far below the panel's top: the heading stands 5 pixels down and rows
// begin two gaps of 5 below it. Each row is RowHeight high with 5 pixels to the next.
int FirstRowOffset(int HeadingHeight);
int RowStep(int RowPixels);

// A collapsed panel keeps only its heading: HeadingHeight + 10.
int ScorePanelHeight(int TotalOptions, int ScoreRowStepS, int HeadingHeight, bool Expanded);
int WeightingPanelHeight(int WeightingExtentW, int HeadingHeight, int ValueLabelHeight, bool Expanded);
int RatingPanelHeight(int TotalOptions, int RatingExtentR, int ValueLabelHeight, int HeadingHeight, bool Expanded);

// Top of the first rating row of an option's block, relative to the panel's top.
int RatingBlockOffset(int Option, int RatingExtentR, int ValueLabelHeight, int HeadingHeight);

// The distance from the first row's top to the last row's top (W and R) for a number of rows.
int RowExtent(int Rows, int RowPixels);

}  // namespace tarvelin
