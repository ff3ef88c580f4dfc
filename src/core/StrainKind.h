#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// What the machine is under strain in. The raw value is also its identity.
enum class StrainKind { cpu, memory, gpu, neuralEngine, temperature, disk, battery };

template <>
struct EnumerationTable<StrainKind> {
  using Raw = std::string_view;
  using Row = EnumerationRow<StrainKind, Raw>;
  static constexpr std::array rows{Row{StrainKind::cpu, "cpu"},
                                   Row{StrainKind::memory, "memory"},
                                   Row{StrainKind::gpu, "gpu"},
                                   Row{StrainKind::neuralEngine, "neuralEngine"},
                                   Row{StrainKind::temperature, "temperature"},
                                   Row{StrainKind::disk, "disk"},
                                   Row{StrainKind::battery, "battery"}};
};

}  // namespace korvantis
