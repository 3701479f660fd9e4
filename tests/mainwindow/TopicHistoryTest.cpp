#include <QTest>
#include <functional>
#include <optional>
#include <random>

#include "gui_support/GuiTestRegistry.h"
#include "mainwindow/TopicHistory.h"
#include "startup/modStartup.h"

using namespace tarvelin;

namespace {

TarvelinTopic& Live() {
  return *Program().Topic;
}

// What the history must hold: the topic after every step, oldest first, where undo and redo stand and which
// step is as last saved (none once that step is gone, or when the topic was never saved).
struct ExpectedHistory {
  std::vector<TarvelinTopic> States;
  std::size_t Position = 0;
  std::optional<std::size_t> Saved;
  int RunKey = TopicHistory::NoMerge;
  bool RunHasStep = false;

  void Record(int MergeKey) {
    if (MergeKey != RunKey || MergeKey == TopicHistory::NoMerge) {
      RunKey = MergeKey;
      RunHasStep = false;
    }
    if (RunHasStep) {
      States.back() = Live();
      if (States.back() == States[Position - 1]) {
        States.pop_back();
        --Position;
        RunHasStep = false;
      }
    } else if (Live() != States[Position]) {
      Saved = Saved > Position ? std::nullopt : Saved;
      States.resize(++Position);
      States.push_back(Live());
      RunHasStep = MergeKey != TopicHistory::NoMerge;
    }
  }
  void Move(bool Undo) {
    Undo ? --Position : ++Position;
    RunKey = TopicHistory::NoMerge;
  }
  void Save() {
    Record(TopicHistory::NoMerge);
    Saved = Position;
  }
};

// Edits the topic at random as the window's sliders, labels and settings dialog would, and counts the edits.
struct RandomEditor {
  std::mt19937 Random{20261123};
  int Edits = 0;

  int Pick(int Low, int High) { return std::uniform_int_distribution<int>(Low, High)(Random); }
  // A slider as a key: 0 to 99 a rating, 100 and up a weighting.
  int PickSlider() {
    const int attribute = Pick(0, Live().TotalAttributes() - 1);
    return Pick(0, 9) < 3 ? 100 + attribute : Pick(0, Live().TotalOptions() - 1) * 10 + attribute;
  }
  // A key press moves the slider one hundredth from where it shows; a drag, anywhere.
  void MoveSlider(int Slider, bool Key) {
    ++Edits;
    const auto option = static_cast<int16_t>(Slider / 10), attribute = static_cast<int16_t>(Slider % 10);
    const auto weighting = static_cast<int16_t>(Slider - 100);
    const double shown = Slider >= 100 ? Live().GetWeighting(weighting) : Live().GetRating(option, attribute);
    const double value = Key          ? std::clamp(std::round(shown * 100) + Pick(0, 1) * 2 - 1, 0.0, 100.0) / 100
                         : Pick(0, 1) ? Pick(0, 100) / 100.0
                                      : std::uniform_real_distribution<double>()(Random);
    Slider >= 100 ? Live().SetWeighting(weighting, value) : Live().SetRating(option, attribute, value);
  }
  void Drag(int Slider) {
    for (int moves = Pick(5, 60); moves > 0; --moves) {
      MoveSlider(Slider, false);
    }
  }
  // A rename, an added or deleted row or a setting, as the label editor or the settings dialog makes it.
  void OtherEdit() {
    ++Edits;
    TarvelinTopic& t = Live();
    const std::string name = std::vector<std::string>{"", "Price", "Size; big", "Ääni"}[Pick(0, 3)];
    const auto option = [&] { return static_cast<int16_t>(Pick(0, t.TotalOptions() - 1)); };
    const auto attribute = [&] { return static_cast<int16_t>(Pick(0, t.TotalAttributes() - 1)); };
    const std::function<void()> edits[] = {
        [&] { t.SetName(name); },
        [&] { t.SetDescription(name); },
        [&] { t.SetOptionName(option(), name); },
        [&] { t.SetAttributeName(attribute(), name); },
        [&] { t.TotalOptions() < 10 && Pick(0, 1) ? t.AddOption(name) : t.DeleteOption(option()); },
        [&] { t.TotalAttributes() < 10 && Pick(0, 1) ? t.AddAttribute(name) : t.DeleteAttribute(attribute()); },
        [&] { t.SetNormaliseWeights(!t.NormaliseWeights()); },
        [&] { t.SetInvertWeights(!t.InvertWeights()); },
        [&] { t.SetRounding(static_cast<int16_t>(Pick(-1, 4))); },
        [&] { t.SetTotalOptions(static_cast<int16_t>(Pick(1, 10))); },
        [&] { t.SetTotalAttributes(static_cast<int16_t>(Pick(1, 10))); },
    };
    edits[Pick(0, static_cast<int>(std::size(edits)) - 1)]();
  }
};

}  // namespace

