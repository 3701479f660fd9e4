#include "widgets/ctlSlider.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <optional>

#include "widgets/AccessibleSlider.h"
#include "widgets/Palette.h"

namespace tarvelin {

namespace {

constexpr int MinimumPosition = 0;
constexpr int MaximumPosition = 100;
constexpr int PageStep = 10;
constexpr int WheelNotch = 120;  // angle units of one wheel notch
constexpr int PreferredHeight = 18;

// Outlines are drawn as a fill under a smaller fill: stroking a rounded shape costs many times more.
constexpr double ThumbRadius = 7.0;
constexpr double ThumbRing = 1.5;
constexpr double FocusHaloRadius = 9.0;
constexpr int EditableInset = 9;  // room for the focus halo at both ends
constexpr double EditableTrackHeight = 6.0;
constexpr double ReadOnlyTrackHeight = 10.0;
// A split or framed read-only bar keeps room at both ends for its frame: a ring and a gap.
constexpr int FrameInset = 3;
constexpr double FrameRing = 2.0;

const QColor TrackFill(255, 255, 255);
const QColor TrackBorder(134, 149, 156, 170);
const QColor DisabledBar(184, 190, 196);

// The band stands out above and below the track; a tick crosses the track.
constexpr double BandHeight = 14.0;
constexpr double BandRadius = 3.0;
constexpr double TickWidth = 2.0;
constexpr double TickHeight = 12.0;
const QColor BandFill(200, 234, 192);
const QColor TickColour(44, 110, 58);

// The position a key moves the slider to, or nothing when the key is not the slider's.
std::optional<int> KeyTarget(int Key, int Value) {
  switch (Key) {
    case Qt::Key_Left:
    case Qt::Key_Down:
      return Value - 1;
    case Qt::Key_Right:
    case Qt::Key_Up:
      return Value + 1;
    case Qt::Key_PageDown:
      return Value - PageStep;
    case Qt::Key_PageUp:
      return Value + PageStep;
    case Qt::Key_Home:
      return MinimumPosition;
    case Qt::Key_End:
      return MaximumPosition;
    default:
      return std::nullopt;
  }
}

// Where each segment of a split bar begins, and where the last one ends, on whole pixels from Start to End;
// nothing when the segments have no size at all.
std::vector<double> SegmentEdges(const std::vector<ctlSlider::Segment>& Segments, double Start, double End) {
  double total = 0;
  for (const auto& [size, colour] : Segments) {
    total += std::max(0.0, size);
  }
  if (total <= 0) {
    return {};
  }
  std::vector<double> edges{Start};
  double sum = 0;
  for (const auto& [size, colour] : Segments) {
    sum += std::max(0.0, size);
    edges.push_back(std::round(Start + (End - Start) * sum / total));
  }
  return edges;
}

QColor Blend(const QColor& From, const QColor& To, double Amount) {
  const auto mix = [Amount](int A, int B) { return static_cast<int>(std::lround(A + (B - A) * Amount)); };
  return QColor(mix(From.red(), To.red()), mix(From.green(), To.green()), mix(From.blue(), To.blue()));
}

}  // namespace

ctlSlider::ctlSlider(QWidget* parent) : QWidget(parent) {
  AccessibleSlider::Install();
  setFocusPolicy(Qt::ClickFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ctlSlider::SetValue(int Value) {
  pApplyValue(Value);
}

void ctlSlider::SetBarColour(uint32_t Colour) {
  if (Colour != barColour_) {
    barColour_ = Colour;
    update();
  }
}

void ctlSlider::SetSegments(std::vector<Segment> Segments) {
  if (Segments != segments_) {
    segments_ = std::move(Segments);
    update();
  }
}

void ctlSlider::SetFramed(bool Framed) {
  if (Framed != framed_) {
    framed_ = Framed;
    update();
  }
}

void ctlSlider::SetReadOnly(bool ReadOnly) {
  if (ReadOnly == readOnly_) {
    return;
  }
  readOnly_ = ReadOnly;
  dragging_ = false;
  setFocusPolicy(ReadOnly ? Qt::NoFocus : Qt::ClickFocus);
  if (ReadOnly && hasFocus()) {
    clearFocus();
  }
  update();
}

int ctlSlider::TrackInset() const {
  if (!readOnly_) {
    return EditableInset;
  }
  return segments_.empty() && !framed_ ? 0 : FrameInset;
}

void ctlSlider::SetBand(std::optional<ValueRange> Band) {
  if (Band != band_) {
    band_ = Band;
    update();
  }
}

void ctlSlider::SetTicks(std::vector<double> Ticks) {
  if (Ticks != ticks_) {
    ticks_ = std::move(Ticks);
    update();
  }
}

QSize ctlSlider::sizeHint() const {
  return {120, PreferredHeight};
}

QSize ctlSlider::minimumSizeHint() const {
  return {2 * EditableInset + 20, PreferredHeight};
}

bool ctlSlider::pApplyValue(int Value) {
  const int clamped = std::clamp(Value, MinimumPosition, MaximumPosition);
  if (clamped == value_) {
    return false;
  }
  value_ = clamped;
  update();
  QAccessibleValueChangeEvent changed(this, value_);
  QAccessible::updateAccessibility(&changed);
  emit Change();
  return true;
}

void ctlSlider::pMoveByUser(int Value) {
  if (pApplyValue(Value)) {
    emit Scroll();
  }
}

int ctlSlider::pValueAt(double X) const {
  const int inset = TrackInset();
  const double span = std::max(1, width() - 2 * inset);
  const auto position = std::lround((X - inset) * MaximumPosition / span);
  return static_cast<int>(std::clamp<long>(position, MinimumPosition, MaximumPosition));
}

QRectF ctlSlider::pTrackRect() const {
  const double trackHeight = readOnly_ ? ReadOnlyTrackHeight : EditableTrackHeight;
  const double inset = TrackInset();
  return {inset, (height() - trackHeight) / 2, std::max(0.0, width() - 2 * inset), trackHeight};
}

void ctlSlider::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF track = pTrackRect();
  const double radius = track.height() / 2;
  const double fillEnd = track.left() + track.width() * value_ / MaximumPosition;
  const QColor bar = isEnabled() ? ColourFromColorref(barColour_) : DisabledBar;

  painter.setPen(Qt::NoPen);
  if (band_) {
    pPaintBand(painter, track);
  }
  if (framed_) {
    pPaintFrame(painter, track, bar);
  }
  painter.setBrush(TrackBorder);
  painter.drawRoundedRect(track, radius, radius);
  painter.setBrush(TrackFill);
  painter.drawRoundedRect(track.adjusted(1, 1, -1, -1), radius - 1, radius - 1);

  if (value_ > MinimumPosition && !segments_.empty()) {
    pPaintSegments(painter, track, fillEnd);
  } else if (value_ > MinimumPosition) {
    painter.save();
    painter.setClipRect(QRectF(track.left(), track.top(), fillEnd - track.left(), track.height()));
    painter.setBrush(bar);
    painter.drawRoundedRect(track, radius, radius);
    painter.restore();
  }
  if (!ticks_.empty()) {
    pPaintTicks(painter, track);
  }
  if (!readOnly_) {
    pPaintThumb(painter, QPointF(fillEnd, track.center().y()), bar);
  }
}

void ctlSlider::pPaintBand(QPainter& Painter, const QRectF& Track) const {
  const double left = Track.left() + Track.width() * std::clamp(band_->first, 0.0, 1.0);
  const double right = Track.left() + Track.width() * std::clamp(band_->second, 0.0, 1.0);
  // A band of a single value still shows, as wide as a tick.
  const double width = std::max(right - left, TickWidth);
  const double centre = (left + right) / 2;
  Painter.setBrush(BandFill);
  Painter.drawRoundedRect(QRectF(centre - width / 2, Track.center().y() - BandHeight / 2, width, BandHeight),
                          BandRadius, BandRadius);
}

// Ticks fall on whole pixels, so that they stay sharp.
void ctlSlider::pPaintTicks(QPainter& Painter, const QRectF& Track) const {
  Painter.setBrush(TickColour);
  for (const double tick : ticks_) {
    const double x = std::round(Track.left() + Track.width() * std::clamp(tick, 0.0, 1.0) - TickWidth / 2);
    Painter.drawRect(QRectF(x, std::round(Track.center().y() - TickHeight / 2), TickWidth, TickHeight));
  }
}

void ctlSlider::pPaintThumb(QPainter& Painter, QPointF Centre, const QColor& Bar) const {
  if (hasFocus()) {
    QColor halo = Bar;
    halo.setAlpha(80);
    Painter.setBrush(halo);
    Painter.drawEllipse(Centre, FocusHaloRadius, FocusHaloRadius);
  }
  const bool lit = isEnabled() && (dragging_ || underMouse());
  Painter.setBrush(Bar.darker(dragging_ ? 135 : 115));
  Painter.drawEllipse(Centre, ThumbRadius, ThumbRadius);
  Painter.setBrush(lit ? Blend(Qt::white, Bar, 0.2) : QColor(Qt::white));
  Painter.drawEllipse(Centre, ThumbRadius - ThumbRing, ThumbRadius - ThumbRing);
}

bool ctlSlider::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const QString note = ToolTipNote();
    if (!note.isEmpty()) {
      const QString text = toolTip().isEmpty() ? note : toolTip() + '\n' + note;
      QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text, this);
      return true;
    }
  }
  return QWidget::event(event);
}

