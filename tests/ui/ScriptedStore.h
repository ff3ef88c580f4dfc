#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "state/MonitorStore.h"

namespace korvantis {

/// A store over an engine that answers with what the test put here, and a log of what was asked of
/// it. The timer never fires; a test ticks by hand.
struct ScriptedStore {
  EngineSnapshot next;
  HardwareInfo hardware;
  bool systemIsDark = true;
  int ticks = 0;
  /// How often a verdict on quitting was asked for.
  int verdicts = 0;
  std::vector<std::pair<std::string, bool>> quitGroups;
  std::vector<std::pair<std::int32_t, bool>> stoppedProcesses;
  /// Fans and the speeds wished for them; absent is automatic control.
  std::vector<std::pair<std::int64_t, std::optional<double>>> fanWishes;
  std::vector<double> timerPeriods;

  /// Made on first use, from what was scripted up to then.
  MonitorStore& store();

  /// One tick with what is scripted now.
  void tick() { store().refreshTick(); }

 private:
  MonitorStoreCalls calls();

  std::unique_ptr<MonitorStore> store_;
};

/// An application with these processes; its figures are the sums of theirs.
AppGroup makeGroup(const std::string& name, std::vector<ProcessSample> processes = {});

/// A process with that pid and name, begun at second `pid`.
ProcessSample makeProcess(std::int32_t pid, const std::string& name);

/// So many findings of different targets, the newest last.
std::vector<Insight> makeInsights(int count);

}  // namespace korvantis
