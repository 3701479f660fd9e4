#pragma once

#include <QLineEdit>
#include <QTest>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "mainwindow/frmMain.h"
#include "startup/RegistryTestFolder.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"

namespace tarvelin::testing {

// One main-window test's world: settings and files in a fresh folder, scripted dialogs and a new topic in
// Program(). Made in a test class's init() and dropped in cleanup(); the window goes first.
class MainWindowFixture {
 public:
  MainWindowFixture() {
    ProgramState& program = Program();
    program.Topic = std::make_unique<TarvelinTopic>();
    program.FileToOpen.clear();
    program.FileTypeToOpen.clear();
    program.CurrentFileName.clear();
    program.Modified = false;
    program.DisplayAsDecimal = true;
    program.ShowSettingsOnNew = false;
    program.ShowInsight = true;
    program.LastUsedDir = Folder.Temp().Path().string();
  }

  // Starts the window as the program does, opening Program().FileToOpen if one is named.
  frmMain& Launch() {
    Window = std::make_unique<frmMain>();
    Window->Form_Load();
    return *Window;
  }

  // Starts the window on a new topic of Options x Attributes rows, as yet unmodified.
  frmMain& Start(int Options = 2, int Attributes = 2) {
    Launch();
    Program().Topic->SetTotalOptions(static_cast<int16_t>(Options));
    Program().Topic->SetTotalAttributes(static_cast<int16_t>(Attributes));
    Rebuild();
    Program().Modified = false;
    return *Window;
  }

  // Starts the window on a topic of these names, weightings and ratings (option by option), as yet unmodified.
  frmMain& Start(const std::vector<std::string>& Options, const std::vector<std::string>& Attributes,
                 const std::vector<double>& Weightings, const std::vector<double>& Ratings) {
    Start(static_cast<int>(Options.size()), static_cast<int>(Attributes.size()));
    TarvelinTopic& topic = *Program().Topic;
    for (int16_t i = 0; i < static_cast<int16_t>(Ratings.size()); ++i) {
      const auto option = static_cast<int16_t>(i / Attributes.size()),
                 attribute = static_cast<int16_t>(i % Attributes.size());
      topic.SetOptionName(option, Options[static_cast<size_t>(option)]);
      topic.SetAttributeName(attribute, Attributes[static_cast<size_t>(attribute)]);
      topic.SetWeighting(attribute, Weightings[static_cast<size_t>(attribute)]);
      topic.SetRating(option, attribute, Ratings[static_cast<size_t>(i)]);
    }
    Rebuild();
    Program().Modified = false;
    return *Window;
  }

  // Brings the window's rows in line with the topic's counts.
  void Rebuild() {
    bool rowsChanged = false;
    Window->UpdateSliderArrays(rowsChanged);
  }

  template <class T = QWidget>
  T* Find(const QString& Name) const {
    T* control = Window->findChild<T*>(Name);
    if (control == nullptr) {
      qFatal("The window has no %s", qPrintable(Name));
    }
    return control;
  }
  bool Has(const QString& Name) const { return Window->findChild<QWidget*>(Name) != nullptr; }
  QLineEdit* EditBox() const { return Find<QLineEdit>("txtEditBox"); }
  void Click(const QString& Name) const { QTest::mouseClick(Find(Name), Qt::LeftButton); }
  // Opens the label for editing and types Text, leaving the edit open.
  void Type(const QString& Label, const QString& Text) const {
    Click(Label);
    QTest::keyClicks(EditBox(), Text);
  }

  std::string File(const std::string& Name) const { return Folder.Temp().File(Name); }

  ScopedRegistryFolder Folder;
  ScopedScriptedDialogs Dialogs;
  std::unique_ptr<frmMain> Window;
};

}  // namespace tarvelin::testing
