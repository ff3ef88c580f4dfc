#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// The figure that a user limit watches. The raw value is also the label shown.
enum class AppLimitFigure { cpuPercent, memoryMB, gpuPercent, energyWatts };

template <>
struct EnumerationTable<AppLimitFigure> {
  using Raw = std::string_view;
  using Row = EnumerationRow<AppLimitFigure, Raw>;
  static constexpr std::array rows{
      Row{AppLimitFigure::cpuPercent, "CPU %"}, Row{AppLimitFigure::memoryMB, "Memory (MB)"},
      Row{AppLimitFigure::gpuPercent, "GPU %"}, Row{AppLimitFigure::energyWatts, "Energy (W)"}};
};

}  // namespace korvantis
