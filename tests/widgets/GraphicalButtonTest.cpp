#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <vector>

#include "gui_support/GuiTestRegistry.h"
#include "widgets/GraphicalButton.h"

using namespace tarvelin;

namespace {

// A picture drawn 32 pixels square: the image, how many pixels it inked and whether every one of them is grey.
struct Drawn {
  QImage Image{32, 32, QImage::Format_ARGB32};
  int Inked = 0;
  bool Grey = true;
};

Drawn Draw(ButtonPicture Picture, bool Enabled) {
  Drawn drawn;
  drawn.Image.fill(Qt::transparent);
  QPainter painter(&drawn.Image);
  PaintButtonPicture(painter, Picture, QRectF(0, 0, 32, 32), Enabled);
  painter.end();
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      const QRgb pixel = drawn.Image.pixel(x, y);
      if (qAlpha(pixel) > 0) {
        ++drawn.Inked;
        drawn.Grey =
            drawn.Grey && std::abs(qRed(pixel) - qGreen(pixel)) <= 2 && std::abs(qGreen(pixel) - qBlue(pixel)) <= 2;
      }
    }
  }
  return drawn;
}

}  // namespace

// The picture button: clicks, keys, size and pictures.
class GraphicalButtonTest final : public QObject {
  Q_OBJECT

 private slots:
  void clicksAndKeysActivateOnlyAnEnabledButton() {
    GraphicalButton button("Load Topic", ButtonPicture::Load);
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_A}) {
      QTest::keyClick(&button, key);
    }
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
      QVERIFY(button.sizeHint().height() >= std::max(16, button.fontMetrics().height()));
      button.resize(button.sizeHint().width() - 12, button.sizeHint().height());
      QCOMPARE(button.ShownCaption(), caption);
      button.resize(button.sizeHint().width() - 24, button.height());
      QVERIFY(button.ShownCaption() != caption);
    }
  }

  void everyPictureIsDrawnDistinctAndGreyedWhenDisabled() {
    QCOMPARE(Draw(ButtonPicture::None, true).Inked, 0);
    std::vector<QImage> seen;
    for (const ButtonPicture picture :
         {ButtonPicture::New, ButtonPicture::Load, ButtonPicture::Save, ButtonPicture::Settings, ButtonPicture::Add,
          ButtonPicture::Delete, ButtonPicture::Collapse, ButtonPicture::Expand, ButtonPicture::Ok,
          ButtonPicture::Cancel}) {
      const Drawn enabled = Draw(picture, true);
      const Drawn disabled = Draw(picture, false);
      QVERIFY2(enabled.Inked > 40 && !enabled.Grey, qPrintable(QString("picture %1").arg(int(picture))));
      QVERIFY(std::find(seen.begin(), seen.end(), enabled.Image) == seen.end());
      seen.push_back(enabled.Image);
      QVERIFY(disabled.Inked == enabled.Inked && disabled.Grey);
    }
  }
};

TARVELIN_GUI_TEST(GraphicalButtonTest);

#include "GraphicalButtonTest.moc"
