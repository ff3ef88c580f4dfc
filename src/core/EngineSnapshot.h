#pragma once

#include <tuple>
#include <vector>

#include "core/AgentSession.h"
#include "core/AppGroup.h"
#include "core/BluetoothPeripheral.h"
#include "core/ContainerSample.h"
#include "core/DevProject.h"
#include "core/Field.h"
#include "core/IdleServer.h"
#include "core/Insight.h"
#include "core/ListeningPortItem.h"
#include "core/MountedVolume.h"
#include "core/PlanLimitStatus.h"
#include "core/SleepBlocker.h"
#include "core/StrainKind.h"
#include "core/SystemSample.h"

namespace korvantis {

/// Everything that one tick produced: what the screens and the bridge see.
struct EngineSnapshot {
  SystemSample system;
  std::vector<AppGroup> appGroups;
  std::vector<DevProject> projects;
  std::vector<ContainerSample> containers;
  std::vector<IdleServer> idleServers;
  std::vector<ListeningPortItem> listeningPorts;
  /// The whole recent list, at most 25, newest first; not only what fired in this tick.
  std::vector<Insight> newInsights;
  std::vector<StrainKind> activeStrains;
  std::vector<AgentSession> agentSessions;
  std::vector<PlanLimitStatus> planLimits;
  std::vector<SleepBlocker> sleepBlockers;
  std::vector<BluetoothPeripheral> bluetoothDevices;
  std::vector<MountedVolume> volumes;

  bool operator==(const EngineSnapshot&) const = default;

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"system", &EngineSnapshot::system},
                      Field{"appGroups", &EngineSnapshot::appGroups},
                      Field{"projects", &EngineSnapshot::projects},
                      Field{"containers", &EngineSnapshot::containers},
                      Field{"idleServers", &EngineSnapshot::idleServers},
                      Field{"listeningPorts", &EngineSnapshot::listeningPorts},
                      Field{"newInsights", &EngineSnapshot::newInsights},
                      Field{"activeStrains", &EngineSnapshot::activeStrains},
                      Field{"agentSessions", &EngineSnapshot::agentSessions},
                      Field{"planLimits", &EngineSnapshot::planLimits},
                      Field{"sleepBlockers", &EngineSnapshot::sleepBlockers},
                      Field{"bluetoothDevices", &EngineSnapshot::bluetoothDevices},
                      Field{"volumes", &EngineSnapshot::volumes}};
  }
};

}  // namespace korvantis
