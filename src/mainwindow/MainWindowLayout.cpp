#include "mainwindow/MainWindowLayout.h"

namespace tarvelin {

std::optional<PixelSize> SnapToMinimumClientSize(PixelSize Outer, PixelSize Client, bool Maximised) {
  if (Maximised) {
    return std::nullopt;
  }
  if (Client.Height < MinClientSize.Height) {
    return PixelSize{Outer.Width, Outer.Height - Client.Height + MinClientSize.Height};
  }
  if (Client.Width < MinClientSize.Width) {
    return PixelSize{Outer.Width - Client.Width + MinClientSize.Width, Outer.Height};
  }
  return std::nullopt;
}

CommandRowLefts LayoutCommandRow(int ClientWidth, int NewWidth, int LoadWidth, int SaveWidth, int SettingsWidth) {
  CommandRowLefts lefts;
  lefts.Settings = ClientWidth - 20 - SettingsWidth;
  lefts.Save = lefts.Settings - 10 - SaveWidth;
  lefts.Load = lefts.Save - 10 - LoadWidth;
  lefts.New = lefts.Load - 10 - NewWidth;
  return lefts;
}

int FirstRowOffset(int HeadingHeight) {
  return HeadingHeight + 15;
}

int RowStep(int RowPixels) {
  return RowPixels + 5;
}

int ScorePanelHeight(int TotalOptions, int ScoreRowStepS, int HeadingHeight, bool Expanded) {
  return Expanded ? TotalOptions * (ScoreRowStepS + 5) + HeadingHeight + 15 : HeadingHeight + 10;
}

int WeightingPanelHeight(int WeightingExtentW, int HeadingHeight, int ValueLabelHeight, bool Expanded) {
  return Expanded ? HeadingHeight + 15 + WeightingExtentW + ValueLabelHeight + 5 : HeadingHeight + 10;
}

int RatingPanelHeight(int TotalOptions, int RatingExtentR, int ValueLabelHeight, int HeadingHeight, bool Expanded) {
  return Expanded ? TotalOptions * (RatingExtentR + ValueLabelHeight + 5) + HeadingHeight + 15 : HeadingHeight + 10;
}

int RatingBlockOffset(int Option, int RatingExtentR, int ValueLabelHeight, int HeadingHeight) {
  return FirstRowOffset(HeadingHeight) + Option * (RatingExtentR + ValueLabelHeight + 5);
}

int RowExtent(int Rows, int RowPixels) {
  return Rows > 0 ? (Rows - 1) * RowStep(RowPixels) : 0;
}

}  // namespace tarvelin
