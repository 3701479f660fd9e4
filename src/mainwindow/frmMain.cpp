#include "mainwindow/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDate>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>
#include <algorithm>

#include "files/modLoadSave.h"
#include "graphics/cDIBSection.h"
#include "insight/TopicInsight.h"
#include "mainwindow/ClientArea.h"
#include "mainwindow/CommandRow.h"
#include "mainwindow/EntryButtons.h"
#include "mainwindow/HoverHighlight.h"
#include "mainwindow/InsightDisplay.h"
#include "mainwindow/LabelEditor.h"
#include "mainwindow/LoadingCover.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/NameLabels.h"
#include "mainwindow/PanelLayout.h"
#include "mainwindow/RowControls.h"
#include "mainwindow/ScoreBars.h"
#include "mainwindow/ScoreBreakdown.h"
#include "mainwindow/TopicHistory.h"
#include "mainwindow/ValueDisplay.h"
#include "mainwindow/ViewToggles.h"
#include "mainwindow/WindowCapture.h"
#include "mainwindow/WindowDecoration.h"
#include "mainwindow/WindowText.h"
#include "mainwindow/modWindowPlacement.h"
#include "platform/qt/DecisionReport.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/modPictureConversion.h"
#include "settingsdialog/frmOptions.h"
#include "startup/modStartup.h"
#include "widgets/GraphicalButton.h"
#include "widgets/Palette.h"

