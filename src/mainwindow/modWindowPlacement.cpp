#include "mainwindow/modWindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "startup/WindowPlacement.h"
#include "startup/modSettings.h"

namespace tarvelin {

namespace {

constexpr int kTwipsPerPixel = 15;  // at the usual 96 pixels per inch

// A remembered place brought onto the screen it was on, or the primary one when that screen is gone: a
// smaller or scaled screen must not leave the command row out of reach, nor hand the drawing code a size
// no screen can show.
WindowRect OnItsScreen(const WindowRect& Window) {
  std::vector<WindowRect> areas;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect area = screen->availableGeometry();
    areas.push_back({area.x(), area.y(), area.width(), area.height()});
  }
  if (areas.empty()) {
    return Window;
  }
  return FitWindowOnScreen(Window, areas[ScreenForWindow(Window, areas)]);
}

// Once shown, the frame is known: the whole window, frame included, is kept on the screen.
void KeepFrameOnScreen(QWidget& Form) {
  const QRect frame = Form.frameGeometry();
  const WindowRect fitted = OnItsScreen({frame.x(), frame.y(), frame.width(), frame.height()});
  if (fitted == WindowRect{frame.x(), frame.y(), frame.width(), frame.height()}) {
    return;
  }
  Form.resize(Form.width() - (frame.width() - fitted.Width), Form.height() - (frame.height() - fitted.Height));
  Form.move(fitted.Left, fitted.Top);
}

}  // namespace

void ApplyPlacement(QWidget& Form) {
  const QSize screen = Form.screen() ? Form.screen()->availableGeometry().size() : QSize(1280, 1024);
  SettingsDefaults defaults;
  defaults.DesignWidth = Form.width() * kTwipsPerPixel;
  defaults.DesignHeight = Form.height() * kTwipsPerPixel;
  defaults.ScreenWidth = screen.width() * kTwipsPerPixel;
  defaults.ScreenHeight = screen.height() * kTwipsPerPixel;
  const WindowPlacement placement = ReadWindowPlacement(defaults);
  const WindowRect fitted = OnItsScreen({placement.Left / kTwipsPerPixel, placement.Top / kTwipsPerPixel,
                                         placement.Width / kTwipsPerPixel, placement.Height / kTwipsPerPixel});
  Form.resize(fitted.Width, fitted.Height);
  Form.move(fitted.Left, fitted.Top);
  if (placement.Maximized) {
    Form.showMaximized();
    return;
  }
  Form.show();
  KeepFrameOnScreen(Form);
}

void SavePlacement(const QWidget& Form) {
  const QRect normal = Form.isMaximized() ? Form.normalGeometry() : Form.geometry();
  const QPoint topLeft = Form.isMaximized() ? normal.topLeft() : Form.frameGeometry().topLeft();
  WindowPlacement placement;
  placement.Width = normal.width() * kTwipsPerPixel;
  placement.Height = normal.height() * kTwipsPerPixel;
  placement.Left = topLeft.x() * kTwipsPerPixel;
  placement.Top = topLeft.y() * kTwipsPerPixel;
  placement.Maximized = Form.isMaximized();
  SaveSettings(placement);
}

}  // namespace tarvelin
