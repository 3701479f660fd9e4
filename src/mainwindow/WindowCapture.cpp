#include "mainwindow/WindowCapture.h"

#include <QLabel>
#include <QWidget>

#include "mainwindow/HoverHighlight.h"
#include "mainwindow/LabelEditor.h"
#include "mainwindow/PanelLayout.h"

namespace tarvelin {

WindowCapture::WindowCapture(QWidget* Client, std::vector<QWidget*> Controls, PanelLayout& Panels, LabelEditor& Editor,
                             HoverHighlight& Highlight)
    : client_(Client), controls_(std::move(Controls)), panels_(Panels), editor_(Editor), highlight_(Highlight) {}

QImage WindowCapture::Take() {
  std::vector<QWidget*> wasVisible;
  for (QWidget* control : controls_) {
    if (control->isVisible()) {
      wasVisible.push_back(control);
      control->hide();
    }
  }
  // Without their add buttons the headings stand at the panels' left edges.
  QLabel* weightings = panels_.lblWeightings;
  QLabel* ratings = panels_.lblRatings;
  const QPoint weightingsHeading = weightings->pos();
  const QPoint ratingsHeading = ratings->pos();
  weightings->move(panels_.picWeightingFrame->x() + 10, weightingsHeading.y());
  ratings->move(panels_.picRatingFrame->x() + 10, ratingsHeading.y());
  editor_.HideForCapture();
  highlight_.Clear();
  QImage picture = client_->grab().toImage();
  for (QWidget* control : wasVisible) {
    control->show();
  }
  weightings->move(weightingsHeading);
  ratings->move(ratingsHeading);
  editor_.RestoreAfterCapture();
  return picture;
}

}  // namespace tarvelin