namespace tarvelin {

namespace {

constexpr int kResizeTabSize = 16;
constexpr QSize kDesignSize(880, 700);

TarvelinTopic& Topic() {
  return *Program().Topic;
}

// The report of a topic made today, its numbers written as the window shows them.
std::string TodaysDecisionReport(const TarvelinTopic& Topic, ReportFormat Format) {
  return DecisionReport(Topic, Format, DisplayNumberFormat(), QDate::currentDate());
}

}  // namespace

frmMain::frmMain(QWidget* parent) : QWidget(parent) {
  setObjectName("frmMain");
  setWindowTitle(QString::fromStdString(Program().AppTitle));
  // The window paints its own light decoration, so its text stays dark whatever the desktop's theme.
  setPalette(LightPalette());
  scrollArea_ = new QScrollArea(this);
  scrollArea_->setObjectName("scrollClient");
  scrollArea_->setFrameShape(QFrame::NoFrame);
  scrollArea_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scrollArea_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  client_ = new ClientArea;
  client_->setObjectName("picClient");
  scrollArea_->setWidget(client_);

  history_ = std::make_unique<TopicHistory>([this](bool) { ShowRestoredTopic(); });
  rows_ = std::make_unique<RowControls>(
      client_, [this](RowControls::SliderArray Array, int16_t Index, RowControls::SliderEvent Event) {
        SliderEvent(Array, Index, Event);
      });
  commands_ = std::make_unique<CommandRow>(
      client_, CommandRow::Commands{[this] { btnNew_Click(); }, [this] { btnLoad_Click(); },
                                    [this] { btnSave_Click(); }, [this] { btnSettings_Click(); }});
  lblTitle = commands_->lblTitle;
  toggles_ = std::make_unique<ViewToggles>(client_, [this] { Form_Resize(); });
  entries_ = std::make_unique<EntryButtons>(
      client_, [this] { editor_->CancelLabelEdit(); }, [this] { RebuildAfterCountChange(); });
  panels_ = std::make_unique<PanelLayout>(client_, *rows_, *toggles_, *entries_);
  highlight_ = std::make_unique<HoverHighlight>(client_, *rows_, *panels_, *entries_);
  bars_ = std::make_unique<ScoreBars>(*rows_, *panels_);
  breakdown_ = std::make_unique<ScoreBreakdown>(client_, *rows_);
  names_ = std::make_unique<NameLabels>(lblTitle, *rows_, *bars_, [this] {
    history_->Record();
    insight_->RefreshLine();
  });
  insight_ = std::make_unique<InsightDisplay>(client_, *rows_, *panels_, *toggles_);
  values_ = std::make_unique<ValueDisplay>(
      *rows_, [this](int MergeKey) { history_->Record(MergeKey); }, [this] { UpdateSettings(); });
  editor_ = std::make_unique<LabelEditor>(client_, lblTitle, *rows_, *names_, *values_, *highlight_,
                                          [this](QKeyEvent* event) { return Form_KeyDown(event); });
  decoration_ = std::make_unique<WindowDecoration>(client_, *panels_, *toggles_);
  client_->ShowDecoration(decoration_.get());
  rows_->WatchLabels({editor_.get(), highlight_.get()});
  for (QLabel* heading : {panels_->lblScores, panels_->lblWeightings, panels_->lblRatings}) {
    heading->installEventFilter(editor_.get());
  }
  CreateGripAndCover();
  std::vector<QWidget*> leftOut = commands_->Buttons();
  leftOut.insert(leftOut.end(),
                 std::initializer_list<QWidget*>{imgResizeTab, entries_->btnAddAttribute, entries_->btnAddOption,
                                                 toggles_->btnToggleScore, toggles_->btnToggleWeightings,
                                                 toggles_->btnToggleRatings});
  capture_ = std::make_unique<WindowCapture>(client_, std::move(leftOut), *panels_, *editor_, *highlight_);
  resize(kDesignSize);
  Program().CaptureDisplay = [this](cDIBSection& Picture) {
    CaptureWindow();
    DIBFromImage(capturedPicture_, Picture);
  };
  Program().DecisionReport = TodaysDecisionReport;
}

frmMain::~frmMain() {
  Program().CaptureDisplay = nullptr;
  Program().DecisionReport = nullptr;
}

void frmMain::CreateGripAndCover() {
  imgResizeTab = new QWidget(this);
  imgResizeTab->setObjectName("imgResizeTab");
  imgResizeTab->setCursor(Qt::SizeFDiagCursor);
  imgResizeTab->installEventFilter(this);
  imgResizeTab->resize(kResizeTabSize, kResizeTabSize);

  cover_ = std::make_unique<LoadingCover>(this);
}

void frmMain::Form_Load() {
  Form_Resize();
  const std::string& fileToOpen = Program().FileToOpen;
  const bool loaded = Program().FileTypeToOpen == "TVT" && LoadTopicReportingErrors(fileToOpen, Program().Topic);
  if (loaded) {
    Program().CurrentFileName = fileToOpen;
    Program().Modified = false;
  }
  ApplyPlacement(*this);
  if (!loaded) {
    NewTopic();
  }
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
  history_->Clear();
}

// The commands act on the topic as the person sees it, so an edit still open (a shortcut leaves the focus in
// the edit box) is committed first; the rows it stands over may not survive the command.
void frmMain::btnNew_Click() {
  editor_->txtEditBox_LostFocus();
  if (AskSaveTopicFirst(Program().Topic)) {
    NewTopic();
  }
}

// A new topic of two options and two attributes; the settings dialog may follow. Cancelling it brings the
// previous topic back untouched; loading a topic from it keeps the loaded one.
void frmMain::NewTopic() {
  StartLoad();
  std::unique_ptr<TarvelinTopic> previous = std::move(Program().Topic);
  Program().Topic = std::make_unique<TarvelinTopic>();
  Topic().SetNormaliseWeights(previous ? previous->NormaliseWeights() : false);
  Topic().SetRounding(3);
  Topic().SetTotalAttributes(2);
  Topic().SetTotalOptions(2);
  const std::string previousFileName = Program().CurrentFileName;
  const bool previousModified = Program().Modified;
  Program().CurrentFileName.clear();
  Program().Modified = false;
  auto result = decltype(OptionsOutcome::Result)::Applied;
  if (Program().ShowSettingsOnNew) {
    EndLoad();
    frmOptions options(
        true, [] { return OpenTopicDialog(Program().Topic); }, this);
    result = options.ShowModal().Result;
    StartLoad();
  }
  if (result == decltype(OptionsOutcome::Result)::Cancelled && previous) {
    Program().Topic = std::move(previous);
    Program().CurrentFileName = previousFileName;
    Program().Modified = previousModified;
  } else {
    toggles_->ShowAll();
    history_->Clear();
  }
  EndLoad();
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
}

void frmMain::btnLoad_Click() {
  editor_->txtEditBox_LostFocus();
  if (!AskSaveTopicFirst(Program().Topic) || !OpenTopicDialog(Program().Topic)) {
    return;
  }
  history_->Clear();
  StartLoad();
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
  EndLoad();
  decoration_->RepaintGradients();
}

void frmMain::btnSave_Click() {
  editor_->txtEditBox_LostFocus();
  // Only a save as a topic file clears the modified flag; undoing back to that state clears it again.
  if (SaveTopicDialog(Program().Topic) && !Program().Modified) {
    history_->MarkSaved();
  }
}

void frmMain::btnSettings_Click() {
  editor_->txtEditBox_LostFocus();
  // Everything OK changes is one step; a topic loaded from the dialog starts a fresh history.
  history_->BeginStep();
  frmOptions options(
      false, [] { return OpenTopicDialog(Program().Topic); }, this);
  const bool showedInsight = Program().ShowInsight;
  const OptionsOutcome outcome = options.ShowModal();
  if (outcome.Result == decltype(OptionsOutcome::Result)::TopicLoaded) {
    history_->Clear();
  }
  history_->EndStep();
  // The insight's line changes the score panel's height, so turning it on or off lays the window out again.
  if (outcome.CountsChanged || outcome.Result == decltype(OptionsOutcome::Result)::TopicLoaded ||
      Program().ShowInsight != showedInsight) {
    bool rowsChanged = false;
    UpdateSliderArrays(rowsChanged);
    return;
  }
  UpdateSettings();
  QApplication::processEvents();
  decoration_->RepaintGradients();
}

bool frmMain::Form_KeyDown(QKeyEvent* event) {
  if (UndoKeyDown(event)) {
    return true;
  }
  if (event->modifiers() != Qt::ControlModifier) {
    return false;
  }
  switch (event->key()) {
    case Qt::Key_S:
      btnSave_Click();
      return true;
    case Qt::Key_L:
      btnLoad_Click();
      return true;
    case Qt::Key_Q:
      close();
      return true;
    case Qt::Key_N:
      btnNew_Click();
      return true;
    case Qt::Key_C:
      CopyPictureToClipboard();
      return true;
    case Qt::Key_P:
      editor_->txtEditBox_LostFocus();
      SaveTopicDialog(Program().Topic, DecisionReportPdfEntry);
      return true;
    default:
      return false;
  }
}

// Ctrl+Z undoes; Ctrl+Y and Ctrl+Shift+Z redo. While the edit box is open they belong to its text.
bool frmMain::UndoKeyDown(QKeyEvent* event) {
  if (event->key() != Qt::Key_Z && event->key() != Qt::Key_Y) {
    return false;
  }
  const bool redo = event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier) && event->key() == Qt::Key_Z;
  if ((event->modifiers() != Qt::ControlModifier && !redo) || editor_->EditingLabel() != nullptr) {
    return false;
  }
  if (redo || event->key() == Qt::Key_Y) {
    history_->Redo();
  } else {
    history_->Undo();
  }
  return true;
}

