#pragma once

#include <QImage>
#include <QObject>
#include <vector>

class QWidget;

namespace tarvelin {

class HoverHighlight;
class LabelEditor;
class PanelLayout;

// A clean picture of the client area, as screenshots and the clipboard show the decision: no command or
// panel buttons, no resize grip, no highlight or edit box. The window is left exactly as it was.
class WindowCapture final {
 public:
  // Controls lists the buttons and grip to leave out.
  WindowCapture(QWidget* Client, std::vector<QWidget*> Controls, PanelLayout& Panels, LabelEditor& Editor,
                HoverHighlight& Highlight);
  Q_DISABLE_COPY_MOVE(WindowCapture)

  QImage Take();

 private:
  QWidget* client_;
  std::vector<QWidget*> controls_;
  PanelLayout& panels_;
  LabelEditor& editor_;
  HoverHighlight& highlight_;
};

}  // namespace tarvelin
