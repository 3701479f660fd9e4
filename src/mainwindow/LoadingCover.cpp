#include "mainwindow/LoadingCover.h"

#include <QLabel>

#include "mainwindow/WindowText.h"
#include "startup/modStartup.h"
#include "widgets/modDecoration.h"

namespace tarvelin {

LoadingCover::LoadingCover(QWidget* Form) : form_(Form) {}

// Made when first needed: a start that opens a file never shows it.
void LoadingCover::Create() {
  if (picMask != nullptr) {
    return;
  }
  picMask = new QWidget(form_);
  picMask->setObjectName("picMask");
  picMask->setAutoFillBackground(true);
  lblLoading = new QLabel("Loading...", picMask);
  lblLoading->setObjectName("lblLoading");
  lblLoading->setFont(LabelFont(20, true));
  lblLoading->adjustSize();
}

void LoadingCover::Show() {
  Create();
  shown_ = true;
  Program().IsLoading = true;
  Layout();
  picMask->show();
  picMask->raise();
  picMask->repaint();
}

void LoadingCover::Hide() {
  if (picMask != nullptr) {
    picMask->hide();
  }
  shown_ = false;
  Program().IsLoading = false;
}

void LoadingCover::Layout() {
  picMask->setGeometry(form_->rect());
  lblLoading->move((picMask->width() - lblLoading->width()) / 2, (picMask->height() - lblLoading->height()) / 2);
  QPalette palette = picMask->palette();
  palette.setBrush(QPalette::Window, CoverBrush(picMask->size()));
  picMask->setPalette(palette);
}

}  // namespace tarvelin
