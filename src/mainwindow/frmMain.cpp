#include "mainwindow/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>
#include <algorithm>

#include "files/modLoadSave.h"
#include "graphics/cDIBSection.h"
#include "mainwindow/ClientArea.h"
#include "mainwindow/GraphicalButton.h"
#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/ctlSlider.h"
#include "mainwindow/modDecoration.h"
#include "mainwindow/modDisplay.h"
#include "mainwindow/modLabelEditing.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/modPictureConversion.h"
#include "settingsdialog/frmOptions.h"
#include "startup/modSettings.h"
#include "startup/modStartup.h"
#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"
#include "util/modFormElements.h"

namespace tarvelin {

namespace {

constexpr int kRowHeight = 20;         // labels and sliders of every row
constexpr int kNameColumnWidth = 100;  // option and attribute names
constexpr int kValueLabelWidth = 64;
constexpr int kTitleTop = 10;
constexpr int kTitleHeight = 36;
constexpr int kPanelsTop = 56;
constexpr int kPanelMargin = 10;
constexpr int kResizeTabSize = 16;
constexpr uint32_t kBestBarColour = 0x0CC0FE;
constexpr uint32_t kOtherBarColour = 0x0980FD;
constexpr int kHighlightOption = 1;
constexpr int kHighlightAttribute = 2;
constexpr int kEditBoxMaxLength = 255;
constexpr int16_t kNumericEdit = 1;
constexpr int kTwipsPerPixel = 15;  // at the usual 96 pixels per inch
constexpr QSize kDesignSize(880, 700);

const char* const kLabelFont = "Comic Sans MS";

QFont LabelFont(int pointSize, bool bold = false) {
  QFont font(kLabelFont, pointSize);
  font.setBold(bold);
  return font;
}

QString ArrayName(const char* arrayName, size_t index) {
  return QString("%1_%2").arg(arrayName).arg(static_cast<qulonglong>(index));
}

TarvelinTopic& Topic() {
  return *Program().Topic;
}

// A caption shortened with "…" until it fits a width in the label's font.
std::string FittedText(const QLabel* label, const std::string& caption, int width) {
  const QFontMetrics metrics(label->font());
  return FitCaption(
             caption, width,
             [&metrics](std::string_view text) {
               return metrics.horizontalAdvance(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
             })
      .Text;
}

// An option or attribute name shown in the name column; the tooltip numbers the entry from 1 and adds the
// full name unless it is the default one ("Attribute 2: Cost", but "Attribute 2").
void ShowEntryName(QLabel* label, const std::string& noun, int16_t Index, const std::string& caption) {
  label->setText(QString::fromStdString(FittedText(label, caption, kNameColumnWidth - 10)));
  const std::string numbered = noun + " " + std::to_string(Index + 1);
  label->setToolTip(QString::fromStdString(caption == numbered ? caption : numbered + ": " + caption));
}

// The names of a topic's options or attributes, for choosing the next default name.
std::vector<std::string> NamesOf(int16_t Count, const std::function<std::string(int16_t)>& NameOf) {
  std::vector<std::string> names;
  for (int16_t i = 0; i < Count; ++i) {
    names.push_back(NameOf(i));
  }
  return names;
}

size_t IndexOf(const std::vector<QLabel*>& labels, const QLabel* label) {
  return static_cast<size_t>(std::find(labels.begin(), labels.end(), label) - labels.begin());
}

}  // namespace

frmMain::frmMain(QWidget* parent) : QWidget(parent) {
  setObjectName("frmMain");
  setWindowTitle(QString::fromStdString(Program().AppTitle));
  scrollArea_ = new QScrollArea(this);
  scrollArea_->setObjectName("scrollClient");
  scrollArea_->setFrameShape(QFrame::NoFrame);
  scrollArea_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scrollArea_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  client_ = new ClientArea(persistentImage_);
  client_->setObjectName("picClient");
  client_->installEventFilter(this);
  scrollArea_->setWidget(client_);
  CreateFixedControls();
  resize(kDesignSize);
  Program().CaptureDisplay = [this](cDIBSection& Picture) {
    CaptureWindow();
    DIBFromImage(capturedPicture_, Picture);
  };
}

frmMain::~frmMain() {
  Program().CaptureDisplay = nullptr;
}

QLabel* frmMain::CreateLabel(const QString& objectName, const QFont& font, Qt::Alignment alignment) {
  auto* label = new QLabel(client_);
  label->setObjectName(objectName);
  label->setFont(font);
  label->setAlignment(alignment | Qt::AlignVCenter);
  label->setMouseTracking(true);
  label->installEventFilter(this);
  return label;
}

ctlSlider* frmMain::CreateSlider(const QString& objectName, bool readOnly) {
  auto* slider = new ctlSlider(client_);
  slider->setObjectName(objectName);
  slider->SetReadOnly(readOnly);
  return slider;
}

void frmMain::CreateFixedControls() {
  shpHighlight2 = new QWidget(client_);
  shpHighlight2->setObjectName("shpHighlight2");
  shpHighlight2->setAttribute(Qt::WA_TransparentForMouseEvents);
  shpHighlight2->setStyleSheet("background-color: rgba(255, 236, 150, 110); border-radius: 6px;");
  shpHighlight2->hide();
  shpHighlight = new QWidget(client_);
  shpHighlight->setObjectName("shpHighlight");
  shpHighlight->setAttribute(Qt::WA_TransparentForMouseEvents);
  shpHighlight->setStyleSheet("background-color: rgba(255, 214, 90, 140); border-radius: 4px;");
  shpHighlight->hide();

  lblTitle = CreateLabel("lblTitle", LabelFont(16, true), Qt::AlignLeft);
  lblTitle->setText("Topic Title");
  lblTitle->setGeometry(kPanelMargin, kTitleTop, 300, kTitleHeight);
  CreateCommandRow();

  CreatePanel(picScoreFrame, lblScores, btnToggleScore, "picScoreFrame", "lblScores", "Scores", "btnToggleScore");
  CreatePanel(picWeightingFrame, lblWeightings, btnToggleWeightings, "picWeightingFrame", "lblWeightings", "Weightings",
              "btnToggleWeightings");
  CreatePanel(picRatingFrame, lblRatings, btnToggleRatings, "picRatingFrame", "lblRatings", "Ratings",
              "btnToggleRatings");
  connect(btnToggleScore, &QAbstractButton::clicked, this, [this] { btnToggleScore_Click(); });
  connect(btnToggleWeightings, &QAbstractButton::clicked, this, [this] { btnToggleWeightings_Click(); });
  connect(btnToggleRatings, &QAbstractButton::clicked, this, [this] { btnToggleRatings_Click(); });

  const auto makeButton = [this](const char* name, const char* text, ButtonPicture picture) {
    auto* button = new GraphicalButton(client_);
    button->setObjectName(name);
    button->setText(text);
    button->SetPicture(picture);
    button->setFont(LabelFont(9));
    button->resize(button->sizeHint());
    return button;
  };
  btnAddAttribute = makeButton("btnAddAttribute", "Add Attribute", ButtonPicture::Add);
  btnAddOption = makeButton("btnAddOption", "Add Option", ButtonPicture::Add);
  btnRemoveAttribute = makeButton("btnRemoveAttribute", "", ButtonPicture::Delete);
  btnRemoveOption = makeButton("btnRemoveOption", "", ButtonPicture::Delete);
  for (auto* remove : {btnRemoveAttribute, btnRemoveOption}) {
    remove->resize(kRowHeight, kRowHeight);
    remove->hide();
  }
  btnRemoveAttribute->setToolTip("Delete Attribute");
  btnRemoveOption->setToolTip("Delete Option");
  connect(btnAddAttribute, &QAbstractButton::clicked, this, [this] { btnAddAttribute_Click(); });
  connect(btnAddOption, &QAbstractButton::clicked, this, [this] { btnAddOption_Click(); });
  connect(btnRemoveAttribute, &QAbstractButton::clicked, this, [this] { btnRemoveAttribute_Click(); });
  connect(btnRemoveOption, &QAbstractButton::clicked, this, [this] { btnRemoveOption_Click(); });
  RefreshToggleButtons();

  txtEditBox = new QLineEdit(client_);
  txtEditBox->setObjectName("txtEditBox");
  txtEditBox->setFrame(false);
  txtEditBox->setMaxLength(kEditBoxMaxLength);
  txtEditBox->installEventFilter(this);
  txtEditBox->hide();
  txtHiddenButton = new QWidget(client_);
  txtHiddenButton->setObjectName("txtHiddenButton");
  txtHiddenButton->setFocusPolicy(Qt::StrongFocus);
  txtHiddenButton->setGeometry(0, 0, 0, 0);

  imgResizeTab = new QWidget(this);
  imgResizeTab->setObjectName("imgResizeTab");
  imgResizeTab->setCursor(Qt::SizeFDiagCursor);
  imgResizeTab->installEventFilter(this);
  imgResizeTab->resize(kResizeTabSize, kResizeTabSize);

  picMask = new QWidget(this);
  picMask->setObjectName("picMask");
  picMask->setAutoFillBackground(true);
  lblLoading = new QLabel("Loading...", picMask);
  lblLoading->setObjectName("lblLoading");
  lblLoading->setFont(LabelFont(20, true));
  lblLoading->adjustSize();
  picMask->hide();
}

void frmMain::CreateCommandRow() {
  const auto makeCommand = [this](const char* name, const char* text, ButtonPicture picture) {
    auto* button = new GraphicalButton(client_);
    button->setObjectName(name);
    button->setText(text);
    button->SetPicture(picture);
    button->setFont(LabelFont(10));
    button->resize(button->sizeHint().width(), kTitleHeight);
    button->move(0, kTitleTop);
    return button;
  };
  btnNew = makeCommand("btnNew", "Start New Topic", ButtonPicture::New);
  btnLoad = makeCommand("btnLoad", "Load Topic", ButtonPicture::Load);
  btnSave = makeCommand("btnSave", "Save Topic", ButtonPicture::Save);
  btnSettings = makeCommand("btnSettings", "Change Tarvelin Settings", ButtonPicture::Settings);
  connect(btnNew, &QAbstractButton::clicked, this, [this] { btnNew_Click(); });
  connect(btnLoad, &QAbstractButton::clicked, this, [this] { btnLoad_Click(); });
  connect(btnSave, &QAbstractButton::clicked, this, [this] { btnSave_Click(); });
  connect(btnSettings, &QAbstractButton::clicked, this, [this] { btnSettings_Click(); });
}

void frmMain::CreatePanel(QWidget*& frame, QLabel*& heading, GraphicalButton*& toggle, const char* frameName,
                          const char* headingName, const char* headingText, const char* toggleName) {
  // The panels are painted into the window's persistent image; the frames themselves stay hidden and only
  // hold the panels' geometry.
  frame = new QWidget(client_);
  frame->setObjectName(frameName);
  frame->hide();
  heading = CreateLabel(headingName, LabelFont(12, true), Qt::AlignLeft);
  heading->setText(headingText);
  heading->resize(heading->sizeHint().width() + 10, 24);
  toggle = new GraphicalButton(client_);
  toggle->setObjectName(toggleName);
  toggle->setFont(LabelFont(9));
}

void frmMain::Form_Load() {
  Form_Resize();
  const std::string& fileToOpen = Program().FileToOpen;
  const bool loaded = Program().FileTypeToOpen == "TVT" && LoadTopicReportingErrors(fileToOpen, Program().Topic);
  if (loaded) {
    Program().CurrentFileName = fileToOpen;
    Program().Modified = false;
  }
  ApplyPlacement();
  if (!loaded) {
    NewTopic();
  }
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
}

// The stored placement is in twips. Qt places the frame but sizes the client area, so the size stored is the
// client's: it then comes back exactly as it was left.
void frmMain::ApplyPlacement() {
  const QSize screen = this->screen() ? this->screen()->availableGeometry().size() : QSize(1280, 1024);
  SettingsDefaults defaults;
  defaults.DesignWidth = width() * kTwipsPerPixel;
  defaults.DesignHeight = height() * kTwipsPerPixel;
  defaults.ScreenWidth = screen.width() * kTwipsPerPixel;
  defaults.ScreenHeight = screen.height() * kTwipsPerPixel;
  const WindowPlacement placement = ReadWindowPlacement(defaults);
  resize(placement.Width / kTwipsPerPixel, placement.Height / kTwipsPerPixel);
  move(placement.Left / kTwipsPerPixel, placement.Top / kTwipsPerPixel);
  if (placement.Maximized) {
    showMaximized();
  } else {
    show();
  }
}

void frmMain::SavePlacement() {
  const QRect normal = isMaximized() ? normalGeometry() : geometry();
  const QPoint topLeft = isMaximized() ? normal.topLeft() : frameGeometry().topLeft();
  WindowPlacement placement;
  placement.Width = normal.width() * kTwipsPerPixel;
  placement.Height = normal.height() * kTwipsPerPixel;
  placement.Left = topLeft.x() * kTwipsPerPixel;
  placement.Top = topLeft.y() * kTwipsPerPixel;
  placement.Maximized = isMaximized();
  SaveSettings(placement);
}

// The commands act on the topic as the person sees it, so an edit still open (a shortcut leaves the focus in
// the edit box) is committed first; the rows it stands over may not survive the command.
void frmMain::btnNew_Click() {
  txtEditBox_LostFocus();
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
    showScores_ = showWeightings_ = showRatings_ = true;
    RefreshToggleButtons();
  }
  EndLoad();
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
}

void frmMain::btnLoad_Click() {
  txtEditBox_LostFocus();
  if (!AskSaveTopicFirst(Program().Topic) || !OpenTopicDialog(Program().Topic)) {
    return;
  }
  StartLoad();
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
  EndLoad();
  RepaintGradients();
}

void frmMain::btnSave_Click() {
  txtEditBox_LostFocus();
  SaveTopicDialog(Program().Topic);
}

void frmMain::btnSettings_Click() {
  txtEditBox_LostFocus();
  frmOptions options(
      false, [] { return OpenTopicDialog(Program().Topic); }, this);
  const OptionsOutcome outcome = options.ShowModal();
  if (outcome.CountsChanged || outcome.Result == decltype(OptionsOutcome::Result)::TopicLoaded) {
    bool rowsChanged = false;
    UpdateSliderArrays(rowsChanged);
    return;
  }
  busy_ = true;
  UpdateSettings();
  QApplication::processEvents();
  RepaintGradients();
  busy_ = false;
}

bool frmMain::Form_KeyDown(QKeyEvent* event) {
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
    default:
      return false;
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
  picture.CopyToClipboard(clipboard);
}

void frmMain::CaptureWindow() {
  const std::vector<QWidget*> hidden = {
      btnSave,         btnLoad,      btnNew,         btnSettings,         imgResizeTab,
      btnAddAttribute, btnAddOption, btnToggleScore, btnToggleWeightings, btnToggleRatings};
  std::vector<QWidget*> wasVisible;
  for (QWidget* control : hidden) {
    if (control->isVisible()) {
      wasVisible.push_back(control);
      control->hide();
    }
  }
  const QPoint weightingsHeading = lblWeightings->pos();
  const QPoint ratingsHeading = lblRatings->pos();
  lblWeightings->move(picWeightingFrame->x() + 10, weightingsHeading.y());
  lblRatings->move(picRatingFrame->x() + 10, ratingsHeading.y());
  QLabel* editing = EditingLabel();
  const QString editText = txtEditBox->text();
  txtEditBox->hide();
  PlaceHighlight(nullptr, 0);
  capturedPicture_ = client_->grab().toImage();
  for (QWidget* control : wasVisible) {
    control->show();
  }
  lblWeightings->move(weightingsHeading);
  lblRatings->move(ratingsHeading);
  if (editing != nullptr) {
    txtEditBox->setGeometry(editing->geometry());
    txtEditBox->setText(editText);
    txtEditBox->show();
    txtEditBox->setFocus(Qt::OtherFocusReason);
  }
}

int16_t frmMain::TranslateToIndex(int16_t OptionID, int16_t AttributeID) const {
  return static_cast<int16_t>(OptionID * Topic().TotalAttributes() + AttributeID);
}

int16_t frmMain::GetOptionIDFromIndex(int16_t Index, bool UseControlValues) const {
  const int divisor = UseControlValues ? static_cast<int>(lblWeighting.size()) : Topic().TotalAttributes();
  return static_cast<int16_t>(Index / divisor);
}

int16_t frmMain::GetAttributeIDFromIndex(int16_t Index, bool UseControlValues) const {
  const int divisor = UseControlValues ? static_cast<int>(lblWeighting.size()) : Topic().TotalAttributes();
  return static_cast<int16_t>(Index % divisor);
}

void frmMain::StartLoad() {
  loading_ = true;
  Program().IsLoading = true;
  LayoutCover();
  picMask->show();
  picMask->raise();
  picMask->repaint();
}

void frmMain::EndLoad() {
  picMask->hide();
  loading_ = false;
  Program().IsLoading = false;
}

void frmMain::LayoutCover() {
  picMask->setGeometry(rect());
  lblLoading->move((picMask->width() - lblLoading->width()) / 2, (picMask->height() - lblLoading->height()) / 2);
  QPalette palette = picMask->palette();
  palette.setBrush(QPalette::Window, CoverBrush(picMask->size()));
  picMask->setPalette(palette);
}

void frmMain::UpdateSliderArrays(bool& RowsChanged) {
  const size_t optionsBefore = lblOption.size();
  const size_t attributesBefore = lblAttribute.size();
  ResizeArrays();
  RowsChanged = optionsBefore != lblOption.size() || attributesBefore != lblAttribute.size();
  for (int16_t a = 0; a < Topic().TotalAttributes(); ++a) {
    SetCaption(lblAttribute[static_cast<size_t>(a)], Topic().GetAttributeName(a));
  }
  for (int16_t o = 0; o < Topic().TotalOptions(); ++o) {
    SetCaption(lblOption[static_cast<size_t>(o)], Topic().GetOptionName(o));
    SetCaption(lblScoreTitle[static_cast<size_t>(o)], Topic().GetOptionName(o));
  }
  RefreshAddButtons();
  UpdateSettings();
  Form_Resize();
}

// Grows or shrinks every control array to the topic's counts. Controls are created on first use and
// removed when the topic no longer has their row.
void frmMain::ResizeArrays() {
  const auto options = static_cast<size_t>(Topic().TotalOptions());
  const auto attributes = static_cast<size_t>(Topic().TotalAttributes());
  const auto resizeLabels = [this](std::vector<QLabel*>& labels, const char* name, size_t count, const QFont& font,
                                   Qt::Alignment alignment) {
    while (labels.size() > count) {
      delete labels.back();
      labels.pop_back();
    }
    while (labels.size() < count) {
      labels.push_back(CreateLabel(ArrayName(name, labels.size()), font, alignment));
      labels.back()->show();
    }
  };
  const auto resizeSliders = [this](std::vector<ctlSlider*>& sliders, const char* name, size_t count, bool readOnly,
                                    void (frmMain::*handler)(int16_t)) {
    while (sliders.size() > count) {
      delete sliders.back();
      sliders.pop_back();
    }
    while (sliders.size() < count) {
      const auto index = static_cast<int16_t>(sliders.size());
      auto* slider = CreateSlider(ArrayName(name, sliders.size()), readOnly);
      if (handler != nullptr) {
        // Change is passed on only when the window is not writing the sliders itself; Scroll always.
        connect(slider, &ctlSlider::Change, this, [this, handler, index] {
          if (!isUpdatingControls_) {
            (this->*handler)(index);
          }
        });
        connect(slider, &ctlSlider::Scroll, this, [this, handler, index] { (this->*handler)(index); });
      }
      slider->show();
      sliders.push_back(slider);
    }
  };
  const QFont names = LabelFont(10);
  const QFont values = LabelFont(10);
  resizeLabels(lblScoreTitle, "lblScoreTitle", options, names, Qt::AlignLeft);
  resizeSliders(sliderScore, "sliderScore", options, true, nullptr);
  resizeLabels(lblScore, "lblScore", options, values, Qt::AlignRight);
  resizeLabels(lblAttribute, "lblAttribute", attributes, names, Qt::AlignLeft);
  resizeSliders(sliderWeighting, "sliderWeighting", attributes, false, &frmMain::sliderWeighting_Change);
  resizeLabels(lblWeighting, "lblWeighting", attributes, values, Qt::AlignRight);
  resizeLabels(lblOption, "lblOption", options, LabelFont(10, true), Qt::AlignLeft);
  resizeSliders(sliderRating, "sliderRating", options * attributes, false, &frmMain::sliderRating_Change);
  resizeLabels(lblRating, "lblRating", options * attributes, values, Qt::AlignRight);
}

int frmMain::ScoreRowStep() const {
  return kRowHeight;
}

int frmMain::WeightingExtent() const {
  return RowExtent(Topic().TotalAttributes(), kRowHeight);
}

int frmMain::RatingExtent() const {
  return RowExtent(Topic().TotalAttributes(), kRowHeight);
}

int frmMain::ClientWidth() const {
  return client_->width();
}

void frmMain::Form_Resize() {
  if (isMinimized() || isUpdatingControls_ || !Program().Topic) {
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
  if (loading_) {
    LayoutCover();
  }

  const int headingHeight = lblScores->height();
  const int scoreHeight = ScorePanelHeight(Topic().TotalOptions(), ScoreRowStep(), headingHeight, showScores_);
  const int weightingHeight = WeightingPanelHeight(WeightingExtent(), headingHeight, kRowHeight, showWeightings_);
  const int ratingHeight =
      RatingPanelHeight(Topic().TotalOptions(), RatingExtent(), kRowHeight, headingHeight, showRatings_);
  const int contentHeight = kPanelsTop + scoreHeight + weightingHeight + ratingHeight + 3 * kPanelMargin;
  ResizeCanvas(contentHeight);

  const int clientWidth = ClientWidth();
  const auto lefts =
      LayoutCommandRow(clientWidth, btnNew->width(), btnLoad->width(), btnSave->width(), btnSettings->width());
  btnSettings->move(lefts.Settings, kTitleTop);
  btnSave->move(lefts.Save, kTitleTop);
  btnLoad->move(lefts.Load, kTitleTop);
  btnNew->move(lefts.New, kTitleTop);
  lblTitle->resize(std::max(0, lefts.New - 10 - lblTitle->x()), kTitleHeight);
  if (lblTitle->property("tag").toString().toStdString() != Topic().Name()) {
    SetCaption(lblTitle, Topic().Name());
  } else {
    lblTitle_Change();
  }

  const int panelWidth = clientWidth - 2 * kPanelMargin;
  picScoreFrame->setGeometry(kPanelMargin, kPanelsTop, panelWidth, scoreHeight);
  const int weightingTop = kPanelsTop + scoreHeight + kPanelMargin;
  picWeightingFrame->setGeometry(kPanelMargin, weightingTop, panelWidth, weightingHeight);
  const int ratingTop = weightingTop + weightingHeight + kPanelMargin;
  picRatingFrame->setGeometry(kPanelMargin, ratingTop, panelWidth, ratingHeight);

  PlacePanelHeading(picScoreFrame, lblScores, btnToggleScore, nullptr, kPanelsTop, showScores_);
  PlacePanelHeading(picWeightingFrame, lblWeightings, btnToggleWeightings, btnAddAttribute, weightingTop,
                    showWeightings_);
  PlacePanelHeading(picRatingFrame, lblRatings, btnToggleRatings, btnAddOption, ratingTop, showRatings_);
  PlaceScoreRows(kPanelsTop, panelWidth);
  PlaceWeightingRows(weightingTop, panelWidth);
  PlaceRatingRows(ratingTop, panelWidth);
  PlaceHighlight(nullptr, 0);
  if (txtEditBox->isVisible() && editingLabel_ != nullptr) {
    txtEditBox->setGeometry(editingLabel_->geometry());
  }
  RepaintGradients();
}

void frmMain::ResizeCanvas(int contentHeight) {
  const int viewportHeight = height();
  const bool scrolls = contentHeight > viewportHeight;
  const int scrollBarWidth = scrolls ? scrollArea_->verticalScrollBar()->sizeHint().width() : 0;
  client_->resize(std::max(0, width() - scrollBarWidth), std::max(viewportHeight, contentHeight));
}

// The heading stands 5 pixels below the panel's top: beside the add button while the panel is expanded
// (the button then stands where the heading would), at the panel's left edge when it is collapsed.
void frmMain::PlacePanelHeading(QWidget* frame, QLabel* heading, GraphicalButton* toggle, GraphicalButton* add, int top,
                                bool expanded) {
  const int left = frame->x();
  const bool showAdd = add != nullptr && expanded;
  if (add != nullptr) {
    add->move(left + 10, top + 5);
    add->setVisible(showAdd);
  }
  heading->move(showAdd ? add->x() + add->width() + 5 : left + 10, top + 5);
  toggle->resize(toggle->sizeHint().width(), heading->height());
  toggle->move(left + frame->width() - toggle->width() - 10, top + 5);
}

void frmMain::PlaceScoreRows(int panelTop, int panelWidth) {
  const int rowsTop = panelTop + FirstRowOffset(lblScores->height());
  for (size_t i = 0; i < lblScoreTitle.size(); ++i) {
    const int top = rowsTop + static_cast<int>(i) * RowStep(ScoreRowStep());
    lblScoreTitle[i]->setGeometry(kPanelMargin + 10, top, kNameColumnWidth, kRowHeight);
    lblScore[i]->resize(kValueLabelWidth, kRowHeight);
    const int sliderWidth = panelWidth - 50 - kNameColumnWidth - lblScore[i]->width();
    sliderScore[i]->setGeometry(kPanelMargin + 10 + kNameColumnWidth + 10, top, sliderWidth, kRowHeight);
    lblScore[i]->move(sliderScore[i]->x() + sliderWidth + 10, top);
    for (QWidget* control : {static_cast<QWidget*>(lblScoreTitle[i]), static_cast<QWidget*>(sliderScore[i]),
                             static_cast<QWidget*>(lblScore[i])}) {
      control->setVisible(showScores_);
    }
  }
  UpdateScoreBars();
}

void frmMain::PlaceWeightingRows(int panelTop, int panelWidth) {
  const int column = kPanelMargin + 10;
  const int rowsTop = panelTop + FirstRowOffset(lblWeightings->height());
  const int sliderLeft = column + kNameColumnWidth + 30;
  const int sliderWidth = panelWidth - (sliderLeft - kPanelMargin) - kValueLabelWidth - 20;
  for (size_t a = 0; a < lblAttribute.size(); ++a) {
    const int top = rowsTop + static_cast<int>(a) * RowStep(kRowHeight);
    lblAttribute[a]->setGeometry(column, top, kNameColumnWidth, kRowHeight);
    sliderWeighting[a]->setGeometry(sliderLeft, top, sliderWidth, kRowHeight);
    lblWeighting[a]->setGeometry(sliderLeft + sliderWidth + 10, top, kValueLabelWidth, kRowHeight);
    for (QWidget* control : {static_cast<QWidget*>(lblAttribute[a]), static_cast<QWidget*>(sliderWeighting[a]),
                             static_cast<QWidget*>(lblWeighting[a])}) {
      control->setVisible(showWeightings_);
    }
  }
}

void frmMain::PlaceRatingRows(int panelTop, int panelWidth) {
  const int column = kPanelMargin + 10;
  const int sliderLeft = column + kNameColumnWidth + 30;
  const int sliderWidth = panelWidth - (sliderLeft - kPanelMargin) - kValueLabelWidth - 20;
  const auto attributes = static_cast<size_t>(Topic().TotalAttributes());
  for (size_t o = 0; o < lblOption.size(); ++o) {
    const int blockTop =
        panelTop + RatingBlockOffset(static_cast<int>(o), RatingExtent(), kRowHeight, lblRatings->height());
    lblOption[o]->setGeometry(column + 20, blockTop, kNameColumnWidth, kRowHeight);
    lblOption[o]->setVisible(showRatings_);
    for (size_t a = 0; a < attributes; ++a) {
      const auto i = static_cast<size_t>(TranslateToIndex(static_cast<int16_t>(o), static_cast<int16_t>(a)));
      const int top = blockTop + static_cast<int>(a) * RowStep(kRowHeight);
      sliderRating[i]->setGeometry(sliderLeft, top, sliderWidth, kRowHeight);
      lblRating[i]->setGeometry(sliderLeft + sliderWidth + 10, top, kValueLabelWidth, kRowHeight);
      sliderRating[i]->setVisible(showRatings_);
      lblRating[i]->setVisible(showRatings_);
      // The rows of a block carry no attribute names of their own; the tooltip tells which rating it is.
      sliderRating[i]->setToolTip(QString::fromStdString(Topic().GetOptionName(static_cast<int16_t>(o)) + ": " +
                                                         Topic().GetAttributeName(static_cast<int16_t>(a))));
    }
  }
}

void frmMain::UpdateScoreBars() {
  const int available = picScoreFrame->width() - kValueLabelWidth - 20 - 110;
  const int fitWidth = available - available / 2 + 100;
  int widest = 0;
  for (size_t i = 0; i < lblScoreTitle.size(); ++i) {
    QLabel* title = lblScoreTitle[i];
    const std::string name = Topic().GetOptionName(static_cast<int16_t>(i));
    const QFontMetrics metrics(title->font());
    const auto fitted = FitCaption(name, fitWidth, [&metrics](std::string_view text) {
      return metrics.horizontalAdvance(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    });
    title->setText(QString::fromStdString(fitted.Text));
    widest = std::max(widest, metrics.horizontalAdvance(title->text()));
    const QString number = QString::number(i + 1);
    title->setToolTip(fitted.Text != name
                          ? QString("Scores for option %1: %2").arg(number, QString::fromStdString(name))
                          : QString("Scores for option %1").arg(number));
  }
  const int titleColumn = std::max(widest, 100);
  for (size_t i = 0; i < lblScoreTitle.size(); ++i) {
    const int top = lblScoreTitle[i]->y();
    const int barsLeft = kPanelMargin + 10 + titleColumn + 10;
    lblScoreTitle[i]->setGeometry(kPanelMargin + 10, top, titleColumn, kRowHeight);
    const int barWidth = picScoreFrame->width() - (barsLeft - kPanelMargin) - kValueLabelWidth - 20;
    sliderScore[i]->setGeometry(barsLeft, top, std::max(0, barWidth), kRowHeight);
    lblScore[i]->setGeometry(barsLeft + std::max(0, barWidth) + 10, top, kValueLabelWidth, kRowHeight);
  }
}

void frmMain::UpdateSettings() {
  isUpdatingControls_ = true;
  TarvelinTopic& topic = Topic();
  const int16_t rounding = topic.Rounding();
  const bool decimal = Program().DisplayAsDecimal;
  const auto format = [&](double value) {
    return QString::fromStdString(
        FormatNumberForDisplay(value, rounding, decimal, QLocale().decimalPoint().toStdString()));
  };
  SetCaption(lblTitle, topic.Name());
  setWindowTitle(QString::fromStdString(Program().AppTitle + " - " + topic.Name()));
  for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
    const double weighting = topic.GetWeighting(a);
    sliderWeighting[static_cast<size_t>(a)]->SetValue(static_cast<int>(std::lround(weighting * 100)));
    lblWeighting[static_cast<size_t>(a)]->setText(format(weighting));
  }
  for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
    for (int16_t a = 0; a < topic.TotalAttributes(); ++a) {
      const auto i = static_cast<size_t>(TranslateToIndex(o, a));
      const double rating = topic.GetRating(o, a);
      sliderRating[i]->SetValue(static_cast<int>(std::lround(rating * 100)));
      lblRating[i]->setText(format(rating));
    }
  }
  std::vector<double> scores;
  int16_t best = 0;
  for (int16_t o = 0; o < topic.TotalOptions(); ++o) {
    scores.push_back(topic.GetScore(o));
    if (scores.back() > scores[static_cast<size_t>(best)]) {
      best = o;
    }
  }
  for (size_t o = 0; o < scores.size(); ++o) {
    sliderScore[o]->SetValue(static_cast<int>(std::lround(scores[o] * 100)));
    lblScore[o]->setText(format(scores[o]));
    // Every option tied with the best shares its colour, although only one index was recorded.
    sliderScore[o]->SetBarColour(scores[o] == scores[static_cast<size_t>(best)] ? kBestBarColour : kOtherBarColour);
  }
  isUpdatingControls_ = false;
}

// Sets a label's text and runs the change handler of its array, as a caption change does.
void frmMain::SetCaption(QLabel* label, const std::string& text) {
  const QString caption = QString::fromStdString(text);
  const bool changed = label->property("tag").toString() != caption;
  label->setProperty("tag", caption);
  if (!changed && label != lblTitle) {
    return;
  }
  if (label == lblTitle) {
    lblTitle_Change();
    return;
  }
  const auto dispatch = [&](std::vector<QLabel*>& labels, void (frmMain::*handler)(int16_t)) {
    const auto found = std::find(labels.begin(), labels.end(), label);
    if (found != labels.end()) {
      (this->*handler)(static_cast<int16_t>(found - labels.begin()));
      return true;
    }
    return false;
  };
  dispatch(lblOption, &frmMain::lblOption_Change) || dispatch(lblAttribute, &frmMain::lblAttribute_Change) ||
      dispatch(lblScoreTitle, &frmMain::lblScoreTitle_Change);
}

void frmMain::lblTitle_Change() {
  if (inTitleChange_) {
    return;
  }
  inTitleChange_ = true;
  const std::string caption = lblTitle->property("tag").toString().toStdString();
  if (caption != Topic().Name()) {
    SetModified();
    Topic().SetName(caption);
  }
  const std::string fitted = FittedText(lblTitle, caption, lblTitle->width());
  lblTitle->setText(QString::fromStdString(fitted));
  lblTitle->setToolTip(fitted != caption ? QString::fromStdString(caption) : QString());
  setWindowTitle(QString::fromStdString(Program().AppTitle + " - " + Topic().Name()));
  inTitleChange_ = false;
}

void frmMain::lblOption_Change(int16_t Index) {
  if (inOptionChange_ || Index >= Topic().TotalOptions()) {
    return;
  }
  inOptionChange_ = true;
  QLabel* label = lblOption[static_cast<size_t>(Index)];
  const std::string caption = label->property("tag").toString().toStdString();
  if (Topic().GetOptionName(Index) != caption) {
    SetModified();
  }
  Topic().SetOptionName(Index, caption);
  ShowEntryName(label, "Option", Index, caption);
  // The score bar is titled with the same name, renamed here wherever the name was edited.
  if (static_cast<size_t>(Index) < lblScoreTitle.size()) {
    SetCaption(lblScoreTitle[static_cast<size_t>(Index)], caption);
  }
  inOptionChange_ = false;
}

void frmMain::lblAttribute_Change(int16_t Index) {
  if (inAttributeChange_ || Index >= Topic().TotalAttributes()) {
    return;
  }
  inAttributeChange_ = true;
  QLabel* label = lblAttribute[static_cast<size_t>(Index)];
  const std::string caption = label->property("tag").toString().toStdString();
  if (Topic().GetAttributeName(Index) != caption) {
    SetModified();
  }
  Topic().SetAttributeName(Index, caption);
  ShowEntryName(label, "Attribute", Index, caption);
  inAttributeChange_ = false;
}

void frmMain::lblScoreTitle_Change(int16_t Index) {
  if (inScoreTitleChange_ || Index >= Topic().TotalOptions()) {
    return;
  }
  inScoreTitleChange_ = true;
  UpdateScoreBars();
  inScoreTitleChange_ = false;
}

void frmMain::sliderWeighting_Change(int16_t Index) {
  Topic().SetWeighting(Index, sliderWeighting[static_cast<size_t>(Index)]->Value() / 100.0);
  SetModified();
  UpdateSettings();
  lblWeighting[static_cast<size_t>(Index)]->repaint();
}

void frmMain::sliderRating_Change(int16_t Index) {
  Topic().SetRating(GetOptionIDFromIndex(Index), GetAttributeIDFromIndex(Index),
                    sliderRating[static_cast<size_t>(Index)]->Value() / 100.0);
  SetModified();
  UpdateSettings();
  lblRating[static_cast<size_t>(Index)]->repaint();
}

void frmMain::RefreshToggleButtons() {
  const auto refresh = [](GraphicalButton* button, bool expanded, const char* hide, const char* show) {
    button->SetPicture(expanded ? ButtonPicture::Collapse : ButtonPicture::Expand);
    button->setText(expanded ? hide : show);
  };
  refresh(btnToggleScore, showScores_, "Hide Scores", "Show Scores");
  refresh(btnToggleWeightings, showWeightings_, "Hide Weightings", "Show Weightings");
  refresh(btnToggleRatings, showRatings_, "Hide Ratings", "Show Ratings");
}

void frmMain::btnToggleScore_Click() {
  showScores_ = !showScores_;
  RefreshToggleButtons();
  Form_Resize();
}

void frmMain::btnToggleWeightings_Click() {
  showWeightings_ = !showWeightings_;
  RefreshToggleButtons();
  Form_Resize();
}

void frmMain::btnToggleRatings_Click() {
  showRatings_ = !showRatings_;
  RefreshToggleButtons();
  Form_Resize();
}

// Lays the highlight around the name under the mouse and over its row (for an option, its whole block of
// ratings), and brings the delete button of that row beside the name; without a label it hides them.
void frmMain::PlaceHighlight(QLabel* label, int kind) {
  btnRemoveAttribute->hide();
  btnRemoveOption->hide();
  highlightedLabel_ = nullptr;
  if (kind != kHighlightAttribute && kind != kHighlightOption) {
    shpHighlight->hide();
    shpHighlight2->hide();
    return;
  }
  const bool attribute = kind == kHighlightAttribute;
  QWidget* panel = attribute ? picWeightingFrame : picRatingFrame;
  const int rowsHeight = attribute ? kRowHeight : RatingExtent() + kRowHeight;
  shpHighlight2->setGeometry(panel->x() + 4, label->y() - 2, panel->width() - 8, rowsHeight + 4);
  shpHighlight->setGeometry(label->geometry());
  GraphicalButton* remove = attribute ? btnRemoveAttribute : btnRemoveOption;
  if (attribute) {
    highlightedAttribute_ = static_cast<int16_t>(IndexOf(lblAttribute, label));
    remove->move(label->x() + kNameColumnWidth + 5, label->y());
  } else {
    highlightedOption_ = static_cast<int16_t>(IndexOf(lblOption, label));
    remove->move(label->x() - 20, label->y());
  }
  remove->setVisible(attribute ? Topic().TotalAttributes() > 1 : Topic().TotalOptions() > 1);
  remove->raise();
  highlightedLabel_ = label;
  shpHighlight2->show();
  shpHighlight2->lower();
  shpHighlight->show();
  shpHighlight->stackUnder(label);
}

void frmMain::imgResizeTab_MouseDown() {
  if (QWindow* window = windowHandle()) {
    window->startSystemResize(Qt::BottomEdge | Qt::RightEdge);
  }
}

// The layout runs several times while a topic is loaded; the decoration only changes with the geometry, so
// an unchanged geometry keeps the image already built.
void frmMain::RepaintGradients() {
  const DecorationGeometry geometry{client_->size(), devicePixelRatioF(), picScoreFrame->geometry(),
                                    picWeightingFrame->geometry(), picRatingFrame->geometry()};
  if (geometry == decorationGeometry_ && !persistentImage_.isNull()) {
    return;
  }
  decorationGeometry_ = geometry;
  persistentImage_ = PaintWindowDecoration(geometry.Client, geometry.PixelRatio, geometry.ScorePanel,
                                           geometry.WeightingPanel, geometry.RatingPanel);
  client_->update();
}

void frmMain::HLine(int16_t Y, uint32_t Colour) {
  decorationGeometry_ = {};
  DrawLine(persistentImage_, QLine(0, Y, client_->width(), Y), Colour);
}

void frmMain::VLine(int16_t X, uint32_t Colour) {
  decorationGeometry_ = {};
  DrawLine(persistentImage_, QLine(X, 0, X, client_->height()), Colour);
}

void frmMain::DrawGrid() {
  constexpr uint32_t lattice = 0x00FFFF;
  constexpr uint32_t rule = 0x000000;
  const int w = client_->width();
  const int h = client_->height();
  for (int x = 0; x <= w; x += 10) {
    VLine(static_cast<int16_t>(x), lattice);
  }
  for (int y = 0; y <= h; y += 10) {
    HLine(static_cast<int16_t>(y), lattice);
  }
  for (const int x : {10, 20, w - 10, w - 20}) {
    VLine(static_cast<int16_t>(x), rule);
  }
  HLine(10, rule);
  HLine(static_cast<int16_t>(h - 10), rule);
  const auto sectionRules = [this](bool expanded, QLabel* heading, int rows) {
    if (!expanded) {
      return;
    }
    for (int row = 0; row < rows; ++row) {
      HLine(static_cast<int16_t>(heading->y() + heading->height() + row * RowStep(kRowHeight)), rule);
    }
  };
  sectionRules(showScores_, lblScores, Topic().TotalOptions());
  sectionRules(showWeightings_, lblWeightings, Topic().TotalAttributes());
  sectionRules(showRatings_, lblRatings, Topic().TotalOptions() * Topic().TotalAttributes());
  client_->update();
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
  txtEditBox_LostFocus();
  if (!AskSaveTopicFirst(Program().Topic)) {
    event->ignore();
    return;
  }
  SavePlacement();
  event->accept();
}

void frmMain::lblWeighting_Change(int16_t Index) {
  const std::string text = lblWeighting[static_cast<size_t>(Index)]->text().toStdString();
  ApplyValue([&] {
    Topic().SetWeighting(
        Index, NormaliseNumericInput(text, Program().DisplayAsDecimal, QLocale().decimalPoint().toStdString()));
  });
}

void frmMain::lblRating_Change(int16_t Index) {
  const std::string text = lblRating[static_cast<size_t>(Index)]->text().toStdString();
  ApplyValue([&] {
    Topic().SetRating(GetOptionIDFromIndex(Index), GetAttributeIDFromIndex(Index),
                      NormaliseNumericInput(text, Program().DisplayAsDecimal, QLocale().decimalPoint().toStdString()));
  });
}

// Stores a typed value; one the topic refuses is explained to the person. Either way every label is
// rewritten from the model, so a refused value disappears.
void frmMain::ApplyValue(const std::function<void()>& store) {
  try {
    store();
    SetModified();
  } catch (const TarvelinError& error) {
    Program().UI->ShowMessage(error.Description(), MsgButtons::OK, MsgIcon::Exclamation, "");
  }
  UpdateSettings();
}

std::vector<QLabel*>* frmMain::ArrayOf(const QLabel* label) {
  for (auto* labels : {&lblOption, &lblAttribute, &lblWeighting, &lblRating, &lblScoreTitle, &lblScore}) {
    if (std::find(labels->begin(), labels->end(), label) != labels->end()) {
      return labels;
    }
  }
  return nullptr;
}

void frmMain::LabelClicked(QLabel* label) {
  std::vector<QLabel*>* labels = ArrayOf(label);
  const auto index = static_cast<int16_t>(labels != nullptr ? IndexOf(*labels, label) : 0);
  if (label == lblTitle) {
    BeginLabelEdit(label, 0, Topic().Name());
  } else if (labels == &lblOption) {
    BeginLabelEdit(label, 0, Topic().GetOptionName(index));
  } else if (labels == &lblAttribute) {
    BeginLabelEdit(label, 0, Topic().GetAttributeName(index));
  } else if (labels == &lblWeighting || labels == &lblRating) {
    BeginLabelEdit(label, kNumericEdit);
  } else {
    Form_Click();
  }
}

QLabel* frmMain::EditingLabel() const {
  return txtEditBox->isVisible() ? editingLabel_ : nullptr;
}

void frmMain::BeginLabelEdit(QLabel* Label, int16_t EditMode, std::optional<std::string> Value) {
  txtEditBox_LostFocus();
  QFont font = Label->font();
  font.setPointSizeF(font.pointSizeF() - 1);
  txtEditBox->setFont(font);
  txtEditBox->setAlignment(Label->alignment());
  // The highlight stands around the name under the mouse; the box takes its place when it is this label's.
  const bool overHighlight = shpHighlight->isVisible() && highlightedLabel_ == Label;
  txtEditBox->setGeometry(overHighlight ? shpHighlight->geometry() : Label->geometry());
  txtEditBox->setText(Value ? QString::fromStdString(*Value) : Label->text());
  editingLabel_ = Label;
  editMode_ = EditMode;
  txtEditBox->show();
  txtEditBox->raise();
  txtEditBox->setFocus(Qt::OtherFocusReason);
  txtEditBox->selectAll();
}

// Commits the open edit: a blank text is never committed, so a name cannot be erased to nothing.
void frmMain::txtEditBox_LostFocus() {
  if (!txtEditBox->isVisible() || editingLabel_ == nullptr) {
    return;
  }
  QLabel* label = editingLabel_;
  // The edit ends here: the label may be removed with its row, and nothing must reach it afterwards.
  editingLabel_ = nullptr;
  const std::string text = txtEditBox->text().toStdString();
  txtEditBox->hide();
  if (IsBlankValue(text)) {
    return;
  }
  std::vector<QLabel*>* labels = ArrayOf(label);
  if (labels == &lblWeighting || labels == &lblRating) {
    if (label->text().toStdString() != text) {
      label->setText(QString::fromStdString(text));
      const auto index = static_cast<int16_t>(IndexOf(*labels, label));
      labels == &lblWeighting ? lblWeighting_Change(index) : lblRating_Change(index);
    }
    return;
  }
  SetCaption(label, text);
}

// Escape restores and closes without committing; Enter commits; Tab and Shift+Tab commit and move on to
// the next or previous label of the same kind. Keys that type nothing (arrows, Delete) pass untouched.
bool frmMain::txtEditBox_KeyPress(QKeyEvent* event) {
  if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
    const int offset = event->key() == Qt::Key_Tab && !(event->modifiers() & Qt::ShiftModifier) ? 1 : -1;
    QLabel* label = editingLabel_;
    txtEditBox_LostFocus();
    editingLabel_ = label;
    JumpToTabOffset(offset);
    return true;
  }
  if (Form_KeyDown(event)) {
    return true;
  }
  if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
    return false;
  }
  char32_t key = 0;
  if (event->key() == Qt::Key_Escape) {
    key = KeyEscape;
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    key = KeyEnter;
  } else if (event->key() == Qt::Key_Backspace) {
    key = KeyBackspace;
  } else if (!event->text().isEmpty() && event->text().at(0).isPrint()) {
    key = event->text().toUcs4().value(0);
  } else {
    return false;
  }
  const QString text = txtEditBox->text();
  const QString remaining = txtEditBox->hasSelectedText()
                                ? text.left(txtEditBox->selectionStart()) + text.mid(txtEditBox->selectionEnd())
                                : text;
  switch (FilterEditBoxKey(key, remaining.toStdU32String(), editMode_ == kNumericEdit, kEditBoxMaxLength,
                           QLocale().decimalPoint().toStdU32String().front())) {
    case EditKeyAction::Accept:
      return false;
    case EditKeyAction::Discard:
      return true;
    case EditKeyAction::Cancel:
      CancelLabelEdit();
      return true;
    case EditKeyAction::Commit:
      txtEditBox_LostFocus();
      txtHiddenButton->setFocus(Qt::OtherFocusReason);
      return true;
  }
  return false;
}

