#include "settingsdialog/frmOptions.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QEventLoop>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "settingsdialog/modOptionRules.h"
#include "settingsdialog/modOptionsTabs.h"
#include "startup/modStartup.h"
#include "widgets/GraphicalButton.h"
#include "widgets/Palette.h"
#include "widgets/modDecoration.h"

namespace tarvelin {

namespace {

constexpr int FontPointSize = 10;
constexpr int CountFieldWidth = 56;
constexpr int TitleFieldWidth = 260;
constexpr int MinimumButtonWidth = 96;

QFont BoldFont(QFont Font, int PointSize) {
  Font.setBold(true);
  Font.setPointSize(PointSize);
  return Font;
}

}  // namespace

frmOptions::frmOptions(bool ForNewTopic, std::function<bool()> LoadTopic, QWidget* parent)
    : QDialog(parent), forNewTopic_(ForNewTopic), loadTopic_(std::move(LoadTopic)) {
  setObjectName("frmOptions");
  setWindowTitle(QString::fromStdString(Program().AppTitle + " Settings"));
  setFont(QFont("Comic Sans MS", FontPointSize));
  setPalette(LightPalette());

  auto* layout = new QVBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->setContentsMargins(14, 12, 14, 14);
  layout->setSpacing(0);
  layout->addWidget(BuildTabStrip());

  picPageFrame = new QWidget(this);
  picPageFrame->setObjectName("picPageFrame");
  auto* frameLayout = new QVBoxLayout(picPageFrame);
  frameLayout->setContentsMargins(20, 16, 20, 18);
  pages_ = new QStackedWidget(picPageFrame);
  pages_->addWidget(BuildTopicPage());
  pages_->addWidget(BuildPreferencesPage());
  pages_->addWidget(BuildAboutPage());
  frameLayout->addWidget(pages_);
  layout->addWidget(picPageFrame);

  layout->addSpacing(12);
  layout->addWidget(BuildButtonRow());
  SelectTab(0);
}

frmOptions::~frmOptions() {
  RemoveHooks();
}

QLabel* frmOptions::NewLabel(const QString& Name, const QString& Caption, QWidget* Parent) {
  auto* label = new QLabel(Caption, Parent);
  label->setObjectName(Name);
  return label;
}

QLabel* frmOptions::NewHeading(const QString& Caption, QWidget* Parent) {
  auto* heading = new QLabel(Caption, Parent);
  heading->setFont(BoldFont(font(), FontPointSize));
  return heading;
}

QLineEdit* frmOptions::NewField(const QString& Name, QWidget* Parent) {
  auto* field = new QLineEdit(Parent);
  field->setObjectName(Name);
  field->installEventFilter(this);
  return field;
}

// A check box or option button with its caption in a label beside it; a click on the label clicks the control.
QWidget* frmOptions::NewChoice(QAbstractButton* Control, const QString& LabelName, const QString& Caption,
                               QWidget* Parent) {
  auto* choice = new QWidget(Parent);
  choice->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  auto* row = new QHBoxLayout(choice);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(4);
  QLabel* label = NewLabel(LabelName, Caption, choice);
  label->installEventFilter(this);
  Control->setAccessibleName(Caption);
  labelTargets_.emplace_back(label, Control);
  row->addWidget(Control);
  row->addWidget(label);
  return choice;
}

QWidget* frmOptions::BuildTabStrip() {
  imgTabBackground = new QWidget(this);
  imgTabBackground->setObjectName("imgTabBackground");
  auto* row = new QHBoxLayout(imgTabBackground);
  row->setContentsMargins(12, 0, 12, 0);
  row->setSpacing(2);
  const std::array<QString, TabCount> captions{"Topic", "Preferences", "About"};
  for (int index = 0; index < TabCount; ++index) {
    QLabel* tab = NewLabel(QString("lblTabText_%1").arg(index), captions[index], imgTabBackground);
    tab->setAlignment(Qt::AlignCenter);
    tab->setContentsMargins(16, 5, 16, 4);
    tab->setCursor(Qt::PointingHandCursor);
    tab->installEventFilter(this);
    row->addWidget(tab);
    lblTabText[index] = tab;
  }
  row->addStretch();
  return imgTabBackground;
}

QWidget* frmOptions::BuildTopicPage() {
  auto* page = new QWidget;
  page->setObjectName("pageTopic");
  auto* grid = new QGridLayout(page);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(14);
  grid->setVerticalSpacing(8);
  grid->addWidget(NewHeading("Topic Settings:", page), 0, 0, 1, 2);

  txtTitle = NewField("txtTitle", page);
  txtTitle->setMinimumWidth(TitleFieldWidth);
  txtOptionCount = NewField("txtOptionCount", page);
  txtAttributeCount = NewField("txtAttributeCount", page);
  txtTitle->setAccessibleName("Topic Title");
  txtOptionCount->setAccessibleName("No. Of Options");
  txtAttributeCount->setAccessibleName("No. Of Attributes");
  grid->addWidget(NewLabel("lblTitleCaption", "Topic Title", page), 1, 0);
  grid->addWidget(txtTitle, 1, 1);
  grid->addWidget(NewLabel("lblOptionCountCaption", "No. Of Options", page), 2, 0);
  grid->addWidget(NewLabel("lblAttributeCountCaption", "No. Of Attributes", page), 3, 0);
  for (QLineEdit* count : {txtOptionCount, txtAttributeCount}) {
    count->setFixedWidth(CountFieldWidth);
    count->setAlignment(Qt::AlignRight);
  }
  grid->addWidget(txtOptionCount, 2, 1, Qt::AlignLeft);
  grid->addWidget(txtAttributeCount, 3, 1, Qt::AlignLeft);

  auto* typeGroup = new QButtonGroup(page);
  auto* typeRow = new QHBoxLayout;
  typeRow->setSpacing(18);
  const std::array<QString, 2> typeCaptions{"Negative Attributes", "Positive Attributes"};
  for (int index = 0; index < 2; ++index) {
    optWeightingType[index] = new QRadioButton;
    optWeightingType[index]->setObjectName(QString("optWeightingType_%1").arg(index));
    typeGroup->addButton(optWeightingType[index]);
    typeRow->addWidget(
        NewChoice(optWeightingType[index], QString("lblWeightingType_%1").arg(index), typeCaptions[index], page));
  }
  typeRow->addStretch();
  grid->setRowMinimumHeight(4, 4);
  grid->addWidget(NewLabel("lblWeightingTypeCaption", "Weighting Type", page), 5, 0);
  grid->addLayout(typeRow, 5, 1);

  chkNormaliseWeights = new QCheckBox;
  chkNormaliseWeights->setObjectName("chkNormaliseWeights");
  grid->addWidget(NewChoice(chkNormaliseWeights, "lblNormaliseWeights", "Normalise Weights?", page), 6, 1);
  grid->setRowStretch(7, 1);
  return page;
}

QWidget* frmOptions::BuildPreferencesPage() {
  auto* page = new QWidget;
  page->setObjectName("pagePreferences");
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(8);
  column->addWidget(NewHeading("Display Settings:", page));

  auto* rangeGroup = new QButtonGroup(page);
  auto* rangeRow = new QHBoxLayout;
  rangeRow->setContentsMargins(14, 0, 0, 0);
  rangeRow->setSpacing(18);
  const std::array<QString, 2> rangeCaptions{"Decimals", "Percentages"};
  for (int index = 0; index < 2; ++index) {
    optRange[index] = new QRadioButton;
    optRange[index]->setObjectName(QString("optRange_%1").arg(index));
    rangeGroup->addButton(optRange[index]);
    rangeRow->addWidget(NewChoice(optRange[index], QString("lblRange_%1").arg(index), rangeCaptions[index], page));
  }
  rangeRow->addStretch();
  column->addLayout(rangeRow);
  chkShowInsight = new QCheckBox;
  chkShowInsight->setObjectName("chkShowInsight");
  QWidget* insight = NewChoice(chkShowInsight, "lblShowInsight", "Show how robust the best option is", page);
  insight->setContentsMargins(14, 0, 0, 0);
  column->addWidget(insight);
  chkSplitScoreBars = new QCheckBox;
  chkSplitScoreBars->setObjectName("chkSplitScoreBars");
  QWidget* split = NewChoice(chkSplitScoreBars, "lblSplitScoreBars", "Split score bars by attribute", page);
  split->setContentsMargins(14, 0, 0, 0);
  column->addWidget(split);

  column->addSpacing(10);
  column->addWidget(NewHeading("Program Settings:", page));
  chkShowSettingsOnNew = new QCheckBox;
  chkShowSettingsOnNew->setObjectName("chkShowSettingsOnNew");
  QWidget* showOnNew =
      NewChoice(chkShowSettingsOnNew, "lblShowSettingsOnNew", "Show settings when starting a new topic?", page);
  showOnNew->setContentsMargins(14, 0, 0, 0);
  column->addWidget(showOnNew);
  column->addStretch();
  return page;
}

QWidget* frmOptions::BuildAboutPage() {
  auto* page = new QWidget;
  page->setObjectName("pageAbout");
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(10);
  QLabel* title = NewLabel("lblAboutTitle", QString("Tarvelin v") + TARVELIN_VERSION, page);
  title->setFont(BoldFont(font(), FontPointSize + 6));
  column->addWidget(title);
  QLabel* text = NewLabel("lblAboutText",
                          "Weigh up a decision: list the options, say which attributes matter and how much, "
                          "rate every option on every attribute, and see which option comes out best.",
                          page);
  text->setWordWrap(true);
  column->addWidget(text);
  column->addStretch();
  return page;
}

QWidget* frmOptions::BuildButtonRow() {
  auto* buttons = new QWidget(this);
  auto* row = new QHBoxLayout(buttons);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addStretch();
  btnOk = new GraphicalButton("OK", ButtonPicture::Ok, buttons);
  btnOk->setObjectName("btnOk");
  btnCancel = new GraphicalButton(forNewTopic_ ? "Load Topic" : "Cancel",
                                  forNewTopic_ ? ButtonPicture::Load : ButtonPicture::Cancel, buttons);
  btnCancel->setObjectName("btnCancel");
  const int width = std::max({MinimumButtonWidth, btnOk->sizeHint().width(), btnCancel->sizeHint().width()});
  for (GraphicalButton* button : {btnOk, btnCancel}) {
    button->setFixedWidth(width);
    row->addWidget(button);
  }
  connect(btnOk, &QAbstractButton::clicked, this, &frmOptions::btnOk_Click);
  connect(btnCancel, &QAbstractButton::clicked, this, &frmOptions::btnCancel_Click);
  return buttons;
}

OptionsOutcome frmOptions::ShowModal() {
  // A loop of our own rather than exec(): QDialog ends exec() as soon as the dialog is hidden, and the
  // open-topic command hides it while a file is read, expecting it back if the file does not load.
  setWindowModality(Qt::ApplicationModal);
  QEventLoop loop;
  connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
  show();
  loop.exec(QEventLoop::DialogExec);
  return outcome_;
}

void frmOptions::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!filled_) {
    filled_ = true;
    FillControls();
    InstallHooks();
  }
}

