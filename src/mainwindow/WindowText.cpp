#include "mainwindow/WindowText.h"

#include <QFontMetrics>
#include <QLabel>
#include <string_view>

#include "util/modFormElements.h"

namespace tarvelin {

QFont LabelFont(int PointSize, bool Bold) {
  QFont font("Comic Sans MS", PointSize);
  font.setBold(Bold);
  return font;
}

std::string FittedText(const QLabel* Label, const std::string& Caption, int Width) {
  const QFontMetrics metrics(Label->font());
  return FitCaption(
             Caption, Width,
             [&metrics](std::string_view text) {
               return metrics.horizontalAdvance(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
             })
      .Text;
}

}  // namespace tarvelin
