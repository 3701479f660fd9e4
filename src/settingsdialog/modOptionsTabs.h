#pragma once

#include <QColor>
#include <QRect>

class QPainter;

namespace tarvelin {

// The colour of a tab's caption: the selected tab's caption stands out, the others are muted.
QColor TabCaptionColour(bool Selected);

// Paints the tab whose caption fills Tab: a rounded top open at the bottom, where it meets the page panel.
// The selected tab is drawn in the panel's colour and reaches over the panel's border, so that it opens into
// the page; the others stand a little lower and light up while the mouse is over them.
void PaintOptionsTab(QPainter& Painter, const QRect& Tab, bool Selected, bool Hovered);

}  // namespace tarvelin
