#include "platform/qt/QtDialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include "startup/modStartup.h"

namespace tarvelin {

namespace {

QWidget* DialogOwner() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : QApplication::activeWindow();
}

QMessageBox::Icon QtIcon(MsgIcon Icon) {
  switch (Icon) {
    case MsgIcon::Critical:
      return QMessageBox::Critical;
    case MsgIcon::Exclamation:
      return QMessageBox::Warning;
    case MsgIcon::Information:
      return QMessageBox::Information;
    case MsgIcon::Question:
      return QMessageBox::Question;
    case MsgIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

struct ButtonSet {
  QMessageBox::StandardButtons Buttons;
  QMessageBox::StandardButton Default;
  QMessageBox::StandardButton Escape;
};

ButtonSet QtButtons(MsgButtons Buttons) {
  switch (Buttons) {
    case MsgButtons::YesNo:
      return {QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No};
    case MsgButtons::YesNoCancel:
      return {QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes, QMessageBox::Cancel};
    case MsgButtons::OK:
      break;
  }
  return {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok};
}

MsgResult ResultOf(QMessageBox::StandardButton Button) {
  switch (Button) {
    case QMessageBox::Yes:
      return MsgResult::Yes;
    case QMessageBox::No:
      return MsgResult::No;
    case QMessageBox::Cancel:
      return MsgResult::Cancel;
    default:
      return MsgResult::OK;
  }
}

// A pattern list of the common dialog ("*.jpg;*.jpeg") in Qt's form, inside the brackets Qt reads it from.
QString NameFilter(QString Name, const QString& Patterns) {
  Name = Name.trimmed();
  if (Name.endsWith(')') && Name.contains('(')) {
    Name = Name.left(Name.lastIndexOf('(')).trimmed();
  }
  QString qtPatterns = Patterns.trimmed();
  qtPatterns.replace(';', ' ');
  return Name + " (" + qtPatterns + ")";
}

QString MissingFolderText(const QString& FileName) {
  const QString folder = QDir::toNativeSeparators(QFileInfo(FileName).path());
  return "The folder " + folder + " does not exist.\rCheck the folder name and try again.";
}

}  // namespace

QString MessageTextForDisplay(const std::string& Prompt) {
  QString text = QString::fromStdString(Prompt);
  text.replace("\r\n", "\n");
  text.replace('\r', '\n');
  return text;
}

std::unique_ptr<QMessageBox> BuildMessageBox(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon,
                                             const std::string& Title, QWidget* Parent) {
  const std::string& caption = Title.empty() ? Program().AppTitle : Title;
  const ButtonSet set = QtButtons(Buttons);
  auto box =
      std::make_unique<QMessageBox>(QtIcon(Icon), QString::fromStdString(caption), QString(), set.Buttons, Parent);
  box->setTextFormat(Qt::PlainText);
  box->setText(MessageTextForDisplay(Prompt));
  box->setDefaultButton(set.Default);
  box->setEscapeButton(set.Escape);
  return box;
}

MsgResult ResultOfClosedBox(const QMessageBox& Box, MsgButtons Buttons) {
  const QMessageBox::StandardButton clicked = Box.standardButton(Box.clickedButton());
  return ResultOf(clicked != QMessageBox::NoButton ? clicked : QtButtons(Buttons).Escape);
}

QStringList QtNameFilters(const std::string& Filter) {
  const QStringList parts = QString::fromStdString(Filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    filters << NameFilter(parts[i], parts[i + 1]);
  }
  return filters;
}

void ConfigureFileDialog(QFileDialog& Dialog, const FileDialogRequest& Request, QFileDialog::AcceptMode Mode) {
  // Qt's own dialog on every platform: a native save dialog would add the first filter's suffix to a typed
  // name, and the program picks the file type from the name exactly as typed.
  Dialog.setOption(QFileDialog::DontUseNativeDialog);
  Dialog.setAcceptMode(Mode);
  Dialog.setDefaultSuffix(QString());
  const bool existingOnly = Mode == QFileDialog::AcceptOpen && (Request.Flags & FileDialogFlags::FileMustExist) != 0;
  Dialog.setFileMode(existingOnly ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  Dialog.setOption(QFileDialog::DontConfirmOverwrite, (Request.Flags & FileDialogFlags::OverwritePrompt) == 0);

  const QStringList filters = QtNameFilters(Request.Filter);
  if (!filters.isEmpty()) {
    Dialog.setNameFilters(filters);
    const bool inRange = Request.FilterIndex >= 1 && Request.FilterIndex <= filters.size();
    Dialog.selectNameFilter(filters.at(inRange ? Request.FilterIndex - 1 : 0));
  }
  if (!Request.InitialDir.empty()) {
    Dialog.setDirectory(QString::fromStdString(Request.InitialDir));
  }
  if (!Request.FileName.empty()) {
    Dialog.selectFile(QString::fromStdString(Request.FileName));
  }
}

bool FolderRequirementMet(const QString& FileName, uint32_t Flags) {
  return (Flags & FileDialogFlags::PathMustExist) == 0 || QFileInfo(FileName).absoluteDir().exists();
}

MsgResult QtDialogs::ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon,
                                 const std::string& Title) {
  const std::unique_ptr<QMessageBox> box = BuildMessageBox(Prompt, Buttons, Icon, Title, DialogOwner());
  box->exec();
  return ResultOfClosedBox(*box, Buttons);
}

std::optional<std::string> QtDialogs::OpenFile(const FileDialogRequest& Request) {
  return pAskForFile(Request, QFileDialog::AcceptOpen);
}

std::optional<std::string> QtDialogs::SaveFile(const FileDialogRequest& Request) {
  return pAskForFile(Request, QFileDialog::AcceptSave);
}

std::optional<std::string> QtDialogs::pAskForFile(const FileDialogRequest& Request, QFileDialog::AcceptMode Mode) {
  FileDialogRequest current = Request;
  for (;;) {
    QFileDialog dialog(DialogOwner());
    ConfigureFileDialog(dialog, current, Mode);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
      return std::nullopt;
    }
    const QString chosen = dialog.selectedFiles().constFirst();
    if (FolderRequirementMet(chosen, current.Flags)) {
      return QDir::toNativeSeparators(chosen).toStdString();
    }
    ShowMessage(MissingFolderText(chosen).toStdString(), MsgButtons::OK, MsgIcon::Exclamation, {});
    current.FilterIndex = static_cast<int>(dialog.nameFilters().indexOf(dialog.selectedNameFilter())) + 1;
    current.FileName = QFileInfo(chosen).fileName().toStdString();
  }
}

}  // namespace tarvelin
