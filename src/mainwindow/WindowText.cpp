#include "mainwindow/WindowText.h"

#include <QFontMetrics>
#include <QHash>
#include <QLabel>
#include <QLocale>
#include <string_view>

#include "mainwindow/modDisplay.h"
#include "startup/modStartup.h"

namespace tarvelin {

namespace {

// Edited names add new texts; past this many the widths are measured afresh.
constexpr qsizetype kMostKeptWidths = 4096;

// The widths measured in each font, by the font's key (a plain string, so nothing here outlives the fonts
// themselves). The window uses a handful of fonts.
QHash<QString, int>& WidthsFor(const QFont& Font) {
  static QHash<QString, QHash<QString, int>> fonts;
  return fonts[Font.key()];
}

}  // namespace

QFont LabelFont(int PointSize, bool Bold) {
  QFont font("Comic Sans MS", PointSize);
  font.setBold(Bold);
  return font;
}

std::string DisplayDecimalSeparator() {
  return QLocale().decimalPoint().toStdString();
}

NumberFormat DisplayNumberFormat() {
  return [rounding = Program().Topic->Rounding(), decimal = Program().DisplayAsDecimal,
          separator = DisplayDecimalSeparator()](double Value) {
    return FormatNumberForDisplay(Value, rounding, decimal, separator);
  };
}

int TextWidth(const QFont& Font, const QString& Text) {
  QHash<QString, int>& widths = WidthsFor(Font);
  const auto known = widths.constFind(Text);
  if (known != widths.constEnd()) {
    return *known;
  }
  if (widths.size() >= kMostKeptWidths) {
    widths.clear();
  }
  const int width = QFontMetrics(Font).horizontalAdvance(Text);
  widths.insert(Text, width);
  return width;
}

FittedCaption FitText(const QFont& Font, const std::string& Caption, int Width) {
  return FitCaption(Caption, Width, [&Font](std::string_view text) {
    return TextWidth(Font, QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  });
}

std::string FittedText(const QLabel* Label, const std::string& Caption, int Width) {
  return FitText(Label->font(), Caption, Width).Text;
}

}  // namespace tarvelin
