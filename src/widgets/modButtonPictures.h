#pragma once

#include <QRectF>

class QPainter;

namespace tarvelin {

// The pictures a GraphicalButton can show beside its caption. Collapse marks the "Hide ..." panel toggles,
// Expand the "Show ..." ones.
enum class ButtonPicture { None, New, Load, Save, Settings, Add, Delete, Collapse, Expand, Ok, Cancel };

// Draws the picture as vector shapes filling the square Box, so it stays sharp at any scale. A disabled
// picture is drawn in light greys. The painter's state is left as it was.
void PaintButtonPicture(QPainter& Painter, ButtonPicture Picture, const QRectF& Box, bool Enabled);

}  // namespace tarvelin