void frmMain::CancelLabelEdit() {
  if (editingLabel_ != nullptr) {
    txtEditBox->setText(editingLabel_->text());
  }
  editingLabel_ = nullptr;
  txtEditBox->hide();
  txtHiddenButton->setFocus(Qt::OtherFocusReason);
}

// Moves the editor to the next (+1) or previous (-1) label of the array last edited, wrapping at both
// ends; the title belongs to no array, so nothing opens after it.
void frmMain::JumpToTabOffset(int Offset) {
  QLabel* label = editingLabel_;
  std::vector<QLabel*>* labels = label != nullptr ? ArrayOf(label) : nullptr;
  if (labels == nullptr || labels->empty()) {
    txtHiddenButton->setFocus(Qt::OtherFocusReason);
    return;
  }
  const int last = static_cast<int>(labels->size()) - 1;
  int index = static_cast<int>(IndexOf(*labels, label)) + Offset;
  if (index > last) {
    index = 0;
  } else if (index < 0) {
    index = last;
  }
  QLabel* next = (*labels)[static_cast<size_t>(index)];
  const QString tag = next->property("tag").toString();
  if (tag.isEmpty()) {
    BeginLabelEdit(next, editMode_);
  } else {
    BeginLabelEdit(next, editMode_, tag.toStdString());
  }
}

