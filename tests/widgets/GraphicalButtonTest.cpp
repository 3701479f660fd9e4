#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "gui_support/GuiTestRegistry.h"
#include "widgets/GraphicalButton.h"

using namespace tarvelin;

namespace {

QImage RenderPicture(ButtonPicture Picture, bool Enabled) {
  QImage image(32, 32, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  PaintButtonPicture(painter, Picture, QRectF(0, 0, 32, 32), Enabled);
  return image;
}

// The pixels drawn at all, and whether every one of them is grey.
std::pair<int, bool> InkedAndGrey(const QImage& Image) {
  int inked = 0;
  bool grey = true;
  for (int y = 0; y < Image.height(); ++y) {
    for (int x = 0; x < Image.width(); ++x) {
      const QRgb pixel = Image.pixel(x, y);
      inked += qAlpha(pixel) > 0 ? 1 : 0;
      grey = grey && (qAlpha(pixel) == 0 ||
                      (std::abs(qRed(pixel) - qGreen(pixel)) <= 2 && std::abs(qGreen(pixel) - qBlue(pixel)) <= 2));
    }
  }
  return {inked, grey};
}

}  // namespace

// The picture button: clicks, keys, size and pictures.
class GraphicalButtonTest final : public QObject {
  Q_OBJECT

 private slots:
  void clicksAndKeysActivateOnlyAnEnabledButton() {
    GraphicalButton button("Load Topic", ButtonPicture::Load);
    button.resize(button.sizeHint());
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&button, Qt::Key_Return);
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::keyClick(&button, Qt::Key_A);
    QCOMPARE(clicked.count(), 3);
    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 3);
  }

  // Padding gives way first when the button is narrowed; only then is the caption cut.
  void sizeHintShowsTheWholeCaption() {
    const std::pair<QString, ButtonPicture> buttons[] = {{"Change Tarvelin Settings", ButtonPicture::Settings},
                                                         {"OK", ButtonPicture::Ok},
                                                         {"Load Topic", ButtonPicture::None},
                                                         {QString::fromUtf8("\u00dcbersicht"), ButtonPicture::Load}};
    for (const auto& [caption, picture] : buttons) {
      GraphicalButton button(caption, picture);
      button.resize(button.sizeHint());
      QCOMPARE(button.ShownCaption(), caption);
      QVERIFY(button.sizeHint().height() >= std::max(16, button.fontMetrics().height()));
      button.resize(button.sizeHint().width() - 12, button.height());
      QCOMPARE(button.ShownCaption(), caption);
      button.resize(button.sizeHint().width() - 24, button.height());
      QVERIFY(button.ShownCaption() != caption);
    }
  }

  void everyPictureIsDrawnDistinctAndGreyedWhenDisabled() {
    QCOMPARE(InkedAndGrey(RenderPicture(ButtonPicture::None, true)).first, 0);
    std::vector<QImage> seen;
    for (const ButtonPicture picture :
         {ButtonPicture::New, ButtonPicture::Load, ButtonPicture::Save, ButtonPicture::Settings, ButtonPicture::Add,
          ButtonPicture::Delete, ButtonPicture::Collapse, ButtonPicture::Expand, ButtonPicture::Ok,
          ButtonPicture::Cancel}) {
      const QImage image = RenderPicture(picture, true);
      const auto [inked, grey] = InkedAndGrey(image);
      QVERIFY2(inked > 40 && !grey, qPrintable(QString("picture %1").arg(static_cast<int>(picture))));
      QVERIFY(std::find(seen.begin(), seen.end(), image) == seen.end());
      seen.push_back(image);
      QCOMPARE(InkedAndGrey(RenderPicture(picture, false)), std::pair(inked, true));
    }
  }
};

TARVELIN_GUI_TEST(GraphicalButtonTest);

#include "GraphicalButtonTest.moc"
