#pragma once

#include <vector>

#include "core/StrainKind.h"
#include "core/SystemSample.h"
#include "core/ThermalSample.h"

/// What is under strain at this very moment. Nothing is remembered. Any thread.
namespace korvantis::StrainRules {

/// Whether the machine counts as hot: by its hottest sensor, from `hotCelsius` on, or because the
/// system itself says so.
bool isHot(const ThermalSample& thermal, double hotCelsius);

/// Everything under strain, in the order of the cases.
std::vector<StrainKind> activeStrains(const SystemSample& system, double hotCelsius);

}  // namespace korvantis::StrainRules