// A click on the background commits any edit and takes the focus away from the edit box.
void frmMain::Form_Click() {
  txtEditBox_LostFocus();
  txtHiddenButton->setFocus(Qt::MouseFocusReason);
}

void frmMain::RefreshAddButtons() {
  btnAddAttribute->setEnabled(Topic().TotalAttributes() < Program().MaxAttributes);
  btnAddOption->setEnabled(Topic().TotalOptions() < Program().MaxOptions);
}

void frmMain::btnAddAttribute_Click() {
  if (Topic().TotalAttributes() >= Program().MaxAttributes) {
    return;
  }
  const auto names = NamesOf(Topic().TotalAttributes(), [](int16_t a) { return Topic().GetAttributeName(a); });
  Topic().AddAttribute(NextDefaultName("Attribute", names, Topic().TotalAttributes()));
  RebuildAfterCountChange();
}

void frmMain::btnAddOption_Click() {
  if (Topic().TotalOptions() >= Program().MaxOptions) {
    return;
  }
  const auto names = NamesOf(Topic().TotalOptions(), [](int16_t o) { return Topic().GetOptionName(o); });
  Topic().AddOption(NextDefaultName("Option", names, Topic().TotalOptions()));
  RebuildAfterCountChange();
}

void frmMain::btnRemoveAttribute_Click() {
  Topic().DeleteAttribute(std::min<int16_t>(highlightedAttribute_, Topic().TotalAttributes() - 1));
  highlightedAttribute_ = 0;
  CancelLabelEdit();
  RebuildAfterCountChange();
}

