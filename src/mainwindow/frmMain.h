#pragma once

#include <QImage>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QKeyEvent;
class QLabel;
class QLineEdit;
class QScrollArea;

namespace tarvelin {

class ctlSlider;
class ClientArea;
class GraphicalButton;

// The main window: the topic's title, the command row and three stacked panels (scores, weightings,
// ratings) whose rows are control arrays grown to the topic's counts. The window keeps no copy of any value:
// every edit goes into the live topic, after which UpdateSettings rewrites every control from it.
class frmMain final : public QWidget {
  Q_OBJECT

 public:
  explicit frmMain(QWidget* parent = nullptr);
  ~frmMain() override;
  Q_DISABLE_COPY_MOVE(frmMain)

  // Finishes the start-up: lays out the controls, loads the file named on the command line, restores the
  // placement and starts a new topic when nothing was loaded. Shows the window.
  void Form_Load();

  // Index of the rating controls of an option and attribute: OptionID * TotalAttributes + AttributeID.
  int16_t TranslateToIndex(int16_t OptionID, int16_t AttributeID) const;
  // With UseControlValues the divisor is the number of weighting rows present in the window instead of the
  // topic's count, for the moments when the two disagree (while attributes are added or removed).
  int16_t GetOptionIDFromIndex(int16_t Index, bool UseControlValues = false) const;
  int16_t GetAttributeIDFromIndex(int16_t Index, bool UseControlValues = false) const;

  // Cover the panels while rows are rebuilt.
  void StartLoad();
  void EndLoad();
  bool IsLoading() const { return loading_; }

  // Brings the control arrays to the topic's counts, fills the names, places the rows, refreshes every value
  // and lays the window out. RowsChanged is set when rows were created or removed.
  void UpdateSliderArrays(bool& RowsChanged);
  void Form_Resize();

  // Rewrites the title, caption, every slider and value label and the score bars' colours from the topic.
  void UpdateSettings();
  // Rebuilds the decoration (gradient background and framed panels) into the window's persistent image.
  void RepaintGradients();
  // Fits the score titles into their column and sets their tooltips.
  void UpdateScoreBars();
  // A layout aid: the 10-pixel lattice and the border and section rules, drawn into the persistent image.
  void DrawGrid();
  void HLine(int16_t Y, uint32_t Colour);
  void VLine(int16_t X, uint32_t Colour);

  // The commands. Load and New ask to save unsaved changes first; New opens the settings dialog when the
  // preference says so and keeps the old topic when it is cancelled.
  void btnNew_Click();
  void btnLoad_Click();
  void btnSave_Click();
  void btnSettings_Click();
  // Ctrl+S, Ctrl+L, Ctrl+Q, Ctrl+N and Ctrl+C, with Ctrl alone; true when the key was a shortcut.
  bool Form_KeyDown(QKeyEvent* event);

  // Grabs a clean picture of the client area (no command buttons, toggles, grip or highlight) into
  // picCapture, leaving the window as it was.
  void CaptureWindow();
  const QImage& CapturedPicture() const { return capturedPicture_; }

  // Opens the one edit box over a label (committing an open edit first), filled with Value or else the
  // label's text, fully selected. EditMode 1 edits a number, anything else a text.
  void BeginLabelEdit(QLabel* Label, int16_t EditMode, std::optional<std::string> Value = std::nullopt);
  // The label being edited while the edit box is open, else null.
  QLabel* EditingLabel() const;

  // The entries the delete buttons remove: the rows last highlighted (the first rows at the start).
  int16_t SelectedOption() const { return highlightedOption_; }
  int16_t SelectedAttribute() const { return highlightedAttribute_; }

  bool ShowScores() const { return showScores_; }
  bool ShowWeightings() const { return showWeightings_; }
  bool ShowRatings() const { return showRatings_; }
  bool IsUpdatingControls() const { return isUpdatingControls_; }
  const QImage& PersistentImage() const { return persistentImage_; }

  // The rows' measures: the score row step S, the weighting extent W and the rating block extent R.
  int ScoreRowStep() const;
  int WeightingExtent() const;
  int RatingExtent() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CreateFixedControls();
  void CreateCommandRow();
  void CreatePanel(QWidget*& frame, QLabel*& heading, GraphicalButton*& toggle, const char* frameName,
                   const char* headingName, const char* headingText, const char* toggleName);
  QLabel* CreateLabel(const QString& objectName, const QFont& font, Qt::Alignment alignment);
  ctlSlider* CreateSlider(const QString& objectName, bool readOnly);