// The undo history over the live topic, without a window.
class TopicHistoryTest final : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    Program().Topic = std::make_unique<TarvelinTopic>();
    Live().SetTotalAttributes(2);
    Program().Modified = false;
    Program().IsLoading = false;
  }

  void randomScriptUndoesAndRedoesToTheExactTopics_data() {
    QTest::addColumn<bool>("modifiedAtStart");
    QTest::newRow("fresh topic") << false;
    QTest::newRow("imported topic, never saved") << true;
  }
  // Undo or redo clears the modified flag exactly at the last save; a topic never saved stays modified.
  void randomScriptUndoesAndRedoesToTheExactTopics() {
    QFETCH(bool, modifiedAtStart);
    Program().Modified = modifiedAtStart;
    Live().SetTotalOptions(4);
    Live().SetTotalAttributes(4);
    std::vector<bool> shownCountChanges;
    TopicHistory history([&](bool CountsChanged) { shownCountChanges.push_back(CountsChanged); });
    ExpectedHistory expected{{Live()}, 0, modifiedAtStart ? std::nullopt : std::optional<std::size_t>(0)};
    RandomEditor editor;
    while (editor.Edits < 10000) {
      const int action = editor.Pick(0, 19);
      if (action < 7 || action == 19) {
        // A drag or a dialog: one step however many edits and brackets it holds; a stray end does nothing.
        history.EndStep();
        history.BeginStep();
        for (int edits = action == 19 ? editor.Pick(1, 4) : 1; edits > 0; --edits) {
          history.BeginStep();
          action == 19 ? editor.OtherEdit() : editor.Drag(editor.PickSlider());
          history.Record();
          history.EndStep();
          QVERIFY(!history.CanUndo() && !history.CanRedo());
        }
        history.EndStep();
        expected.Record(TopicHistory::NoMerge);
      } else if (action < 11) {
        const int slider = editor.PickSlider();
        for (int presses = editor.Pick(1, 10); presses > 0; --presses) {
          editor.MoveSlider(slider, true);
          history.Record(slider + 1);
          expected.Record(slider + 1);
        }
      } else if (action == 16 && !modifiedAtStart) {
        history.MarkSaved();
        expected.Save();
      } else if (action < 17) {
        editor.OtherEdit();
        history.Record();
        expected.Record(TopicHistory::NoMerge);
      } else {
        const bool undo = action == 17;
        for (int steps = editor.Pick(1, 3); steps > 0 && (undo ? history.CanUndo() : history.CanRedo()); --steps) {
          undo ? history.Undo() : history.Redo();
          expected.Move(undo);
          QCOMPARE(Program().Modified, expected.Saved != expected.Position);
        }
      }
      QVERIFY(Live() == expected.States[expected.Position]);
    }
    QVERIFY2(expected.States.size() <= std::size_t{TopicHistory::StepLimit} + 1, "the script must fit the history");

    const std::size_t steps = expected.Position;
    shownCountChanges.clear();
    for (std::size_t step = steps; step > 0; --step) {
      history.Undo();
      QVERIFY(Live() == expected.States[step - 1]);
      QCOMPARE(Program().Modified, expected.Saved != step - 1);
      QCOMPARE(shownCountChanges.back(), expected.States[step].TotalOptions() != Live().TotalOptions() ||
                                             expected.States[step].TotalAttributes() != Live().TotalAttributes());
    }
    QVERIFY(!history.CanUndo());
    while (history.CanRedo()) {
      history.Redo();
    }
    QCOMPARE(shownCountChanges.size(), 2 * steps);
    QVERIFY(Live() == expected.States.back());
  }

  void historyKeepsTheLatestSteps() {
    TopicHistory history(nullptr);
    for (int step = 1; step <= TopicHistory::StepLimit + 1; ++step) {
      Live().SetWeighting(0, step / 2048.0);
      history.Record();
    }
    int steps = 0;
    for (; history.CanUndo(); ++steps) {
      history.Undo();
    }
    QCOMPARE(steps, TopicHistory::StepLimit);
    QCOMPARE(Live().GetWeighting(0), 1 / 2048.0);
  }
};

TARVELIN_GUI_TEST(TopicHistoryTest);
#include "TopicHistoryTest.moc"
