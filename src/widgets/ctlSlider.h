#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "widgets/Palette.h"

namespace tarvelin {

// A horizontal slider whose position runs from 0 to 100. The track is filled up to the position in the bar
// colour; an editable slider also shows a thumb, a read-only one (a score bar) only the filled bar.
// Change is emitted on every change of the position, whether the user or the program made it; Scroll only
// when the user moved the slider (mouse, wheel or keys), always after the Change of the same movement.
// DragStarted and DragEnded bracket a drag with the mouse, so that it can be taken as one edit.
class ctlSlider final : public QWidget {
  Q_OBJECT
  Q_DISABLE_COPY_MOVE(ctlSlider)

 public:
  explicit ctlSlider(QWidget* parent = nullptr);

  int Value() const { return value_; }
  void SetValue(int Value);  // clamped to 0..100

  uint32_t BarColour() const { return barColour_; }  // 0x00BBGGRR
  void SetBarColour(uint32_t Colour);

  // A split bar: the filled length is shared out between the segments in their order, in proportion to their
  // sizes (0 or more), each in its own colour (0x00BBGGRR). Empty: one bar in the bar colour.
  using Segment = std::pair<double, uint32_t>;
  const std::vector<Segment>& Segments() const { return segments_; }
  void SetSegments(std::vector<Segment> Segments);

  // A framed slider has a ring in its bar colour around its track.
  bool Framed() const { return framed_; }
  void SetFramed(bool Framed);

  // A read-only slider ignores the mouse, the wheel and the keys and never takes the focus.
  bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool ReadOnly);

  // The value as the window shows it ("0.700", "70%"), for screen readers.
  const QString& ValueText() const { return valueText_; }
  void SetValueText(const QString& Text) { valueText_ = Text; }

  // Pixels between each edge of the widget and the end of the track (positions 0 and 100).
  int TrackInset() const;

  // A pale band behind the track from one value to another, and small ticks at values (values in 0..1, a
  // position / 100). Neither is drawn while unset, so a slider without them paints exactly as before.
  using ValueRange = std::pair<double, double>;
  const std::optional<ValueRange>& Band() const { return band_; }
  void SetBand(std::optional<ValueRange> Band);
  const std::vector<double>& Ticks() const { return ticks_; }
  void SetTicks(std::vector<double> Ticks);

  // A line under the tooltip, made only when the tooltip is shown, so that it reads the values of that
  // moment; an empty function or text adds nothing.
  using NoteSource = std::function<QString()>;
  void SetToolTipNote(NoteSource Note) { note_ = std::move(Note); }
  QString ToolTipNote() const { return note_ ? note_() : QString(); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void Change();
  void Scroll();
  void DragStarted();
  void DragEnded();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  friend class AccessibleSlider;  // moves the slider as the person would

  bool pApplyValue(int Value);
  void pMoveByUser(int Value);
  int pValueAt(double X) const;
  QRectF pTrackRect() const;
  void pPaintThumb(QPainter& Painter, QPointF Centre, const QColor& Bar) const;
  void pPaintBand(QPainter& Painter, const QRectF& Track) const;
  void pPaintTicks(QPainter& Painter, const QRectF& Track) const;
  void pPaintFrame(QPainter& Painter, const QRectF& Track, const QColor& Bar) const;
  void pPaintSegments(QPainter& Painter, const QRectF& Track, double FillEnd) const;

  int value_ = 0;
  uint32_t barColour_ = Palette::OtherBar;
  std::vector<Segment> segments_;
  bool framed_ = false;
  bool readOnly_ = false;
  bool dragging_ = false;
  int wheelRemainder_ = 0;  // angle units not yet turned into a step
  QString valueText_;
  std::optional<ValueRange> band_;
  std::vector<double> ticks_;
  NoteSource note_;
};

}  // namespace tarvelin
