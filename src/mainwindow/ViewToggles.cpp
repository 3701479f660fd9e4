#include "mainwindow/ViewToggles.h"

#include "mainwindow/WindowText.h"
#include "widgets/GraphicalButton.h"

namespace tarvelin {

namespace {

GraphicalButton* MakeToggle(QWidget* Client, const char* Name) {
  auto* toggle = new GraphicalButton(Client);
  toggle->setObjectName(Name);
  toggle->setFont(LabelFont(9));
  return toggle;
}

}  // namespace

ViewToggles::ViewToggles(QWidget* Client, std::function<void()> Relayout) : relayout_(std::move(Relayout)) {
  btnToggleScore = MakeToggle(Client, "btnToggleScore");
  btnToggleWeightings = MakeToggle(Client, "btnToggleWeightings");
  btnToggleRatings = MakeToggle(Client, "btnToggleRatings");
  QObject::connect(btnToggleScore, &QAbstractButton::clicked, Client, [this] { btnToggleScore_Click(); });
  QObject::connect(btnToggleWeightings, &QAbstractButton::clicked, Client, [this] { btnToggleWeightings_Click(); });
  QObject::connect(btnToggleRatings, &QAbstractButton::clicked, Client, [this] { btnToggleRatings_Click(); });
  RefreshToggleButtons();
}

void ViewToggles::ShowAll() {
  showScores_ = showWeightings_ = showRatings_ = true;
  RefreshToggleButtons();
}

void ViewToggles::RefreshToggleButtons() {
  const auto refresh = [](GraphicalButton* button, bool expanded, const char* hide, const char* show) {
    button->SetPicture(expanded ? ButtonPicture::Collapse : ButtonPicture::Expand);
    button->setText(expanded ? hide : show);
  };
  refresh(btnToggleScore, showScores_, "Hide Scores", "Show Scores");
  refresh(btnToggleWeightings, showWeightings_, "Hide Weightings", "Show Weightings");
  refresh(btnToggleRatings, showRatings_, "Hide Ratings", "Show Ratings");
}

void ViewToggles::btnToggleScore_Click() {
  showScores_ = !showScores_;
  RefreshToggleButtons();
  relayout_();
}

void ViewToggles::btnToggleWeightings_Click() {
  showWeightings_ = !showWeightings_;
  RefreshToggleButtons();
  relayout_();
}

void ViewToggles::btnToggleRatings_Click() {
  showRatings_ = !showRatings_;
  RefreshToggleButtons();
  relayout_();
}

}  // namespace tarvelin
