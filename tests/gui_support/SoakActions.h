#pragma once

#include <random>
#include <string>

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

}  // namespace tarvelin::testing
