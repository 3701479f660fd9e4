#include <QApplication>
#include <string>
#include <vector>

#include "mainwindow/frmMain.h"
#include "platform/qt/QtDialogs.h"
#include "startup/modStartup.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  tarvelin::QtDialogs dialogs;
  tarvelin::Program().UI = &dialogs;
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (!tarvelin::StartUp(arguments)) {
    return 0;
  }
  tarvelin::frmMain window;
  window.Form_Load();
  return QApplication::exec();
}
