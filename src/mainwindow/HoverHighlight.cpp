#include "mainwindow/HoverHighlight.h"

#include <QLabel>
#include <QMouseEvent>
#include <algorithm>

#include "mainwindow/EntryButtons.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/PanelLayout.h"
#include "mainwindow/RowControls.h"

namespace tarvelin {

namespace {

QWidget* MakeShape(QWidget* Client, const char* Name, const char* Style) {
  auto* shape = new QWidget(Client);
  shape->setObjectName(Name);
  shape->setAttribute(Qt::WA_TransparentForMouseEvents);
  shape->setStyleSheet(Style);
  shape->hide();
  return shape;
}

}  // namespace

HoverHighlight::HoverHighlight(QWidget* Client, RowControls& Rows, const PanelLayout& Panels, EntryButtons& Entries)
    : client_(Client), rows_(Rows), panels_(Panels), entries_(Entries) {
  shpHighlight2 = MakeShape(Client, "shpHighlight2", "background-color: rgba(255, 236, 150, 110); border-radius: 6px;");
  shpHighlight = MakeShape(Client, "shpHighlight", "background-color: rgba(255, 214, 90, 140); border-radius: 4px;");
  Client->installEventFilter(this);
}

void HoverHighlight::Clear() {
  entries_.HideDeleteButtons();
  highlightedLabel_ = nullptr;
  shpHighlight->hide();
  shpHighlight2->hide();
}

QRect HoverHighlight::MarkGeometry() const {
  return shpHighlight->isVisible() ? shpHighlight->geometry() : QRect();
}

void HoverHighlight::PlaceHighlight(QLabel* Label, bool Attribute) {
  entries_.HideDeleteButtons();
  const QWidget* panel = Attribute ? panels_.picWeightingFrame : panels_.picRatingFrame;
  const int rowsHeight = Attribute ? RowHeight : panels_.RatingExtent() + RowHeight;
  shpHighlight2->setGeometry(panel->x() + 4, Label->y() - 2, panel->width() - 8, rowsHeight + 4);
  shpHighlight->setGeometry(Label->geometry());
  const auto& names = Attribute ? rows_.lblAttribute : rows_.lblOption;
  entries_.OfferDelete(Attribute, RowControls::IndexOf(names, Label), Label);
  highlightedLabel_ = Label;
  shpHighlight2->show();
  shpHighlight2->lower();
  shpHighlight->show();
  shpHighlight->stackUnder(Label);
}

bool HoverHighlight::eventFilter(QObject* Watched, QEvent* Event) {
  if (Event->type() != QEvent::MouseMove) {
    return false;
  }
  if (Watched == client_) {
    // Moving within the highlighted row (onto its delete button, say) keeps the highlight.
    const QPoint at = static_cast<QMouseEvent*>(Event)->position().toPoint();
    if (!shpHighlight2->isVisible() || !shpHighlight2->geometry().contains(at)) {
      Clear();
    }
    return false;
  }
  auto* label = qobject_cast<QLabel*>(Watched);
  const auto contains = [label](const std::vector<QLabel*>& labels) {
    return std::find(labels.begin(), labels.end(), label) != labels.end();
  };
  if (label != nullptr && contains(rows_.lblOption)) {
    PlaceHighlight(label, false);
  } else if (label != nullptr && contains(rows_.lblAttribute)) {
    PlaceHighlight(label, true);
  }
  return false;
}

}  // namespace tarvelin
