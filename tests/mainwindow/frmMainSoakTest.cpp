#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "gui_support/GuiTestRegistry.h"
#include "gui_support/RandomDialogs.h"
#include "gui_support/SoakActions.h"
#include "gui_support/SoakInvariants.h"
#include "mainwindow/frmMain.h"
#include "model/modRounding.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;
using tarvelin::testing::TempFolder;

namespace {

constexpr size_t kRecentActions = 20;

// Under the address sanitizer an action costs about ten times as much; fewer keep the suite's run well
// inside Qt Test's five minutes per test function.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kUnderAddressSanitizer = true;
#elif defined(__has_feature)
constexpr bool kUnderAddressSanitizer = __has_feature(address_sanitizer);
#else
constexpr bool kUnderAddressSanitizer = false;
#endif
constexpr unsigned long kDefaultActions = kUnderAddressSanitizer ? 1000 : 3000;

unsigned long EnvironmentNumber(const char* Name, unsigned long Default) {
  const char* text = std::getenv(Name);
  return text != nullptr && *text != '\0' ? std::strtoul(text, nullptr, 10) : Default;
}

std::string Lines(const std::vector<std::string>& Items) {
  std::string lines;
  for (const std::string& item : Items) {
    lines += "\n  " + item;
  }
  return lines;
}

// A name as a topic file gives it back: a ";" starts a comment in the file, so the name ends before it, and
// the spaces around it are dropped. An option or attribute whose name comes back empty reads as its default.
QString NameAsFileKeepsIt(const std::string& Name, const std::string& Default) {
  std::string kept = Name.substr(0, Name.find(';'));
  kept.erase(0, kept.find_first_not_of(' '));
  kept.erase(kept.find_last_not_of(' ') + 1);
  return QString::fromStdString(kept.empty() ? Default : kept);
}

// A value as a topic file gives it back: written with at most four decimals, read into a topic that rounds
// to three.
double ValueAsFileKeepsIt(double Value) {
  return BankersRound(BankersRound(Value, 4), 3);
}

// The topic line by line as a file keeps it: title, weighting type, names and ratings. Both sides of a round
// trip go through it; for a topic just loaded it changes nothing.
QStringList AsFileKeepsIt(const TarvelinTopic& Topic) {
  QStringList lines{QString("\"%1\" %2 %3x%4")
                        .arg(NameAsFileKeepsIt(Topic.Name(), ""))
                        .arg(Topic.InvertWeights() ? "inverted" : "plain")
                        .arg(Topic.TotalOptions())
                        .arg(Topic.TotalAttributes())};
  for (int16_t a = 0; a < Topic.TotalAttributes(); ++a) {
    lines << NameAsFileKeepsIt(Topic.GetAttributeName(a), "Attribute " + std::to_string(a + 1));
  }
  for (int16_t o = 0; o < Topic.TotalOptions(); ++o) {
    QString line = NameAsFileKeepsIt(Topic.GetOptionName(o), "Option " + std::to_string(o + 1));
    for (int16_t a = 0; a < Topic.TotalAttributes(); ++a) {
      line += QString(" %1").arg(ValueAsFileKeepsIt(Topic.GetRating(o, a)));
    }
    lines << line;
  }
  return lines;
}

std::vector<double> Weightings(const TarvelinTopic& Topic) {
  std::vector<double> weightings;
  for (int16_t a = 0; a < Topic.TotalAttributes(); ++a) {
    weightings.push_back(ValueAsFileKeepsIt(Topic.GetWeighting(a)));
  }
  return weightings;
}

}  // namespace

