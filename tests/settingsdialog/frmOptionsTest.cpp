#include <QAbstractButton>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <memory>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/TestRows.h"
#include "settingsdialog/frmOptions.h"
#include "startup/modStartup.h"

using namespace tarvelin;
using testing::AddRow;

namespace {

using Result = decltype(OptionsOutcome::Result);

// Everything the dialog can change, in one line, so that a test compares whole states.
QString State() {
  const ProgramState& program = Program();
  const TarvelinTopic& topic = *program.Topic;
  return QString("%1 %2x%3")
             .arg(QString::fromStdString(topic.Name()))
             .arg(topic.TotalOptions())
             .arg(topic.TotalAttributes()) +
         (topic.InvertWeights() ? " negative" : " positive") + (topic.NormaliseWeights() ? " normalised" : " plain") +
         (program.DisplayAsDecimal ? " decimals" : " percentages") + (program.ShowSettingsOnNew ? " show" : " quiet") +
         (program.ShowInsight ? "" : " without insight") + (program.Modified ? " modified" : " unmodified");
}

const QString Initial = "Holiday 3x2 positive plain decimals show unmodified";

template <class Widget = QWidget>
Widget* Find(const QWidget& Dialog, const QString& Name) {
  auto* widget = Dialog.findChild<Widget*>(Name);
  if (widget == nullptr) {
    qFatal("The dialog has no %s", qPrintable(Name));
  }
  return widget;
}

// Clicks the tab of the page the widget is on, as the person must before reaching it. A click on a widget
// of a hidden page would land elsewhere, so every test through this also checks the tabs.
QWidget* Reveal(const QWidget& Dialog, const QString& Name) {
  auto* widget = Find(Dialog, Name);
  for (QWidget* page = widget; page->parentWidget() != nullptr; page = page->parentWidget()) {
    if (auto* pages = qobject_cast<QStackedWidget*>(page->parentWidget())) {
      QTest::mouseClick(Find(Dialog, QString("lblTabText_%1").arg(pages->indexOf(page))), Qt::LeftButton);
    }
  }
  return widget;
}

void Click(const QWidget& Dialog, const QStringList& Names) {
  for (const QString& name : Names) {
    QTest::mouseClick(Reveal(Dialog, name), Qt::LeftButton);
  }
}

// Puts the focus in the field, replaces its text by typing and, when Leave, tabs on to the next control.
void TypeInto(const QWidget& Dialog, const QString& FieldName, const QString& Text, bool Leave = true) {
  auto* field = qobject_cast<QLineEdit*>(Reveal(Dialog, FieldName));
  field->setFocus(Qt::TabFocusReason);
  field->clear();
  QTest::keyClicks(field, Text);
  if (Leave) {
    QTest::keyClick(field, Qt::Key_Tab);
  }
}

bool HooksSet() {
  return Program().SettingsDialogHide && Program().SettingsDialogShow;
}

std::unique_ptr<frmOptions> Open(bool ForNewTopic, std::function<bool()> LoadTopic = {}) {
  auto dialog = std::make_unique<frmOptions>(ForNewTopic, std::move(LoadTopic));
  dialog->show();
  if (!QTest::qWaitForWindowActive(dialog.get())) {
    qFatal("The settings dialog did not become active");
  }
  return dialog;
}

}  // namespace

