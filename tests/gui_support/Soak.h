#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "startup/Dialogs.h"

namespace tarvelin {
class frmMain;
}

namespace tarvelin::testing {

// Performs one random action on the main window as a person would, through real mouse, wheel and key
// events: slider drags, wheels and keys, clicks anywhere and on every label, typing in the edit box (Escape,
// Tab and Enter included), hovering names and deleting their rows, the add buttons, the panel toggles,
// resizes, undo and redo, and the commands with their buttons and shortcuts; a settings dialog it opens is
// filled in and closed at random too. Lets the window settle and returns what was done. The same generator
// state gives the same action.
std::string RandomAction(frmMain& Window, std::mt19937& Random);

// Everything in which the main window disagrees with the live topic, one line each, empty when nothing
// does: counts within 1 and the maxima and matching every control array, every value from 0 to 1, every
// slider and value label showing the model's value, names and title, the best score bars' colour, the
// panels' rows shown as their toggles say, the add buttons and an open edit box standing over a live label.
std::vector<std::string> WindowDisagreements(const frmMain& Window);

// A Dialogs that answers like a person clicking at random: every message with one of the buttons it
// offers, every file dialog with a cancel or a name from a small pool inside Folder (so that later loads
// find earlier saves), with each of the extensions the save command tells apart and a few bad names.
class RandomDialogs final : public Dialogs {
 public:
  RandomDialogs(std::mt19937& Random, std::filesystem::path Folder) : random_(Random), folder_(std::move(Folder)) {}

  MsgResult ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon, const std::string&) override;
  std::optional<std::string> OpenFile(const FileDialogRequest&) override { return RandomFileName("open"); }
  std::optional<std::string> SaveFile(const FileDialogRequest&) override { return RandomFileName("save"); }

  // What was asked since the last Forget, for the action log.
  const std::string& Transcript() const { return transcript_; }
  void Forget() { transcript_.clear(); }

 private:
  // A cancel (nullopt) or a name, logged in the transcript under Verb.
  std::optional<std::string> RandomFileName(const char* Verb);

  std::mt19937& random_;
  std::filesystem::path folder_;
  std::string transcript_;
};

}  // namespace tarvelin::testing
