#pragma once

#include <QObject>

class QLabel;
class QWidget;

namespace tarvelin {

class EntryButtons;
class PanelLayout;
class RowControls;

// The highlight under the mouse: a band over the row of the attribute or option whose name the mouse is
// on (for an option, its whole block of ratings), a stronger mark around the name itself, and the delete
// button of that row beside the name.
class HoverHighlight final : public QObject {
  Q_OBJECT

 public:
  HoverHighlight(QWidget* Client, RowControls& Rows, const PanelLayout& Panels, EntryButtons& Entries);
  Q_DISABLE_COPY_MOVE(HoverHighlight)

  // Takes the highlight and the delete buttons away.
  void Clear();
  // The name the highlight stands around, else null; and the mark's place.
  QLabel* HighlightedLabel() const { return highlightedLabel_; }
  QRect MarkGeometry() const;

 protected:
  // Watches the client area and the row labels for the mouse.
  bool eventFilter(QObject* Watched, QEvent* Event) override;

 private:
  void PlaceHighlight(QLabel* Label, bool Attribute);

  QWidget* client_;
  RowControls& rows_;
  const PanelLayout& panels_;
  EntryButtons& entries_;
  QWidget* shpHighlight = nullptr;   // around the highlighted name; the edit box takes its place
  QWidget* shpHighlight2 = nullptr;  // the band of the highlighted row
  QLabel* highlightedLabel_ = nullptr;
};

}  // namespace tarvelin
