#pragma once

#include <vector>

#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "state/LookStore.h"
#include "ui/panes/OverviewCards.h"

/// What the cards of the overview say about one tick. Main thread, for the look's sake.
namespace korvantis::OverviewCardWords {

CPUCard cpu(const EngineSnapshot& snapshot, const HardwareInfo& hardware);
MemoryCard memory(const SystemSample& system);
GPUCard gpu(const SystemSample& system, const HardwareInfo& hardware);
ThermalCard thermal(const ThermalSample& thermal, const LookStore& look);
NetworkCard network(const EngineSnapshot& snapshot);
DiskCard disk(const EngineSnapshot& snapshot);
BatteryCard battery(const EngineSnapshot& snapshot, const LookStore& look);
TopAppsCard topApps(const EngineSnapshot& snapshot);

/// The applications with the most memory, at most 5; `icon` is the bundle's path, `id` the
/// application's.
std::vector<CardRow> largestApps(const EngineSnapshot& snapshot);

/// Reading and writing added up entry by entry, over the shorter of the two.
QList<double> diskHistory(const QList<double>& read, const QList<double>& written);

}  // namespace korvantis::OverviewCardWords
