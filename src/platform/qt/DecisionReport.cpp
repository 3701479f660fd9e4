#include "platform/qt/DecisionReport.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QDate>
#include <QImage>
#include <QLocale>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>
#include <vector>

#include "insight/TopicInsight.h"
#include "model/TarvelinTopic.h"
#include "widgets/Palette.h"

namespace tarvelin {

namespace {

// Sizes are in CSS pixels (1/96 inch), the unit of the HTML file and of the PDF page alike.
constexpr int kBarWidth = 340;
constexpr int kBarHeight = 12;
// Bars are drawn finer than that, so that they stay sharp when printed or zoomed.
constexpr int kBarScale = 3;
// The white line between two parts of a bar, in the bar's own pixels.
constexpr int kPartGap = 2;
constexpr int kPdfResolution = 96;
constexpr qreal kPageMarginMillimetres = 15;
// A4 less the margins.
constexpr int kPageWidth = 680;
constexpr int kRatingWidth = 60;
// The weightings around the present ones over which the report tells how often the best option holds.
constexpr double kHoldRadius = 0.1;

// Readable in a browser and in the PDF alike: the PDF's layout understands this subset of CSS, and the
// table attributes carry the spacing where it does not.
constexpr const char* kStyle =
    "body { font-family: 'DejaVu Sans', Verdana, sans-serif; font-size: 9pt; color: #1a1a1a; max-width: 680px; "
    "margin: 24px auto; }\n"
    "h1 { font-size: 17pt; margin: 0; }\n"
    "h2 { font-size: 11pt; margin-top: 14px; margin-bottom: 4px; }\n"
    "p { margin-top: 0; margin-bottom: 4px; }\n"
    ".note { color: #555555; }\n"
    "table { border-collapse: collapse; }\n"
    "th { text-align: left; vertical-align: bottom; }\n"
    "td, th { padding: 1px 4px; }\n"
    ".number { text-align: right; }\n"
    "table.grid { font-family: 'DejaVu Sans Condensed', 'Arial Narrow', sans-serif; font-size: 8pt; }\n"
    "table.grid td, table.grid th { padding: 1px 2px; }\n"
    "th.attribute { font-weight: normal; font-size: 7pt; }\n";

// How the page refers to a picture: by a data URI in the HTML file, by a document resource in the PDF.
using PictureReference = std::function<QString(const QImage&)>;

QString Escaped(const std::string& Text) {
  return QString::fromStdString(Text).toHtmlEscaped();
}

QString Bold(const QString& Html, bool IsBold) {
  return IsBold ? "<b>" + Html + "</b>" : Html;
}

QString Cell(const QString& Html, bool IsNumber = false) {
  return IsNumber ? "<td class=\"number\" align=\"right\">" + Html + "</td>" : "<td>" + Html + "</td>";
}

QString HeaderCell(const QString& Html, bool IsNumber = false) {
  return IsNumber ? "<th class=\"number\" align=\"right\">" + Html + "</th>" : "<th align=\"left\">" + Html + "</th>";
}

QString TableStart(bool FullWidth) {
  return FullWidth ? "<table cellspacing=\"0\" cellpadding=\"2\" width=\"100%\">\n"
                   : "<table cellspacing=\"0\" cellpadding=\"2\">\n";
}

// The page of one topic, built once for one file.
class ReportPage {
 public:
  ReportPage(const TarvelinTopic& Topic, const NumberFormat& Numbers, const QDate& Date, PictureReference Pictures)
      : topic_(Topic), insight_(Topic), numbers_(Numbers), date_(Date), pictures_(std::move(Pictures)) {}

  QString Html() const {
    return "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n<title>" + Escaped(topic_.Name()) +
           " - decision report</title>\n<style>\n" + kStyle + "</style></head>\n<body>\n" + pHeading() + pRanking() +
           pInsight() + pWeightings() + pRatings() + "</body></html>\n";
  }

 private:
  const ExactScores& pExact() const { return insight_.Exact(); }
  QString pNumber(double Value) const { return QString::fromStdString(numbers_(Value)).toHtmlEscaped(); }
  QString pOptionName(int16_t OptionID) const {
    return Bold(Escaped(topic_.GetOptionName(OptionID)), pExact().AmongBest(OptionID));
  }

  QString pHeading() const {
    QString html = "<h1>" + Escaped(topic_.Name()) + "</h1>\n<p class=\"note\">Decision report, " +
                   QLocale(QLocale::English, QLocale::UnitedKingdom).toString(date_, "d MMMM yyyy") + "</p>\n";
    if (!topic_.Description().empty()) {
      html += "<p>" + Escaped(topic_.Description()).replace('\n', "<br>") + "</p>\n";
    }
    return html;
  }

