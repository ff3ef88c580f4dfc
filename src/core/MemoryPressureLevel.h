#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// The system's own memory pressure levels. The raw values are the kernel's 1, 2 and 4.
enum class MemoryPressureLevel { normal = 1, warning = 2, critical = 4 };

template <>
struct EnumerationTable<MemoryPressureLevel> {
  using Raw = int;
  using Row = EnumerationRow<MemoryPressureLevel, Raw>;
  static constexpr std::array rows{Row{MemoryPressureLevel::normal, 1},
                                   Row{MemoryPressureLevel::warning, 2},
                                   Row{MemoryPressureLevel::critical, 4}};
};

/// The word shown for a level.
constexpr std::string_view label(MemoryPressureLevel level) {
  switch (level) {
    case MemoryPressureLevel::normal: return "Normal";
    case MemoryPressureLevel::warning: return "Warning";
    case MemoryPressureLevel::critical: return "Critical";
  }
  return "";
}

}  // namespace korvantis