// A long run of random clicks, drags, keys, resizes and commands, after each of which the window must
// still agree with the topic; at the end the topic must survive a save and a load. The seed and the number
// of actions come from TARVELIN_SOAK_SEED and TARVELIN_SOAK_ACTIONS, so that a failure can be replayed;
// TARVELIN_SOAK_TRACE=1 prints every action as it is done.
class frmMainSoakTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<TempFolder> folder_;
  std::unique_ptr<frmMain> window_;

  void StartWindow() {
    window_ = std::make_unique<frmMain>();
    window_->Form_Load();
    if (!QTest::qWaitForWindowActive(window_.get())) {
      qFatal("The main window did not become active");
    }
  }

  template <class Widget>
  Widget* Find(const char* Name) {
    auto* widget = window_->findChild<Widget*>(Name);
    if (widget == nullptr) {
      qFatal("The window has no %s", Name);
    }
    return widget;
  }

  // Saves through the Save button, loads the file back through the Load button and compares.
  void SaveAndLoadBack() {
    if (Find<QLineEdit>("txtEditBox")->isVisible()) {
      QTest::keyClick(Find<QLineEdit>("txtEditBox"), Qt::Key_Escape);
    }
    testing::ScopedScriptedDialogs dialogs;
    const std::string file = folder_->File("round trip.tvt");
    const QStringList before = AsFileKeepsIt(*Program().Topic);
    const std::vector<double> weightingsBefore = Weightings(*Program().Topic);
    dialogs->FileAnswers.push_back(file);
    QTest::mouseClick(Find<QAbstractButton>("btnSave"), Qt::LeftButton);
    QVERIFY2(!Program().Modified, "the save did not go through");
    dialogs->FileAnswers.push_back(file);
    QTest::mouseClick(Find<QAbstractButton>("btnLoad"), Qt::LeftButton);
    QCOMPARE(dialogs->Messages.size(), size_t{0});
    QCOMPARE(Program().CurrentFileName, file);
    const QStringList after = AsFileKeepsIt(*Program().Topic);
    for (qsizetype line = 0; line < std::max(before.size(), after.size()); ++line) {
      QCOMPARE(after.value(line), before.value(line));
    }
    // Normalised, the file holds each weighting's share, rounded; read back, the shares are normalised
    // again, so each may move by the others' rounding. The scores follow from the rest and the window's
    // check covers them.
    const double tolerance = Program().Topic->NormaliseWeights() ? 0.0015 : 1e-12;
    const std::vector<double> weightingsAfter = Weightings(*Program().Topic);
    for (size_t a = 0; a < weightingsBefore.size(); ++a) {
      QVERIFY2(
          std::abs(weightingsAfter[a] - weightingsBefore[a]) <= tolerance,
          qPrintable(
              QString("weighting %1: %2 saved, %3 loaded").arg(a).arg(weightingsBefore[a]).arg(weightingsAfter[a])));
    }
    const auto problems = testing::WindowDisagreements(*window_);
    QVERIFY2(problems.empty(), ("after loading back:" + Lines(problems)).c_str());
  }

 private slots:
  void init() {
    folder_ = std::make_unique<TempFolder>();
    setenv("TARVELIN_REGISTRY_DIR", folder_->Path().c_str(), 1);
    Program().Topic = std::make_unique<TarvelinTopic>();
    Program().FileToOpen.clear();
    Program().FileTypeToOpen.clear();
    Program().CurrentFileName.clear();
    Program().LastUsedDir = folder_->Path().string();
    Program().DisplayAsDecimal = true;
    Program().ShowSettingsOnNew = false;
    Program().Modified = false;
  }

  void cleanup() {
    window_.reset();
    folder_.reset();
  }

  void randomActionsKeepTheWindowTrueToTheTopic() {
    const auto seed = static_cast<uint32_t>(EnvironmentNumber("TARVELIN_SOAK_SEED", 1));
    const unsigned long actions = EnvironmentNumber("TARVELIN_SOAK_ACTIONS", kDefaultActions);
    std::mt19937 random(seed);
    testing::RandomDialogs dialogs(random, folder_->Path());
    testing::ScopedDialogs useDialogs(dialogs);
    StartWindow();
    testing::SoakActions soak(*window_, random);
    const bool trace = EnvironmentNumber("TARVELIN_SOAK_TRACE", 0) != 0;
    std::deque<std::string> recent;
    for (unsigned long action = 1; action <= actions; ++action) {
      dialogs.Forget();
      const std::string done = soak.Step();
      const TarvelinTopic& topic = *Program().Topic;
      recent.push_back("#" + std::to_string(action) + " (" + std::to_string(topic.TotalOptions()) + "x" +
                       std::to_string(topic.TotalAttributes()) + ") " + done + dialogs.Transcript());
      if (trace) {
        std::fprintf(stderr, "%s\n", recent.back().c_str());
      }
      if (recent.size() > kRecentActions) {
        recent.pop_front();
      }
      const auto problems = testing::WindowDisagreements(*window_);
      if (!problems.empty()) {
        const std::string report = "seed " + std::to_string(seed) + ", action " + std::to_string(action) + ":" +
                                   Lines(problems) +
                                   "\nlast actions:" + Lines(std::vector<std::string>(recent.begin(), recent.end()));
        QFAIL(report.c_str());
      }
    }
    qInfo("seed %u: %lu actions, window agreed with the topic after each", seed, actions);
    SaveAndLoadBack();
  }

  // The checker itself: each kind of disagreement planted in a window that agreed is reported.
  void theCheckerNoticesEveryKindOfDisagreement_data() {
    QTest::addColumn<QString>("plant");
    QTest::addColumn<QString>("mention");
    QTest::newRow("value label") << "lblWeighting_1 text"
                                 << "lblWeighting_1";
    QTest::newRow("slider") << "sliderRating_2 value"
                            << "sliderRating_2";
    QTest::newRow("score bar") << "sliderScore_0 colour"
                               << "sliderScore_0";
    QTest::newRow("name") << "lblOption_1 tag"
                          << "lblOption_1";
    QTest::newRow("cut name") << "lblAttribute_0 text"
                              << "lblAttribute_0";
    QTest::newRow("extra row") << "lblRating_4 created"
                               << "lblRating has 5";
    QTest::newRow("lost row") << "sliderWeighting_1 deleted"
                              << "sliderWeighting has 1";
    QTest::newRow("hidden row") << "lblScore_1 hidden"
                                << "lblScore_1 hidden";
    QTest::newRow("caption") << "window title"
                             << "window titled";
    QTest::newRow("add button") << "btnAddOption disabled"
                                << "btnAddOption disabled";
  }

  void theCheckerNoticesEveryKindOfDisagreement() {
    QFETCH(QString, plant);
    QFETCH(QString, mention);
    testing::ScopedScriptedDialogs dialogs;
    StartWindow();
    QVERIFY(testing::WindowDisagreements(*window_).empty());
    const std::map<QString, std::function<void()>> plants{
        {"lblWeighting_1 text", [&] { Find<QLabel>("lblWeighting_1")->setText("0.999"); }},
        {"sliderRating_2 value",
         [&] {
           auto* slider = Find<ctlSlider>("sliderRating_2");
           slider->blockSignals(true);
           slider->SetValue(slider->Value() + 1);
         }},
        {"sliderScore_0 colour", [&] { Find<ctlSlider>("sliderScore_0")->SetBarColour(0x0980FD); }},
        {"lblOption_1 tag", [&] { Find<QLabel>("lblOption_1")->setProperty("tag", "Elsewhere"); }},
        {"lblAttribute_0 text",
         [&] { Find<QLabel>("lblAttribute_0")->setText(QString::fromUtf8("Attx\xE2\x80\xA6")); }},
        {"lblRating_4 created", [&] { (new QLabel(Find<QWidget>("picClient")))->setObjectName("lblRating_4"); }},
        {"sliderWeighting_1 deleted", [&] { delete Find<QWidget>("sliderWeighting_1"); }},
        {"lblScore_1 hidden", [&] { Find<QWidget>("lblScore_1")->hide(); }},
        {"window title", [&] { window_->setWindowTitle("Tarvelin"); }},
        {"btnAddOption disabled", [&] { Find<QWidget>("btnAddOption")->setEnabled(false); }},
    };
    plants.at(plant)();
    const auto problems = testing::WindowDisagreements(*window_);
    QVERIFY2(!problems.empty(), "nothing reported");
    QVERIFY2(QString::fromStdString(Lines(problems)).contains(mention), Lines(problems).c_str());
  }
};

TARVELIN_GUI_TEST(frmMainSoakTest);

#include "frmMainSoakTest.moc"