  void ResizeArrays();
  void PlaceScoreRows(int panelTop, int panelWidth);
  void PlaceWeightingRows(int panelTop, int panelWidth);
  void PlaceRatingRows(int panelTop, int panelWidth);
  void PlacePanelHeading(QWidget* frame, QLabel* heading, GraphicalButton* toggle, GraphicalButton* add, int top,
                         bool expanded);
  void LayoutCover();
  int ClientWidth() const;
  void ResizeCanvas(int contentHeight);

  void SetCaption(QLabel* label, const std::string& text);
  void lblTitle_Change();
  void lblOption_Change(int16_t Index);
  void lblAttribute_Change(int16_t Index);
  void lblScoreTitle_Change(int16_t Index);
  void lblWeighting_Change(int16_t Index);
  void lblRating_Change(int16_t Index);
  void ApplyValue(const std::function<void()>& store);
  void sliderWeighting_Change(int16_t Index);
  void sliderRating_Change(int16_t Index);
  void RefreshToggleButtons();
  void btnToggleScore_Click();
  void btnToggleWeightings_Click();
  void btnToggleRatings_Click();
  void imgResizeTab_MouseDown();
  void PlaceHighlight(QLabel* label, int kind);
  void LabelClicked(QLabel* label);
  bool txtEditBox_KeyPress(QKeyEvent* event);
  void txtEditBox_LostFocus();
  void CancelLabelEdit();
  void JumpToTabOffset(int Offset);
  void Form_Click();
  void btnAddAttribute_Click();
  void btnAddOption_Click();
  void btnRemoveAttribute_Click();
  void btnRemoveOption_Click();
  void RefreshAddButtons();
  void RebuildAfterCountChange();
  std::vector<QLabel*>* ArrayOf(const QLabel* label);

  void NewTopic();
  void CopyPictureToClipboard();
  void ApplyPlacement();
  void SavePlacement();

  bool showScores_ = true, showWeightings_ = true, showRatings_ = true;
  bool isUpdatingControls_ = false;
  bool loading_ = false;
  bool inTitleChange_ = false, inOptionChange_ = false, inAttributeChange_ = false, inScoreTitleChange_ = false;
  int16_t highlightedOption_ = 0, highlightedAttribute_ = 0;

  QScrollArea* scrollArea_ = nullptr;
  ClientArea* client_ = nullptr;
  QImage persistentImage_;
  QImage capturedPicture_;  // picCapture's picture
  bool busy_ = false;
  // What the persistent image was built for.
  struct DecorationGeometry {
    QSize Client;
    qreal PixelRatio = 0;
    QRect ScorePanel, WeightingPanel, RatingPanel;
    bool operator==(const DecorationGeometry&) const = default;
  } decorationGeometry_;

  QLabel* lblTitle = nullptr;
  GraphicalButton *btnNew = nullptr, *btnLoad = nullptr, *btnSave = nullptr, *btnSettings = nullptr;
  QWidget *picScoreFrame = nullptr, *picWeightingFrame = nullptr, *picRatingFrame = nullptr;
  QLabel *lblScores = nullptr, *lblWeightings = nullptr, *lblRatings = nullptr;
  GraphicalButton *btnToggleScore = nullptr, *btnToggleWeightings = nullptr, *btnToggleRatings = nullptr;
  GraphicalButton *btnAddAttribute = nullptr, *btnRemoveAttribute = nullptr;
  GraphicalButton *btnAddOption = nullptr, *btnRemoveOption = nullptr;
  QWidget* shpHighlight = nullptr;   // around the highlighted name; the edit box takes its place
  QWidget* shpHighlight2 = nullptr;  // the band of the highlighted row
  QLabel* highlightedLabel_ = nullptr;
  QLineEdit* txtEditBox = nullptr;
  QWidget* txtHiddenButton = nullptr;  // takes the focus when an edit ends, committing it
  QLabel* editingLabel_ = nullptr;
  int16_t editMode_ = 0;
  QWidget* imgResizeTab = nullptr;
  QWidget* picMask = nullptr;
  QLabel* lblLoading = nullptr;

  std::vector<QLabel*> lblScoreTitle, lblScore, lblAttribute, lblWeighting, lblOption, lblRating;
  std::vector<ctlSlider*> sliderScore, sliderWeighting, sliderRating;
};

}  // namespace tarvelin
