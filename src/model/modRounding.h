#pragma once

namespace tarvelin {

// Rounds Value to Places decimal places (Places >= 0), a tie going to the even neighbour. The decision is
// taken on the value's shortest decimal form, the digits a person sees, so 0.0625 gives 0.062 and 0.35 gives
// 0.4 at three and one place although neither is exactly a tie in binary. Infinities and NaN are returned
// unchanged.
double BankersRound(double Value, int Places);

}  // namespace tarvelin
