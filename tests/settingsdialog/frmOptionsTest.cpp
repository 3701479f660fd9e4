#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <array>
#include <memory>

#include "gui_support/GuiTestRegistry.h"
#include "settingsdialog/frmOptions.h"
#include "startup/modStartup.h"

using namespace tarvelin;

namespace {

using Result = decltype(OptionsOutcome::Result);

const QString Initial = "Holiday 3x2 positive plain decimals show unmodified";

// Everything the dialog can change, in one line, so that a test compares whole states.
QString State() {
  const ProgramState& program = Program();
  const TarvelinTopic& topic = *program.Topic;
  return QString("%1 %2x%3 %4 %5 %6 %7 %8")
      .arg(QString::fromStdString(topic.Name()))
      .arg(topic.TotalOptions())
      .arg(topic.TotalAttributes())
      .arg(topic.InvertWeights() ? "negative" : "positive")
      .arg(topic.NormaliseWeights() ? "normalised" : "plain")
      .arg(program.DisplayAsDecimal ? "decimals" : "percentages")
      .arg(program.ShowSettingsOnNew ? "show" : "quiet")
      .arg(program.Modified ? "modified" : "unmodified");
}

template <class Widget>
Widget* Find(const QWidget& Dialog, const QString& Name) {
  auto* widget = Dialog.findChild<Widget*>(Name);
  if (widget == nullptr) {
    qFatal("The dialog has no %s", qPrintable(Name));
  }
  return widget;
}

// Clicks the tab of the page the widget is on, as the person must before reaching it.
QWidget* Reveal(const QWidget& Dialog, const QString& Name) {
  auto* widget = Find<QWidget>(Dialog, Name);
  for (QWidget* page = widget; page->parentWidget() != nullptr; page = page->parentWidget()) {
    if (auto* pages = qobject_cast<QStackedWidget*>(page->parentWidget())) {
      QTest::mouseClick(Find<QWidget>(Dialog, QString("lblTabText_%1").arg(pages->indexOf(page))), Qt::LeftButton);
    }
  }
  return widget;
}

void Click(const QWidget& Dialog, const QString& Name) {
  QTest::mouseClick(Reveal(Dialog, Name), Qt::LeftButton);
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
    ProgramState& program = Program();
    program.Topic = std::make_unique<TarvelinTopic>();
    program.Topic->SetName("Holiday");
    program.Topic->SetTotalOptions(3);
    program.Topic->SetTotalAttributes(2);
    program.Modified = false;
    program.IsLoading = false;
    program.DisplayAsDecimal = true;
    program.ShowSettingsOnNew = true;
    QCOMPARE(State(), Initial);
  }
  void cleanupTestCase() { Program() = ProgramState(); }

