#include <QDate>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>
#include <string>

#include "gui_support/GuiTestRegistry.h"
#include "insight/InsightTopics.h"
#include "mainwindow/modDisplay.h"
#include "model/TarvelinTopic.h"
#include "platform/qt/DecisionReport.h"
#include "support/TempFolder.h"

using namespace tarvelin;

namespace {

// A full topic whose scores all differ. No name is part of another ("Car 1" would be found in "Car 10").
TarvelinTopic FullTopic() {
  TarvelinTopic topic;
  topic.SetRounding(3);
  topic.SetName("Which car to buy next spring");
  topic.SetTotalOptions(10);
  topic.SetTotalAttributes(10);
  for (int16_t i = 0; i < 10; ++i) {
    topic.SetOptionName(i, "Car " + std::string(1, static_cast<char>('A' + i)) + " estate");
    topic.SetAttributeName(i, "Aspect " + std::string(1, static_cast<char>('K' + i)));
    topic.SetWeighting(i, (i + 1) / 10.0);
    for (int16_t attribute = 0; attribute < 10; ++attribute) {
      topic.SetRating(i, attribute, ((i * i * 7 + attribute * 5 + i * attribute) % 101) / 100.0);
    }
  }
  return topic;
}

std::string Report(const TarvelinTopic& Topic, ReportFormat Format, bool Decimal = true) {
  return DecisionReport(
      Topic, Format, [Decimal](double Value) { return FormatNumberForDisplay(Value, 3, Decimal); },
      QDate(2026, 11, 23));
}

// The report's pictures in the order they appear.
QList<QImage> Pictures(const std::string& Html) {
  QList<QImage> pictures;
  for (const auto& match :
       QRegularExpression("src=\"data:image/png;base64,([^\"]*)\"").globalMatch(QString::fromStdString(Html))) {
    pictures << QImage::fromData(QByteArray::fromBase64(match.captured(1).toLatin1()));
  }
  return pictures;
}

// A PDF file's text as the poppler tools read it (scripts/install-deps installs them), a form feed after each
// page; empty when it could not be read.
QString PdfText(const std::string& Pdf) {
  const testing::TempFolder folder;
  testing::WriteBytes(folder.File("report.pdf"), Pdf);
  QProcess process;
  process.start("pdftotext", {QString::fromStdString(folder.File("report.pdf")), "-"});
  process.waitForFinished();
  return process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

}  // namespace

// The report as files, read through the tools a reader's viewer would use.
class DecisionReportTest final : public QObject {
  Q_OBJECT

 private slots:
  void pdfIsOnePageOfTextWithEveryNameAndScore() {
    const TarvelinTopic topic = FullTopic();
    for (const bool decimal : {true, false}) {
      const QString read = PdfText(Report(topic, ReportFormat::Pdf, decimal));
      QCOMPARE(read.count('\f'), 1);
      // A name wrapped in a narrow column still reads as one once the spacing is evened out.
      const QString text = read.simplified();
      QVERIFY(text.contains("Which car to buy next spring") && text.contains("23 November 2026"));
      for (int16_t i = 0; i < 10; ++i) {
        double score = topic.GetScore(i);
        for (const std::string& shown :
             {topic.GetOptionName(i), topic.GetAttributeName(i), FormatNumberForDisplay(score, 3, decimal)}) {
          QVERIFY2(text.contains(QString::fromStdString(shown)), shown.c_str());
        }
      }
    }
  }

  void htmlEscapesEveryNameAndNeedsNothingOutsideItself() {
    const QString name = "<b>&\"x";
    TarvelinTopic topic = FullTopic();
    topic.SetName(name.toStdString());
    topic.SetDescription(name.toStdString());
    topic.SetOptionName(0, name.toStdString());
    topic.SetAttributeName(9, name.toStdString());
    const QString html = QString::fromStdString(Report(topic, ReportFormat::Html));
    QVERIFY(!html.contains(name));
    // Read back, every escaped name is the name as text (the title is not body text).
    QTextDocument read;
    read.setHtml(html);
    QCOMPARE(read.metaInformation(QTextDocument::DocumentTitle), name + " - decision report");
    QCOMPARE(read.toPlainText().count(name) + 1, html.count("&lt;b&gt;&amp;&quot;x"));

    QCOMPARE(html.count(QRegularExpression("(src|href)=")), 10);
    QCOMPARE(Pictures(html.toStdString()).size(), 10);
    for (const char* outside : {"http:", "https:", "file:", "url(", "@import", "<script", "<link"}) {
      QVERIFY2(!html.contains(outside), outside);
    }
  }

  // Ranked best first, each bar is as long as its option's score, made of the attributes' contributions.
  void barsAreSplitByAttributeInTheirColours() {
    // Option 1 scores 0.5 + 0.25, option 0 scores 0 + 0.1.
    const QList<QImage> bars =
        Pictures(Report(testing::MakeTopic({0.5, 0.5}, {{0.0, 0.2}, {1.0, 0.5}}), ReportFormat::Html));
    QCOMPARE(bars.size(), 2);
    const auto colourAt = [](const QImage& Bar, double Fraction) {
      return Bar.pixelColor(static_cast<int>(Fraction * Bar.width()), Bar.height() / 2);
    };
    QCOMPARE(colourAt(bars[0], 0.25), ReportAttributeColour(0));
    QCOMPARE(colourAt(bars[0], 0.70), ReportAttributeColour(1));
    QCOMPARE(colourAt(bars[1], 0.05), ReportAttributeColour(1));
    QCOMPARE(colourAt(bars[0], 0.80), colourAt(bars[1], 0.15));
    QVERIFY(colourAt(bars[1], 0.15) != ReportAttributeColour(1));
  }
};

TARVELIN_GUI_TEST(DecisionReportTest);

#include "DecisionReportTest.moc"
