#pragma once

#include <QFont>
#include <string>

class QLabel;

namespace tarvelin {

// The window's labels ask for this face in every size.
QFont LabelFont(int PointSize, bool Bold = false);

// A caption shortened with "…" until it fits a width in the label's font.
std::string FittedText(const QLabel* Label, const std::string& Caption, int Width);

}  // namespace tarvelin
