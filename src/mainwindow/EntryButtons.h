#pragma once

#include <QObject>
#include <cstdint>
#include <functional>

class QLabel;
class QWidget;

namespace tarvelin {

class GraphicalButton;

// The buttons that add an option or attribute, and the delete buttons that the hover highlight brings
// beside a name. A count change ends with Rebuild, which brings the rows to the topic's new counts.
class EntryButtons final {
 public:
  // CancelEdit runs once an entry is removed: an edit standing over its row must not survive it.
  EntryButtons(QWidget* Client, std::function<void()> CancelEdit, std::function<void()> Rebuild);
  Q_DISABLE_COPY_MOVE(EntryButtons)

  // Add buttons are enabled only below the program's maximum counts.
  void RefreshAddButtons();

  // Shows the delete button beside the highlighted name of attribute or option Index (hidden when it is the
  // last one) and makes it the entry the button removes; HideDeleteButtons takes both away.
  void OfferDelete(bool Attribute, int16_t Index, const QLabel* Name);
  void HideDeleteButtons();

  // The entries the delete buttons remove: the rows last highlighted (the first rows at the start).
  int16_t SelectedOption() const { return selectedOption_; }
  int16_t SelectedAttribute() const { return selectedAttribute_; }

  GraphicalButton* btnAddAttribute = nullptr;
  GraphicalButton* btnAddOption = nullptr;
  GraphicalButton* btnRemoveAttribute = nullptr;
  GraphicalButton* btnRemoveOption = nullptr;

 private:
  void btnAddAttribute_Click();
  void btnAddOption_Click();
  void btnRemoveAttribute_Click();
  void btnRemoveOption_Click();

  std::function<void()> cancelEdit_, rebuild_;
  int16_t selectedOption_ = 0, selectedAttribute_ = 0;
};

}  // namespace tarvelin
