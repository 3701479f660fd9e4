#include <QImage>
#include <QTest>

#include "gui_support/GuiTestRegistry.h"
#include "widgets/modDecoration.h"

using namespace tarvelin;

// The decoration drawn a part at a time, as the window paints it.
class modDecorationTest final : public QObject {
  Q_OBJECT

 private slots:
  // Parts whose edges cut through the panels' frames, corners and fills, and one at the far corner.
  void aPartHasTheWholeDecorationsPixels() {
    const DecorationLayout layout{QSize(300, 350), {QRect(10, 60, 280, 45), QRect(10, 115, 137, 100), QRect()}};
    const std::pair<qreal, QRect> parts[] = {{1.0, QRect(5, 55, 290, 11)},
                                             {1.0, QRect(12, 62, 7, 5)},
                                             {1.5, QRect(13, 131, 190, 200)},
                                             {2.0, QRect(500, 600, 100, 100)}};
    for (const auto& [ratio, part] : parts) {
      const QImage whole = PaintWindowDecoration(layout.Client, ratio, layout.Panels[0], layout.Panels[1], {});
      const QImage piece = PaintDecorationPart(layout, ratio, part);
      QCOMPARE(piece.devicePixelRatio(), 1.0);
      QImage expected = whole.copy(part);
      expected.setDevicePixelRatio(1);
      QCOMPARE(piece, expected);
    }
  }

  // A decoration too large to make (a window size from a damaged settings hive) is skipped, never thrown.
  void aDecorationTooLargeToMakeIsSkipped() {
    const QRect panel(10, 60, 29000, 29000);
    QVERIFY(PaintWindowDecoration(QSize(30000, 30000), 1, panel, panel, panel).isNull());
    const DecorationLayout layout{QSize(30000, 30000), {panel, panel, panel}};
    QVERIFY(PaintDecorationPart(layout, 2, QRect(0, 0, 30000, 30000)).isNull());
    QCOMPARE(PaintDecorationPart(layout, 2, QRect(59000, 59000, 1000, 1000)).size(), QSize(1000, 1000));
  }
};

TARVELIN_GUI_TEST(modDecorationTest);

#include "modDecorationTest.moc"
