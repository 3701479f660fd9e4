#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <deque>
#include <functional>

#include "files/modLoadSave.h"
#include "gui_support/GuiTestRegistry.h"
#include "gui_support/MainWindowFixture.h"
#include "gui_support/Soak.h"
#include "support/TempFolder.h"
#include "widgets/ctlSlider.h"

using namespace tarvelin;
using testing::MainWindowFixture;

using Plant = std::function<void(MainWindowFixture&)>;

namespace {

// Under the address sanitizer an action costs about ten times as much; fewer keep the suite's run well
// inside Qt Test's five minutes per test function.
#if defined(__SANITIZE_ADDRESS__)
constexpr unsigned long kDefaultActions = 1000;
#elif defined(__has_feature)
constexpr unsigned long kDefaultActions = __has_feature(address_sanitizer) ? 1000 : 3000;
#else
constexpr unsigned long kDefaultActions = 3000;
#endif

unsigned long EnvironmentNumber(const char* Name, unsigned long Default) {
  const char* text = std::getenv(Name);
  return text != nullptr && *text != '\0' ? std::strtoul(text, nullptr, 10) : Default;
}

template <class Lines>
std::string Joined(const Lines& Items) {
  std::string joined;
  for (const std::string& item : Items) {
    joined += "\n  " + item;
  }
  return joined;
}

// A file's lines, so that a difference is reported by its line.
QStringList FileLines(const std::string& FileName) {
  return QString::fromStdString(testing::ReadBytes(FileName)).split("\r\n");
}

}  // namespace

