#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <cmath>
#include <memory>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/SegmentPixels.h"
#include "gui_support/TestRows.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;
using testing::AddRow;

namespace {

// The point that lies the given fraction of the way along the slider's track.
QPoint TrackPoint(const ctlSlider& Slider, double Fraction) {
  const int inset = Slider.TrackInset();
  const double span = Slider.width() - 2 * inset;
  return {static_cast<int>(std::lround(inset + Fraction * span)), Slider.height() / 2};
}

void TurnWheel(ctlSlider& Slider, int Angle) {
  const QPointF centre = QRectF(Slider.rect()).center();
  QWheelEvent wheel(centre, Slider.mapToGlobal(centre), QPoint(), QPoint(0, Angle), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&Slider, &wheel);
}

}  // namespace

// The slider control driven by real mouse, wheel and key events.
class ctlSliderTest final : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    slider_ = std::make_unique<ctlSlider>();
    slider_->resize(220, 18);
    slider_->show();
    QVERIFY(QTest::qWaitForWindowExposed(slider_.get()));
    change_ = std::make_unique<QSignalSpy>(slider_.get(), &ctlSlider::Change);
    scroll_ = std::make_unique<QSignalSpy>(slider_.get(), &ctlSlider::Scroll);
  }
  void cleanup() {
    change_.reset();
    scroll_.reset();
    slider_.reset();
  }

  void clickJumpsToThePointOnTheTrack_data() {
    QTest::addColumn<double>("fraction");
    QTest::addColumn<int>("expected");
    AddRow("37 percent along", 0.37, 37);
    AddRow("start of the track", 0.0, 0);
    AddRow("end of the track", 1.0, 100);
    AddRow("left of the track", -0.04, 0);
    AddRow("right of the track", 1.04, 100);
  }
  void clickJumpsToThePointOnTheTrack() {
    QFETCH(double, fraction);
    QFETCH(int, expected);
    slider_->SetValue(60);
    change_->clear();
    QTest::mouseClick(slider_.get(), Qt::LeftButton, Qt::NoModifier, TrackPoint(*slider_, fraction));
    QCOMPARE(slider_->Value(), expected);
    QCOMPARE(change_->count(), 1);
    QCOMPARE(scroll_->count(), 1);
  }

  void draggingFollowsTheMouseUntilReleased() {
    QTest::mousePress(slider_.get(), Qt::LeftButton, Qt::NoModifier, TrackPoint(*slider_, 0.2));
    QTest::mouseMove(slider_.get(), TrackPoint(*slider_, 0.5));
    QCOMPARE(slider_->Value(), 50);
    QTest::mouseMove(slider_.get(), QPoint(slider_->width() + 40, 9));
    QCOMPARE(slider_->Value(), 100);
    QTest::mouseRelease(slider_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(slider_->width() + 40, 9));
    QTest::mouseMove(slider_.get(), TrackPoint(*slider_, 0.3));
    QCOMPARE(slider_->Value(), 100);
    QCOMPARE(change_->count(), 3);
    QCOMPARE(scroll_->count(), 3);
  }

  void settingByProgramEmitsChangeOnlyAndClamps() {
    slider_->SetValue(42);
    slider_->SetValue(42);
    QCOMPARE(change_->count(), 1);
    slider_->SetValue(150);
    QCOMPARE(slider_->Value(), 100);
    slider_->SetValue(-5);
    QCOMPARE(slider_->Value(), 0);
    QCOMPARE(change_->count(), 3);
    QCOMPARE(scroll_->count(), 0);
  }

  void keysStepThePosition_data() {
    QTest::addColumn<int>("start");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("expected");
    AddRow("left", 50, Qt::Key_Left, 49);
    AddRow("right", 50, Qt::Key_Right, 51);
    AddRow("page down", 50, Qt::Key_PageDown, 40);
    AddRow("page up", 50, Qt::Key_PageUp, 60);
    AddRow("home", 50, Qt::Key_Home, 0);
    AddRow("end", 50, Qt::Key_End, 100);
    AddRow("page up near the top", 95, Qt::Key_PageUp, 100);
    AddRow("left at the bottom", 0, Qt::Key_Left, 0);
    AddRow("a shortcut", 50, Qt::Key_L, 50);
  }
  // Keys that are not the slider's are left to the window, for its shortcuts.
  void keysStepThePosition() {
    QFETCH(int, start);
    QFETCH(Qt::Key, key);
    QFETCH(int, expected);
    slider_->SetValue(start);
    QKeyEvent press(QEvent::KeyPress, key, key == Qt::Key_L ? Qt::ControlModifier : Qt::NoModifier);
    QApplication::sendEvent(slider_.get(), &press);
    QCOMPARE(press.isAccepted(), key != Qt::Key_L);
    QCOMPARE(slider_->Value(), expected);
    QCOMPARE(scroll_->count(), expected != start ? 1 : 0);
  }

  void wheelStepsOnePositionPerNotch() {
    slider_->SetValue(50);
    TurnWheel(*slider_, 120);
    QCOMPARE(slider_->Value(), 51);
    TurnWheel(*slider_, -240);
    QCOMPARE(slider_->Value(), 49);
    TurnWheel(*slider_, 60);
    QCOMPARE(slider_->Value(), 49);
    TurnWheel(*slider_, 60);
    QCOMPARE(slider_->Value(), 50);
    QCOMPARE(scroll_->count(), 3);
  }

  void readOnlyBarIgnoresTheUser() {
    slider_->SetReadOnly(true);
    slider_->SetValue(30);
    change_->clear();
    QTest::mouseClick(slider_.get(), Qt::LeftButton, Qt::NoModifier, TrackPoint(*slider_, 0.8));
    QTest::mousePress(slider_.get(), Qt::LeftButton, Qt::NoModifier, TrackPoint(*slider_, 0.1));
    QTest::mouseMove(slider_.get(), TrackPoint(*slider_, 0.9));
    QTest::mouseRelease(slider_.get(), Qt::LeftButton, Qt::NoModifier, TrackPoint(*slider_, 0.9));
    QTest::keyClick(slider_.get(), Qt::Key_End);
    TurnWheel(*slider_, 360);
    QCOMPARE(slider_->Value(), 30);
    QCOMPARE(change_->count(), 0);
    QCOMPARE(scroll_->count(), 0);
    QVERIFY(!slider_->hasFocus());
  }

  // The filled part of the track shows the bar colour, given in blue-green-red byte order.
  void barIsFilledUpToThePositionInTheBarColour() {
    slider_->SetReadOnly(true);
    slider_->SetBarColour(0x0CC0FE);
    slider_->SetValue(50);
    const QImage image = slider_->grab().toImage();
    const int middle = image.height() / 2;
    QCOMPARE(image.pixelColor(image.width() / 4, middle), QColor(254, 192, 12));
    QCOMPARE(image.pixelColor(image.width() * 3 / 4, middle), QColor(255, 255, 255));
  }

  // Band and ticks stand where their values lie on the track; taken away, they leave the plain slider.
  void bandAndTicksStandAtTheirValuesAndLeaveNoTrace() {
    const QImage plain = slider_->grab().toImage();
    slider_->SetBand(std::pair{0.25, 0.75});
    slider_->SetTicks({0.5});
    const QImage marked = slider_->grab().toImage();
    // Above the track, within the band's and the tick's height.
    const auto at = [this](const QImage& Image, double Value) {
      return Image.pixelColor(TrackPoint(*slider_, Value).x(), slider_->height() / 2 - 5);
    };
    QCOMPARE(at(marked, 0.1), at(plain, 0.1));
    QCOMPARE(at(marked, 0.9), at(plain, 0.9));
    QVERIFY(at(marked, 0.3) != at(plain, 0.3));
    QVERIFY(at(marked, 0.5) != at(marked, 0.3));
    slider_->SetBand(std::nullopt);
    slider_->SetTicks({});
    QCOMPARE(slider_->grab().toImage(), plain);
  }

  // A split bar shares its filled length out in proportion, whatever the sizes add up to.
  void splitBarSharesTheFilledLengthBySize_data() {
    QTest::addColumn<std::vector<double>>("sizes");
    QTest::addColumn<int>("position");
    QTest::newRow("three segments") << std::vector<double>{0.2, 0.1, 0.3} << 60;
    QTest::newRow("an empty segment between two") << std::vector<double>{0.3, 0.0, 0.3} << 60;
    QTest::newRow("slivers beside a long one") << std::vector<double>{0.004, 0.9, 0.003, 0.002} << 91;
    QTest::newRow("the whole track") << std::vector<double>{0.5, 0.5} << 100;
    QTest::newRow("every size zero") << std::vector<double>{0.0, 0.0} << 40;
  }
  void splitBarSharesTheFilledLengthBySize() {
    QFETCH(std::vector<double>, sizes);
    QFETCH(int, position);
    slider_->SetReadOnly(true);
    slider_->SetValue(position);
    std::vector<ctlSlider::Segment> segments;
    for (size_t i = 0; i < sizes.size(); ++i) {
      segments.emplace_back(sizes[i], Palette::AttributeColour(static_cast<int>(i)));
    }
    slider_->SetSegments(segments);
    const QString fault = testing::SplitBarFault(*slider_);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
  }

 private:
  std::unique_ptr<ctlSlider> slider_;
  std::unique_ptr<QSignalSpy> change_, scroll_;
};

TARVELIN_GUI_TEST(ctlSliderTest);

#include "ctlSliderTest.moc"