void frmOptions::FillControls() {
  const ProgramState& program = Program();
  const TarvelinTopic& topic = *program.Topic;
  txtTitle->setText(QString::fromStdString(topic.Name()));
  txtOptionCount->setText(QString::number(topic.TotalOptions()));
  txtAttributeCount->setText(QString::number(topic.TotalAttributes()));
  optWeightingType[topic.InvertWeights() ? 0 : 1]->setChecked(true);
  chkNormaliseWeights->setChecked(topic.NormaliseWeights());
  optRange[program.DisplayAsDecimal ? 0 : 1]->setChecked(true);
  chkShowSettingsOnNew->setChecked(program.ShowSettingsOnNew);
  chkShowInsight->setChecked(program.ShowInsight);
  chkSplitScoreBars->setChecked(program.SplitScoreBars);
}

int16_t frmOptions::CountOf(const QLineEdit* Field) const {
  const ProgramState& program = Program();
  const bool options = Field == txtOptionCount;
  return CountFromFieldText(Field->text().toStdString(),
                            options ? program.Topic->TotalOptions() : program.Topic->TotalAttributes(),
                            options ? program.MaxOptions : program.MaxAttributes);
}

std::string frmOptions::TitleOf() const {
  return TitleFromFieldText(txtTitle->text().toStdString(), Program().Topic->Name());
}

