#pragma once

#include <QColor>
#include <cstdint>

namespace tarvelin {

// Colours are kept as 0x00BBGGRR values throughout the program; the top byte is ignored.
QColor ColourFromColorref(uint32_t Colour);

}  // namespace tarvelin
