#pragma once

#include <cstdint>
#include <string>

#include "core/EngineSnapshot.h"

namespace korvantis::test {

inline AppGroup groupNamed(const std::string& name, double cpuPercent) {
  AppGroup group;
  group.name = name;
  group.cpuPercent = cpuPercent;
  return group;
}

inline void fillMachine(EngineSnapshot& snapshot) {
  SystemSample& system = snapshot.system;
  system.cpuPercent = 12.5;
  system.memoryUsedBytes = 8'000'000'001;
  system.memoryTotalBytes = 17'179'869'184;
  system.memoryPressure = MemoryPressureLevel::warning;
  system.gpuPercent = 3.25;
  system.neuralEnginePercent = 1.75;
  system.thermal.cpuCelsius = 61.5;
  system.thermal.systemPowerWatts = 9.5;
  system.networkInBytesPerSec = 1024.5;
  system.networkOutBytesPerSec = 512.25;
  snapshot.activeStrains = {StrainKind::memory, StrainKind::neuralEngine};
}

inline void fillGroups(EngineSnapshot& snapshot) {
  AppGroup& editor = snapshot.appGroups.emplace_back(groupNamed("Editor", 5.5));
  editor.id = "/Applications/Editor.app";
  editor.memoryBytes = 300'000'000;
  editor.energyWatts = 0.5;
  editor.processes.resize(3);
  AppGroup& node = snapshot.appGroups.emplace_back(groupNamed("node", 80.5));
  node.id = "daemon:node";
  node.memoryBytes = 200'000'000;
  node.energyWatts = 2.5;
  node.processes.resize(1);
}

inline ListeningPortItem portItem(std::uint16_t port, std::int32_t pid, const std::string& process,
                                  const std::string& application) {
  ListeningPortItem item;
  item.port = port;
  item.pid = pid;
  item.processName = process;
  item.appName = application;
  return item;
}

inline void fillServers(EngineSnapshot& snapshot) {
  ListeningPortItem& shop =
      snapshot.listeningPorts.emplace_back(portItem(3000, 41, "node", "Editor"));
  shop.projectName = "shop";
  shop.isIdle = true;
  snapshot.listeningPorts.push_back(portItem(5432, 42, "postgres", "Db"));
  DevProject& project = snapshot.projects.emplace_back();
  project.name = "shop";
  project.path = "/home/ada/shop";
  project.cpuPercent = 7.5;
  project.memoryBytes = 123'456;
  project.ports = {3000, 3001};
  IdleServer& server = snapshot.idleServers.emplace_back();
  server.pid = 43;
  server.name = "vite";
  server.projectName = "site";
  server.ports = {5173};
  server.memoryBytes = 654'321;
  server.idleSeconds = 1800.5;
}

inline void fillAgents(EngineSnapshot& snapshot) {
  AgentSession& session = snapshot.agentSessions.emplace_back();
  session.pid = 44;
  session.toolName = "Claude Code";
  session.state = AgentState::waitingForApproval;
  session.projectName = "shop";
  session.cpuPercent = 2.5;
  session.memoryBytes = 777;
  PlanLimitStatus& plan = snapshot.planLimits.emplace_back();
  plan.tool = "Tool";
  plan.planName = "Plan";
  plan.fiveHourUsedPercent = 40.5;
  plan.weeklyUsedPercent = 20.5;
  plan.paceText = "Ahead";
}

/// A snapshot in which every figure that the bridge tells is another one.
inline EngineSnapshot bridgeSnapshot() {
  EngineSnapshot snapshot;
  fillMachine(snapshot);
  fillGroups(snapshot);
  fillServers(snapshot);
  fillAgents(snapshot);
  return snapshot;
}

/// A snapshot with this many listening ports.
inline EngineSnapshot snapshotWithPorts(int count) {
  EngineSnapshot snapshot;
  for (int index = 0; index < count; ++index) {
    const std::string number = std::to_string(index);
    ListeningPortItem& item = snapshot.listeningPorts.emplace_back(
        portItem(static_cast<std::uint16_t>(3000 + index), 1000 + index, "server-" + number,
                 "Application " + number));
    item.projectName = "project-" + number;
    item.isIdle = index % 2 == 0;
  }
  return snapshot;
}

}  // namespace korvantis::test
