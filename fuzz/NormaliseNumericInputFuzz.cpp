// Reads any text as a value typed into a label. The first byte chooses decimal (odd) or percentage
// (even) display. A value is at most 1, and a value from 0 to 1 shown as an unrounded decimal must read
// back as exactly itself.
#include <cmath>
#include <string>

#include "FuzzSupport.h"
#include "mainwindow/modDisplay.h"
#include "util/TarvelinError.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  if (Size == 0) {
    return 0;
  }
  const bool decimal = (Data[0] & 1) != 0;
  double value = 0;
  try {
    value = NormaliseNumericInput(AsText(Data + 1, Size - 1), decimal);
  } catch (const TarvelinError&) {
    return 0;
  }
  Require(std::isfinite(value) && value <= 1.0, "a typed value is finite and at most 1");
  if (value < 0.0) {
    return 0;
  }
  double shown = value;
  const std::string text = FormatNumberForDisplay(shown, -1, true);
  Require(NormaliseNumericInput(text, true) == value, "an unrounded decimal reads back as itself");
  double percent = value;
  FormatNumberForDisplay(percent, 3, false);
  return 0;
}
