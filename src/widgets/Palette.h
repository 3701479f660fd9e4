#pragma once

#include <QColor>
#include <QPalette>
#include <array>
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

// One colour per attribute in split score bars, told apart by people with the common colour-vision
// deficiencies: the Okabe-Ito colours, most distinct first, with grey, dark grey and wine for the last three.
inline constexpr std::array<uint32_t, 10> AttributeColours = {
    0xB27200,  // blue
    0x009FE6,  // orange
    0x739E00,  // bluish green
    0xA779CC,  // reddish purple
    0xE9B456,  // sky blue
    0x005ED5,  // vermillion
    0x42E4F0,  // yellow
    0x999999,  // grey
    0x4D4D4D,  // dark grey
    0x552288,  // wine
};
// The colour of an attribute; a topic with more attributes than colours starts again from the first.
constexpr uint32_t AttributeColour(int AttributeID) {
  return AttributeColours[static_cast<size_t>(AttributeID) % AttributeColours.size()];
}
}  // namespace Palette

}  // namespace tarvelin
