#include "platform/qt/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include "platform/qt/modPictureConversion.h"

namespace tarvelin {

void QtClipboard::SetImage(const cDIBSection& Picture) {
  QGuiApplication::clipboard()->setImage(ImageFromDIB(Picture));
}

}  // namespace tarvelin
