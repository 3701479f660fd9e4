#include "mainwindow/LabelEditor.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "mainwindow/HoverHighlight.h"
#include "mainwindow/NameLabels.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/ValueDisplay.h"
#include "mainwindow/modLabelEditing.h"
#include "startup/modStartup.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

constexpr int kEditBoxMaxLength = 255;
constexpr int16_t kNumericEdit = 1;

TarvelinTopic& Topic() {
  return *Program().Topic;
}

// The character a key stands for in the box's filter, or nothing for keys that type nothing.
std::optional<char32_t> FilterKeyOf(const QKeyEvent* Event) {
  switch (Event->key()) {
    case Qt::Key_Escape:
      return KeyEscape;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return KeyEnter;
    case Qt::Key_Backspace:
      return KeyBackspace;
    default:
      if (!Event->text().isEmpty() && Event->text().at(0).isPrint()) {
        return Event->text().toUcs4().value(0);
      }
      return std::nullopt;
  }
}

}  // namespace

LabelEditor::LabelEditor(QWidget* Client, QLabel* Title, RowControls& Rows, NameLabels& Names, ValueDisplay& Values,
                         const HoverHighlight& Highlight, std::function<bool(QKeyEvent*)> Shortcuts)
    : lblTitle(Title),
      client_(Client),
      rows_(Rows),
      names_(Names),
      values_(Values),
      highlight_(Highlight),
      shortcuts_(std::move(Shortcuts)) {
  txtEditBox = new QLineEdit(Client);
  txtEditBox->setObjectName("txtEditBox");
  txtEditBox->setFrame(false);
  txtEditBox->setMaxLength(kEditBoxMaxLength);
  txtEditBox->installEventFilter(this);
  txtEditBox->hide();
  txtHiddenButton = new QWidget(Client);
  txtHiddenButton->setObjectName("txtHiddenButton");
  txtHiddenButton->setFocusPolicy(Qt::StrongFocus);
  txtHiddenButton->setGeometry(0, 0, 0, 0);
  Client->installEventFilter(this);
  Title->installEventFilter(this);
}

QLabel* LabelEditor::EditingLabel() const {
  return txtEditBox->isVisible() ? editingLabel_ : nullptr;
}

void LabelEditor::LabelClicked(QLabel* Label) {
  std::vector<QLabel*>* labels = rows_.ArrayOf(Label);
  const int16_t index = labels != nullptr ? RowControls::IndexOf(*labels, Label) : 0;
  if (Label == lblTitle) {
    BeginLabelEdit(Label, 0, Topic().Name());
  } else if (labels == &rows_.lblOption) {
    BeginLabelEdit(Label, 0, Topic().GetOptionName(index));
  } else if (labels == &rows_.lblAttribute) {
    BeginLabelEdit(Label, 0, Topic().GetAttributeName(index));
  } else if (labels == &rows_.lblWeighting || labels == &rows_.lblRating) {
    BeginLabelEdit(Label, kNumericEdit);
  } else {
    Form_Click();
  }
}

void LabelEditor::BeginLabelEdit(QLabel* Label, int16_t EditMode, std::optional<std::string> Value) {
  txtEditBox_LostFocus();
  QFont font = Label->font();
  font.setPointSizeF(font.pointSizeF() - 1);
  txtEditBox->setFont(font);
  txtEditBox->setAlignment(Label->alignment());
  // The highlight stands around the name under the mouse; the box takes its place when it is this label's.
  const QRect mark = highlight_.MarkGeometry();
  const bool overHighlight = !mark.isNull() && highlight_.HighlightedLabel() == Label;
  txtEditBox->setGeometry(overHighlight ? mark : Label->geometry());
  txtEditBox->setText(Value ? QString::fromStdString(*Value) : Label->text());
  editingLabel_ = Label;
  editMode_ = EditMode;
  txtEditBox->setAccessibleName(Label->accessibleName());
  txtEditBox->show();
  txtEditBox->raise();
  txtEditBox->setFocus(Qt::OtherFocusReason);
  txtEditBox->selectAll();
}

void LabelEditor::txtEditBox_LostFocus() {
  if (!txtEditBox->isVisible() || editingLabel_ == nullptr) {
    return;
  }
  QLabel* label = editingLabel_;
  // The edit ends here: the label may be removed with its row, and nothing must reach it afterwards.
  editingLabel_ = nullptr;
  const std::string text = txtEditBox->text().toStdString();
  txtEditBox->hide();
  if (IsBlankValue(text)) {
    return;
  }
  std::vector<QLabel*>* labels = rows_.ArrayOf(label);
  if (labels == &rows_.lblWeighting || labels == &rows_.lblRating) {
    if (label->text().toStdString() != text) {
      label->setText(QString::fromStdString(text));
      const int16_t index = RowControls::IndexOf(*labels, label);
      labels == &rows_.lblWeighting ? values_.lblWeighting_Change(index) : values_.lblRating_Change(index);
    }
    return;
  }
  names_.SetCaption(label, text);
}

