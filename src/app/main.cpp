#include <QApplication>

#include "mainwindow/frmMain.h"
#include "platform/qt/QtDialogs.h"
#include "startup/modStartup.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  tarvelin::QtDialogs dialogs;
  tarvelin::Program().UI = &dialogs;
  if (!tarvelin::StartUp(tarvelin::ProgramArguments(argc, argv))) {
    return 0;
  }
  tarvelin::frmMain window;
  window.Form_Load();
  return QApplication::exec();
}