// Shows what a field stands for once it is left, so that the person sees the value OK would apply.
void frmOptions::TidyField(QLineEdit* Field) const {
  const QString tidy = Field == txtTitle ? QString::fromStdString(TitleOf()) : QString::number(CountOf(Field));
  if (Field->text() != tidy) {
    Field->setText(tidy);
  }
}

void frmOptions::Apply() {
  ProgramState& program = Program();
  TarvelinTopic& topic = *program.Topic;
  const std::string title = TitleOf();
  const bool invert = optWeightingType[0]->isChecked();
  const int16_t options = CountOf(txtOptionCount);
  const int16_t attributes = CountOf(txtAttributeCount);
  const bool countsChanged = options != topic.TotalOptions() || attributes != topic.TotalAttributes();
  // Normalisation and the preferences are not saved with the topic, so changing only them leaves it unchanged.
  if (!program.Modified && (countsChanged || title != topic.Name() || invert != topic.InvertWeights())) {
    SetModified();
  }
  topic.SetName(title);
  topic.SetInvertWeights(invert);
  topic.SetTotalOptions(options);
  topic.SetTotalAttributes(attributes);
  program.DisplayAsDecimal = optRange[0]->isChecked();
  topic.SetNormaliseWeights(chkNormaliseWeights->isChecked());
  program.ShowSettingsOnNew = chkShowSettingsOnNew->isChecked();
  program.ShowInsight = chkShowInsight->isChecked();
  program.SplitScoreBars = chkSplitScoreBars->isChecked();
  outcome_.CountsChanged = countsChanged;
}

