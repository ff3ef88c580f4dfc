#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/AppGroup.h"
#include "core/AppLimit.h"
#include "core/IdleServer.h"
#include "core/Insight.h"
#include "core/SystemSample.h"
#include "core/ThermalSample.h"

/// The findings in words: each with its kind, its target and its three texts, still without an id
/// and a time of its own. A group given as a pointer may be absent (nullptr). Any thread.
namespace korvantis::InsightTexts {

/// An application that keeps several cores busy.
Insight sustainedCPU(const AppGroup& app);

/// An application that has grown since its memory was `baselineBytes`.
Insight memoryGrowth(const AppGroup& app, std::uint64_t baselineBytes);

/// The machine is short of memory; `topHolder` is named with it.
Insight memoryPressure(const SystemSample& system, const AppGroup* topHolder);

/// The disk is written to at a great rate, most of it by `topWriter`.
Insight diskBurst(const SystemSample& system, const AppGroup* topWriter);

/// The network is busy in either direction.
Insight networkBurst(const SystemSample& system);

/// Servers that nobody has used for a while.
Insight idleServers(const std::vector<IdleServer>& servers);

/// The machine is warm.
Insight runningHot(const ThermalSample& thermal);

/// `holder` uses the Neural Engine to `percent`.
Insight neuralEngineBusy(const std::string& holder, double percent);

/// An application stands at or over a limit of the user's.
Insight appLimit(const AppGroup& app, const AppLimit& limit);

/// The group with the most memory, told so that a quiet start does not leave the list blank.
Insight topMemoryHolder(const AppGroup& group);

}  // namespace korvantis::InsightTexts
