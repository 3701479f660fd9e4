#pragma once

#include <QDialog>
#include <QImage>
#include <QRect>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class QAbstractButton;
class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QStackedWidget;

namespace tarvelin {

class GraphicalButton;

// How the settings dialog ended.
struct OptionsOutcome {
  enum class Result { Applied, Cancelled, TopicLoaded } Result = Result::Cancelled;
  bool CountsChanged = false;  // the option or attribute count changed: the window must rebuild its rows
};

// The modal settings dialog over the live topic and the display preferences in Program(): the topic's title,
// counts, weighting type and normalisation on the "Topic" page, the display and start-up preferences on
// "Preferences" and the version on "About". The controls are filled when the dialog is first shown; OK writes
// them back, Cancel writes nothing.
//
// Opened for a new topic, the Cancel button becomes "Load Topic" and Escape (like the close box) acts as OK,
// so that a new topic is never left half set up. While the dialog is open it sets Program()'s
// SettingsDialogHide and SettingsDialogShow, through which the open-topic command hides it while a file is
// read and shows it again when nothing was loaded; both are cleared when it closes.
class frmOptions final : public QDialog {
  Q_OBJECT
  Q_DISABLE_COPY_MOVE(frmOptions)

 public:
  // LoadTopic runs the open-topic command on the live topic and returns true when a topic was loaded.
  frmOptions(bool ForNewTopic, std::function<bool()> LoadTopic, QWidget* parent = nullptr);
  ~frmOptions() override;

  // Shows the dialog application-modal and returns once it has closed. Hiding the dialog while it is open
  // (as the open-topic command does) does not end it.
  OptionsOutcome ShowModal();
  // How the dialog ended; Cancelled while it is still open.
  const OptionsOutcome& Outcome() const { return outcome_; }

 public slots:
  void done(int ResultCode) override;
  // Escape and the close box: OK for a new topic, Cancel otherwise.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static constexpr int TabCount = 3;

  QWidget* BuildTabStrip();
  QWidget* BuildTopicPage();
  QWidget* BuildPreferencesPage();
  QWidget* BuildAboutPage();
  QWidget* BuildButtonRow();
  QLabel* NewLabel(const QString& Name, const QString& Caption, QWidget* Parent);
  QLabel* NewHeading(const QString& Caption, QWidget* Parent);
  QLineEdit* NewField(const QString& Name, QWidget* Parent);
  QWidget* NewChoice(QAbstractButton* Control, const QString& LabelName, const QString& Caption, QWidget* Parent);

  void FillControls();
  int16_t CountOf(const QLineEdit* Field) const;
  std::string TitleOf() const;
  void TidyField(QLineEdit* Field) const;
  void Apply();
  void InstallHooks();
  void RemoveHooks();
  void ShowAgain();
  bool LabelClicked(QObject* watched);
  void SelectTab(int Index);
  QRect TabRect(int Index) const;
  QRect PanelRect() const;

  void btnOk_Click();
  void btnCancel_Click();

  const bool forNewTopic_;
  const std::function<bool()> loadTopic_;
  OptionsOutcome outcome_;
  bool filled_ = false;
  bool hooked_ = false;
  int hoveredTab_ = -1;

  QWidget* imgTabBackground = nullptr;
  QWidget* picPageFrame = nullptr;
  QStackedWidget* pages_ = nullptr;
  std::array<QLabel*, TabCount> lblTabText{};
  std::vector<std::pair<const QObject*, QAbstractButton*>> labelTargets_;  // a label and the control it clicks
  QLineEdit* txtTitle = nullptr;
  QLineEdit* txtOptionCount = nullptr;
  QLineEdit* txtAttributeCount = nullptr;
  std::array<QRadioButton*, 2> optWeightingType{};
  QCheckBox* chkNormaliseWeights = nullptr;
  std::array<QRadioButton*, 2> optRange{};
  QCheckBox* chkShowSettingsOnNew = nullptr;
  QCheckBox* chkShowInsight = nullptr;
  QCheckBox* chkSplitScoreBars = nullptr;
  GraphicalButton* btnOk = nullptr;
  GraphicalButton* btnCancel = nullptr;

  // The background and page panel, redrawn only when their geometry changes.
  QImage decoration_;
  QRect decorationPanel_;
};

}  // namespace tarvelin
