#include "mainwindow/EntryButtons.h"

#include <QLabel>
#include <algorithm>
#include <string>
#include <vector>

#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/WindowText.h"
#include "mainwindow/modLabelEditing.h"
#include "startup/modStartup.h"
#include "widgets/GraphicalButton.h"

namespace tarvelin {

namespace {

TarvelinTopic& Topic() {
  return *Program().Topic;
}

GraphicalButton* MakeButton(QWidget* Client, const char* Name, const char* Text, ButtonPicture Picture) {
  auto* button = new GraphicalButton(Client);
  button->setObjectName(Name);
  button->setText(Text);
  button->SetPicture(Picture);
  button->setFont(LabelFont(9));
  button->resize(button->sizeHint());
  return button;
}

// The names of a topic's options or attributes, for choosing the next default name.
std::vector<std::string> NamesOf(int16_t Count, std::string (TarvelinTopic::*NameOf)(int16_t) const) {
  std::vector<std::string> names;
  for (int16_t i = 0; i < Count; ++i) {
    names.push_back((Topic().*NameOf)(i));
  }
  return names;
}

}  // namespace

EntryButtons::EntryButtons(QWidget* Client, std::function<void()> CancelEdit, std::function<void()> Rebuild)
    : cancelEdit_(std::move(CancelEdit)), rebuild_(std::move(Rebuild)) {
  btnAddAttribute = MakeButton(Client, "btnAddAttribute", "Add Attribute", ButtonPicture::Add);
  btnAddOption = MakeButton(Client, "btnAddOption", "Add Option", ButtonPicture::Add);
  btnRemoveAttribute = MakeButton(Client, "btnRemoveAttribute", "", ButtonPicture::Delete);
  btnRemoveOption = MakeButton(Client, "btnRemoveOption", "", ButtonPicture::Delete);
  for (auto* remove : {btnRemoveAttribute, btnRemoveOption}) {
    remove->resize(RowHeight, RowHeight);
    remove->hide();
  }
  btnRemoveAttribute->setToolTip("Delete Attribute");
  btnRemoveOption->setToolTip("Delete Option");
  btnRemoveAttribute->setAccessibleName("Delete Attribute");
  btnRemoveOption->setAccessibleName("Delete Option");
  QObject::connect(btnAddAttribute, &QAbstractButton::clicked, Client, [this] { btnAddAttribute_Click(); });
  QObject::connect(btnAddOption, &QAbstractButton::clicked, Client, [this] { btnAddOption_Click(); });
  QObject::connect(btnRemoveAttribute, &QAbstractButton::clicked, Client, [this] { btnRemoveAttribute_Click(); });
  QObject::connect(btnRemoveOption, &QAbstractButton::clicked, Client, [this] { btnRemoveOption_Click(); });
}

void EntryButtons::RefreshAddButtons() {
  btnAddAttribute->setEnabled(Topic().TotalAttributes() < Program().MaxAttributes);
  btnAddOption->setEnabled(Topic().TotalOptions() < Program().MaxOptions);
}

void EntryButtons::OfferDelete(bool Attribute, int16_t Index, const QLabel* Name) {
  GraphicalButton* remove = Attribute ? btnRemoveAttribute : btnRemoveOption;
  if (Attribute) {
    selectedAttribute_ = Index;
    remove->move(Name->x() + NameColumnWidth + 5, Name->y());
  } else {
    selectedOption_ = Index;
    remove->move(Name->x() - 20, Name->y());
  }
  remove->setVisible(Attribute ? Topic().TotalAttributes() > 1 : Topic().TotalOptions() > 1);
  remove->raise();
}

void EntryButtons::HideDeleteButtons() {
  btnRemoveAttribute->hide();
  btnRemoveOption->hide();
}

void EntryButtons::btnAddAttribute_Click() {
  if (Topic().TotalAttributes() >= Program().MaxAttributes) {
    return;
  }
  const auto names = NamesOf(Topic().TotalAttributes(), &TarvelinTopic::GetAttributeName);
  Topic().AddAttribute(NextDefaultName("Attribute", names, Topic().TotalAttributes()));
  rebuild_();
}

void EntryButtons::btnAddOption_Click() {
  if (Topic().TotalOptions() >= Program().MaxOptions) {
    return;
  }
  const auto names = NamesOf(Topic().TotalOptions(), &TarvelinTopic::GetOptionName);
  Topic().AddOption(NextDefaultName("Option", names, Topic().TotalOptions()));
  rebuild_();
}

void EntryButtons::btnRemoveAttribute_Click() {
  Topic().DeleteAttribute(std::min<int16_t>(selectedAttribute_, Topic().TotalAttributes() - 1));
  selectedAttribute_ = 0;
  cancelEdit_();
  rebuild_();
}

void EntryButtons::btnRemoveOption_Click() {
  Topic().DeleteOption(std::min<int16_t>(selectedOption_, Topic().TotalOptions() - 1));
  selectedOption_ = 0;
  cancelEdit_();
  rebuild_();
}

}  // namespace tarvelin