void frmMain::btnRemoveOption_Click() {
  Topic().DeleteOption(std::min<int16_t>(highlightedOption_, Topic().TotalOptions() - 1));
  highlightedOption_ = 0;
  CancelLabelEdit();
  RebuildAfterCountChange();
}

void frmMain::RebuildAfterCountChange() {
  SetModified();
  bool rowsChanged = false;
  UpdateSliderArrays(rowsChanged);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtEditBox) {
    if (event->type() == QEvent::KeyPress) {
      return txtEditBox_KeyPress(static_cast<QKeyEvent*>(event));
    }
    if (event->type() == QEvent::FocusOut) {
      const auto reason = static_cast<QFocusEvent*>(event)->reason();
      // Another window taking the focus (a message box, another program) leaves the edit open.
      if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
        txtEditBox_LostFocus();
      }
    }
    return QWidget::eventFilter(watched, event);
  }
  if (event->type() == QEvent::MouseButtonPress) {
    if (watched == imgResizeTab) {
      imgResizeTab_MouseDown();
      return true;
    }
    if (watched == client_) {
      Form_Click();
    } else if (auto* label = qobject_cast<QLabel*>(watched)) {
      LabelClicked(label);
      return true;
    }
    return QWidget::eventFilter(watched, event);
  }
  if (event->type() == QEvent::MouseMove) {
    auto* label = qobject_cast<QLabel*>(watched);
    const auto contains = [label](const std::vector<QLabel*>& labels) {
      return std::find(labels.begin(), labels.end(), label) != labels.end();
    };
    if (watched == client_) {
      // Moving within the highlighted row (onto its delete button, say) keeps the highlight.
      const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
      if (!shpHighlight2->isVisible() || !shpHighlight2->geometry().contains(at)) {
        PlaceHighlight(nullptr, 0);
      }
    } else if (label != nullptr && contains(lblOption)) {
      PlaceHighlight(label, kHighlightOption);
    } else if (label != nullptr && contains(lblAttribute)) {
      PlaceHighlight(label, kHighlightAttribute);
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace tarvelin