  // Highest score first; options with equal scores share a place and keep their order.
  std::vector<int16_t> pRankedOptions() const {
    std::vector<int16_t> options(static_cast<size_t>(pExact().TotalOptions()));
    std::iota(options.begin(), options.end(), int16_t{0});
    std::stable_sort(options.begin(), options.end(),
                     [this](int16_t A, int16_t B) { return pExact().Score(A) > pExact().Score(B); });
    return options;
  }

  QString pRanking() const {
    QString html = "<h2>Ranking</h2>\n" + TableStart(false);
    const std::vector<int16_t> ranked = pRankedOptions();
    size_t rank = 0;
    for (size_t place = 0; place < ranked.size(); ++place) {
      const int16_t option = ranked[place];
      if (place == 0 || pExact().Score(ranked[place - 1]) != pExact().Score(option)) {
        rank = place + 1;
      }
      html += "<tr>" + Cell(QString::number(rank) + ".", true) + Cell(pOptionName(option)) + Cell(pBarPicture(option)) +
              Cell(Bold(pNumber(topic_.GetScore(option)), pExact().AmongBest(option)), true) + "</tr>\n";
    }
    return html +
           "</table>\n<p class=\"note\">Each bar shows the attributes' parts of the score, in the colours of the "
           "weightings below.</p>\n";
  }

  QString pBarPicture(int16_t OptionID) const {
    return "<img src=\"" + pictures_(pSplitBar(OptionID)) + "\" width=\"" + QString::number(kBarWidth) +
           "\" height=\"" + QString::number(kBarHeight) + "\" alt=\"\">";
  }

  // The option's score as a bar on a scale of 0 to 1, one part per attribute in the attribute's colour. Drawn
  // with a colour table, which makes a PNG a tenth as costly to write as from full colour.
  QImage pSplitBar(int16_t OptionID) const {
    const int width = kBarWidth * kBarScale;
    QList<QRgb> colours{qRgb(0xee, 0xee, 0xee), qRgb(0xff, 0xff, 0xff)};
    constexpr uchar kTrack = 0, kGap = 1, kFirstAttribute = 2;
    std::vector<uchar> row(static_cast<size_t>(width), kTrack);
    double reached = 0;
    int left = 0;
    for (int16_t attribute = 0; attribute < pExact().TotalAttributes(); ++attribute) {
      colours << ReportAttributeColour(attribute).rgb();
      reached += insight_.Contribution(OptionID, attribute);
      const int right = std::clamp(static_cast<int>(std::lround(reached * width)), left, width);
      std::fill(row.begin() + left, row.begin() + right, static_cast<uchar>(kFirstAttribute + attribute));
      if (left > 0) {
        std::fill(row.begin() + left, row.begin() + std::min(left + kPartGap, right), kGap);
      }
      left = right;
    }
    QImage bar(width, kBarHeight * kBarScale, QImage::Format_Indexed8);
    bar.setColorTable(colours);
    for (int y = 0; y < bar.height(); ++y) {
      std::copy(row.begin(), row.end(), bar.scanLine(y));
    }
    return bar;
  }

  QString pInsight() const {
    const HoldShareFigure hold{insight_.HoldShare(kHoldRadius), kHoldRadius};
    return "<h2>What could change the best option</h2>\n<p>" +
           Escaped(InsightLineText(topic_, insight_, numbers_, hold)) + "</p>\n";
  }

  QString pWeightings() const {
    const int16_t best = pExact().Best();
    const bool tied = pExact().RunnerUp() >= 0 && pExact().AmongBest(pExact().RunnerUp());
    const QString keeps =
        "Keeps " + Escaped(topic_.GetOptionName(best)) + (tied ? " among the best" : " best") + " from";
    QString html = "<h2>Weightings</h2>\n" + TableStart(true) + "<tr><th width=\"12\"></th>" + HeaderCell("Attribute") +
                   HeaderCell("Weighting", true) + HeaderCell(keeps) + HeaderCell("Best below that") +
                   HeaderCell("Best above that") + "</tr>\n";
    for (int16_t attribute = 0; attribute < pExact().TotalAttributes(); ++attribute) {
      html += "<tr>" + pSwatch(attribute) + Cell(Escaped(topic_.GetAttributeName(attribute))) +
              Cell(pNumber(topic_.GetWeighting(attribute)), true) + pBandCells(insight_.Band(attribute)) + "</tr>\n";
    }
    return html + "</table>\n";
  }

  static QString pSwatch(int16_t AttributeID) {
    const QString colour = ReportAttributeColour(AttributeID).name();
    return "<td width=\"12\" bgcolor=\"" + colour + "\" style=\"background-color: " + colour + "\">&nbsp;</td>";
  }

