#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "gui_support/GuiTestRegistry.h"
#include "mainwindow/GraphicalButton.h"

using namespace tarvelin;

Q_DECLARE_METATYPE(tarvelin::ButtonPicture)

namespace {

const std::vector<ButtonPicture> DrawnPictures{ButtonPicture::New,      ButtonPicture::Load,   ButtonPicture::Save,
                                               ButtonPicture::Settings, ButtonPicture::Add,    ButtonPicture::Delete,
                                               ButtonPicture::Collapse, ButtonPicture::Expand, ButtonPicture::Ok,
                                               ButtonPicture::Cancel};

QImage RenderPicture(ButtonPicture Picture, bool Enabled) {
  QImage image(32, 32, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  PaintButtonPicture(painter, Picture, QRectF(0, 0, 32, 32), Enabled);
  return image;
}

int InkedPixels(const QImage& Image) {
  int inked = 0;
  for (int y = 0; y < Image.height(); ++y) {
    for (int x = 0; x < Image.width(); ++x) {
      inked += qAlpha(Image.pixel(x, y)) > 0 ? 1 : 0;
    }
  }
  return inked;
}

bool AllGrey(const QImage& Image) {
  for (int y = 0; y < Image.height(); ++y) {
    for (int x = 0; x < Image.width(); ++x) {
      const QRgb pixel = Image.pixel(x, y);
      if (qAlpha(pixel) > 0 &&
          (std::abs(qRed(pixel) - qGreen(pixel)) > 2 || std::abs(qGreen(pixel) - qBlue(pixel)) > 2)) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace

// The picture button: clicks, keys, size and pictures.
class GraphicalButtonTest final : public QObject {
  Q_OBJECT

 private slots:
  void clickEmitsClickedOnlyWhenEnabled_data() {
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("clicks");
    QTest::newRow("enabled") << true << 1;
    QTest::newRow("disabled") << false << 0;
  }
  void clickEmitsClickedOnlyWhenEnabled() {
    QFETCH(bool, enabled);
    QFETCH(int, clicks);
    GraphicalButton button("Load Topic", ButtonPicture::Load);
    button.resize(button.sizeHint());
    button.setEnabled(enabled);
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicked.count(), clicks);
  }

  void keysActivateTheButton_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("clicks");
    QTest::newRow("return") << static_cast<int>(Qt::Key_Return) << 1;
    QTest::newRow("space") << static_cast<int>(Qt::Key_Space) << 1;
    QTest::newRow("letter") << static_cast<int>(Qt::Key_A) << 0;
  }
  void keysActivateTheButton() {
    QFETCH(int, key);
    QFETCH(int, clicks);
    GraphicalButton button("OK", ButtonPicture::Ok);
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    QTest::keyClick(&button, Qt::Key(key));
    QCOMPARE(clicked.count(), clicks);
  }

  void sizeHintShowsTheWholeCaption_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<ButtonPicture>("picture");
    QTest::newRow("command") << "Change Tarvelin Settings" << ButtonPicture::Settings;
    QTest::newRow("toggle") << "Show Weightings" << ButtonPicture::Expand;
    QTest::newRow("short") << "OK" << ButtonPicture::Ok;
    QTest::newRow("no picture") << "Load Topic" << ButtonPicture::None;
    QTest::newRow("accented") << QString::fromUtf8("\u00dcbersicht w\u00e4hlen") << ButtonPicture::Load;
  }
  void sizeHintShowsTheWholeCaption() {
    QFETCH(QString, caption);
    QFETCH(ButtonPicture, picture);
    GraphicalButton button(caption, picture);
    button.resize(button.sizeHint());
    QCOMPARE(button.ShownCaption(), caption);
    QVERIFY(button.sizeHint().height() >= std::max(16, button.fontMetrics().height()));

    button.resize(button.sizeHint().width() - 12, button.height());
    QVERIFY(button.ShownCaption() != caption);
  }

  void everyPictureIsDrawnAndDistinct() {
    QCOMPARE(InkedPixels(RenderPicture(ButtonPicture::None, true)), 0);
    std::vector<QImage> seen;
    for (const ButtonPicture picture : DrawnPictures) {
      const QImage image = RenderPicture(picture, true);
      QVERIFY2(InkedPixels(image) > 40, qPrintable(QString("picture %1").arg(static_cast<int>(picture))));
      for (const QImage& other : seen) {
        QVERIFY(image != other);
      }
      seen.push_back(image);
    }
  }

  void disabledPicturesAreGreyed() {
    for (const ButtonPicture picture : DrawnPictures) {
      const QImage enabled = RenderPicture(picture, true);
      const QImage disabled = RenderPicture(picture, false);
      QVERIFY(AllGrey(disabled));
      QCOMPARE(InkedPixels(disabled), InkedPixels(enabled));
    }
  }
};

TARVELIN_GUI_TEST(GraphicalButtonTest);

#include "GraphicalButtonTest.moc"
