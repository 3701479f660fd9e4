#pragma once

#include <cstddef>
#include <vector>

namespace tarvelin {

// A rectangle in pixels of the desktop's coordinate space.
struct WindowRect {
  int Left = 0, Top = 0, Width = 0, Height = 0;
  bool operator==(const WindowRect&) const = default;
};

// The screen a remembered window belongs on: the one it overlaps most, else the first (the primary screen),
// as when the monitor it was last on is gone. Zero for an empty list.
std::size_t ScreenForWindow(const WindowRect& Window, const std::vector<WindowRect>& AvailableAreas);

// The remembered window brought inside a screen's available area: first shrunk to fit, then moved the least
// distance that puts it wholly inside. A window that already fits is returned as it is, and so is any window
// when the area is empty.
WindowRect FitWindowOnScreen(const WindowRect& Window, const WindowRect& AvailableArea);

}  // namespace tarvelin
