#include "widgets/Palette.h"

#include <QApplication>
#include <QStyle>

namespace tarvelin {

QColor ColourFromColorref(uint32_t Colour) {
  const auto channel = [Colour](int Shift) { return static_cast<int>((Colour >> Shift) & 0xFFu); };
  return QColor(channel(0), channel(8), channel(16));
}

// The style's own palette is its light one, whatever palette the desktop has set for the application.
QPalette LightPalette() {
  return QApplication::style()->standardPalette();
}

}  // namespace tarvelin
