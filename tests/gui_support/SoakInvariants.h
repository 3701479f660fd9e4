#pragma once

#include <string>
#include <vector>

namespace tarvelin {
class frmMain;
}

namespace tarvelin::testing {

// Everything in which the main window disagrees with the live topic, one line each, empty when nothing
// does: counts within 1 and the maxima and matching every control array, every value from 0 to 1, every
// slider and value label showing the model's value, names and title, the best score bars' colour, the
// panels' rows shown as their toggles say, the add buttons and an open edit box standing over a live label.
std::vector<std::string> WindowDisagreements(const frmMain& Window);

}  // namespace tarvelin::testing