void ctlSlider::pPaintFrame(QPainter& Painter, const QRectF& Track, const QColor& Bar) const {
  const double radius = Track.height() / 2;
  const double gap = FrameInset - FrameRing;
  Painter.setBrush(Bar);
  Painter.drawRoundedRect(Track.adjusted(-FrameInset, -FrameInset, FrameInset, FrameInset), radius + FrameInset,
                          radius + FrameInset);
  Painter.setBrush(TrackFill);
  Painter.drawRoundedRect(Track.adjusted(-gap, -gap, gap, gap), radius + gap, radius + gap);
}

// Only the two ends of a split bar need the track's rounded shape; between them a plain rectangle is the same
// and far cheaper.
void ctlSlider::pPaintSegments(QPainter& Painter, const QRectF& Track, double FillEnd) const {
  const double radius = Track.height() / 2;
  const std::vector<double> edges = SegmentEdges(segments_, std::round(Track.left()), std::round(FillEnd));
  for (size_t i = 0; i + 1 < edges.size(); ++i) {
    // Neighbours wide enough keep a pixel of the track between them, so that like colours stay apart.
    const double right = edges[i + 1] < edges.back() && edges[i + 1] - edges[i] >= 3 ? edges[i + 1] - 1 : edges[i + 1];
    const QRectF piece(edges[i], Track.top(), right - edges[i], Track.height());
    if (piece.width() <= 0) {
      continue;
    }
    const QColor fill = isEnabled() ? ColourFromColorref(segments_[i].second) : DisabledBar;
    if (piece.left() >= Track.left() + radius && piece.right() <= Track.right() - radius) {
      Painter.fillRect(piece, fill);
      continue;
    }
    Painter.save();
    Painter.setClipRect(piece);
    Painter.setBrush(fill);
    Painter.drawRoundedRect(Track, radius, radius);
    Painter.restore();
  }
}

