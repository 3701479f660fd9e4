#include <QAbstractButton>
#include <QLineEdit>
#include <QTest>

#include "gui_support/GuiTestRegistry.h"
#include "platform/qt/QtDialogs.h"
#include "startup/modStartup.h"
#include "support/TempFolder.h"

using namespace tarvelin;

Q_DECLARE_METATYPE(tarvelin::MsgButtons)
Q_DECLARE_METATYPE(tarvelin::MsgResult)
Q_DECLARE_METATYPE(QMessageBox::StandardButton)
Q_DECLARE_METATYPE(QFileDialog::AcceptMode)
Q_DECLARE_METATYPE(QFileDialog::FileMode)

namespace {

const std::string SaveFilter =
    "Tarvelin Topic (*.tvt)|*.tvt|Excel CSV file (*.csv)|*.csv|Screenshot - JPG Image (*.jpg)|*.jpg|"
    "Screenshot - Bitmap Image (*.bmp)|*.bmp";

QString FolderOf(const testing::TempFolder& Folder) {
  return QString::fromStdString(Folder.Path().string());
}

}  // namespace

// The Qt message boxes and file dialogs, checked without running a modal loop.
class QtDialogsTest final : public QObject {
  Q_OBJECT

 private slots:
  void messageLineBreaksAreShown_data() {
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("shown");
    QTest::newRow("carriage return") << "File not found\rC:\\a.tvt"
                                     << "File not found\nC:\\a.tvt";
    QTest::newRow("CR LF") << "one\r\ntwo"
                           << "one\ntwo";
    QTest::newRow("blank line") << "one\r\rtwo"
                                << "one\n\ntwo";
    QTest::newRow("accented") << QString::fromUtf8("Gr\u00f6\u00dfe\r\u00dcbersicht")
                              << QString::fromUtf8("Gr\u00f6\u00dfe\n\u00dcbersicht");
  }
  void messageLineBreaksAreShown() {
    QFETCH(QString, prompt);
    QFETCH(QString, shown);
    QCOMPARE(MessageTextForDisplay(prompt.toStdString()), shown);
    const auto box = BuildMessageBox(prompt.toStdString(), MsgButtons::OK, MsgIcon::None, "Title");
    QCOMPARE(box->text(), shown);
  }

  void boxTitleFallsBackToTheProgramTitle() {
    QCOMPARE(BuildMessageBox("x", MsgButtons::OK, MsgIcon::None, "Save Topic")->windowTitle(), "Save Topic");
    QCOMPARE(BuildMessageBox("x", MsgButtons::OK, MsgIcon::None, "")->windowTitle(),
             QString::fromStdString(Program().AppTitle));
  }

