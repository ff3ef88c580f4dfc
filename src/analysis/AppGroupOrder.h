#pragma once

#include "core/AppGroup.h"

namespace korvantis {

/// Whether `first` goes before `second` in a list of groups: applications first, then the higher
/// CPU where it differs by more than 2.0, else the higher memory. The band keeps groups of like
/// load from changing places at every tick. It also makes the order not transitive, so only
/// `stableMergeSort` can sort by it. Any thread.
bool goesBefore(const AppGroup& first, const AppGroup& second);

}  // namespace korvantis
