#include "startup/WindowPlacement.h"

#include <algorithm>

namespace tarvelin {

namespace {

// The length that two spans share; zero when they do not meet.
long long SharedLength(int StartA, int LengthA, int StartB, int LengthB) {
  const long long start = std::max<long long>(StartA, StartB);
  const long long end =
      std::min<long long>(static_cast<long long>(StartA) + LengthA, static_cast<long long>(StartB) + LengthB);
  return std::max(0LL, end - start);
}

// One axis of the fit: the span shrunk to the area's length, then clamped to start inside it.
void FitSpan(int& Start, int& Length, int AreaStart, int AreaLength) {
  Length = std::min(Length, AreaLength);
  Start = std::clamp(Start, AreaStart, AreaStart + AreaLength - Length);
}

}  // namespace

std::size_t ScreenForWindow(const WindowRect& Window, const std::vector<WindowRect>& AvailableAreas) {
  std::size_t best = 0;
  long long bestOverlap = 0;
  for (std::size_t index = 0; index < AvailableAreas.size(); ++index) {
    const WindowRect& area = AvailableAreas[index];
    const long long overlap = SharedLength(Window.Left, Window.Width, area.Left, area.Width) *
                              SharedLength(Window.Top, Window.Height, area.Top, area.Height);
    if (overlap > bestOverlap) {
      best = index;
      bestOverlap = overlap;
    }
  }
  return best;
}

WindowRect FitWindowOnScreen(const WindowRect& Window, const WindowRect& AvailableArea) {
  if (AvailableArea.Width <= 0 || AvailableArea.Height <= 0) {
    return Window;
  }
  WindowRect fitted = Window;
  FitSpan(fitted.Left, fitted.Width, AvailableArea.Left, AvailableArea.Width);
  FitSpan(fitted.Top, fitted.Height, AvailableArea.Top, AvailableArea.Height);
  return fitted;
}

}  // namespace tarvelin
