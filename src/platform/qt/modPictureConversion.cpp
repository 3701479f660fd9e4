#include "platform/qt/modPictureConversion.h"

#include <QImage>

#include "graphics/cDIBSection.h"

namespace tarvelin {

QImage ImageFromDIB(const cDIBSection& Picture) {
  if (Picture.Width() == 0 || Picture.Height() == 0) {
    return QImage();
  }
  const QImage view(Picture.DIBSectionBitsPtr(), Picture.Width(), Picture.Height(), Picture.BytesPerScanLine(),
                    QImage::Format_BGR888);
  return view.mirrored();
}

void DIBFromImage(const QImage& Image, cDIBSection& Picture) {
  const QImage pixels = Image.convertToFormat(QImage::Format_RGB32);
  Picture.CreateFromPicture(pixels.constBits(), pixels.width(), pixels.height(), pixels.bytesPerLine());
}

}  // namespace tarvelin
