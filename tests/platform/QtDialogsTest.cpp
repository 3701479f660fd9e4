#include <QAbstractButton>
#include <QLineEdit>
#include <QTest>
#include <tuple>

#include "gui_support/GuiTestRegistry.h"
#include "platform/qt/QtDialogs.h"
#include "startup/modStartup.h"
#include "support/TempFolder.h"

using namespace tarvelin;

namespace {

const std::string SaveFilter =
    "Tarvelin Topic (*.tvt)|*.tvt|Excel CSV file (*.csv)|*.csv|Screenshot - JPG Image (*.jpg)|*.jpg|"
    "Screenshot - Bitmap Image (*.bmp)|*.bmp";

QDir Dir(const testing::TempFolder& Folder) {
  return QDir(QString::fromStdString(Folder.Path().string()));
}

}  // namespace

// The Qt message boxes and file dialogs, checked without running a modal loop.
class QtDialogsTest final : public QObject {
  Q_OBJECT

 private slots:
  void messageLineBreaksAreShownAndAnEmptyTitleIsTheProgramsOwn() {
    for (const auto& [prompt, shown] : {std::pair{"File not found\rC:\\a.tvt", "File not found\nC:\\a.tvt"},
                                        {"Gr\xC3\xB6\xC3\x9F"
                                         "e\r\ntwo\r\rthree",
                                         "Gr\xC3\xB6\xC3\x9F"
                                         "e\ntwo\n\nthree"}}) {
      QCOMPARE(BuildMessageBox(prompt, MsgButtons::OK, MsgIcon::None, "Save Topic")->text(), QString(shown));
    }
    QCOMPARE(BuildMessageBox("x", MsgButtons::OK, MsgIcon::None, "")->windowTitle(),
             QString::fromStdString(Program().AppTitle));
  }

  // Each box is answered by a click, by Escape or not at all (closed without a button).
  void answersMapToResults() {
    const std::tuple<MsgButtons, QMessageBox::StandardButton, bool, MsgResult> answers[] = {
        {MsgButtons::OK, QMessageBox::NoButton, true, MsgResult::OK},
        {MsgButtons::YesNo, QMessageBox::Yes, false, MsgResult::Yes},
        {MsgButtons::YesNo, QMessageBox::NoButton, true, MsgResult::No},
        {MsgButtons::YesNoCancel, QMessageBox::Cancel, false, MsgResult::Cancel},
        {MsgButtons::YesNoCancel, QMessageBox::NoButton, false, MsgResult::Cancel}};
    for (const auto& [buttons, clicked, escape, result] : answers) {
      const auto box = BuildMessageBox("Do you want to save this topic first?", buttons, MsgIcon::Question, "");
      box->setWindowModality(Qt::NonModal);
      box->show();
      QVERIFY(QTest::qWaitForWindowExposed(box.get()));
      if (clicked != QMessageBox::NoButton) {
        QTest::mouseClick(box->button(clicked), Qt::LeftButton);
      } else if (escape) {
        QTest::keyClick(box.get(), Qt::Key_Escape);
      }
      QCOMPARE(ResultOfClosedBox(*box, buttons), result);
    }
  }

  void filtersBecomeQtNameFilters() {
    const std::pair<std::string, QStringList> filters[] = {
        {SaveFilter,
         {"Tarvelin Topic (*.tvt)", "Excel CSV file (*.csv)", "Screenshot - JPG Image (*.jpg)",
          "Screenshot - Bitmap Image (*.bmp)"}},
        {"Images (*.jpg;*.jpeg)|*.jpg;*.jpeg", {"Images (*.jpg *.jpeg)"}},
        {"All files|*.*", {"All files (*.*)"}},
        {"Topics (*.old)|*.tvt", {"Topics (*.tvt)"}},  // the brackets are taken from the pattern
        {"Topic (*.tvt)|*.tvt|Orphan", {"Topic (*.tvt)"}},
        {"", {}}};
    for (const auto& [filter, qtFilters] : filters) {
      QCOMPARE(QtNameFilters(filter), qtFilters);
    }
  }

  // A typed save name comes back as typed: the file type is chosen later from the name, so the dialog must not
  // add the filter's suffix.
  void fileDialogFollowsTheRequest() {
    struct Request {
      QFileDialog::AcceptMode Mode;
      uint32_t Flags;
      int FilterIndex;
      QString SelectedFilter;
      QFileDialog::FileMode FileMode;
      bool ConfirmsOverwrite;
      QString Typed;  // in place of a proposed name
    };
    const Request requests[] = {
        {QFileDialog::AcceptSave, 0x208802u, 1, "Tarvelin Topic (*.tvt)", QFileDialog::AnyFile, true, "car"},
        {QFileDialog::AcceptSave, 0x800u, 3, "Screenshot - JPG Image (*.jpg)", QFileDialog::AnyFile, false,
         "report.CSV"},
        {QFileDialog::AcceptOpen, 0x201004u, 2, "Excel CSV file (*.csv)", QFileDialog::ExistingFile, false, ""},
        {QFileDialog::AcceptSave, 0u, 9, "Tarvelin Topic (*.tvt)", QFileDialog::AnyFile, false, "notes.txt"}};
    for (const Request& request : requests) {
      const testing::TempFolder folder;
      QFileDialog dialog;
      const std::string proposed = request.Typed.isEmpty() ? "Holiday" : "";
      ConfigureFileDialog(dialog, {SaveFilter, request.FilterIndex, request.Flags, folder.Path().string(), proposed},
                          request.Mode);
      QCOMPARE(dialog.acceptMode(), request.Mode);
      QCOMPARE(dialog.selectedNameFilter(), request.SelectedFilter);
      QCOMPARE(dialog.fileMode(), request.FileMode);
      QCOMPARE(!dialog.testOption(QFileDialog::DontConfirmOverwrite), request.ConfirmsOverwrite);
      QCOMPARE(dialog.directory().absolutePath(), Dir(folder).absolutePath());
      if (request.Typed.isEmpty()) {
        QCOMPARE(dialog.selectedFiles(), QStringList{Dir(folder).filePath("Holiday")});
        continue;
      }
      dialog.show();
      QVERIFY(QTest::qWaitForWindowExposed(&dialog));
      auto* nameEdit = dialog.findChild<QLineEdit*>("fileNameEdit");
      nameEdit->setText(request.Typed);
      QTest::keyClick(nameEdit, Qt::Key_Return);
      QCOMPARE(dialog.result(), int(QDialog::Accepted));
      QCOMPARE(dialog.selectedFiles(), QStringList{Dir(folder).filePath(request.Typed)});
    }
  }

  void missingFolderIsRefusedOnlyWhenRequired() {
    const testing::TempFolder folder;
    QVERIFY(FolderRequirementMet(Dir(folder).filePath("car.tvt"), FileDialogFlags::PathMustExist));
    QVERIFY(!FolderRequirementMet(Dir(folder).filePath("missing/car.tvt"), FileDialogFlags::PathMustExist));
    QVERIFY(FolderRequirementMet(Dir(folder).filePath("missing/car.tvt"), FileDialogFlags::OverwritePrompt));
  }
};

TARVELIN_GUI_TEST(QtDialogsTest);

#include "QtDialogsTest.moc"
