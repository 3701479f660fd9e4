#include "mainwindow/CommandRow.h"

#include <QLabel>
#include <algorithm>

#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/WindowText.h"
#include "widgets/GraphicalButton.h"

namespace tarvelin {

namespace {

GraphicalButton* MakeCommand(QWidget* Client, const char* Name, const char* Text, ButtonPicture Picture,
                             const char* Tip, const std::function<void()>& Run) {
  auto* button = new GraphicalButton(Client);
  button->setObjectName(Name);
  button->setText(Text);
  // Undo has no button of its own; every command's tooltip tells its keys.
  button->setToolTip(QString(Tip) + "\nCtrl+Z undoes a change, Ctrl+Y redoes it");
  button->setAccessibleDescription(Tip);
  button->SetPicture(Picture);
  button->setFont(LabelFont(10));
  button->resize(button->sizeHint().width(), TitleHeight);
  button->move(0, TitleTop);
  QObject::connect(button, &QAbstractButton::clicked, Client, Run);
  return button;
}

}  // namespace

CommandRow::CommandRow(QWidget* Client, Commands Run) {
  lblTitle = new QLabel(Client);
  lblTitle->setObjectName("lblTitle");
  lblTitle->setFont(LabelFont(16, true));
  lblTitle->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  lblTitle->setMouseTracking(true);
  lblTitle->setText("Topic Title");
  lblTitle->setGeometry(PanelMargin, TitleTop, 300, TitleHeight);
  lblTitle->setAccessibleName("Topic title");
  lblTitle->setAccessibleDescription("Click to rename the topic");
  btnNew = MakeCommand(Client, "btnNew", "Start New Topic", ButtonPicture::New, "Start a new topic (Ctrl+N)", Run.New);
  btnLoad = MakeCommand(Client, "btnLoad", "Load Topic", ButtonPicture::Load,
                        "Load a topic or import a CSV file (Ctrl+L)", Run.Load);
  btnSave = MakeCommand(Client, "btnSave", "Save Topic", ButtonPicture::Save,
                        "Save the topic, export it as CSV, or save a picture of the window or a decision report "
                        "(Ctrl+S; Ctrl+P for the report)",
                        Run.Save);
  btnSettings = MakeCommand(Client, "btnSettings", "Change Tarvelin Settings", ButtonPicture::Settings,
                            "Change the topic's settings and your preferences", Run.Settings);
}

void CommandRow::Arrange(int ClientWidth) {
  const auto lefts =
      LayoutCommandRow(ClientWidth, btnNew->width(), btnLoad->width(), btnSave->width(), btnSettings->width());
  btnSettings->move(lefts.Settings, TitleTop);
  btnSave->move(lefts.Save, TitleTop);
  btnLoad->move(lefts.Load, TitleTop);
  btnNew->move(lefts.New, TitleTop);
  lblTitle->resize(std::max(0, lefts.New - 10 - lblTitle->x()), TitleHeight);
}

std::vector<QWidget*> CommandRow::Buttons() const {
  return {btnSave, btnLoad, btnNew, btnSettings};
}

}  // namespace tarvelin
