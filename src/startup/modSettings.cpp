#include "startup/modSettings.h"

#include <cmath>
#include <type_traits>
#include <variant>

#include "startup/cRegistry_Wrapper.h"
#include "startup/modStartup.h"
#include "util/libmodSpecialFolders.h"

namespace tarvelin {

namespace {

using SettingValue = std::variant<std::string, int32_t, bool>;
using SettingMember =
    std::variant<std::string ApplicationSettings::*, int32_t ApplicationSettings::*, bool ApplicationSettings::*>;
// A default may depend on the window and on the settings read before it.
using DefaultOf = SettingValue (*)(const SettingsDefaults&, const ApplicationSettings&);

struct Setting {
  const char* Name;
  SettingMember Member;
  DefaultOf Default;
  SettingsStage ReadAt;
  bool Written;
};

// Half the free space, in whole twips (halves round to even).
int32_t Centred(int32_t Screen, int32_t Window) {
  return static_cast<int32_t>(std::nearbyint(Screen / 2.0 - Window / 2.0));
}

SettingValue TheDocumentsFolder(const SettingsDefaults&, const ApplicationSettings&) {
  return DocumentsFolder();
}
template <bool Flag>
SettingValue Constant(const SettingsDefaults&, const ApplicationSettings&) {
  return Flag;
}
SettingValue DesignWidth(const SettingsDefaults& Defaults, const ApplicationSettings&) {
  return Defaults.DesignWidth;
}
SettingValue DesignHeight(const SettingsDefaults& Defaults, const ApplicationSettings&) {
  return Defaults.DesignHeight;
}
SettingValue CentredLeft(const SettingsDefaults& Defaults, const ApplicationSettings& Read) {
  return Centred(Defaults.ScreenWidth, Read.WindowWidth);
}
SettingValue CentredTop(const SettingsDefaults& Defaults, const ApplicationSettings& Read) {
  return Centred(Defaults.ScreenHeight, Read.WindowHeight);
}

using A = ApplicationSettings;
using S = SettingsStage;

// Every setting with its type (the member's), its default and when it is read, in the order of saving.
const Setting SettingsTable[] = {
    {"LastUsedDir", &A::LastUsedDir, TheDocumentsFolder, S::BeforeCommandLine, true},
    {"ShowSettingsOnNew", &A::ShowSettingsOnNew, Constant<true>, S::StartUp, true},
    {"NormaliseWeights", &A::NormaliseWeights, Constant<false>, S::StartUp, true},
    {"DisplayAsDecimal", &A::DisplayAsDecimal, Constant<true>, S::StartUp, true},
    {"WindowLeft", &A::WindowLeft, CentredLeft, S::WindowPosition, true},
    {"WindowTop", &A::WindowTop, CentredTop, S::WindowPosition, true},
    {"WindowWidth", &A::WindowWidth, DesignWidth, S::WindowSize, true},
    {"WindowHeight", &A::WindowHeight, DesignHeight, S::WindowSize, true},
    {"Maximized", &A::Maximized, Constant<false>, S::Never, true},
    {"AppMaximized", &A::AppMaximized, Constant<false>, S::WindowPosition, false},
    {"ShowInsight", &A::ShowInsight, Constant<true>, S::StartUp, true},
    {"SplitScoreBars", &A::SplitScoreBars, Constant<false>, S::StartUp, true},
};

constexpr ERegistryClassKey SettingsHive = ERegistryClassKey::CurrentUser;

std::string ReadSetting(const char* Name, const std::string& Default) {
  return GetRegistryText(SettingsHive, SettingsKey, Name, Default);
}
int32_t ReadSetting(const char* Name, int32_t Default) {
  return GetRegistryNumber(SettingsHive, SettingsKey, Name, Default);
}
bool ReadSetting(const char* Name, bool Default) {
  return GetRegistryBoolean(SettingsHive, SettingsKey, Name, Default);
}

// A failed write is not reported: the settings are a convenience and must never stop the program.
void WriteSetting(const char* Name, const std::string& Value) {
  SetRegistryText(SettingsHive, SettingsKey, Name, Value);
}
void WriteSetting(const char* Name, int32_t Value) {
  SetRegistryNumber(SettingsHive, SettingsKey, Name, Value);
}
void WriteSetting(const char* Name, bool Value) {
  SetRegistryBoolean(SettingsHive, SettingsKey, Name, Value);
}

}  // namespace

void ReadSettings(SettingsStage Stage, ApplicationSettings& Settings, const SettingsDefaults& Defaults) {
  for (const Setting& setting : SettingsTable) {
    if (setting.ReadAt != Stage) {
      continue;
    }
    std::visit(
        [&](auto Member) {
          using Type = std::remove_cvref_t<decltype(Settings.*Member)>;
          Settings.*Member = ReadSetting(setting.Name, std::get<Type>(setting.Default(Defaults, Settings)));
        },
        setting.Member);
  }
}

void WriteSettings(const ApplicationSettings& Settings) {
  for (const Setting& setting : SettingsTable) {
    if (setting.Written) {
      std::visit([&](auto Member) { WriteSetting(setting.Name, Settings.*Member); }, setting.Member);
    }
  }
}

WindowPlacement ReadWindowPlacement(const SettingsDefaults& Defaults) {
  ApplicationSettings settings;
  ReadSettings(SettingsStage::WindowSize, settings, Defaults);
  ReadSettings(SettingsStage::WindowPosition, settings, Defaults);
  return {settings.WindowLeft, settings.WindowTop, settings.WindowWidth, settings.WindowHeight, settings.AppMaximized};
}

void SaveSettings(const WindowPlacement& Placement) {
  const ProgramState& state = Program();
  ApplicationSettings settings;
  settings.LastUsedDir = state.LastUsedDir;
  settings.ShowSettingsOnNew = state.ShowSettingsOnNew;
  settings.NormaliseWeights = state.Topic != nullptr && state.Topic->NormaliseWeights();
  settings.DisplayAsDecimal = state.DisplayAsDecimal;
  settings.WindowLeft = Placement.Left;
  settings.WindowTop = Placement.Top;
  settings.WindowWidth = Placement.Width;
  settings.WindowHeight = Placement.Height;
  settings.Maximized = Placement.Maximized;
  settings.ShowInsight = state.ShowInsight;
  settings.SplitScoreBars = state.SplitScoreBars;
  WriteSettings(settings);
}

void RemoveSettings() {
  for (const ERegistryClassKey hive : {ERegistryClassKey::CurrentUser, ERegistryClassKey::LocalMachine}) {
    DeleteRegistryKey(hive, SettingsKey);
    if (RegistryKeyExists(hive, VendorKey)) {
      DeleteRegistryKey(hive, VendorKey);
    }
  }
}

}  // namespace tarvelin
