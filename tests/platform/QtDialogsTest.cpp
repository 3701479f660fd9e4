#include <QAbstractButton>
#include <QLineEdit>
#include <QTest>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/TestRows.h"
#include "platform/qt/QtDialogs.h"
#include "startup/modStartup.h"
#include "support/TempFolder.h"

using namespace tarvelin;
using testing::AddRow;

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

  // Each row answers a box by a click, by Escape or not at all (closed without a button).
  void answersMapToResults_data() {
    QTest::addColumn<MsgButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("clicked");
    QTest::addColumn<bool>("escape");
    QTest::addColumn<MsgResult>("result");
    AddRow("OK escaped", MsgButtons::OK, QMessageBox::NoButton, true, MsgResult::OK);
    AddRow("yes clicked", MsgButtons::YesNo, QMessageBox::Yes, false, MsgResult::Yes);
    AddRow("yes/no escaped", MsgButtons::YesNo, QMessageBox::NoButton, true, MsgResult::No);
    AddRow("cancel clicked", MsgButtons::YesNoCancel, QMessageBox::Cancel, false, MsgResult::Cancel);
    AddRow("three closed", MsgButtons::YesNoCancel, QMessageBox::NoButton, false, MsgResult::Cancel);
  }
  void answersMapToResults() {
    QFETCH(MsgButtons, buttons);
    QFETCH(QMessageBox::StandardButton, clicked);
    QFETCH(bool, escape);
    const auto box = BuildMessageBox("Do you want to save this topic first?", buttons, MsgIcon::Question, "");
    box->setWindowModality(Qt::NonModal);
    box->show();
    QVERIFY(QTest::qWaitForWindowExposed(box.get()));
    if (clicked != QMessageBox::NoButton) {
      QTest::mouseClick(box->button(clicked), Qt::LeftButton);
    } else if (escape) {
      QTest::keyClick(box.get(), Qt::Key_Escape);
    }
    QTEST(ResultOfClosedBox(*box, buttons), "result");
  }

  void filtersBecomeQtNameFilters_data() {
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("qtFilters");
    AddRow("save filter", QString::fromStdString(SaveFilter),
           QStringList{"Tarvelin Topic (*.tvt)", "Excel CSV file (*.csv)", "Screenshot - JPG Image (*.jpg)",
                       "Screenshot - Bitmap Image (*.bmp)"});
    AddRow("pattern list", "Images (*.jpg;*.jpeg)|*.jpg;*.jpeg", QStringList{"Images (*.jpg *.jpeg)"});
    AddRow("name without brackets", "All files|*.*", QStringList{"All files (*.*)"});
    AddRow("brackets taken from the pattern", "Topics (*.old)|*.tvt", QStringList{"Topics (*.tvt)"});
    AddRow("name without pattern dropped", "Topic (*.tvt)|*.tvt|Orphan", QStringList{"Topic (*.tvt)"});
    AddRow("empty", "", QStringList{});
  }
  void filtersBecomeQtNameFilters() {
    QFETCH(QString, filter);
    QTEST(QtNameFilters(filter.toStdString()), "qtFilters");
  }

  // A typed save name comes back as typed: the file type is chosen later from the name, so the dialog must not
  // add the filter's suffix.
  void fileDialogFollowsTheRequest_data() {
    QTest::addColumn<QFileDialog::AcceptMode>("mode");
    QTest::addColumn<uint>("flags");
    QTest::addColumn<int>("filterIndex");
    QTest::addColumn<QString>("selectedFilter");
    QTest::addColumn<QFileDialog::FileMode>("fileMode");
    QTest::addColumn<bool>("confirmsOverwrite");
    QTest::addColumn<QString>("typed");  // in place of a proposed name
    AddRow("save topic", QFileDialog::AcceptSave, 0x208802u, 1, "Tarvelin Topic (*.tvt)", QFileDialog::AnyFile, true,
           "car");
    AddRow("save without prompt", QFileDialog::AcceptSave, 0x800u, 3, "Screenshot - JPG Image (*.jpg)",
           QFileDialog::AnyFile, false, "report.CSV");
    AddRow("open existing", QFileDialog::AcceptOpen, 0x201004u, 2, "Excel CSV file (*.csv)", QFileDialog::ExistingFile,
           false, "");
    AddRow("index too high", QFileDialog::AcceptSave, 0u, 9, "Tarvelin Topic (*.tvt)", QFileDialog::AnyFile, false,
           "notes.txt");
  }
  void fileDialogFollowsTheRequest() {
    QFETCH(QFileDialog::AcceptMode, mode);
    QFETCH(uint, flags);
    QFETCH(int, filterIndex);
    QFETCH(QString, typed);
    const testing::TempFolder folder;
    QFileDialog dialog;
    const std::string proposed = typed.isEmpty() ? "Holiday" : "";
    ConfigureFileDialog(dialog, {SaveFilter, filterIndex, flags, folder.Path().string(), proposed}, mode);
    QCOMPARE(dialog.acceptMode(), mode);
    QTEST(dialog.selectedNameFilter(), "selectedFilter");
    QTEST(dialog.fileMode(), "fileMode");
    QTEST(!dialog.testOption(QFileDialog::DontConfirmOverwrite), "confirmsOverwrite");
    QCOMPARE(dialog.directory().absolutePath(), Dir(folder).absolutePath());
    if (typed.isEmpty()) {
      QCOMPARE(dialog.selectedFiles(), QStringList{Dir(folder).filePath("Holiday")});
    } else {
      dialog.show();
      QVERIFY(QTest::qWaitForWindowExposed(&dialog));
      auto* nameEdit = dialog.findChild<QLineEdit*>("fileNameEdit");
      nameEdit->setText(typed);
      QTest::keyClick(nameEdit, Qt::Key_Return);
      QCOMPARE(dialog.result(), int(QDialog::Accepted));
      QCOMPARE(dialog.selectedFiles(), QStringList{Dir(folder).filePath(typed)});
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