  // Where the weighting may go with the best option staying best, and who is best beyond. A rival named
  // at 0 is best only there: with every other weighting 0, all attributes count alike.
  QString pBandCells(const WeightingBand& Band) const {
    const QString none(QChar(0x2013));
    QString below = none;
    if (Band.LowerRival >= 0) {
      below = Escaped(topic_.GetOptionName(Band.LowerRival));
      if (Band.Low == 0.0) {
        below += " at " + pNumber(0.0);
      }
    }
    const QString above = Band.UpperRival >= 0 ? Escaped(topic_.GetOptionName(Band.UpperRival)) : none;
    return Cell(pNumber(Band.Low) + " to " + pNumber(Band.High)) + Cell(below) + Cell(above);
  }

  QString pRatings() const {
    QString html = "<h2>Ratings</h2>\n";
    if (topic_.InvertWeights()) {
      html += "<p class=\"note\">In this topic a lower rating is better.</p>\n";
    }
    // The ratings share three quarters of the page, each column no wider than a rating needs, so that a few
    // attributes keep the table compact; the option names get the rest.
    const int attributes = pExact().TotalAttributes();
    const int ratingWidth = std::min(kRatingWidth, kPageWidth * 3 / 4 / attributes);
    const int tableWidth = std::min(kPageWidth, kPageWidth / 4 + attributes * ratingWidth);
    html += "<table class=\"grid\" cellspacing=\"0\" cellpadding=\"1\" width=\"" + QString::number(tableWidth) +
            "\">\n<tr>" + HeaderCell("Option");
    for (int16_t attribute = 0; attribute < attributes; ++attribute) {
      html += "<th class=\"number attribute\" align=\"right\" width=\"" + QString::number(ratingWidth) + "\">" +
              Escaped(topic_.GetAttributeName(attribute)) + "</th>";
    }
    html += "</tr>\n";
    for (int16_t option = 0; option < pExact().TotalOptions(); ++option) {
      html += "<tr>" + Cell(pOptionName(option));
      for (int16_t attribute = 0; attribute < attributes; ++attribute) {
        html += Cell(pNumber(topic_.GetRating(option, attribute)), true);
      }
      html += "</tr>\n";
    }
    return html + "</table>\n";
  }

  const TarvelinTopic& topic_;
  const TopicInsight insight_;
  const NumberFormat& numbers_;
  const QDate date_;
  const PictureReference pictures_;
};

std::string HtmlFile(const TarvelinTopic& Topic, const NumberFormat& Numbers, const QDate& Date) {
  const ReportPage page(Topic, Numbers, Date, [](const QImage& Picture) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    Picture.save(&buffer, "PNG");
    return "data:image/png;base64," + QString::fromLatin1(png.toBase64());
  });
  return page.Html().toStdString();
}

// Lays the page out on the writer's own metrics, A4 less the margins, and draws it page by page.
std::string PdfFile(const TarvelinTopic& Topic, const NumberFormat& Numbers, const QDate& Date) {
  QByteArray pdf;
  QBuffer buffer(&pdf);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(kPdfResolution);
  const QMarginsF margins(kPageMarginMillimetres, kPageMarginMillimetres, kPageMarginMillimetres,
                          kPageMarginMillimetres);
  writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, margins, QPageLayout::Millimeter));
  writer.setTitle(QString::fromStdString(Topic.Name()));
  writer.setCreator(QString::fromStdString(Program().AppTitle));

  QTextDocument document;
  document.documentLayout()->setPaintDevice(&writer);
  document.setDocumentMargin(0);
  int pictures = 0;
  const ReportPage page(Topic, Numbers, Date, [&document, &pictures](const QImage& Picture) {
    const QUrl name("picture:" + QString::number(++pictures));
    document.addResource(QTextDocument::ImageResource, name, Picture);
    return name.toString();
  });
  document.setHtml(page.Html());
  const QSizeF pageSize(writer.width(), writer.height());
  document.setPageSize(pageSize);

  QPainter painter(&writer);
  // Bars stay exact colours rather than compressed pictures.
  painter.setRenderHint(QPainter::LosslessImageRendering);
  for (int pageIndex = 0; pageIndex < document.pageCount(); ++pageIndex) {
    if (pageIndex > 0) {
      writer.newPage();
    }
    const qreal top = pageIndex * pageSize.height();
    painter.save();
    painter.translate(0, -top);
    document.drawContents(&painter, QRectF(QPointF(0, top), pageSize));
    painter.restore();
  }
  painter.end();
  return pdf.toStdString();
}

}  // namespace

QColor ReportAttributeColour(int16_t AttributeID) {
  return ColourFromColorref(Palette::AttributeColour(AttributeID));
}

std::string DecisionReport(const TarvelinTopic& Topic, ReportFormat Format, const NumberFormat& Numbers,
                           const QDate& Date) {
  return Format == ReportFormat::Pdf ? PdfFile(Topic, Numbers, Date) : HtmlFile(Topic, Numbers, Date);
}

}  // namespace tarvelin
