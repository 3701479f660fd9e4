#include <QImage>
#include <QLabel>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "gui_support/SegmentPixels.h"
#include "insight/TopicInsight.h"
#include "widgets/Palette.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;

namespace {

// Three cars on three attributes, Estate ahead of Coupe on two attributes and behind it on one.
void ChooseACar() {
  TarvelinTopic& topic = *Program().Topic;
  const double weightings[] = {1.0, 0.5, 0.5};
  const double ratings[3][3] = {{0.8, 0.6, 0.2}, {0.5, 0.4, 0.64}, {0.2, 0.2, 0.2}};
  for (int16_t i = 0; i < 3; ++i) {
    topic.SetOptionName(i, std::vector<std::string>{"Estate", "Coupe", "Hatchback"}[static_cast<size_t>(i)]);
    topic.SetAttributeName(i, std::vector<std::string>{"Safety", "Comfort", "Looks"}[static_cast<size_t>(i)]);
    topic.SetWeighting(i, weightings[i]);
    for (int16_t a = 0; a < 3; ++a) {
      topic.SetRating(i, a, ratings[i][a]);
    }
  }
}

QImage Picture(QWidget* Widget) {
  return Widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace

// The score bars' tooltips and, with the preference, the bars split by attribute.
class frmMainScoreBreakdownTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<testing::MainWindowFixture> f_;

  frmMain& StartCars() {
    frmMain& window = f_->Start(3, 3);
    ChooseACar();
    f_->Rebuild();
    return window;
  }

  // Every bar shows its option's contributions in the attributes' colours; the best bars are framed and their
  // titles filled in the best colour.
  void CheckSplitBars() {
    const TarvelinTopic& topic = *Program().Topic;
    const QImage client = Picture(f_->Find("picClient"));
    for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
      auto* bar = f_->Find<ctlSlider>(QString("sliderScore_%1").arg(o));
      for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
        QCOMPARE(bar->Segments().at(static_cast<size_t>(a)),
                 ctlSlider::Segment(ScoreContribution(topic, o, a), Palette::AttributeColour(a)));
      }
      const QString fault = testing::SplitBarFault(*bar);
      QVERIFY2(fault.isEmpty(), qPrintable(fault));
      const bool best = bar->BarColour() == Palette::BestBar;
      const QRect title = f_->Find(QString("lblScoreTitle_%1").arg(o))->geometry();
      QCOMPARE(bar->Framed(), best);
      QCOMPARE(client.pixelColor(title.right() - 2, title.center().y()) == ColourFromColorref(Palette::BestBar), best);
    }
  }

 private slots:
  void init() { f_ = std::make_unique<testing::MainWindowFixture>(); }
  void cleanup() {
    f_.reset();
    Program().SplitScoreBars = false;
  }

  void barsSayWhyTheirOptionTrailsTheBestAndFollowEveryChange() {
    StartCars();
    const QString estateOverCoupe =
        "Estate beats Coupe mainly on Safety (+0.150) and Comfort (+0.050); Coupe does better on Looks (+0.110).";
    QCOMPARE(f_->Find("sliderScore_0")->toolTip(), estateOverCoupe);
    QCOMPARE(f_->Find("sliderScore_1")->toolTip(), estateOverCoupe);
    QCOMPARE(f_->Find("lblScore_2")->toolTip(), QString("Estate beats Hatchback mainly on Safety (+0.300) and "
                                                        "Comfort (+0.100)."));
    auto* coupeSafety = f_->Find<ctlSlider>("sliderRating_3");
    coupeSafety->setFocus();
    QTest::keyClick(coupeSafety, Qt::Key_End);
    QCOMPARE(f_->Find("sliderScore_0")->toolTip(),
             QString("Coupe beats Estate mainly on Looks (+0.110) and Safety (+0.100); Estate does better on "
                     "Comfort (+0.050)."));
  }

  void splitBarsShareEachFilledLengthByAttributeAndFollowTheSliders() {
    Program().SplitScoreBars = true;
    StartCars();
    QVERIFY(!f_->Has("picSwatch_3"));
    for (int16_t a = 0; a < 3; ++a) {
      QWidget* swatch = f_->Find(QString("picSwatch_%1").arg(a));
      QCOMPARE(Picture(swatch).pixelColor(5, 5), ColourFromColorref(Palette::AttributeColour(a)));
    }
    CheckSplitBars();
    auto* safety = f_->Find<ctlSlider>("sliderWeighting_0");
    safety->setFocus();
    QTest::keyClick(safety, Qt::Key_Home);
    QCOMPARE(f_->Find<ctlSlider>("sliderScore_1")->BarColour(), Palette::BestBar);
    CheckSplitBars();
  }

  // Off, nothing of the window differs from a window that never had the preference.
  void turningTheSplitOffRestoresEveryControlAndPixel() {
    frmMain& window = StartCars();
    QWidget* client = f_->Find("picClient");
    const QImage before = Picture(client);
    Program().SplitScoreBars = true;
    window.UpdateSettings();
    QVERIFY(Picture(client) != before);
    Program().SplitScoreBars = false;
    window.UpdateSettings();
    QCOMPARE(Picture(client), before);
    QVERIFY(f_->Find("picSwatch_0")->isHidden());
    QCOMPARE(f_->Find<ctlSlider>("sliderScore_0")->TrackInset(), 0);
  }
};

TARVELIN_GUI_TEST(frmMainScoreBreakdownTest);

#include "frmMainScoreBreakdownTest.moc"
