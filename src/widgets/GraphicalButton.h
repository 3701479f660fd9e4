#pragma once

#include <QAbstractButton>
#include <QFont>
#include <optional>

#include "widgets/modButtonPictures.h"

namespace tarvelin {

// A push button with a picture left of its caption, drawn to suit the window's light-blue panels: lighter
// under the mouse, sunk while pressed, greyed when disabled. Return, Enter and Space click it when it has
// the focus.
class GraphicalButton final : public QAbstractButton {
  Q_OBJECT
  Q_DISABLE_COPY_MOVE(GraphicalButton)

 public:
  explicit GraphicalButton(QWidget* parent = nullptr);
  GraphicalButton(const QString& Caption, ButtonPicture Picture, QWidget* parent = nullptr);

  ButtonPicture Picture() const { return picture_; }
  void SetPicture(ButtonPicture Picture);

  // The caption as it is drawn at the button's current width: cut with "…" when it does not fit.
  QString ShownCaption() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // The caption's measures in the button's font, kept until either changes: the layout asks for the size
  // hint many times and every paint needs the shortened caption.
  struct CaptionMetrics {
    QString Text;
    QFont Font;
    int Width = 0;
    int LineHeight = 0;
    qreal ShownWidth = -1;  // the width ShownText was cut to
    QString ShownText;
  };
  const CaptionMetrics& pCaptionMetrics() const;

  void pPaintBackground(QPainter& Painter) const;
  int pContentWidth() const;
  QRectF pContentRect() const;
  QRectF pCaptionRect() const;

  ButtonPicture picture_ = ButtonPicture::None;
  mutable std::optional<CaptionMetrics> metrics_;
};

}  // namespace tarvelin