// The settings dialog driven through its controls, checked against the live topic and the preferences.
class frmOptionsTest final : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    Program() = ProgramState();
    Program().Topic = std::make_unique<TarvelinTopic>();
    Program().Topic->SetName("Holiday");
    Program().Topic->SetTotalOptions(3);
    Program().Topic->SetTotalAttributes(2);
  }
  void cleanupTestCase() { Program() = ProgramState(); }

  void fieldStandsForTheSameWhetherLeftOrApplied_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");  // once left, and what OK applies
    AddRow("fewer attributes", "txtAttributeCount", "1", "1");
    AddRow("above the maximum", "txtOptionCount", "25", "10");
    AddRow("blanks around", "txtOptionCount", " 4 ", "4");
    AddRow("fraction, tie to even", "txtOptionCount", "2.5", "2");
    AddRow("zero", "txtOptionCount", "0", "3");
    AddRow("fraction below one", "txtOptionCount", "0.6", "3");
    AddRow("blank", "txtOptionCount", "", "3");
    AddRow("title cleared", "txtTitle", "", "Holiday");
    AddRow("title of a blank", "txtTitle", " ", " ");
  }
  // Escape in a new topic's dialog applies straight from a field, without leaving it: the rules must hold there.
  void fieldStandsForTheSameWhetherLeftOrApplied() {
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    auto dialog = Open(false);
    TypeInto(*dialog, field, typed);
    QCOMPARE(Find<QLineEdit>(*dialog, field)->text(), shown);
    QCOMPARE(State(), Initial);
    dialog = Open(true);
    TypeInto(*dialog, field, typed, false);
    QTest::keyClick(Find(*dialog, field), Qt::Key_Escape);
    QStringList expected{"Holiday", "3", "2"};
    expected[QStringList{"txtTitle", "txtOptionCount", "txtAttributeCount"}.indexOf(field)] = shown;
    const bool countsChanged = expected[1] != "3" || expected[2] != "2";
    QCOMPARE(dialog->Outcome().CountsChanged, countsChanged);
    const bool modified = countsChanged || expected[0] != "Holiday";
    QCOMPARE(State(), QString("%1 %2x%3 positive plain decimals show %4")
                          .arg(expected[0], expected[1], expected[2], modified ? "modified" : "unmodified"));
  }

  // Entering by mouse puts the cursor where the click landed; the selection must come after that.
  void clickingIntoAFieldSelectsItSoTypingReplacesIt() {
    const auto dialog = Open(false);
    auto* field = Find<QLineEdit>(*dialog, "txtOptionCount");
    QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(field->width() - 4, field->height() / 2));
    QTRY_COMPARE(field->selectedText(), QString("3"));
    QTest::keyClicks(field, "5");
    QCOMPARE(field->text(), QString("5"));
  }

  // The controls show every setting as it is, so OK without a click keeps it; each label clicks its choice, and
  // only what the topic file keeps marks the topic as changed (the fields' rows above cover the title and counts).
  void okAppliesTheChoicesAndMarksOnlySavedOnesModified_data() {
    QTest::addColumn<bool>("turned");  // every setting starts the other way from a new program's
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QString>("state");
    const QString turned = "Holiday 3x2 negative normalised percentages quiet without insight unmodified";
    AddRow("nothing clicked, all turned", true, QStringList{}, turned);
    AddRow("weighting type", false, QStringList{"lblWeightingType_0"},
           "Holiday 3x2 negative plain decimals show modified");
    AddRow(
        "preferences only", false,
        QStringList{"lblNormaliseWeights", "lblRange_1", "lblShowSettingsOnNew", "lblShowInsight", "lblSplitScoreBars"},
        "Holiday 3x2 positive normalised percentages quiet without insight unmodified");
    AddRow("all turned back", true,
           QStringList{"lblWeightingType_1", "lblNormaliseWeights", "lblRange_0", "lblShowSettingsOnNew",
                       "lblShowInsight", "lblSplitScoreBars"},
           "Holiday 3x2 positive plain decimals show modified");
  }
  void okAppliesTheChoicesAndMarksOnlySavedOnesModified() {
    QFETCH(bool, turned);
    QFETCH(QStringList, labels);
    Program().Topic->SetInvertWeights(turned);
    Program().Topic->SetNormaliseWeights(turned);
    Program().DisplayAsDecimal = Program().ShowSettingsOnNew = Program().ShowInsight = !turned;
    Program().SplitScoreBars = turned;
    const auto dialog = Open(false);
    Click(*dialog, labels << "btnOk");
    QCOMPARE(dialog->Outcome().Result, Result::Applied);
    QVERIFY(!dialog->Outcome().CountsChanged && !dialog->isVisible() && !HooksSet());
    QTEST(State(), "state");
    QCOMPARE(Program().SplitScoreBars, turned != labels.contains("lblSplitScoreBars"));
  }

  // Escape and the close box confirm a new topic's settings but cancel a change of settings, as Cancel does.
  void closingWithoutOkAppliesOnlyForANewTopic_data() {
    QTest::addColumn<bool>("forNewTopic");
    QTest::addColumn<QString>("how");
    AddRow("new topic, escape", true, "escape");
    AddRow("new topic, close box", true, "close box");
    AddRow("settings, escape", false, "escape");
    AddRow("settings, close box", false, "close box");
    AddRow("settings, cancel", false, "btnCancel");
  }
  void closingWithoutOkAppliesOnlyForANewTopic() {
    QFETCH(bool, forNewTopic);
    QFETCH(QString, how);
    const auto dialog = Open(forNewTopic);
    TypeInto(*dialog, "txtOptionCount", "6");
    Click(*dialog, {"lblWeightingType_0", "lblNormaliseWeights", "lblRange_1", "lblShowSettingsOnNew"});
    TypeInto(*dialog, "txtTitle", "Trip", false);
    if (how == "close box") {
      dialog->close();
    } else if (how == "escape") {
      QTest::keyClick(Find(*dialog, "txtTitle"), Qt::Key_Escape);
    } else {
      QCOMPARE(Find<QAbstractButton>(*dialog, how)->text(), QString("Cancel"));
      Click(*dialog, {how});
    }
    QVERIFY(!dialog->isVisible() && !HooksSet());
    QCOMPARE(dialog->Outcome().Result, forNewTopic ? Result::Applied : Result::Cancelled);
    QCOMPARE(State(), forNewTopic ? "Trip 6x2 negative normalised percentages quiet modified" : Initial);
  }

  // The open-topic command hides the dialog once a file is chosen; when nothing loads and it leaves the dialog
  // hidden, the dialog shows itself again (the modal run below has the command show it). A loaded topic ends the
  // dialog without applying what was typed.
  void loadTopic_data() {
    QTest::addColumn<bool>("hides");
    QTest::addColumn<bool>("loads");
    AddRow("file dialog cancelled", false, false);
    AddRow("load failed", true, false);
    AddRow("loaded", true, true);
  }
  void loadTopic() {
    QFETCH(bool, hides);
    QFETCH(bool, loads);
    int calls = 0;
    bool hiddenMeanwhile = false;
    const std::unique_ptr<frmOptions> dialog = Open(true, [&] {
      ++calls;
      if (hides) {
        Program().SettingsDialogHide();
        hiddenMeanwhile = !dialog->isVisible();
      }
      if (loads) {
        Program().Topic = std::make_unique<TarvelinTopic>();
      }
      return loads;
    });
    QCOMPARE(Find<QAbstractButton>(*dialog, "btnCancel")->text(), QString("Load Topic"));
    TypeInto(*dialog, "txtTitle", "Trip");
    TypeInto(*dialog, "txtOptionCount", "7");
    Click(*dialog, {"btnCancel"});
    QCOMPARE(calls, 1);
    QCOMPARE(hiddenMeanwhile, hides);
    QCOMPARE(dialog->isVisible(), !loads);
    if (loads) {
      QCOMPARE(dialog->Outcome().Result, Result::TopicLoaded);
      QCOMPARE(State(), "New Topic 1x1 positive plain decimals show unmodified");
      return;
    }
    QCOMPARE(State(), Initial);
    Click(*dialog, {"btnOk"});
    QCOMPARE(State(), "Trip 7x2 positive plain decimals show modified");
  }

  // A real modal run in which the open-topic command hides and re-shows the dialog before OK is clicked.
  void showModalOutlivesBeingHiddenWhileATopicLoads() {
    frmOptions dialog(true, [] {
      Program().SettingsDialogHide();
      QCoreApplication::processEvents();
      Program().SettingsDialogShow();
      return false;
    });
    QTimer::singleShot(0, &dialog, [&dialog] {
      Click(dialog, {"btnCancel"});
      QTimer::singleShot(0, &dialog, [&dialog] { Click(dialog, {"btnOk"}); });
    });
    QTimer::singleShot(10000, &dialog, [&dialog] { dialog.done(QDialog::Rejected); });  // rather fail than hang
    QCOMPARE(dialog.ShowModal().Result, Result::Applied);
    QVERIFY(!dialog.isVisible() && !HooksSet());
  }
};

TARVELIN_GUI_TEST(frmOptionsTest);

#include "frmOptionsTest.moc"