// An undone or redone topic is shown whole: names, values, and rows rebuilt when the counts changed. The
// panels stay as they were.
void frmMain::ShowRestoredTopic() {
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
}

void frmMain::SliderEvent(RowControls::SliderArray Array, int16_t Index, RowControls::SliderEvent Event) {
  switch (Event) {
    case RowControls::SliderEvent::DragStarted:
      history_->BeginStep();
      break;
    case RowControls::SliderEvent::DragEnded:
      history_->EndStep();
      break;
    default:
      values_->SliderMoved(Array, Index, Event == RowControls::SliderEvent::Scrolled);
  }
}

void frmMain::keyPressEvent(QKeyEvent* event) {
  if (!Form_KeyDown(event)) {
    QWidget::keyPressEvent(event);
  }
}

void frmMain::CopyPictureToClipboard() {
  CaptureWindow();
  cDIBSection picture;
  DIBFromImage(capturedPicture_, picture);
  QtClipboard clipboard;
  if (const auto refusal = picture.CopyToClipboard(clipboard)) {
    Program().UI->ShowMessage(*refusal, MsgButtons::OK, MsgIcon::None, Program().AppTitle);
  }
}

void frmMain::CaptureWindow() {
  capturedPicture_ = capture_->Take();
}

void frmMain::StartLoad() {
  cover_->Show();
}

