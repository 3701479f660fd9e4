#include "mainwindow/modWindowPlacement.h"

#include <QScreen>
#include <QWidget>

#include "startup/modSettings.h"

namespace tarvelin {

namespace {

constexpr int kTwipsPerPixel = 15;  // at the usual 96 pixels per inch

}  // namespace

void ApplyPlacement(QWidget& Form) {
  const QSize screen = Form.screen() ? Form.screen()->availableGeometry().size() : QSize(1280, 1024);
  SettingsDefaults defaults;
  defaults.DesignWidth = Form.width() * kTwipsPerPixel;
  defaults.DesignHeight = Form.height() * kTwipsPerPixel;
  defaults.ScreenWidth = screen.width() * kTwipsPerPixel;
  defaults.ScreenHeight = screen.height() * kTwipsPerPixel;
  const WindowPlacement placement = ReadWindowPlacement(defaults);
  Form.resize(placement.Width / kTwipsPerPixel, placement.Height / kTwipsPerPixel);
  Form.move(placement.Left / kTwipsPerPixel, placement.Top / kTwipsPerPixel);
  if (placement.Maximized) {
    Form.showMaximized();
  } else {
    Form.show();
  }
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