  void fieldShowsWhatItStandsForOnLeaving_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("above the maximum") << "txtOptionCount"
                                       << "25"
                                       << "10";
    QTest::newRow("in range") << "txtOptionCount"
                              << "7"
                              << "7";
    QTest::newRow("blanks around") << "txtOptionCount"
                                   << " 4 "
                                   << "4";
    QTest::newRow("exponent") << "txtOptionCount"
                              << "1e1"
                              << "10";
    QTest::newRow("fraction, tie to even") << "txtOptionCount"
                                           << "2.5"
                                           << "2";
    QTest::newRow("zero") << "txtOptionCount"
                          << "0"
                          << "3";
    QTest::newRow("negative") << "txtOptionCount"
                              << "-3"
                              << "3";
    QTest::newRow("fraction below one") << "txtOptionCount"
                                        << "0.6"
                                        << "3";
    QTest::newRow("not a number") << "txtOptionCount"
                                  << "abc"
                                  << "3";
    QTest::newRow("blank") << "txtOptionCount"
                           << ""
                           << "3";
    QTest::newRow("attributes above the maximum") << "txtAttributeCount"
                                                  << "25"
                                                  << "10";
    QTest::newRow("attributes not a number") << "txtAttributeCount"
                                             << "abc"
                                             << "2";
    QTest::newRow("title cleared") << "txtTitle"
                                   << ""
                                   << "Holiday";
    QTest::newRow("title of a blank") << "txtTitle"
                                      << " "
                                      << " ";
  }
  void fieldShowsWhatItStandsForOnLeaving() {
    QFETCH(QString, field);
    QFETCH(QString, typed);
    const auto dialog = Open(false);
    TypeInto(*dialog, field, typed);
    QTEST(Find<QLineEdit>(*dialog, field)->text(), "shown");
    QCOMPARE(State(), Initial);
  }

  // Escape in a new topic's dialog applies straight from a field, without leaving it: the rules must hold there.
  void fieldRulesHoldWhenAppliedWithoutLeaving_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("state");
    QTest::newRow("count above the maximum") << "txtOptionCount"
                                             << "25"
                                             << "Holiday 10x2 positive plain decimals show modified";
    QTest::newRow("count not a number") << "txtAttributeCount"
                                        << "abc" << Initial;
    QTest::newRow("title cleared") << "txtTitle"
                                   << "" << Initial;
  }
  void fieldRulesHoldWhenAppliedWithoutLeaving() {
    QFETCH(QString, field);
    QFETCH(QString, typed);
    const auto dialog = Open(true);
    TypeInto(*dialog, field, typed, false);
    QTest::keyClick(Find<QLineEdit>(*dialog, field), Qt::Key_Escape);
    QCOMPARE(dialog->Outcome().Result, Result::Applied);
    QTEST(State(), "state");
  }

  // Entering by mouse puts the cursor where the click landed; the selection must come after that.
  void clickingIntoAFieldSelectsItSoTypingReplacesIt() {
    const auto dialog = Open(false);
    auto* field = Find<QLineEdit>(*dialog, "txtOptionCount");
    QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(field->width() - 4, field->height() / 2));
    QVERIFY(field->hasFocus());
    QTRY_COMPARE(field->selectedText(), QString("3"));
    QTest::keyClicks(field, "5");
    QCOMPARE(field->text(), QString("5"));
  }

  void labelClickActsAsItsControl_data() {
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("partner");  // the other option button of the pair; empty for a check box
    QTest::newRow("negative attributes") << "lblWeightingType_0"
                                         << "optWeightingType_0"
                                         << "optWeightingType_1";
    QTest::newRow("positive attributes") << "lblWeightingType_1"
                                         << "optWeightingType_1"
                                         << "optWeightingType_0";
    QTest::newRow("normalise weights") << "lblNormaliseWeights"
                                       << "chkNormaliseWeights"
                                       << "";
    QTest::newRow("percentages") << "lblRange_1"
                                 << "optRange_1"
                                 << "optRange_0";
    QTest::newRow("decimals") << "lblRange_0"
                              << "optRange_0"
                              << "optRange_1";
    QTest::newRow("show settings on new") << "lblShowSettingsOnNew"
                                          << "chkShowSettingsOnNew"
                                          << "";
  }
  void labelClickActsAsItsControl() {
    QFETCH(QString, label);
    QFETCH(QString, control);
    QFETCH(QString, partner);
    const auto dialog = Open(false);
    auto* button = Find<QAbstractButton>(*dialog, control);
    if (partner.isEmpty()) {
      const bool before = button->isChecked();
      Click(*dialog, label);
      QCOMPARE(button->isChecked(), !before);
      Click(*dialog, label);
      QCOMPARE(button->isChecked(), before);
    } else {
      Click(*dialog, partner);
      Click(*dialog, label);
      QVERIFY(button->isChecked());
      QVERIFY(!Find<QAbstractButton>(*dialog, partner)->isChecked());
      Click(*dialog, label);
      QVERIFY(button->isChecked());
    }
  }

  void tabLabelsSwitchPages() {
    const auto dialog = Open(false);
    const std::array<const char*, 3> onPage{"txtTitle", "chkShowSettingsOnNew", "lblAboutTitle"};
    for (const int tab : {2, 0, 1}) {
      QTest::mouseClick(Find<QWidget>(*dialog, QString("lblTabText_%1").arg(tab)), Qt::LeftButton);
      for (int page = 0; page < 3; ++page) {
        QCOMPARE(Find<QWidget>(*dialog, onPage[page])->isVisible(), page == tab);
      }
    }
    QCOMPARE(Find<QLabel>(*dialog, "lblAboutTitle")->text(), QString("Tarvelin v" TARVELIN_VERSION));
  }

  void okWithoutEditsKeepsEveryState_data() {
    QTest::addColumn<bool>("flags");
    QTest::newRow("all off") << false;
    QTest::newRow("all on") << true;
  }
  void okWithoutEditsKeepsEveryState() {
    QFETCH(bool, flags);
    Program().Topic->SetInvertWeights(flags);
    Program().Topic->SetNormaliseWeights(flags);
    Program().DisplayAsDecimal = flags;
    Program().ShowSettingsOnNew = flags;
    const QString before = State();
    const auto dialog = Open(false);
    QCOMPARE(Find<QAbstractButton>(*dialog, "optWeightingType_0")->isChecked(), flags);  // "Negative Attributes"
    QCOMPARE(Find<QAbstractButton>(*dialog, "optRange_0")->isChecked(), flags);          // "Decimals"
    Click(*dialog, "btnOk");
    QCOMPARE(dialog->Outcome().Result, Result::Applied);
    QCOMPARE(State(), before);
  }

  // Only what the topic file keeps marks the topic as changed.
  void okAppliesEachSettingAndMarksOnlySavedOnesModified_data() {
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("typed");  // empty: the control is clicked
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("countsChanged");
    QTest::newRow("title") << "txtTitle"
                           << "Trip"
                           << "Trip 3x2 positive plain decimals show modified" << false;
    QTest::newRow("weighting type") << "lblWeightingType_0"
                                    << ""
                                    << "Holiday 3x2 negative plain decimals show modified" << false;
    QTest::newRow("more options") << "txtOptionCount"
                                  << "5"
                                  << "Holiday 5x2 positive plain decimals show modified" << true;
    QTest::newRow("fewer attributes") << "txtAttributeCount"
                                      << "1"
                                      << "Holiday 3x1 positive plain decimals show modified" << true;
    QTest::newRow("same count retyped") << "txtOptionCount"
                                        << "3" << Initial << false;
    QTest::newRow("normalisation") << "lblNormaliseWeights"
                                   << ""
                                   << "Holiday 3x2 positive normalised decimals show unmodified" << false;
    QTest::newRow("percentages") << "lblRange_1"
                                 << ""
                                 << "Holiday 3x2 positive plain percentages show unmodified" << false;
    QTest::newRow("show on new") << "lblShowSettingsOnNew"
                                 << ""
                                 << "Holiday 3x2 positive plain decimals quiet unmodified" << false;
  }
  void okAppliesEachSettingAndMarksOnlySavedOnesModified() {
    QFETCH(QString, control);
    QFETCH(QString, typed);
    const auto dialog = Open(false);
    if (typed.isEmpty()) {
      Click(*dialog, control);
    } else {
      TypeInto(*dialog, control, typed);
    }
    Click(*dialog, "btnOk");
    QCOMPARE(dialog->Outcome().Result, Result::Applied);
    QTEST(dialog->Outcome().CountsChanged, "countsChanged");
    QTEST(State(), "state");
    QVERIFY(!dialog->isVisible());
    QVERIFY(!HooksSet());
  }

  // Escape and the close box confirm a new topic's settings but cancel a change of settings, as Cancel does.
  void closingWithoutOkAppliesOnlyForANewTopic_data() {
    QTest::addColumn<bool>("forNewTopic");
    QTest::addColumn<QString>("how");
    QTest::newRow("new topic, escape") << true << "escape";
    QTest::newRow("new topic, close box") << true << "close box";
    QTest::newRow("settings, escape") << false << "escape";
    QTest::newRow("settings, close box") << false << "close box";
    QTest::newRow("settings, cancel") << false << "btnCancel";
  }
  void closingWithoutOkAppliesOnlyForANewTopic() {
    QFETCH(bool, forNewTopic);
    QFETCH(QString, how);
    const auto dialog = Open(forNewTopic);
    TypeInto(*dialog, "txtOptionCount", "6");
    for (const char* label : {"lblWeightingType_0", "lblNormaliseWeights", "lblRange_1", "lblShowSettingsOnNew"}) {
      Click(*dialog, label);
    }
    TypeInto(*dialog, "txtTitle", "Trip", false);
    if (how == "close box") {
      dialog->close();
    } else if (how == "escape") {
      QTest::keyClick(Find<QLineEdit>(*dialog, "txtTitle"), Qt::Key_Escape);
    } else {
      QCOMPARE(Find<QAbstractButton>(*dialog, how)->text(), QString("Cancel"));
      Click(*dialog, how);
    }
    QVERIFY(!dialog->isVisible());
    QVERIFY(!HooksSet());
    QCOMPARE(dialog->Outcome().Result, forNewTopic ? Result::Applied : Result::Cancelled);
    QCOMPARE(State(), forNewTopic ? "Trip 6x2 negative normalised percentages quiet modified" : Initial);
  }

  // The open-topic command hides the dialog once a file is chosen; it may or may not show it again itself.
  void loadTopicThatLoadsNothingKeepsTheDialogOpen_data() {
    QTest::addColumn<bool>("hides");
    QTest::addColumn<bool>("showsAgain");
    QTest::newRow("file dialog cancelled") << false << false;
    QTest::newRow("load failed, shown again") << true << true;
    QTest::newRow("load failed, left hidden") << true << false;
  }
  void loadTopicThatLoadsNothingKeepsTheDialogOpen() {
    QFETCH(bool, hides);
    QFETCH(bool, showsAgain);
    int calls = 0;
    bool hiddenMeanwhile = false;
    std::unique_ptr<frmOptions> dialog;
    dialog = Open(true, [&] {
      ++calls;
      if (hides) {
        Program().SettingsDialogHide();
        hiddenMeanwhile = !dialog->isVisible();
      }
      if (showsAgain) {
        Program().SettingsDialogShow();
      }
      return false;
    });
    QCOMPARE(Find<QAbstractButton>(*dialog, "btnCancel")->text(), QString("Load Topic"));
    TypeInto(*dialog, "txtTitle", "Trip");
    Click(*dialog, "btnCancel");
    QCOMPARE(calls, 1);
    QCOMPARE(hiddenMeanwhile, hides);
    QVERIFY(dialog->isVisible());
    QVERIFY(HooksSet());
    QCOMPARE(State(), Initial);
    Click(*dialog, "btnOk");
    QCOMPARE(State(), "Trip 3x2 positive plain decimals show modified");
  }

  void loadTopicThatLoadsClosesWithoutApplying() {
    const auto dialog = Open(true, [] {
      Program().SettingsDialogHide();
      Program().Topic = std::make_unique<TarvelinTopic>();
      Program().Topic->SetName("Loaded");
      Program().Topic->SetTotalOptions(4);
      return true;
    });
    TypeInto(*dialog, "txtTitle", "Trip");
    TypeInto(*dialog, "txtOptionCount", "7");
    Click(*dialog, "lblNormaliseWeights");
    Click(*dialog, "btnCancel");
    QVERIFY(!dialog->isVisible());
    QVERIFY(!HooksSet());
    QCOMPARE(dialog->Outcome().Result, Result::TopicLoaded);
    QCOMPARE(dialog->Outcome().CountsChanged, false);
    QCOMPARE(State(), "Loaded 4x1 positive plain decimals show unmodified");
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
      Click(dialog, "btnCancel");
      QTimer::singleShot(0, &dialog, [&dialog] { Click(dialog, "btnOk"); });
    });
    QTimer::singleShot(10000, &dialog, [&dialog] { dialog.done(QDialog::Rejected); });  // rather fail than hang
    QCOMPARE(dialog.ShowModal().Result, Result::Applied);
    QVERIFY(!dialog.isVisible());
    QVERIFY(!HooksSet());
  }
};

TARVELIN_GUI_TEST(frmOptionsTest);

#include "frmOptionsTest.moc"
