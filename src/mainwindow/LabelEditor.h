#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class QKeyEvent;
class QLabel;
class QLineEdit;
class QWidget;

namespace tarvelin {

class HoverHighlight;
class NameLabels;
class RowControls;
class ValueDisplay;

// In-place editing: one edit box opened over a clicked label, committed when it loses the focus or on
// Enter, cancelled on Escape; Tab and Shift+Tab move it along the labels of the same kind.
class LabelEditor final : public QObject {
  Q_OBJECT

 public:
  // Shortcuts gets the keys the box does not use itself (the window's Ctrl shortcuts); true when taken.
  LabelEditor(QWidget* Client, QLabel* Title, RowControls& Rows, NameLabels& Names, ValueDisplay& Values,
              const HoverHighlight& Highlight, std::function<bool(QKeyEvent*)> Shortcuts);
  Q_DISABLE_COPY_MOVE(LabelEditor)

  // Opens the edit box over a label (committing an open edit first), filled with Value or else the label's
  // text, fully selected. EditMode 1 edits a number, anything else a text.
  void BeginLabelEdit(QLabel* Label, int16_t EditMode, std::optional<std::string> Value = std::nullopt);
  // The label being edited while the edit box is open, else null.
  QLabel* EditingLabel() const;
  // Commits the open edit: a blank text is never committed, so a name cannot be erased to nothing.
  void txtEditBox_LostFocus();
  // Closes the box without committing.
  void CancelLabelEdit();
  // A click on the background commits any edit and takes the focus away from the edit box.
  void Form_Click();
  // Keeps the open box over its label after the layout moved it.
  void FollowLabel();

  // A picture of the window shows no edit box: Hide takes it away, Restore brings it back as it was.
  void HideForCapture();
  void RestoreAfterCapture();

 protected:
  // Watches the edit box, the client area and every label.
  bool eventFilter(QObject* Watched, QEvent* Event) override;

 private:
  void LabelClicked(QLabel* Label);
  bool txtEditBox_KeyPress(QKeyEvent* Event);
  void JumpToTabOffset(int Offset);

  QLabel* lblTitle;
  QWidget* client_;
  RowControls& rows_;
  NameLabels& names_;
  ValueDisplay& values_;
  const HoverHighlight& highlight_;
  std::function<bool(QKeyEvent*)> shortcuts_;
  QLineEdit* txtEditBox = nullptr;
  QWidget* txtHiddenButton = nullptr;  // takes the focus when an edit ends, committing it
  QLabel* editingLabel_ = nullptr;
  int16_t editMode_ = 0;
  QLabel* capturedLabel_ = nullptr;  // the label being edited when a picture was taken
  QString capturedText_;
};

}  // namespace tarvelin
