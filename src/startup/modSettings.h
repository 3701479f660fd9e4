#pragma once

#include <cstdint>
#include <string>

namespace tarvelin {

// The key of the program's settings in the current user's hive, and the vendor's key above it.
inline constexpr const char* SettingsKey = "Software\\Pelvora\\Tarvelin";
inline constexpr const char* VendorKey = "Software\\Pelvora";

// Every persisted setting. The window values are the main window's outer placement in twips.
struct ApplicationSettings {
  std::string LastUsedDir;
  bool ShowSettingsOnNew = true;
  bool NormaliseWeights = false;
  bool DisplayAsDecimal = true;
  int32_t WindowLeft = 0, WindowTop = 0, WindowWidth = 0, WindowHeight = 0;
  // The window ended maximised: written on exit, never read back.
  bool Maximized = false;
  // The window comes up maximised: read at start, never written, so only a hand-set value has an effect.
  // The two names differ on purpose; they must not be unified.
  bool AppMaximized = false;
  bool ShowInsight = true;
  bool SplitScoreBars = false;
};

// When each setting is read. The window's position defaults to centred on the screen, which needs the size
// read before it, hence two steps for the window.
enum class SettingsStage { BeforeCommandLine, StartUp, WindowSize, WindowPosition, Never };

// What the window-dependent defaults are made of (twips).
struct SettingsDefaults {
  int32_t DesignWidth = 0, DesignHeight = 0;
  int32_t ScreenWidth = 0, ScreenHeight = 0;
};

// Reads every setting of a stage into Settings; a value that is missing or unreadable takes its default.
void ReadSettings(SettingsStage Stage, ApplicationSettings& Settings, const SettingsDefaults& Defaults = {});
// Writes every setting that is saved, in the save order; a failed write is not reported.
void WriteSettings(const ApplicationSettings& Settings);

// The main window's placement, in twips.
struct WindowPlacement {
  int32_t Left = 0, Top = 0, Width = 0, Height = 0;
  bool Maximized = false;
};

// For the main window's load: the stored size (default the design-time size), then the stored position
// (default centred on the screen at that size), and whether to come up maximised (AppMaximized).
WindowPlacement ReadWindowPlacement(const SettingsDefaults& Defaults);
// For the main window's unload: saves the program-wide settings of Program() (the live topic's
// NormaliseWeights included) with the window's current placement, Maximized meaning it is maximised now.
void SaveSettings(const WindowPlacement& Placement);

// Removes the settings key, then the vendor key if it is still there, first in the current user's hive and
// then in the local machine's. A vendor key that still holds another program's key is kept.
void RemoveSettings();

}  // namespace tarvelin
