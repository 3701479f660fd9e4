#pragma once

class QWidget;

namespace tarvelin {

// The window's place and size kept in the settings between runs (in twips, as the settings hold them).
// Qt places the frame but sizes the client area, so the size stored is the client's: it then comes back
// exactly as it was left.
void ApplyPlacement(QWidget& Form);
void SavePlacement(const QWidget& Form);

}  // namespace tarvelin