void ctlSlider::mousePressEvent(QMouseEvent* event) {
  if (readOnly_ || event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  dragging_ = true;
  update();
  emit DragStarted();
  pMoveByUser(pValueAt(event->position().x()));
}

void ctlSlider::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_) {
    event->ignore();
    return;
  }
  pMoveByUser(pValueAt(event->position().x()));
}

void ctlSlider::mouseReleaseEvent(QMouseEvent* event) {
  if (!dragging_ || event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  dragging_ = false;
  update();
  emit DragEnded();
}

void ctlSlider::wheelEvent(QWheelEvent* event) {
  if (readOnly_) {
    event->ignore();
    return;
  }
  const QPoint delta = event->angleDelta();
  wheelRemainder_ += delta.y() != 0 ? delta.y() : delta.x();
  const int steps = wheelRemainder_ / WheelNotch;
  wheelRemainder_ %= WheelNotch;
  if (steps != 0) {
    pMoveByUser(value_ + steps);
  }
  event->accept();
}

void ctlSlider::keyPressEvent(QKeyEvent* event) {
  const std::optional<int> target = readOnly_ ? std::nullopt : KeyTarget(event->key(), value_);
  if (!target) {
    event->ignore();
    return;
  }
  pMoveByUser(*target);
}

}  // namespace tarvelin
