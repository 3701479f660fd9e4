#pragma once

#include <QFont>
#include <QString>
#include <string>

#include "insight/InsightText.h"
#include "util/modFormElements.h"

class QLabel;

namespace tarvelin {

// The window's labels ask for this face in every size.
QFont LabelFont(int PointSize, bool Bold = false);

// The decimal separator of the person's locale, which the value labels show and the edit box takes.
std::string DisplayDecimalSeparator();

// Numbers written as the value labels show them: the topic's rounding, decimals or percentages, and the
// locale's decimal separator. For the sentences, tooltips and report built from the topic.
NumberFormat DisplayNumberFormat();

// The advance width of a text in a font. Widths are kept once measured: every layout pass fits the same
// captions again, and shaping a text costs far more than looking it up.
int TextWidth(const QFont& Font, const QString& Text);

// A caption shortened with "…" until it fits a width in the font.
FittedCaption FitText(const QFont& Font, const std::string& Caption, int Width);
std::string FittedText(const QLabel* Label, const std::string& Caption, int Width);

}  // namespace tarvelin
