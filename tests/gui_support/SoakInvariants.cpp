#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <algorithm>
#include <cmath>
#include <set>

#include "gui_support/Soak.h"
#include "mainwindow/LabelEditor.h"
#include "mainwindow/ViewToggles.h"
#include "mainwindow/frmMain.h"
#include "mainwindow/modDisplay.h"
#include "startup/modStartup.h"
#include "util/libmodGenericTextFunctions.h"
#include "widgets/Palette.h"
#include "widgets/ctlSlider.h"

namespace tarvelin::testing {

namespace {

const QString kEllipsis = QString::fromUtf8("\xE2\x80\xA6");

QString Indexed(const char* Array, int Index) {
  return QString("%1_%2").arg(Array).arg(Index);
}

class Checker {
 public:
  explicit Checker(const frmMain& Window) : window_(Window), topic_(*Program().Topic) {
    for (QWidget* control : Window.findChildren<QWidget*>()) {
      controls_.insert(control->objectName(), control);
    }
  }

  std::vector<std::string> Run() {
    CheckCounts();
    if (problems_.empty()) {  // otherwise the rest would only read past the arrays
      CheckValues();
      CheckNames();
      CheckPanels();
    }
    return problems_;
  }

 private:
  const frmMain& window_;
  const TarvelinTopic& topic_;
  QMultiMap<QString, QWidget*> controls_;
  std::vector<std::string> problems_;

  void Expect(bool Agrees, const QString& Otherwise) {
    if (!Agrees) {
      problems_.push_back(Otherwise.toStdString());
    }
  }

  template <class Widget>
  Widget* Find(const QString& Name) {
    const auto found = controls_.values(Name);
    auto* control = found.size() == 1 ? qobject_cast<Widget*>(found.front()) : nullptr;
    Expect(control != nullptr, QString("%1 controls named %2 of the expected kind").arg(found.size()).arg(Name));
    return control;
  }

  // Every control array with the count it must hold and whether its panel shows it.
  struct ControlArray {
    const char* Name;
    int Count;
    bool Shown;
  };
  std::vector<ControlArray> Arrays() const {
    const int o = topic_.TotalOptions();
    const int a = topic_.TotalAttributes();
    const bool s = window_.Toggles().ShowScores();
    const bool w = window_.Toggles().ShowWeightings();
    const bool r = window_.Toggles().ShowRatings();
    return {{"lblOption", o, r},       {"lblScoreTitle", o, s}, {"lblScore", o, s},
            {"sliderScore", o, s},     {"lblAttribute", a, w},  {"lblWeighting", a, w},
            {"sliderWeighting", a, w}, {"lblRating", o * a, r}, {"sliderRating", o * a, r}};
  }

  // Each array must hold exactly the controls Array_0 to Array_(Count - 1).
  void CheckCounts() {
    const int options = topic_.TotalOptions();
    const int attributes = topic_.TotalAttributes();
    Expect(options >= 1 && options <= Program().MaxOptions && attributes >= 1 && attributes <= Program().MaxAttributes,
           QString("counts out of range: %1 options, %2 attributes").arg(options).arg(attributes));
    for (const ControlArray& array : problems_.empty() ? Arrays() : std::vector<ControlArray>()) {
      const QString prefix = QString(array.Name) + "_";
      std::set<int> indices;
      for (const QString& name : controls_.uniqueKeys()) {
        bool isNumber = false;
        const int index = name.startsWith(prefix) ? name.mid(prefix.size()).toInt(&isNumber) : -1;
        if (isNumber) {
          indices.insert(index);
        }
      }
      Expect(static_cast<int>(indices.size()) == array.Count && *indices.rbegin() == array.Count - 1,
             QString("%1 has %2 controls for a count of %3").arg(array.Name).arg(indices.size()).arg(array.Count));
    }
  }

  void CheckValue(const char* Slider, const char* Label, int Index, double Value) {
    const QString where = Indexed(Label, Index);
    Expect(Value >= 0.0 && Value <= 1.0, QString("%1 stands for %2, outside 0 to 1").arg(where).arg(Value, 0, 'g', 17));
    if (auto* slider = Find<ctlSlider>(Indexed(Slider, Index))) {
      Expect(slider->Value() == std::lround(Value * 100),
             QString("%1 at %2 for %3").arg(slider->objectName()).arg(slider->Value()).arg(Value, 0, 'g', 17));
    }
    const QString expected =
        QString::fromStdString(FormatNumberForDisplay(Value, topic_.Rounding(), Program().DisplayAsDecimal));
    if (auto* label = Find<QLabel>(where)) {
      Expect(label->text() == expected, QString("%1 shows \"%2\" for %3").arg(where, label->text(), expected));
    }
  }

