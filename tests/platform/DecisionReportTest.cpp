#include <QDate>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>
#include <QTextDocument>
#include <string>

#include "gui_support/GuiTestRegistry.h"
#include "mainwindow/modDisplay.h"
#include "model/TarvelinTopic.h"
#include "platform/qt/DecisionReport.h"
#include "support/TempFolder.h"

using namespace tarvelin;

namespace {

const char* const kOptions[] = {"Estate",  "Coupe",         "Hatchback", "Saloon",   "Roadster",
                                "Minivan", "Pick-up truck", "Cabriolet", "City car", "Shooting brake"};
const char* const kAttributes[] = {"Price", "Safety",      "Comfort", "Looks",        "Boot space",
                                   "Range", "Reliability", "Noise",   "Resale value", "Insurance"};

// A full topic whose scores all differ, as a person would fill it in.
TarvelinTopic FullTopic() {
  TarvelinTopic topic;
  topic.SetRounding(3);
  topic.SetName("Which car to buy next spring");
  topic.SetTotalOptions(10);
  topic.SetTotalAttributes(10);
  for (int16_t i = 0; i < 10; ++i) {
    topic.SetOptionName(i, kOptions[i]);
    topic.SetAttributeName(i, kAttributes[i]);
    topic.SetWeighting(i, (i + 1) / 10.0);
    for (int16_t attribute = 0; attribute < 10; ++attribute) {
      topic.SetRating(i, attribute, ((i * i * 7 + attribute * 5 + i * attribute) % 101) / 100.0);
    }
  }
  return topic;
}

NumberFormat DisplayFormat(bool Decimal) {
  return [Decimal](double Value) { return FormatNumberForDisplay(Value, 3, Decimal); };
}

QString Run(const QString& Program, const QStringList& Arguments) {
  QProcess process;
  process.start(Program, Arguments);
  if (!process.waitForFinished() || process.exitCode() != 0) {
    return {};
  }
  return QString::fromUtf8(process.readAllStandardOutput());
}

}  // namespace

// The report as files: checked through the tools a reader's viewer would use, not through its own code.
class DecisionReportTest final : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    for (const char* tool : {"pdfinfo", "pdftotext"}) {
      QVERIFY2(!QStandardPaths::findExecutable(tool).isEmpty(), "poppler-utils is missing: run scripts/install-deps");
    }
  }

  void pdfIsOnePageOfTextWithEveryNameAndScore_data() {
    QTest::addColumn<bool>("decimal");
    QTest::newRow("decimals") << true;
    QTest::newRow("percentages") << false;
  }
  void pdfIsOnePageOfTextWithEveryNameAndScore() {
    QFETCH(bool, decimal);
    const TarvelinTopic topic = FullTopic();
    const std::string pdf = DecisionReport(topic, ReportFormat::Pdf, DisplayFormat(decimal), QDate(2026, 11, 23));
    QVERIFY(pdf.starts_with("%PDF-"));
    testing::TempFolder folder;
    const QString file = QString::fromStdString(folder.File("report.pdf"));
    testing::WriteBytes(file.toStdString(), pdf);

    QVERIFY(QRegularExpression("^Pages:\\s+1$", QRegularExpression::MultilineOption)
                .match(Run("pdfinfo", {file}))
                .hasMatch());
    // Words wrapped in a narrow column still read as one name once the spacing is evened out.
    const QString text = Run("pdftotext", {file, "-"}).simplified();
    QVERIFY(text.contains("Which car to buy next spring"));
    QVERIFY(text.contains("23 November 2026"));
    for (int16_t i = 0; i < 10; ++i) {
      QVERIFY2(text.contains(kOptions[i]), kOptions[i]);
      QVERIFY2(text.contains(kAttributes[i]), kAttributes[i]);
      const QString score = QString::fromStdString(DisplayFormat(decimal)(topic.GetScore(i)));
      QVERIFY2(text.contains(score), qPrintable(score));
    }
  }

  void htmlEscapesEveryNameAndNeedsNothingOutsideItself() {
    const std::string name = "<b>&\"x";
    TarvelinTopic topic = FullTopic();
    topic.SetName(name);
    topic.SetOptionName(0, name);
    topic.SetAttributeName(9, name);
    topic.SetDescription(name);
    const QString html =
        QString::fromStdString(DecisionReport(topic, ReportFormat::Html, DisplayFormat(true), QDate(2026, 11, 23)));
    QVERIFY(!html.contains(QString::fromStdString(name)));

    // Read back as a browser would, the names are text and nothing else changed.
    QTextDocument read;
    read.setHtml(html);
    QCOMPARE(read.metaInformation(QTextDocument::DocumentTitle), QString("<b>&\"x - decision report"));
    QVERIFY(read.toPlainText().startsWith("<b>&\"x\n"));
    QCOMPARE(read.toPlainText().count("<b>&\"x") + 1, html.count("&lt;b&gt;&amp;&quot;x"));  // + the title

    const QRegularExpression reference("(?:src|href)\\s*=\\s*\"([^\"]*)\"");
    int pictures = 0;
    for (const auto& match : reference.globalMatch(html)) {
      const QString target = match.captured(1);
      QVERIFY2(target.startsWith("data:image/png;base64,"), qPrintable(target.left(40)));
      QVERIFY(!QImage::fromData(QByteArray::fromBase64(target.mid(target.indexOf(',') + 1).toLatin1())).isNull());
      ++pictures;
    }
    QCOMPARE(pictures, 10);
    for (const char* outside : {"http:", "https:", "file:", "url(", "@import", "<script", "<link"}) {
      QVERIFY2(!html.contains(outside), outside);
    }
  }

  // Each bar's coloured length is the option's score, and its parts the attributes' contributions.
  void barsAreSplitByAttributeInTheirColours() {
    TarvelinTopic topic;
    topic.SetRounding(3);
    topic.SetTotalOptions(2);
    topic.SetTotalAttributes(2);
    topic.SetWeighting(0, 1.0);
    topic.SetWeighting(1, 1.0);
    topic.SetRating(0, 0, 1.0);
    topic.SetRating(0, 1, 0.5);
    topic.SetRating(1, 0, 0.0);
    topic.SetRating(1, 1, 0.2);
    const QString html =
        QString::fromStdString(DecisionReport(topic, ReportFormat::Html, DisplayFormat(true), QDate(2026, 11, 23)));
    const QRegularExpression picture("src=\"data:image/png;base64,([^\"]*)\"");
    QList<QImage> bars;
    for (const auto& match : picture.globalMatch(html)) {
      bars << QImage::fromData(QByteArray::fromBase64(match.captured(1).toLatin1()));
    }
    QCOMPARE(bars.size(), 2);
    // Ranked best first: option 0 scores 0.75 (0.5 + 0.25), option 1 scores 0.1 (0 + 0.1).
    const auto colourAt = [](const QImage& Bar, double Fraction) {
      return Bar.pixelColor(static_cast<int>(Fraction * Bar.width()), Bar.height() / 2);
    };
    QCOMPARE(colourAt(bars[0], 0.25), ReportAttributeColour(0));
    QCOMPARE(colourAt(bars[0], 0.70), ReportAttributeColour(1));
    QCOMPARE(colourAt(bars[0], 0.80), colourAt(bars[1], 0.99));
    QCOMPARE(colourAt(bars[1], 0.05), ReportAttributeColour(1));
    QVERIFY(colourAt(bars[1], 0.15) != ReportAttributeColour(1));
  }
};

TARVELIN_GUI_TEST(DecisionReportTest);

#include "DecisionReportTest.moc"
