#include "widgets/Palette.h"

namespace tarvelin {

QColor ColourFromColorref(uint32_t Colour) {
  const auto channel = [Colour](int Shift) { return static_cast<int>((Colour >> Shift) & 0xFFu); };
  return QColor(channel(0), channel(8), channel(16));
}

}  // namespace tarvelin