  // Also the best score bars' colour.
  void CheckValues() {
    const int16_t attributes = topic_.TotalAttributes();
    std::vector<double> scores;
    for (int16_t a = 0; a < attributes; ++a) {
      CheckValue("sliderWeighting", "lblWeighting", a, topic_.GetWeighting(a));
    }
    for (int16_t o = 0; o < topic_.TotalOptions(); ++o) {
      for (int16_t a = 0; a < attributes; ++a) {
        CheckValue("sliderRating", "lblRating", o * attributes + a, topic_.GetRating(o, a));
      }
      scores.push_back(topic_.GetScore(o));
      CheckValue("sliderScore", "lblScore", o, scores.back());
    }
    const double best = *std::max_element(scores.begin(), scores.end());
    for (size_t o = 0; o < scores.size(); ++o) {
      if (auto* bar = Find<ctlSlider>(Indexed("sliderScore", static_cast<int>(o)))) {
        Expect(bar->BarColour() == (scores[o] == best ? Palette::BestBar : Palette::OtherBar),
               bar->objectName() +
                   QString(" coloured %1 for %2, best %3").arg(bar->BarColour(), 6, 16).arg(scores[o]).arg(best));
      }
    }
  }

  // A name label keeps the whole name in its tag and shows it, or the start of it with an ellipsis.
  void CheckName(const QString& LabelName, const std::string& Name, bool Tagged) {
    auto* label = Find<QLabel>(LabelName);
    if (label == nullptr) {
      return;
    }
    const QString name = QString::fromStdString(Name);
    const QString tag = label->property("tag").toString();
    Expect(!Tagged || tag == name, QString("%1 tagged \"%2\" for \"%3\"").arg(LabelName, tag, name));
    const QString text = label->text();
    const QString stem = text.endsWith(kEllipsis) ? text.chopped(kEllipsis.size()) : QString();
    Expect(text == name || (!stem.isEmpty() && QString::fromStdString(TrimBlanks(Name)).startsWith(stem)),
           QString("%1 shows \"%2\" for \"%3\"").arg(LabelName, text, name));
  }

  void CheckNames() {
    CheckName("lblTitle", topic_.Name(), true);
    const QString caption = QString::fromStdString(Program().AppTitle + " - " + topic_.Name());
    Expect(window_.windowTitle() == caption,
           QString("window titled \"%1\" for \"%2\"").arg(window_.windowTitle(), caption));
    for (int16_t a = 0; a < topic_.TotalAttributes(); ++a) {
      CheckName(Indexed("lblAttribute", a), topic_.GetAttributeName(a), true);
    }
    for (int16_t o = 0; o < topic_.TotalOptions(); ++o) {
      CheckName(Indexed("lblOption", o), topic_.GetOptionName(o), true);
      CheckName(Indexed("lblScoreTitle", o), topic_.GetOptionName(o), false);
    }
  }

  // Also the add buttons, the loading flags and the edit box.
  void CheckPanels() {
    for (const ControlArray& array : Arrays()) {
      for (int i = 0; i < array.Count && window_.isVisible() && !window_.isMinimized(); ++i) {
        auto* control = Find<QWidget>(Indexed(array.Name, i));
        Expect(
            control == nullptr || control->isVisible() == array.Shown,
            QString("%1 %2 while its panel is %3")
                .arg(Indexed(array.Name, i), array.Shown ? "hidden" : "shown", array.Shown ? "expanded" : "collapsed"));
      }
    }
    for (const auto& [name, count, maximum] :
         {std::tuple{"btnAddAttribute", topic_.TotalAttributes(), Program().MaxAttributes},
          std::tuple{"btnAddOption", topic_.TotalOptions(), Program().MaxOptions}}) {
      auto* button = Find<QAbstractButton>(name);
      Expect(button == nullptr || button->isEnabled() == (count < maximum),
             QString("%1 %2 at a count of %3").arg(name, count < maximum ? "disabled" : "enabled").arg(count));
    }
    Expect(!window_.IsLoading() && !Program().IsLoading, "the window is still loading");
    auto* editBox = Find<QLineEdit>("txtEditBox");
    Expect(editBox == nullptr || !editBox->isVisible() ||
               std::find(controls_.cbegin(), controls_.cend(), window_.Editor().EditingLabel()) != controls_.cend(),
           "the edit box is open over a label that no longer exists");
  }
};

}  // namespace

std::vector<std::string> WindowDisagreements(const frmMain& Window) {
  return Checker(Window).Run();
}

}  // namespace tarvelin::testing
