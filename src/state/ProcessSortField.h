#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// What the list of applications can be sorted by. The raw value is the label.
enum class ProcessSortField { memory, cpu, energy, network, disk, gpu };

template <>
struct EnumerationTable<ProcessSortField> {
  using Raw = std::string_view;
  using Row = EnumerationRow<ProcessSortField, Raw>;
  static constexpr std::array rows{
      Row{ProcessSortField::memory, "Memory"}, Row{ProcessSortField::cpu, "CPU"},
      Row{ProcessSortField::energy, "Energy"}, Row{ProcessSortField::network, "Network"},
      Row{ProcessSortField::disk, "Disk"},     Row{ProcessSortField::gpu, "GPU"}};
};

template <>
struct CaseNames<ProcessSortField> {
  static constexpr std::array<std::string_view, 6> names{"memory",  "cpu",  "energy",
                                                         "network", "disk", "gpu"};
};

}  // namespace korvantis
