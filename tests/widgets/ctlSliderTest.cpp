#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <cmath>
#include <functional>
#include <memory>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/SliderPixels.h"
#include "gui_support/TestRows.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;
using testing::AddRow;
using testing::TrackPoint;

namespace {

using Input = std::function<void(ctlSlider&)>;

Input Set(int Value) {
  return [=](ctlSlider& Slider) { Slider.SetValue(Value); };
}

Input ClickAt(double Fraction) {
  return [=](ctlSlider& Slider) {
    QTest::mouseClick(&Slider, Qt::LeftButton, Qt::NoModifier, TrackPoint(Slider, Fraction));
  };
}

// Pressed at 20%, moved to 50% and beyond the end, and released there.
void Drag(ctlSlider& Slider) {
  const QPoint beyond(Slider.width() + 40, Slider.height() / 2);
  QTest::mousePress(&Slider, Qt::LeftButton, Qt::NoModifier, TrackPoint(Slider, 0.2));
  QTest::mouseMove(&Slider, TrackPoint(Slider, 0.5));
  QTest::mouseMove(&Slider, beyond);
  QTest::mouseRelease(&Slider, Qt::LeftButton, Qt::NoModifier, beyond);
}

// Keys that are not the slider's (a shortcut) are left to the window.
Input Key(Qt::Key Key, Qt::KeyboardModifiers Modifiers = Qt::NoModifier) {
  return [=](ctlSlider& Slider) {
    QKeyEvent press(QEvent::KeyPress, Key, Modifiers);
    QApplication::sendEvent(&Slider, &press);
    QCOMPARE(press.isAccepted(), Modifiers == Qt::NoModifier && !Slider.ReadOnly());
  };
}

Input Wheel(std::vector<int> Angles) {
  return [=](ctlSlider& Slider) {
    const QPointF centre = QRectF(Slider.rect()).center();
    for (const int angle : Angles) {
      QWheelEvent wheel(centre, Slider.mapToGlobal(centre), QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(&Slider, &wheel);
    }
  };
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
  }
  void cleanup() { slider_.reset(); }

  // Change follows every move; Scroll only the person's.
  void inputMovesThePosition_data() {
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<int>("start");
    QTest::addColumn<Input>("input");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("changes");
    QTest::addColumn<int>("scrolls");
    AddRow("set unchanged", false, 42, Set(42), 42, 0, 0);
    AddRow("set above the top", false, 50, Set(150), 100, 1, 0);
    AddRow("click 37 percent along", false, 60, ClickAt(0.37), 37, 1, 1);
    AddRow("click at the end", false, 60, ClickAt(1.0), 100, 1, 1);
    AddRow("click left of the track", false, 60, ClickAt(-0.04), 0, 1, 1);
    AddRow("drag beyond the end", false, 0, Input(Drag), 100, 3, 3);
    AddRow("left", false, 50, Key(Qt::Key_Left), 49, 1, 1);
    AddRow("right", false, 50, Key(Qt::Key_Right), 51, 1, 1);
    AddRow("page down", false, 50, Key(Qt::Key_PageDown), 40, 1, 1);
    AddRow("page up", false, 50, Key(Qt::Key_PageUp), 60, 1, 1);
    AddRow("home", false, 50, Key(Qt::Key_Home), 0, 1, 1);
    AddRow("end", false, 50, Key(Qt::Key_End), 100, 1, 1);
    AddRow("left at the bottom", false, 0, Key(Qt::Key_Left), 0, 0, 0);
    AddRow("a shortcut", false, 50, Key(Qt::Key_L, Qt::ControlModifier), 50, 0, 0);
    AddRow("wheel notch up", false, 50, Wheel({120}), 51, 1, 1);
    AddRow("two notches down at once", false, 50, Wheel({-240}), 48, 1, 1);
    AddRow("half a notch", false, 50, Wheel({60}), 50, 0, 0);
    AddRow("two halves", false, 50, Wheel({60, 60}), 51, 1, 1);
    AddRow("read-only click", true, 30, ClickAt(0.8), 30, 0, 0);
    AddRow("read-only drag", true, 30, Input(Drag), 30, 0, 0);
    AddRow("read-only key", true, 30, Key(Qt::Key_End), 30, 0, 0);
    AddRow("read-only wheel", true, 30, Wheel({360}), 30, 0, 0);
  }
  void inputMovesThePosition() {
    QFETCH(bool, readOnly);
    QFETCH(int, start);
    QFETCH(Input, input);
    slider_->SetReadOnly(readOnly);
    slider_->SetValue(start);
    const QSignalSpy change(slider_.get(), &ctlSlider::Change);
    const QSignalSpy scroll(slider_.get(), &ctlSlider::Scroll);
    input(*slider_);
    QTEST(slider_->Value(), "expected");
    QTEST(int(change.count()), "changes");
    QTEST(int(scroll.count()), "scrolls");
    QVERIFY(!readOnly || !slider_->hasFocus());
  }

  // Band and ticks stand where their values lie on the track and, taken away, leave the plain slider. A
  // read-only bar's filled part shows the bar colour, given in blue-green-red byte order.
  void marksStandAtTheirValuesAndTheBarIsFilledInItsColour() {
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
    slider_->SetReadOnly(true);
    slider_->SetBarColour(0x0CC0FE);
    slider_->SetValue(50);
    const QImage bar = slider_->grab().toImage();
    QCOMPARE(bar.pixelColor(bar.width() / 4, bar.height() / 2), QColor(254, 192, 12));
    QCOMPARE(bar.pixelColor(bar.width() * 3 / 4, bar.height() / 2), QColor(255, 255, 255));
  }

  // A split bar shares its filled length out in proportion, whatever the sizes add up to: with an empty segment
  // between two, slivers beside a long one, over the whole track, and with every size zero.
  void splitBarSharesTheFilledLengthBySize() {
    slider_->SetReadOnly(true);
    const std::pair<std::vector<double>, int> bars[] = {{{0.2, 0.1, 0.3}, 60},
                                                        {{0.3, 0.0, 0.3}, 60},
                                                        {{0.004, 0.9, 0.003, 0.002}, 91},
                                                        {{0.5, 0.5}, 100},
                                                        {{0.0, 0.0}, 40}};
    for (const auto& [sizes, position] : bars) {
      slider_->SetValue(position);
      std::vector<ctlSlider::Segment> segments;
      for (size_t i = 0; i < sizes.size(); ++i) {
        segments.emplace_back(sizes[i], Palette::AttributeColour(static_cast<int>(i)));
      }
      slider_->SetSegments(segments);
      const QString fault = testing::SplitBarFault(*slider_);
      QVERIFY2(fault.isEmpty(), qPrintable(fault));
    }
  }

 private:
  std::unique_ptr<ctlSlider> slider_;
};

TARVELIN_GUI_TEST(ctlSliderTest);

#include "ctlSliderTest.moc"
