#include <QApplication>
#include <QHelpEvent>
#include <QLocale>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <map>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "gui_support/SliderPixels.h"
#include "insight/TopicInsight.h"
#include "mainwindow/InsightDisplay.h"
#include "settingsdialog/frmOptions.h"

using namespace tarvelin;

namespace {

// Every control of the client area by name, with its geometry.
std::map<QString, QRect> Geometries(const QWidget& Client) {
  std::map<QString, QRect> geometries;
  for (const QWidget* control : Client.findChildren<QWidget*>()) {
    if (!control->objectName().isEmpty()) {
      geometries[control->objectName()] = control->geometry();
    }
  }
  return geometries;
}

QImage Picture(QWidget* Widget) {
  return Widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace

// How the window explains its scores: how robust the best option is (bands, ticks, tooltips and the line under
// the scores), the score bars' tooltips and, with the preference, the bars split by attribute.
class InsightDisplayTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<testing::MainWindowFixture> f_;

  ctlSlider* Slider(const char* Name) { return f_->Find<ctlSlider>(Name); }
  const std::string& Line() { return f_->Window->Insight().LineText(); }

  // Estate leads Coupe by 0.120: Estate is best while Price weighs at least 0.400, or Looks at most 0.600.
  void StartEstateAndCoupe() { f_->Start({"Estate", "Coupe"}, {"Price", "Looks"}, {0.6, 0.4}, {0.8, 0.2, 0.2, 0.8}); }

  // Turns the preference over in the settings dialog, opened from the window as the person opens it.
  void ToggleInsightInSettings() {
    QTimer::singleShot(0, f_->Window.get(), [this] {
      auto* dialog = f_->Window->findChild<frmOptions*>();
      QTimer::singleShot(10000, dialog, [dialog] { dialog->done(QDialog::Rejected); });  // rather fail than hang
      for (const char* name : {"lblTabText_1", "lblShowInsight", "btnOk"}) {
        QTest::mouseClick(dialog->findChild<QWidget*>(name), Qt::LeftButton);
      }
    });
    QTest::mouseClick(f_->Find("btnSettings"), Qt::LeftButton);
  }

  // Three cars on three attributes, Estate ahead of Coupe on two attributes and behind it on one.
  frmMain& StartCars() {
    return f_->Start({"Estate", "Coupe", "Hatchback"}, {"Safety", "Comfort", "Looks"}, {1.0, 0.5, 0.5},
                     {0.8, 0.6, 0.2, 0.5, 0.4, 0.64, 0.2, 0.2, 0.2});
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

  // Dragging one weighting moves the other's band and ticks at once; the hold share waits for the release.
  void draggingAWeightingMovesTheOtherBandAndTheHoldShareFollowsTheRelease() {
    StartEstateAndCoupe();
    ctlSlider* looks = Slider("sliderWeighting_1");
    QCOMPARE(looks->Band()->second, 0.6);
    QCOMPARE(looks->Ticks(), std::vector<double>{0.6});
    QCOMPARE(Slider("sliderRating_2")->Ticks().at(0), 0.4);  // Coupe's price at which it ties Estate
    QVERIFY(Slider("sliderRating_3")->Ticks().empty());      // no looks rating lets Coupe catch up
    QTRY_VERIFY(Line().find("It holds in") != std::string::npos);

    ctlSlider* price = Slider("sliderWeighting_0");
    QTest::mousePress(price, Qt::LeftButton, {}, testing::TrackPoint(*price, 0.6));
    QTest::mouseMove(price, testing::TrackPoint(*price, 0.3));
    // Coupe now leads and stays best while Looks weighs at least as much as Price.
    QCOMPARE(looks->Band()->first, 0.3);
    QCOMPARE(looks->Band()->second, 1.0);
    QCOMPARE(looks->Ticks(), std::vector<double>{0.3});
    QCOMPARE(Line().substr(0, 28), std::string("Coupe leads Estate by 0.086."));
    QTest::qWait(120);
    QCOMPARE(Line().find("It holds in"), std::string::npos);
    QTest::mouseRelease(price, Qt::LeftButton, {}, testing::TrackPoint(*price, 0.3));
    QTRY_VERIFY(Line().find("It holds in") != std::string::npos);
  }

  // The words follow the display format; a rating slider's own tooltip (which rating it is) stays on top.
  void tooltipsSayItInWordsAndARenameRewritesTheLine() {
    StartEstateAndCoupe();
    Program().DisplayAsDecimal = false;
    f_->Window->UpdateSettings();
    QCOMPARE(Slider("sliderWeighting_0")->ToolTipNote(),
             QString("Estate stays best while Price is at least 40.0%. Below, Coupe is best."));
    // Under a decimal comma the words read as the value labels do.
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    const QString german = Slider("sliderWeighting_0")->ToolTipNote();
    QLocale::setDefault(before);
    QVERIFY2(german.contains("40,0%"), qPrintable(german));
    ctlSlider* estatePrice = Slider("sliderRating_0");
    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), estatePrice->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(estatePrice, &help);
    QCOMPARE(QToolTip::text(), QString("Estate: Price\nEstate stays best down to 60.0% here"));

    QTest::mouseClick(f_->Find("lblOption_0"), Qt::LeftButton);
    auto* editBox = f_->Find("txtEditBox");
    QTest::keyClicks(editBox, "Wagon");
    QTest::keyClick(editBox, Qt::Key_Return);
    QCOMPARE(Line().substr(0, 20), std::string("Wagon leads Coupe by"));
  }

  // Off, the window is as it always was; on, the score panel is one row taller and the rest only moves down.
  void thePreferenceAddsOneRowLeavesNoTraceWhenOffAndIsKept() {
    Program().ShowInsight = false;
    StartEstateAndCoupe();
    QWidget* client = f_->Find("picClient");
    const auto off = Geometries(*client);
    const QImage offPicture = client->grab().toImage();
    const int scoreBottom = off.at("picScoreFrame").bottom();

    ToggleInsightInSettings();
    QVERIFY(Program().ShowInsight);
    const auto on = Geometries(*client);
    for (const auto& [name, geometry] : off) {
      if (name == "lblInsight" || name == "picScoreFrame") {
        continue;
      }
      QCOMPARE(on.at(name), geometry.translated(0, geometry.top() > scoreBottom ? 25 : 0));
    }
    QCOMPARE(on.at("picScoreFrame"), off.at("picScoreFrame").adjusted(0, 0, 0, 25));
    QVERIFY(f_->Find("lblInsight")->isVisible());
    QVERIFY(Slider("sliderWeighting_0")->Band().has_value());

    ToggleInsightInSettings();
    QVERIFY(Geometries(*client) == off);
    QCOMPARE(client->grab().toImage(), offPicture);

    // The choice is kept in the settings when the window closes and read back at the next start.
    QVERIFY(f_->Window->close());
    Program().ShowInsight = true;
    QVERIFY(StartUp({}));
    QVERIFY(!Program().ShowInsight);
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

TARVELIN_GUI_TEST(InsightDisplayTest);

#include "InsightDisplayTest.moc"