// Escape restores and closes without committing; Enter commits; Tab and Shift+Tab commit and move on to
// the next or previous label of the same kind. Keys that type nothing (arrows, Delete) pass untouched.
bool LabelEditor::txtEditBox_KeyPress(QKeyEvent* Event) {
  if (Event->key() == Qt::Key_Tab || Event->key() == Qt::Key_Backtab) {
    const int offset = Event->key() == Qt::Key_Tab && !(Event->modifiers() & Qt::ShiftModifier) ? 1 : -1;
    QLabel* label = editingLabel_;
    txtEditBox_LostFocus();
    editingLabel_ = label;
    JumpToTabOffset(offset);
    return true;
  }
  if (shortcuts_(Event)) {
    return true;
  }
  const std::optional<char32_t> key = FilterKeyOf(Event);
  if ((Event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) || !key) {
    return false;
  }
  const QString text = txtEditBox->text();
  const QString remaining = txtEditBox->hasSelectedText()
                                ? text.left(txtEditBox->selectionStart()) + text.mid(txtEditBox->selectionEnd())
                                : text;
  switch (FilterEditBoxKey(*key, remaining.toStdU32String(), editMode_ == kNumericEdit, kEditBoxMaxLength)) {
    case EditKeyAction::Accept:
      return false;
    case EditKeyAction::Discard:
      return true;
    case EditKeyAction::Cancel:
      CancelLabelEdit();
      return true;
    case EditKeyAction::Commit:
      txtEditBox_LostFocus();
      txtHiddenButton->setFocus(Qt::OtherFocusReason);
      return true;
  }
  return false;
}

void LabelEditor::CancelLabelEdit() {
  if (editingLabel_ != nullptr) {
    txtEditBox->setText(editingLabel_->text());
  }
  editingLabel_ = nullptr;
  txtEditBox->hide();
  txtHiddenButton->setFocus(Qt::OtherFocusReason);
}

// Moves the editor to the next (+1) or previous (-1) label of the array last edited, wrapping at both
// ends; the title belongs to no array, so nothing opens after it.
void LabelEditor::JumpToTabOffset(int Offset) {
  QLabel* label = editingLabel_;
  std::vector<QLabel*>* labels = label != nullptr ? rows_.ArrayOf(label) : nullptr;
  if (labels == nullptr || labels->empty()) {
    txtHiddenButton->setFocus(Qt::OtherFocusReason);
    return;
  }
  const int last = static_cast<int>(labels->size()) - 1;
  int index = RowControls::IndexOf(*labels, label) + Offset;
  if (index > last) {
    index = 0;
  } else if (index < 0) {
    index = last;
  }
  QLabel* next = (*labels)[static_cast<size_t>(index)];
  const std::string caption = NameLabels::CaptionOf(next);
  if (caption.empty()) {
    BeginLabelEdit(next, editMode_);
  } else {
    BeginLabelEdit(next, editMode_, caption);
  }
}

void LabelEditor::Form_Click() {
  txtEditBox_LostFocus();
  txtHiddenButton->setFocus(Qt::MouseFocusReason);
}

void LabelEditor::FollowLabel() {
  if (txtEditBox->isVisible() && editingLabel_ != nullptr) {
    txtEditBox->setGeometry(editingLabel_->geometry());
  }
}

void LabelEditor::HideForCapture() {
  capturedLabel_ = EditingLabel();
  capturedText_ = txtEditBox->text();
  txtEditBox->hide();
}

void LabelEditor::RestoreAfterCapture() {
  if (capturedLabel_ != nullptr) {
    txtEditBox->setGeometry(capturedLabel_->geometry());
    txtEditBox->setText(capturedText_);
    txtEditBox->show();
    txtEditBox->setFocus(Qt::OtherFocusReason);
  }
  capturedLabel_ = nullptr;
}

bool LabelEditor::eventFilter(QObject* Watched, QEvent* Event) {
  if (Watched == txtEditBox) {
    if (Event->type() == QEvent::KeyPress) {
      return txtEditBox_KeyPress(static_cast<QKeyEvent*>(Event));
    }
    if (Event->type() == QEvent::FocusOut) {
      const auto reason = static_cast<QFocusEvent*>(Event)->reason();
      // Another window taking the focus (a message box, another program) leaves the edit open.
      if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
        txtEditBox_LostFocus();
      }
    }
    return false;
  }
  if (Event->type() != QEvent::MouseButtonPress) {
    return false;
  }
  if (Watched == client_) {
    Form_Click();
    return false;
  }
  if (auto* label = qobject_cast<QLabel*>(Watched)) {
    LabelClicked(label);
    return true;
  }
  return false;
}

}  // namespace tarvelin
