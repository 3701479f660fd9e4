#include <QTest>
#include <clocale>
#include <cmath>
#include <limits>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/TestRows.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/modDisplay.h"
#include "mainwindow/modLabelEditing.h"
#include "support/RaisedErrors.h"

using namespace tarvelin;
using testing::AddRow;

// The window's plain rules: value display, input parsing and layout arithmetic.
class MainWindowRulesTest final : public QObject {
  Q_OBJECT

 private slots:
  void formatsDecimalsAndPercentages_data() {
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("rounding");
    QTest::addColumn<bool>("decimal");
    QTest::addColumn<QString>("text");
    AddRow("percent, rounding 2", 0.5, 2, false, "50%");
    AddRow("percent, rounding 4", 0.756, 4, false, "75.60%");
    AddRow("percent, no rounding", 0.756, -1, false, "76%");
    AddRow("decimal, rounding 1", 1.0, 1, true, "1.0");
    AddRow("decimal, rounding 2", 0.756, 2, true, "0.76");
    AddRow("decimal, rounding 4", 0.756, 4, true, "0.7560");
    AddRow("decimal, no rounding", 0.1, -1, true, "0.1");
    AddRow("decimal, no rounding, long", 1.0 / 3, -1, true, "0.3333333333333333");
    // Longer than any fixed-size buffer a label would seem to need.
    AddRow("decimal, no rounding, tiny", 1e-66, -1, true, "0." + QString(65, '0') + "1");
    AddRow("decimal, rounding 2, huge", 1e70, 2, true,
           "10000000000000000725314363815292351261583744096465219555182101554790400.00");
  }
  // Percentage display leaves the caller's number in percent.
  void formatsDecimalsAndPercentages() {
    QFETCH(double, number);
    QFETCH(int, rounding);
    QFETCH(bool, decimal);
    const double given = number;
    QTEST(QString::fromStdString(FormatNumberForDisplay(number, static_cast<int16_t>(rounding), decimal)), "text");
    QCOMPARE(number, decimal ? given : given * 100);
  }

  void unroundedDecimalsReadBackAsThemselves() {
    for (const double value : {1.0 / 3, std::nextafter(1.0, 0.0), 1e-66, std::numeric_limits<double>::denorm_min()}) {
      double shown = value;
      QCOMPARE(NormaliseNumericInput(FormatNumberForDisplay(shown, -1, true), true), value);
    }
  }

  void parsesInputByTheDisplaySettingNotTheSign_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("decimal");
    QTest::addColumn<double>("value");
    AddRow("150% in percent", "150%", false, 1.0);
    AddRow("75% in percent", "75%", false, 0.75);
    AddRow("75 in percent", "75", false, 0.75);
    AddRow("75% in decimal", "75%", true, 1.0);
    AddRow(".5 in decimal", ".5", true, 0.5);
    AddRow("negative is not clamped", "-0.2", true, -0.2);
  }
  void parsesInputByTheDisplaySettingNotTheSign() {
    QFETCH(QString, text);
    QFETCH(bool, decimal);
    QTEST(NormaliseNumericInput(text.toStdString(), decimal), "value");
  }

  void refusesTextThatIsNotANumber() {
    for (const char* text : {"", "abc", "1.2.3", "%", "nan", "inf", "0x10"}) {
      QCOMPARE(testing::ErrorNumberOf([&] { NormaliseNumericInput(text, true); }), ErrTypeMismatch);
    }
  }

  // Where the labels show a decimal comma the editor takes it as well as ".", and what is shown reads back
  // as what is stored. The C library's locale (which Qt sets from the environment) plays no part.
  void decimalCommaIsShownTypedAndReadBack_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<bool>("accepted");
    AddRow("comma where shown", "0,", ",", true);
    AddRow("point where a comma is shown", "0.", ",", true);
    AddRow("second comma", "0,5,", ",", false);
    AddRow("comma after a point", "0.5,", ",", false);
    AddRow("point after a comma", "0,5.", ",", false);
    AddRow("comma where a point is shown", "0,", ".", false);
  }
  void decimalCommaIsShownTypedAndReadBack() {
    QFETCH(QString, typed);
    QFETCH(QString, separator);
    const std::u32string text = typed.toStdU32String();
    const auto action = FilterEditBoxKey(text.back(), std::u32string_view(text).substr(0, text.size() - 1), true, 10,
                                         separator.toStdU32String().front());
    QTEST(action == EditKeyAction::Accept, "accepted");
    if (action == EditKeyAction::Accept) {
      const std::string shown = typed.toStdString() + "7";
      QCOMPARE(NormaliseNumericInput(shown, true, separator.toStdString()), 0.7);
    }
    double value = 0.75;
    const std::string label = FormatNumberForDisplay(value, 3, true, separator.toStdString());
    QCOMPARE(QString::fromStdString(label), "0" + separator + "750");
    QCOMPARE(NormaliseNumericInput(label, true, separator.toStdString()), 0.75);
    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    const std::string underGerman = FormatNumberForDisplay(value, 3, true, separator.toStdString());
    std::setlocale(LC_NUMERIC, previous.c_str());
    QCOMPARE(underGerman, label);
  }

  void nextDefaultNameRules() {
    QCOMPARE(NextDefaultName("Attribute", {"Price", "Comfort"}, 2), std::string("Attribute 3"));
    QCOMPARE(NextDefaultName("Option", {"Option 2.5", "Option x", "option 9"}, 3), std::string("Option 4"));
    QCOMPARE(NextDefaultName("Option", {"Option  12 "}, 1), std::string("Option 13"));
    QCOMPARE(NextDefaultName("Option", {"Option ", "Option 2x", "Option inf"}, 1), std::string("Option 2"));
  }

  void keyFilterOrder() {
    QCOMPARE(FilterEditBoxKey(U'5', U"12", true, 2), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(KeyBackspace, U"12", true, 2), EditKeyAction::Accept);
    QCOMPARE(FilterEditBoxKey(U'.', U"1.2", true, 10), EditKeyAction::Discard);
    QCOMPARE(FilterEditBoxKey(U'.', U"1.2", false, 10), EditKeyAction::Accept);
    QCOMPARE(FilterEditBoxKey(U'a', U"abc", false, 3), EditKeyAction::Discard);
  }
  void snapsHeightBeforeWidthAndNeverWhenMaximised() {
    const PixelSize outer{310, 230};
    QCOMPARE(SnapToMinimumClientSize(outer, {300, 200}, false).value(), (PixelSize{310, 230 - 200 + 420}));
    QCOMPARE(SnapToMinimumClientSize(outer, {300, 420}, false).value(), (PixelSize{310 - 300 + 640, 230}));
    QVERIFY(!SnapToMinimumClientSize(outer, {300, 200}, true));
    QVERIFY(!SnapToMinimumClientSize(outer, {640, 420}, false));
  }
};

TARVELIN_GUI_TEST(MainWindowRulesTest);

#include "MainWindowRulesTest.moc"