// A long run of random clicks, drags, keys, resizes and commands, after each of which the window must
// still agree with the topic; at the end the Save and Load buttons must give what the program's own topic
// file writer and reader give. The seed and the number of actions come from TARVELIN_SOAK_SEED and
// TARVELIN_SOAK_ACTIONS, so that a failure can be replayed; TARVELIN_SOAK_TRACE=1 prints every action.
class frmMainSoakTest final : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<MainWindowFixture> f_;

  frmMain& StartWindow() {
    frmMain& window = f_->Launch();
    if (!QTest::qWaitForWindowActive(&window)) {
      qFatal("The main window did not become active");
    }
    return window;
  }

  // The button's file must be the writer's, byte for byte, and the topic loaded back the reader's.
  void SaveAndLoadBack(frmMain& Window) {
    Program().UI = &*f_->Dialogs;
    Window.show();  // the last action may have been Ctrl+Q
    if (f_->Find<QLineEdit>("txtEditBox")->isVisible()) {
      QTest::keyClick(f_->Find<QLineEdit>("txtEditBox"), Qt::Key_Escape);
    }
    const std::string expected = f_->File("expected.tvt");
    const std::string file = f_->File("round trip.tvt");
    auto reader = std::make_unique<TarvelinTopic>(*Program().Topic);
    QVERIFY(SaveTopicFile(expected, *reader) && LoadTopicFile(expected, reader));
    f_->Dialogs->FileAnswers = {file, file};
    QTest::mouseClick(f_->Find<QAbstractButton>("btnSave"), Qt::LeftButton);
    QVERIFY2(!Program().Modified, "the save did not go through");
    QCOMPARE(FileLines(file), FileLines(expected));
    QTest::mouseClick(f_->Find<QAbstractButton>("btnLoad"), Qt::LeftButton);
    QCOMPARE(f_->Dialogs->Messages.size(), size_t{0});
    QCOMPARE(Program().CurrentFileName, file);
    // Written out again, the two loaded topics must make the same file.
    QVERIFY(SaveTopicFile(file, *Program().Topic) && SaveTopicFile(expected, *reader));
    QCOMPARE(FileLines(file), FileLines(expected));
    const auto problems = testing::WindowDisagreements(Window);
    QVERIFY2(problems.empty(), ("after loading back:" + Joined(problems)).c_str());
  }

 private slots:
  void init() { f_ = std::make_unique<MainWindowFixture>(); }
  void cleanup() { f_.reset(); }

  // After every action the window must agree with the topic; the last 20 actions are shown on a failure.
  void randomActionsKeepTheWindowTrueToTheTopic() {
    const auto seed = static_cast<uint32_t>(EnvironmentNumber("TARVELIN_SOAK_SEED", 1));
    const unsigned long actions = EnvironmentNumber("TARVELIN_SOAK_ACTIONS", kDefaultActions);
    const bool trace = EnvironmentNumber("TARVELIN_SOAK_TRACE", 0) != 0;
    std::mt19937 random(seed);
    testing::RandomDialogs dialogs(random, f_->Folder.Temp().Path());
    Program().UI = &dialogs;
    frmMain& window = StartWindow();
    std::deque<std::string> recent;
    for (unsigned long action = 1; action <= actions; ++action) {
      dialogs.Forget();
      const std::string done = testing::RandomAction(window, random);
      const TarvelinTopic& topic = *Program().Topic;
      recent.push_back("#" + std::to_string(action) + " (" + std::to_string(topic.TotalOptions()) + "x" +
                       std::to_string(topic.TotalAttributes()) + ") " + done + dialogs.Transcript());
      if (trace) {
        std::fprintf(stderr, "%s\n", recent.back().c_str());
      }
      if (recent.size() > 20) {
        recent.pop_front();
      }
      const auto problems = testing::WindowDisagreements(window);
      if (!problems.empty()) {
        QFAIL(("seed " + std::to_string(seed) + ", action " + std::to_string(action) + ":" + Joined(problems) +
               "\nlast actions:" + Joined(recent))
                  .c_str());
      }
    }
    qInfo("seed %u: %lu actions, window agreed with the topic after each", seed, actions);
    SaveAndLoadBack(window);
  }

  // The checker itself: each kind of disagreement planted in a window that agreed is reported.
  void theCheckerNoticesEveryKindOfDisagreement() {
    const std::vector<std::pair<QString, Plant>> plants{
        {"lblWeighting_1", [](MainWindowFixture& f) { f.Find<QLabel>("lblWeighting_1")->setText("0.999"); }},
        {"sliderRating_2",
         [](MainWindowFixture& f) {
           auto* slider = f.Find<ctlSlider>("sliderRating_2");
           slider->blockSignals(true);
           slider->SetValue(slider->Value() + 1);
         }},
        {"sliderScore_0", [](MainWindowFixture& f) { f.Find<ctlSlider>("sliderScore_0")->SetBarColour(0x0980FD); }},
        {"lblOption_1", [](MainWindowFixture& f) { f.Find("lblOption_1")->setProperty("tag", "Elsewhere"); }},
        {"lblAttribute_0",
         [](MainWindowFixture& f) {
           f.Find<QLabel>("lblAttribute_0")->setText(QString::fromUtf8("Attx\xE2\x80\xA6"));
         }},
        {"lblRating has 5",
         [](MainWindowFixture& f) { (new QLabel(f.Find("picClient")))->setObjectName("lblRating_4"); }},
        {"lblScore_1 hidden", [](MainWindowFixture& f) { f.Find("lblScore_1")->hide(); }},
        {"window titled", [](MainWindowFixture& f) { f.Window->setWindowTitle("Tarvelin"); }},
        {"btnAddOption disabled", [](MainWindowFixture& f) { f.Find("btnAddOption")->setEnabled(false); }},
    };
    for (const auto& [mention, plant] : plants) {
      cleanup();
      init();
      frmMain& window = StartWindow();
      QVERIFY(testing::WindowDisagreements(window).empty());
      plant(*f_);
      const std::string problems = Joined(testing::WindowDisagreements(window));
      QVERIFY2(QString::fromStdString(problems).contains(mention), (mention.toStdString() + ":" + problems).c_str());
    }
  }
};

TARVELIN_GUI_TEST(frmMainSoakTest);

#include "frmMainSoakTest.moc"
