#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>

namespace tarvelin {

// Colours are kept as 0x00BBGGRR values throughout the program; the top byte is ignored.
QColor ColourFromColorref(uint32_t Colour);

// The light palette the program's own widgets keep, so that their text stays readable on the light
// decoration they are drawn on under any desktop theme. Message boxes and file dialogs follow the desktop.
QPalette LightPalette();

// The program's fixed colours, shared by the main window and the settings dialog.
namespace Palette {
inline constexpr uint32_t FormFirst = 0xFFEFDF;
inline constexpr uint32_t FormSecond = 0xFFC891;
inline constexpr uint32_t PanelFirst = 0xFFFFFB;
inline constexpr uint32_t PanelSecond = 0xF8ECE0;
inline constexpr uint32_t PanelBorder = 0x9C9586;
// Score bars: the best option (and every option tied with it) and the others.
inline constexpr uint32_t BestBar = 0x0CC0FE;
inline constexpr uint32_t OtherBar = 0x0980FD;
}  // namespace Palette

}  // namespace tarvelin
