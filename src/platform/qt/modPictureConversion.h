#pragma once

class QImage;

namespace tarvelin {

class cDIBSection;

// A picture's pixels as an image in screen order (the picture's rows are stored bottom-up).
QImage ImageFromDIB(const cDIBSection& Picture);

// An image's pixels as a picture, e.g. a grabbed window at its device pixel size.
void DIBFromImage(const QImage& Image, cDIBSection& Picture);

}  // namespace tarvelin
