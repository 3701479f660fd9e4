#include "widgets/GraphicalButton.h"

#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tarvelin {

namespace {

constexpr int PictureSize = 16;
constexpr int PictureGap = 6;  // between the picture and the caption
constexpr int HorizontalPadding = 9;
constexpr int VerticalPadding = 4;
constexpr double CornerRadius = 4.0;

struct Look {
  QColor Top, Bottom, Border;
};

const Look Resting{QColor(255, 255, 255), QColor(228, 238, 249), QColor(134, 149, 156)};
const Look Hovered{QColor(255, 255, 255), QColor(244, 249, 255), QColor(94, 143, 196)};
const Look Pressed{QColor(211, 226, 243), QColor(233, 241, 250), QColor(94, 126, 158)};
const Look Disabled{QColor(241, 244, 247), QColor(241, 244, 247), QColor(195, 202, 208)};
const QColor FocusRing(94, 143, 196, 150);
const QColor DisabledText(154, 163, 171);

}  // namespace

GraphicalButton::GraphicalButton(QWidget* parent) : QAbstractButton(parent) {
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

GraphicalButton::GraphicalButton(const QString& Caption, ButtonPicture Picture, QWidget* parent)
    : GraphicalButton(parent) {
  setText(Caption);
  picture_ = Picture;
}

void GraphicalButton::SetPicture(ButtonPicture Picture) {
  if (Picture != picture_) {
    picture_ = Picture;
    updateGeometry();
    update();
  }
}

const GraphicalButton::CaptionMetrics& GraphicalButton::pCaptionMetrics() const {
  if (!metrics_ || metrics_->Text != text() || metrics_->Font != font()) {
    const QFontMetricsF metrics(font());
    metrics_ = CaptionMetrics{
        text(), font(), static_cast<int>(std::ceil(metrics.horizontalAdvance(text()))), fontMetrics().height(), -1, {}};
  }
  return *metrics_;
}

int GraphicalButton::pContentWidth() const {
  const bool hasPicture = picture_ != ButtonPicture::None;
  const bool hasCaption = !text().isEmpty();
  return (hasPicture ? PictureSize : 0) + (hasPicture && hasCaption ? PictureGap : 0) +
         (hasCaption ? pCaptionMetrics().Width : 0);
}

QSize GraphicalButton::sizeHint() const {
  ensurePolished();  // the style may still change the font
  const int contentHeight = std::max(pCaptionMetrics().LineHeight, PictureSize);
  return {pContentWidth() + 2 * HorizontalPadding, contentHeight + 2 * VerticalPadding};
}

QSize GraphicalButton::minimumSizeHint() const {
  const QSize hint = sizeHint();
  const int pictureOnly = (picture_ != ButtonPicture::None ? PictureSize : 0) + 2 * HorizontalPadding;
  return {std::min(hint.width(), pictureOnly), hint.height()};
}

void GraphicalButton::pPaintBackground(QPainter& Painter) const {
  const Look& look = !isEnabled() ? Disabled : isDown() ? Pressed : underMouse() ? Hovered : Resting;
  const QRectF frame(rect());
  QLinearGradient shade(frame.topLeft(), frame.bottomLeft());
  shade.setColorAt(0, look.Top);
  shade.setColorAt(1, look.Bottom);
  // The frame is a fill under a smaller fill, which costs far less than stroking the rounded outline.
  Painter.setPen(Qt::NoPen);
  Painter.setBrush(look.Border);
  Painter.drawRoundedRect(frame, CornerRadius, CornerRadius);
  Painter.setBrush(shade);
  Painter.drawRoundedRect(frame.adjusted(1, 1, -1, -1), CornerRadius - 1, CornerRadius - 1);
  if (hasFocus() && isEnabled()) {
    Painter.setBrush(FocusRing);
    Painter.drawRoundedRect(frame.adjusted(2, 2, -2, -2), CornerRadius - 2, CornerRadius - 2);
    Painter.setBrush(shade);
    Painter.drawRoundedRect(frame.adjusted(3, 3, -3, -3), CornerRadius - 3, CornerRadius - 3);
  }
}

// The picture and caption are centred; the content moves down and right while the button is pressed. A
// button too narrow for the usual padding (a picture-only button) gives up padding before content.
QRectF GraphicalButton::pContentRect() const {
  const double padding = std::clamp((width() - pContentWidth()) / 2.0, 0.0, double{HorizontalPadding});
  const QRectF inner = QRectF(rect()).adjusted(padding, 0, -padding, 0);
  const double slack = std::max(0.0, inner.width() - pContentWidth());
  const QPointF sink = isDown() ? QPointF(1, 1) : QPointF(0, 0);
  return inner.adjusted(slack / 2, 0, 0, 0).translated(sink);
}

QRectF GraphicalButton::pCaptionRect() const {
  const double pictureWidth = picture_ != ButtonPicture::None ? PictureSize + PictureGap : 0;
  return pContentRect().adjusted(pictureWidth, 0, 0, 0);
}

QString GraphicalButton::ShownCaption() const {
  const qreal width = std::max(0.0, pCaptionRect().width());
  const CaptionMetrics& metrics = pCaptionMetrics();
  if (metrics.ShownWidth != width) {
    metrics_->ShownText = QFontMetricsF(font()).elidedText(text(), Qt::ElideRight, width);
    metrics_->ShownWidth = width;
  }
  return metrics.ShownText;
}

void GraphicalButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  pPaintBackground(painter);
  if (picture_ != ButtonPicture::None) {
    const QRectF content = pContentRect();
    const QRectF box(content.left(), content.top() + (content.height() - PictureSize) / 2, PictureSize, PictureSize);
    PaintButtonPicture(painter, picture_, box, isEnabled());
  }
  if (!text().isEmpty()) {
    painter.setPen(isEnabled() ? palette().color(QPalette::ButtonText) : DisabledText);
    painter.drawText(pCaptionRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, ShownCaption());
  }
}

void GraphicalButton::keyPressEvent(QKeyEvent* event) {
  const bool activates = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (activates && !event->isAutoRepeat()) {
    click();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

}  // namespace tarvelin
