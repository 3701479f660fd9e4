#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <cmath>
#include <vector>

#include "widgets/Palette.h"
#include "widgets/ctlSlider.h"

namespace tarvelin::testing {

// How much of one row of a picture, from Left up to Right, each colour covers, and where it begins (-1 when
// nowhere). Every pixel counts for the nearest of the colours or of white, so that a softened pixel at a
// rounded end still counts for the colour it mostly shows.
struct ColourRun {
  int Pixels = 0;
  int First = -1;
};

inline std::vector<ColourRun> ColourRuns(const QImage& Picture, int Row, int Left, int Right,
                                         const std::vector<QColor>& Colours) {
  const auto distance = [](const QColor& A, const QColor& B) {
    const int r = A.red() - B.red(), g = A.green() - B.green(), b = A.blue() - B.blue();
    return r * r + g * g + b * b;
  };
  std::vector<ColourRun> runs(Colours.size());
  for (int x = Left; x < Right; ++x) {
    const QColor pixel = Picture.pixelColor(x, Row);
    int nearest = -1;
    int nearestDistance = distance(pixel, Qt::white);
    for (size_t i = 0; i < Colours.size(); ++i) {
      if (distance(pixel, Colours[i]) < nearestDistance) {
        nearest = static_cast<int>(i);
        nearestDistance = distance(pixel, Colours[i]);
      }
    }
    if (nearest >= 0) {
      ColourRun& run = runs[static_cast<size_t>(nearest)];
      run.First = run.First < 0 ? x : run.First;
      ++run.Pixels;
    }
  }
  return runs;
}

// What is wrong with a split bar as drawn, or nothing. Along the middle of the track, short of its right
// edge, each segment's colour covers its share of the filled length, in the segments' order; a segment may lose the
// pixel that rounding takes at each of its two edges (its right one to the gap before the next), and the
// segments together lose at most a pixel each.
inline QString SplitBarFault(ctlSlider& Bar) {
  const QImage picture = Bar.grab().toImage();
  const int inset = Bar.TrackInset();
  const double filled = (Bar.width() - 2 * inset) * Bar.Value() / 100.0;
  std::vector<QColor> colours;
  double total = 0;
  for (const auto& [size, colour] : Bar.Segments()) {
    colours.push_back(ColourFromColorref(colour));
    total += size;
  }
  const auto runs = ColourRuns(picture, picture.height() / 2, inset, Bar.width() - inset - 1, colours);
  int covered = 0, previous = -1;
  for (size_t i = 0; i < runs.size(); ++i) {
    const double expected = total > 0 ? filled * Bar.Segments()[i].first / total : 0.0;
    covered += runs[i].Pixels;
    if (std::abs(runs[i].Pixels - expected) > 2.0 || (runs[i].Pixels > 0 && runs[i].First <= previous)) {
      return QString("%1: segment %2 covers %3 pixels from %4 for %5")
          .arg(Bar.objectName())
          .arg(i)
          .arg(runs[i].Pixels)
          .arg(runs[i].First)
          .arg(expected);
    }
    previous = runs[i].Pixels > 0 ? runs[i].First : previous;
  }
  const double lost = total > 0 ? filled - covered : 0.0;
  if (lost < -1 || lost > static_cast<double>(runs.size())) {
    return QString("%1: segments cover %2 pixels of %3").arg(Bar.objectName()).arg(covered).arg(filled);
  }
  return {};
}

}  // namespace tarvelin::testing
