#pragma once

#include <QObject>

class QLabel;
class QWidget;

namespace tarvelin {

// The cover laid over the window while rows are rebuilt, so that the person sees "Loading..." instead of
// rows coming and going.
class LoadingCover final {
 public:
  explicit LoadingCover(QWidget* Form);
  Q_DISABLE_COPY_MOVE(LoadingCover)

  void Show();
  void Hide();
  bool IsShown() const { return shown_; }
  // Fits the cover to the window again after a resize.
  void Layout();

 private:
  void Create();

  QWidget* form_;
  QWidget* picMask = nullptr;
  QLabel* lblLoading = nullptr;
  bool shown_ = false;
};

}  // namespace tarvelin
