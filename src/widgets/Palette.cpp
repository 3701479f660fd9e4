#include "widgets/Palette.h"

namespace tarvelin {

QColor ColourFromColorref(uint32_t Colour) {
  const auto channel = [Colour](int Shift) { return static_cast<int>((Colour >> Shift) & 0xFFu); };
  return QColor(channel(0), channel(8), channel(16));
}

// The style's light colours, written out: the style's own standard palette follows the desktop's theme, and a
// dark theme would give light text on the light decoration.
QPalette LightPalette() {
  struct RoleColours {
    QPalette::ColorRole Role;
    QRgb Enabled;
    QRgb Disabled;
  };
  static constexpr RoleColours roles[] = {
      {QPalette::WindowText, 0xFF000000, 0xFFBEBEBE},
      {QPalette::Button, 0xFFEFEFEF, 0xFFEFEFEF},
      {QPalette::Light, 0xFFFFFFFF, 0xFFFFFFFF},
      {QPalette::Midlight, 0xFFCACACA, 0xFFCACACA},
      {QPalette::Dark, 0xFF9F9F9F, 0xFFBEBEBE},
      {QPalette::Mid, 0xFFB8B8B8, 0xFFB8B8B8},
      {QPalette::Text, 0xFF000000, 0xFFBEBEBE},
      {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},
      {QPalette::ButtonText, 0xFF000000, 0xFFBEBEBE},
      {QPalette::Base, 0xFFFFFFFF, 0xFFEFEFEF},
      {QPalette::Window, 0xFFEFEFEF, 0xFFEFEFEF},
      {QPalette::Shadow, 0xFF767676, 0xFFB1B1B1},
      {QPalette::Highlight, 0xFF308CC6, 0xFF919191},
      {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
      {QPalette::Link, 0xFF0000FF, 0xFF0000FF},
      {QPalette::LinkVisited, 0xFFFF00FF, 0xFFFF00FF},
      {QPalette::AlternateBase, 0xFFF7F7F7, 0xFFF7F7F7},
      {QPalette::NoRole, 0xFF000000, 0xFF000000},
      {QPalette::ToolTipBase, 0xFFFFFFDC, 0xFFFFFFDC},
      {QPalette::ToolTipText, 0xFF000000, 0xFF000000},
      {QPalette::PlaceholderText, 0x80000000, 0x80000000},
  };
  QPalette palette;
  for (const RoleColours& role : roles) {
    palette.setColor(QPalette::Active, role.Role, QColor::fromRgba(role.Enabled));
    palette.setColor(QPalette::Inactive, role.Role, QColor::fromRgba(role.Enabled));
    palette.setColor(QPalette::Disabled, role.Role, QColor::fromRgba(role.Disabled));
  }
  return palette;
}

}  // namespace tarvelin
