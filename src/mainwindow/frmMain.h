#pragma once

#include <QImage>
#include <QWidget>
#include <memory>

#include "mainwindow/RowControls.h"

class QKeyEvent;
class QLabel;
class QScrollArea;

namespace tarvelin {

class ClientArea;
class CommandRow;
class EntryButtons;
class HoverHighlight;
class InsightDisplay;
class LabelEditor;
class LoadingCover;
class NameLabels;
class PanelLayout;
class ScoreBars;
class TopicHistory;
class ScoreBreakdown;
class ValueDisplay;
class ViewToggles;
class WindowCapture;
class WindowDecoration;

// The main window: the topic's title, the command row and three stacked panels (scores, weightings,
// ratings). It owns the parts that show and edit the topic, wires them together and runs the commands.
class frmMain final : public QWidget {
  Q_OBJECT

 public:
  explicit frmMain(QWidget* parent = nullptr);
  ~frmMain() override;
  Q_DISABLE_COPY_MOVE(frmMain)

  // Finishes the start-up: lays out the controls, loads the file named on the command line, restores the
  // placement and starts a new topic when nothing was loaded. Shows the window.
  void Form_Load();

  // Cover the panels while rows are rebuilt.
  void StartLoad();
  void EndLoad();
  bool IsLoading() const;

  // Brings the control arrays to the topic's counts, fills the names, refreshes every value and lays the
  // window out. RowsChanged is set when rows were created or removed.
  void UpdateSliderArrays(bool& RowsChanged);
  void Form_Resize();
  // Rewrites the title, caption, every slider and value label, the score bars' colours, tooltips and segments
  // and the insight into how robust the best option is from the topic.
  void UpdateSettings();

  // The commands. Load and New ask to save unsaved changes first; New opens the settings dialog when the
  // preference says so and keeps the old topic when it is cancelled.
  void btnNew_Click();
  void btnLoad_Click();
  void btnSave_Click();
  void btnSettings_Click();
  // Ctrl+S, Ctrl+L, Ctrl+Q, Ctrl+N, Ctrl+C and Ctrl+P (the save dialog offering the PDF report first), with
  // Ctrl alone, and the undo keys; true when the key was a shortcut.
  bool Form_KeyDown(QKeyEvent* event);

  // Grabs a clean picture of the client area (no command buttons, toggles, grip or highlight) into
  // picCapture, leaving the window as it was.
  void CaptureWindow();
  const QImage& CapturedPicture() const { return capturedPicture_; }

  const RowControls& Rows() const { return *rows_; }
  const PanelLayout& Panels() const { return *panels_; }
  const ViewToggles& Toggles() const { return *toggles_; }
  const LabelEditor& Editor() const { return *editor_; }
  const WindowDecoration& Decoration() const { return *decoration_; }
  const InsightDisplay& Insight() const { return *insight_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CreateGripAndCover();
  void LayoutCommandRowAndTitle(int ClientWidth);
  void ResizeCanvas(int ContentHeight);
  void imgResizeTab_MouseDown();
  void NewTopic();
  void RebuildAfterCountChange();
  bool UndoKeyDown(QKeyEvent* event);
  void ShowRestoredTopic();
  void SliderEvent(RowControls::SliderArray Array, int16_t Index, RowControls::SliderEvent Event);
  void CopyPictureToClipboard();

  QImage capturedPicture_;  // picCapture's picture

  QScrollArea* scrollArea_ = nullptr;
  ClientArea* client_ = nullptr;
  QLabel* lblTitle = nullptr;  // the command row's, which the name labels and the editor share
  QWidget* imgResizeTab = nullptr;

  std::unique_ptr<TopicHistory> history_;
  std::unique_ptr<CommandRow> commands_;
  std::unique_ptr<RowControls> rows_;
  std::unique_ptr<ViewToggles> toggles_;
  std::unique_ptr<EntryButtons> entries_;
  std::unique_ptr<PanelLayout> panels_;
  std::unique_ptr<HoverHighlight> highlight_;
  std::unique_ptr<ScoreBars> bars_;
  std::unique_ptr<ScoreBreakdown> breakdown_;
  std::unique_ptr<NameLabels> names_;
  std::unique_ptr<ValueDisplay> values_;
  std::unique_ptr<LabelEditor> editor_;
  std::unique_ptr<WindowDecoration> decoration_;
  std::unique_ptr<LoadingCover> cover_;
  std::unique_ptr<WindowCapture> capture_;
  std::unique_ptr<InsightDisplay> insight_;
};

}  // namespace tarvelin