void frmOptions::btnOk_Click() {
  Apply();
  outcome_.Result = OptionsOutcome::Result::Applied;
  accept();
}

void frmOptions::btnCancel_Click() {
  if (!forNewTopic_) {
    QDialog::reject();
    return;
  }
  if (loadTopic_ && loadTopic_()) {
    outcome_.Result = OptionsOutcome::Result::TopicLoaded;
    done(QDialog::Rejected);
    return;
  }
  if (!isVisible()) {
    ShowAgain();
  }
}

void frmOptions::reject() {
  if (forNewTopic_) {
    btnOk_Click();
  } else {
    QDialog::reject();
  }
}

void frmOptions::done(int ResultCode) {
  RemoveHooks();
  QDialog::done(ResultCode);
}

void frmOptions::InstallHooks() {
  Program().SettingsDialogHide = [this] { hide(); };
  Program().SettingsDialogShow = [this] { ShowAgain(); };
  hooked_ = true;
}

void frmOptions::RemoveHooks() {
  if (hooked_) {
    Program().SettingsDialogHide = nullptr;
    Program().SettingsDialogShow = nullptr;
    hooked_ = false;
  }
}

void frmOptions::ShowAgain() {
  show();
  raise();
  activateWindow();
}

bool frmOptions::eventFilter(QObject* watched, QEvent* event) {
  auto* field = qobject_cast<QLineEdit*>(watched);
  switch (event->type()) {
    case QEvent::FocusIn:
      if (field != nullptr) {
        // Deferred, because a click that brings the focus puts the cursor where it landed afterwards.
        QTimer::singleShot(0, field, &QLineEdit::selectAll);
      }
      break;
    case QEvent::FocusOut:
      if (field != nullptr) {
        TidyField(field);
      }
      break;
    case QEvent::MouseButtonRelease: {
      const auto* mouse = static_cast<QMouseEvent*>(event);
      const auto* widget = qobject_cast<QWidget*>(watched);
      if (mouse->button() == Qt::LeftButton && widget != nullptr &&
          widget->rect().contains(mouse->position().toPoint()) && LabelClicked(watched)) {
        return true;
      }
      break;
    }
    case QEvent::Enter:
    case QEvent::Leave: {
      const auto tab = std::find(lblTabText.begin(), lblTabText.end(), watched);
      if (tab != lblTabText.end()) {
        hoveredTab_ = event->type() == QEvent::Enter ? static_cast<int>(tab - lblTabText.begin()) : -1;
        update();
      }
      break;
    }
    default:
      break;
  }
  return QDialog::eventFilter(watched, event);
}

bool frmOptions::LabelClicked(QObject* watched) {
  const auto tab = std::find(lblTabText.begin(), lblTabText.end(), watched);
  if (tab != lblTabText.end()) {
    SelectTab(static_cast<int>(tab - lblTabText.begin()));
    return true;
  }
  for (const auto& [label, control] : labelTargets_) {
    if (label == watched) {
      control->click();
      return true;
    }
  }
  return false;
}

void frmOptions::SelectTab(int Index) {
  pages_->setCurrentIndex(Index);
  for (int index = 0; index < TabCount; ++index) {
    QPalette colours = lblTabText[index]->palette();
    colours.setColor(QPalette::WindowText, TabCaptionColour(index == Index));
    lblTabText[index]->setPalette(colours);
  }
  update();
}

QRect frmOptions::TabRect(int Index) const {
  const QLabel* tab = lblTabText[Index];
  return QRect(tab->mapTo(this, QPoint(0, 0)), tab->size());
}

QRect frmOptions::PanelRect() const {
  return picPageFrame->geometry();
}

void frmOptions::paintEvent(QPaintEvent*) {
  const QRect panel = PanelRect();
  const qreal ratio = devicePixelRatioF();
  if (decoration_.isNull() || decoration_.deviceIndependentSize().toSize() != size() ||
      decoration_.devicePixelRatio() != ratio || decorationPanel_ != panel) {
    decoration_ = PaintWindowDecoration(size(), ratio, panel, QRect(), QRect());
    decorationPanel_ = panel;
  }
  QPainter painter(this);
  painter.drawImage(QPoint(0, 0), decoration_);
  painter.setRenderHint(QPainter::Antialiasing);
  const int current = pages_->currentIndex();
  // The selected tab last, over its neighbours' edges.
  for (int index = 0; index < TabCount; ++index) {
    if (index != current) {
      PaintOptionsTab(painter, TabRect(index), false, index == hoveredTab_);
    }
  }
  PaintOptionsTab(painter, TabRect(current), true, false);
}

}  // namespace tarvelin
