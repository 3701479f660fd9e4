#pragma once

#include <QImage>
#include <QPoint>
#include <QString>
#include <cmath>
#include <vector>

#include "widgets/Palette.h"
#include "widgets/ctlSlider.h"

namespace tarvelin::testing {

// The point that lies the given fraction of the way along the slider's track.
inline QPoint TrackPoint(const ctlSlider& Slider, double Fraction) {
  const int inset = Slider.TrackInset();
  return {static_cast<int>(std::lround(inset + Fraction * (Slider.width() - 2 * inset))), Slider.height() / 2};
}

// What is wrong with a split bar as drawn, or nothing. Along the middle of the track each segment's colour
// covers its share of the filled length: a pixel counts for the segment colour it is nearest to, unless it is
// nearer white (so a softened pixel at the rounded end counts). A segment may lose a pixel to rounding at each
// edge, its right one to the gap before the next; the segments together lose at most a pixel each.
inline QString SplitBarFault(ctlSlider& Bar) {
  const auto distance = [](const QColor& A, const QColor& B) {
    return std::abs(A.red() - B.red()) + std::abs(A.green() - B.green()) + std::abs(A.blue() - B.blue());
  };
  const QImage picture = Bar.grab().toImage();
  const auto& segments = Bar.Segments();
  const int inset = Bar.TrackInset();
  std::vector<int> pixels(segments.size());
  for (int x = inset; x < Bar.width() - inset; ++x) {
    const QColor pixel = picture.pixelColor(x, picture.height() / 2);
    int nearest = -1, nearestDistance = distance(pixel, Qt::white);
    for (size_t i = 0; i < segments.size(); ++i) {
      if (distance(pixel, ColourFromColorref(segments[i].second)) < nearestDistance) {
        nearest = static_cast<int>(i);
        nearestDistance = distance(pixel, ColourFromColorref(segments[i].second));
      }
    }
    if (nearest >= 0) {
      ++pixels[static_cast<size_t>(nearest)];
    }
  }
  const double filled = (Bar.width() - 2 * inset) * Bar.Value() / 100.0;
  double total = 0, covered = 0;
  for (size_t i = 0; i < segments.size(); ++i) {
    total += segments[i].first;
    covered += pixels[i];
  }
  for (size_t i = 0; i < segments.size(); ++i) {
    const double expected = total > 0 ? filled * segments[i].first / total : 0.0;
    if (std::abs(pixels[i] - expected) > 2.0) {
      return QString("%1: segment %2 covers %3 pixels for %4")
          .arg(Bar.objectName())
          .arg(i)
          .arg(pixels[i])
          .arg(expected);
    }
  }
  const double lost = (total > 0 ? filled : 0.0) - covered;
  return lost < -1 || lost > static_cast<double>(segments.size())
             ? QString("%1: segments cover %2 pixels of %3").arg(Bar.objectName()).arg(covered).arg(filled)
             : QString();
}

}  // namespace tarvelin::testing
