#pragma once

#include <QFileDialog>
#include <QMessageBox>
#include <QStringList>
#include <memory>

#include "startup/Dialogs.h"

namespace tarvelin {

// The program's message boxes and file dialogs, shown modally over the active window.
class QtDialogs final : public Dialogs {
 public:
  MsgResult ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon, const std::string& Title) override;
  std::optional<std::string> OpenFile(const FileDialogRequest& Request) override;
  std::optional<std::string> SaveFile(const FileDialogRequest& Request) override;

 private:
  std::optional<std::string> pAskForFile(const FileDialogRequest& Request, QFileDialog::AcceptMode Mode);
};

// The parts below hold every rule of the dialogs, so that they can be checked without a modal loop.

// Turns single carriage returns (and CR LF pairs) into the line breaks a message box shows.
QString MessageTextForDisplay(const std::string& Prompt);

// A message box ready to run: plain text, the given title or the program's title when it is empty, the icon
// and the buttons asked for, the first button as default and Escape answering Cancel, No or OK.
std::unique_ptr<QMessageBox> BuildMessageBox(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon,
                                             const std::string& Title, QWidget* Parent = nullptr);

// The answer of a box after it closed; a box closed without a button counts as its Escape answer.
MsgResult ResultOfClosedBox(const QMessageBox& Box, MsgButtons Buttons);

// "Name (*.ext)|*.ext|..." as Qt name filters; a trailing name without a pattern is dropped.
QStringList QtNameFilters(const std::string& Filter);

// Sets up (without showing) a file dialog for the request: filters with FilterIndex preselected, folder and
// file name, overwrite question and existing-file rule from the flags. The typed name is returned as it is:
// no suffix is ever added.
void ConfigureFileDialog(QFileDialog& Dialog, const FileDialogRequest& Request, QFileDialog::AcceptMode Mode);

// False when the request demands an existing folder and the chosen file's folder does not exist.
bool FolderRequirementMet(const QString& FileName, uint32_t Flags);

}  // namespace tarvelin
