#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/Instant.h"
#include "core/Reading.h"
#include "history/ExportedCSVFiles.h"
#include "state/MonitorStore.h"
#include "support/ScriptedAudio.h"

namespace korvantis {

/// A store over an engine that answers with what the test put here, and a log of what was asked of
/// it. The timer never fires; a test ticks by hand.
struct ScriptedStore {
  EngineSnapshot next;
  HardwareInfo hardware;
  bool systemIsDark = true;
  /// Without devices at first.
  test::ScriptedAudio audio;
  int ticks = 0;
  /// How often a verdict on quitting was asked for.
  int verdicts = 0;
  std::vector<std::pair<std::string, bool>> quitGroups;
  std::vector<std::pair<std::int32_t, bool>> stoppedProcesses;
  /// Fans and the speeds wished for them; absent is automatic control.
  std::vector<std::pair<std::int64_t, std::optional<double>>> fanWishes;
  std::vector<double> timerPeriods;
  /// Where the settings are kept; empty for nowhere. Settled when the store is made.
  std::string settingsPath;
  /// What briefs made the outside do: "program", "request" or "open".
  std::vector<std::string> sent;
  /// Where the last request went.
  std::string requestedURL;
  /// The clock, in seconds since 1970.
  double now = 1000;
  /// What the history answers, whatever the range; a test may put a real one in its place.
  std::vector<Reading> readings;
  std::vector<HistoricalAppSummary> summaries;
  std::function<std::vector<Reading>(Instant)> loadReadings = [this](Instant) { return readings; };
  std::function<std::vector<HistoricalAppSummary>(Instant)> loadAppSummaries = [this](Instant) {
    return summaries;
  };
  /// From when on the readings were loaded, each time.
  std::vector<Instant> readingLoads;
  std::optional<ExportedCSVFiles> exported;
  int exports = 0;

  /// Made on first use, from what was scripted up to then.
  MonitorStore& store();

  /// What a store asks of outside, for a test that makes one itself.
  MonitorStoreCalls storeCalls() { return calls(); }
  /// From the next look at the devices on there are headphones (70), a microphone (71) and an
  /// interface that does both (72); the interface is the default output, the microphone the input.
  void plugInAudio();

  /// One tick with what is scripted now.
  void tick() { store().refreshTick(); }

  /// Delivers the briefs that are on their way.
  void runBackground();

 private:
  MonitorStoreCalls calls();
  void scriptDelivery(MonitorStoreCalls& calls);

  std::vector<std::function<void()>> backgroundTasks_;
  std::unique_ptr<MonitorStore> store_;
};

/// An application with these processes; its figures are the sums of theirs.
AppGroup makeGroup(const std::string& name, std::vector<ProcessSample> processes = {});

/// A process with that pid and name, begun at second `pid`.
ProcessSample makeProcess(std::int32_t pid, const std::string& name);

/// So many rows of the history, five minutes apart, the last one at `lastStart`; the load of the
/// processor rises by 1 from row to row, its peaks are 10 above.
std::vector<Reading> makeReadings(int count, std::int64_t lastStart);

/// So many applications of the ledger, such as "Application 1".
std::vector<HistoricalAppSummary> makeSummaries(int count);

/// An application of the ledger with a figure in every column, each another one.
HistoricalAppSummary makeFullSummary();

/// So many findings of different targets, the newest last.
std::vector<Insight> makeInsights(int count);

/// An agent with so many children: "child1", "child2" and so on.
AgentSession makeAgent(std::int32_t pid, int children = 0);

/// The limits of the two plans as they are before any log was read.
std::vector<PlanLimitStatus> makePlanLimits();

}  // namespace korvantis