void frmMain::EndLoad() {
  cover_->Hide();
}

bool frmMain::IsLoading() const {
  return cover_->IsShown();
}

void frmMain::UpdateSliderArrays(bool& RowsChanged) {
  RowsChanged = rows_->Resize();
  names_->ShowTopicNames();
  entries_->RefreshAddButtons();
  UpdateSettings();
  Form_Resize();
}

void frmMain::RebuildAfterCountChange() {
  SetModified();
  history_->Record();
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
}

void frmMain::UpdateSettings() {
  names_->SetCaption(lblTitle, Topic().Name());
  setWindowTitle(QString::fromStdString(Program().AppTitle + " - " + Topic().Name()));
  values_->Refresh();
  bars_->ColourScoreBars();
  const TopicInsight insight(Topic());
  breakdown_->Refresh(insight);
  insight_->Refresh(insight);
}

void frmMain::Form_Resize() {
  if (isMinimized() || values_->IsUpdatingControls() || !Program().Topic) {
    return;
  }
  const bool maximised = isMaximized();
  const auto snap =
      SnapToMinimumClientSize({frameGeometry().width(), frameGeometry().height()}, {width(), height()}, maximised);
  if (snap) {
    resize(width() + snap->Width - frameGeometry().width(), height() + snap->Height - frameGeometry().height());
    return;
  }
  imgResizeTab->setVisible(!maximised);
  imgResizeTab->move(width() - kResizeTabSize, height() - kResizeTabSize);
  imgResizeTab->raise();
  scrollArea_->setGeometry(rect());
  if (cover_->IsShown()) {
    cover_->Layout();
  }
  ResizeCanvas(panels_->ContentHeight());
  LayoutCommandRowAndTitle(client_->width());
  panels_->Arrange(client_->width());
  bars_->UpdateScoreBars();
  insight_->Arrange();
  breakdown_->PlaceSwatches();
  highlight_->Clear();
  editor_->FollowLabel();
  decoration_->RepaintGradients();
}

// The title gets the room left of the command buttons and is fitted into it again.
void frmMain::LayoutCommandRowAndTitle(int ClientWidth) {
  commands_->Arrange(ClientWidth);
  if (NameLabels::CaptionOf(lblTitle) != Topic().Name()) {
    names_->SetCaption(lblTitle, Topic().Name());
  } else {
    names_->lblTitle_Change();
  }
}

void frmMain::ResizeCanvas(int ContentHeight) {
  const int viewportHeight = height();
  const bool scrolls = ContentHeight > viewportHeight;
  const int scrollBarWidth = scrolls ? scrollArea_->verticalScrollBar()->sizeHint().width() : 0;
  client_->resize(std::max(0, width() - scrollBarWidth), std::max(viewportHeight, ContentHeight));
  // Beside a scroll bar the grip keeps off the canvas: overlapping it, it would make every scroll repaint
  // the whole view instead of moving it.
  const int overCanvas = client_->width() - imgResizeTab->x();
  if (scrolls && overCanvas > 0 && overCanvas < kResizeTabSize) {
    imgResizeTab->setMask(QRegion(overCanvas, 0, kResizeTabSize - overCanvas, kResizeTabSize));
  } else {
    imgResizeTab->clearMask();
  }
}

void frmMain::imgResizeTab_MouseDown() {
  if (QWindow* window = windowHandle()) {
    window->startSystemResize(Qt::BottomEdge | Qt::RightEdge);
  }
}

void frmMain::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Form_Resize();
}

void frmMain::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange) {
    Form_Resize();
  }
}

void frmMain::closeEvent(QCloseEvent* event) {
  editor_->txtEditBox_LostFocus();
  if (!AskSaveTopicFirst(Program().Topic)) {
    event->ignore();
    return;
  }
  SavePlacement(*this);
  event->accept();
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched == imgResizeTab && event->type() == QEvent::MouseButtonPress) {
    imgResizeTab_MouseDown();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace tarvelin
