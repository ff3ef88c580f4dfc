#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// Which look the screens take. The raw value is what is stored.
enum class AppThemeMode { system, dark, light };

template <>
struct EnumerationTable<AppThemeMode> {
  using Raw = std::string_view;
  using Row = EnumerationRow<AppThemeMode, Raw>;
  static constexpr std::array rows{Row{AppThemeMode::system, "System"},
                                   Row{AppThemeMode::dark, "Dark"},
                                   Row{AppThemeMode::light, "Light"}};
};

template <>
struct CaseNames<AppThemeMode> {
  static constexpr std::array<std::string_view, 3> names{"system", "dark", "light"};
};

/// The words for it.
constexpr std::string_view label(AppThemeMode value) {
  switch (value) {
    case AppThemeMode::system: return "System (Auto)";
    case AppThemeMode::dark: return "Dark Mode";
    case AppThemeMode::light: return "Light Mode";
  }
  return "";
}

/// The words for it where room is short.
constexpr std::string_view shortLabel(AppThemeMode value) {
  switch (value) {
    case AppThemeMode::system: return "Auto";
    case AppThemeMode::dark: return "Dark";
    case AppThemeMode::light: return "Light";
  }
  return "";
}

/// The name of its system symbol.
constexpr std::string_view iconName(AppThemeMode value) {
  switch (value) {
    case AppThemeMode::system: return "circle.lefthalf.filled";
    case AppThemeMode::dark: return "moon.stars.fill";
    case AppThemeMode::light: return "sun.max.fill";
  }
  return "";
}

}  // namespace korvantis
