#pragma once

#include <QObject>
#include <functional>

class QWidget;

namespace tarvelin {

class GraphicalButton;

// The buttons that collapse a panel to its heading and expand it again. A toggle ends with Relayout.
class ViewToggles final {
 public:
  ViewToggles(QWidget* Client, std::function<void()> Relayout);
  Q_DISABLE_COPY_MOVE(ViewToggles)

  bool ShowScores() const { return showScores_; }
  bool ShowWeightings() const { return showWeightings_; }
  bool ShowRatings() const { return showRatings_; }
  // A new topic starts with every panel expanded.
  void ShowAll();

  GraphicalButton* btnToggleScore = nullptr;
  GraphicalButton* btnToggleWeightings = nullptr;
  GraphicalButton* btnToggleRatings = nullptr;

 private:
  void btnToggleScore_Click();
  void btnToggleWeightings_Click();
  void btnToggleRatings_Click();
  void RefreshToggleButtons();

  std::function<void()> relayout_;
  bool showScores_ = true, showWeightings_ = true, showRatings_ = true;
};

}  // namespace tarvelin