  // Each row answers a box by a click, by Escape or not at all (closed without a button).
  void answersMapToResults_data() {
    QTest::addColumn<MsgButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("clicked");
    QTest::addColumn<bool>("escape");
    QTest::addColumn<MsgResult>("result");
    QTest::newRow("OK escaped") << MsgButtons::OK << QMessageBox::NoButton << true << MsgResult::OK;
    QTest::newRow("yes clicked") << MsgButtons::YesNo << QMessageBox::Yes << false << MsgResult::Yes;
    QTest::newRow("yes/no escaped") << MsgButtons::YesNo << QMessageBox::NoButton << true << MsgResult::No;
    QTest::newRow("cancel clicked") << MsgButtons::YesNoCancel << QMessageBox::Cancel << false << MsgResult::Cancel;
    QTest::newRow("no of three") << MsgButtons::YesNoCancel << QMessageBox::No << false << MsgResult::No;
    QTest::newRow("three escaped") << MsgButtons::YesNoCancel << QMessageBox::NoButton << true << MsgResult::Cancel;
    QTest::newRow("three closed") << MsgButtons::YesNoCancel << QMessageBox::NoButton << false << MsgResult::Cancel;
  }
  void answersMapToResults() {
    QFETCH(MsgButtons, buttons);
    QFETCH(QMessageBox::StandardButton, clicked);
    QFETCH(bool, escape);
    QFETCH(MsgResult, result);
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

  void filtersBecomeQtNameFilters_data() {
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("qtFilters");
    QTest::newRow("save filter") << QString::fromStdString(SaveFilter)
                                 << QStringList{"Tarvelin Topic (*.tvt)", "Excel CSV file (*.csv)",
                                                "Screenshot - JPG Image (*.jpg)", "Screenshot - Bitmap Image (*.bmp)"};
    QTest::newRow("pattern list") << "Images (*.jpg;*.jpeg)|*.jpg;*.jpeg" << QStringList{"Images (*.jpg *.jpeg)"};
    QTest::newRow("name without brackets") << "All files|*.*" << QStringList{"All files (*.*)"};
    QTest::newRow("brackets taken from the pattern") << "Topics (*.old)|*.tvt" << QStringList{"Topics (*.tvt)"};
    QTest::newRow("name without pattern dropped") << "Topic (*.tvt)|*.tvt|Orphan" << QStringList{"Topic (*.tvt)"};
    QTest::newRow("empty") << "" << QStringList{};
  }
  void filtersBecomeQtNameFilters() {
    QFETCH(QString, filter);
    QFETCH(QStringList, qtFilters);
    QCOMPARE(QtNameFilters(filter.toStdString()), qtFilters);
  }

  void fileDialogFollowsTheRequest_data() {
    QTest::addColumn<QFileDialog::AcceptMode>("mode");
    QTest::addColumn<uint>("flags");
    QTest::addColumn<int>("filterIndex");
    QTest::addColumn<QString>("selectedFilter");
    QTest::addColumn<QFileDialog::FileMode>("fileMode");
    QTest::addColumn<bool>("confirmsOverwrite");
    QTest::newRow("save topic") << QFileDialog::AcceptSave << 0x208802u << 1 << "Tarvelin Topic (*.tvt)"
                                << QFileDialog::AnyFile << true;
    QTest::newRow("save without prompt") << QFileDialog::AcceptSave << 0x800u << 3 << "Screenshot - JPG Image (*.jpg)"
                                         << QFileDialog::AnyFile << false;
    QTest::newRow("open existing") << QFileDialog::AcceptOpen << 0x201004u << 2 << "Excel CSV file (*.csv)"
                                   << QFileDialog::ExistingFile << false;
    QTest::newRow("open any name") << QFileDialog::AcceptOpen << 0u << 4 << "Screenshot - Bitmap Image (*.bmp)"
                                   << QFileDialog::AnyFile << false;
    QTest::newRow("index too high") << QFileDialog::AcceptSave << 0u << 9 << "Tarvelin Topic (*.tvt)"
                                    << QFileDialog::AnyFile << false;
  }
  void fileDialogFollowsTheRequest() {
    QFETCH(QFileDialog::AcceptMode, mode);
    QFETCH(uint, flags);
    QFETCH(int, filterIndex);
    QFETCH(QString, selectedFilter);
    QFETCH(QFileDialog::FileMode, fileMode);
    QFETCH(bool, confirmsOverwrite);
    const testing::TempFolder folder;
    QFileDialog dialog;
    ConfigureFileDialog(dialog, {SaveFilter, filterIndex, flags, folder.Path().string(), "Holiday"}, mode);
    QCOMPARE(dialog.acceptMode(), mode);
    QCOMPARE(dialog.selectedNameFilter(), selectedFilter);
    QCOMPARE(dialog.fileMode(), fileMode);
    QCOMPARE(!dialog.testOption(QFileDialog::DontConfirmOverwrite), confirmsOverwrite);
    QCOMPARE(dialog.directory().absolutePath(), QDir(FolderOf(folder)).absolutePath());
    QCOMPARE(dialog.selectedFiles(), QStringList{QDir(FolderOf(folder)).filePath("Holiday")});
  }

  // The file type is chosen later from the name as typed, so the dialog must not add the filter's suffix.
  void typedSaveNameComesBackUnchanged_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("no extension") << "car";
    QTest::newRow("upper-case CSV") << "report.CSV";
    QTest::newRow("other extension") << "notes.txt";
  }
  void typedSaveNameComesBackUnchanged() {
    QFETCH(QString, typed);
    const testing::TempFolder folder;
    QFileDialog dialog;
    ConfigureFileDialog(dialog, {SaveFilter, 2, 0x208802u, folder.Path().string(), ""}, QFileDialog::AcceptSave);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    auto* nameEdit = dialog.findChild<QLineEdit*>("fileNameEdit");
    QVERIFY(nameEdit != nullptr);
    nameEdit->setText(typed);
    QTest::keyClick(nameEdit, Qt::Key_Return);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.selectedFiles(), QStringList{QDir(FolderOf(folder)).filePath(typed)});
  }

  void missingFolderIsRefusedOnlyWhenRequired() {
    const testing::TempFolder folder;
    const QDir base(FolderOf(folder));
    QVERIFY(FolderRequirementMet(base.filePath("car.tvt"), FileDialogFlags::PathMustExist));
    QVERIFY(!FolderRequirementMet(base.filePath("missing/car.tvt"), FileDialogFlags::PathMustExist));
    QVERIFY(FolderRequirementMet(base.filePath("missing/car.tvt"), FileDialogFlags::OverwritePrompt));
  }
};

TARVELIN_GUI_TEST(QtDialogsTest);

#include "QtDialogsTest.moc"
