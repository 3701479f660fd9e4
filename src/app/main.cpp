#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <QWindow>
#include <cstdio>

#include "mainwindow/frmMain.h"
#include "platform/qt/QtDialogs.h"
#include "startup/modStartup.h"

namespace {

// The installed theme's icon, so that a theme may restyle it, else the same pictures built into the program.
QIcon ApplicationIcon() {
  QIcon builtIn;
  for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
    builtIn.addFile(QString(":/icons/%1.png").arg(size), QSize(size, size));
  }
  return QIcon::fromTheme("com.pelvora.Tarvelin", builtIn);
}

// Looking the icon up in the theme and decoding its pictures costs about as much as the rest of the start
// together, and only the window manager shows it. So it is given to every window just after the first window
// has drawn its first frame: the expose that asks for that frame is drawn before the posted call runs.
class IconAfterFirstFrame final : public QObject {
 public:
  IconAfterFirstFrame() { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* Watched, QEvent* Event) override {
    if (Event->type() == QEvent::Expose && Watched->isWindowType() && static_cast<QWindow*>(Watched)->isExposed()) {
      qApp->removeEventFilter(this);
      QTimer::singleShot(0, qApp, [] { QApplication::setWindowIcon(ApplicationIcon()); });
    }
    return false;
  }
};

}  // namespace

int main(int argc, char* argv[]) {
  // Answered before any window system is needed, so that they work in any terminal.
  if (const auto information = tarvelin::CommandLineInformation(tarvelin::ProgramArguments(argc, argv))) {
    std::fputs(information->c_str(), stdout);
    return 0;
  }
  QApplication application(argc, argv);
  QApplication::setDesktopFileName("com.pelvora.Tarvelin");
  const IconAfterFirstFrame icon;
  tarvelin::QtDialogs dialogs;
  tarvelin::Program().UI = &dialogs;
  // Read again: QApplication has taken its own options (-style, -platform ...) out of argv.
  if (!tarvelin::StartUp(tarvelin::ProgramArguments(argc, argv))) {
    return 0;
  }
  tarvelin::frmMain window;
  window.Form_Load();
  return QApplication::exec();
}
