#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/AppGroup.h"
#include "core/AppLimit.h"
#include "core/IdleServer.h"
#include "core/Insight.h"
#include "core/Instant.h"
#include "core/MutedApp.h"
#include "core/StrainKind.h"
#include "core/SystemSample.h"
#include "core/Uuid.h"
#include "platform/Clock.h"
#include "platform/RandomCalls.h"

namespace korvantis {

/// The program's judgement: turns the figures of a tick into findings in words and says what is
/// under strain. Between ticks it remembers how long an application has been busy, what its memory
/// has grown from, when each finding was last told, and the last findings; all of that ends with
/// the process.
///
/// Any thread, also several at once: each evaluation is atomic, and all callers share one memory.
class InsightEngine {
 public:
  /// What one tick led to.
  struct Evaluation {
    /// The last findings, newest first, at most 25; also those that earlier ticks found.
    std::vector<Insight> newInsights;
    /// By this tick alone, in the order of the cases.
    std::vector<StrainKind> activeStrains;
  };

  /// An engine that takes the time from `clock` and its findings' ids from `random`.
  InsightEngine(Clock clock, RandomCalls random);

  /// Judges one tick. Where several groups could be meant, the order of `appGroups` decides.
  /// `appLimits` are all limits, enabled or not, and `mutedApps` all mutes, also those that have
  /// ended. `hotCelsius` is the temperature from which the machine counts as hot. Never fails.
  Evaluation evaluate(const SystemSample& system, const std::vector<AppGroup>& appGroups,
                      const std::vector<IdleServer>& idleServers,
                      const std::vector<AppLimit>& appLimits,
                      const std::vector<MutedApp>& mutedApps, double hotCelsius);

 private:
  struct Tick;
  /// What an application's growth is measured from. Nothing reads `date` so far.
  struct MemoryBaseline {
    std::uint64_t bytes = 0;
    Instant date;
  };

  void judgeApps(const Tick& tick);
  void judgeSustainedCPU(const AppGroup& app, Instant now);
  void judgeMemoryGrowth(const AppGroup& app, Instant now);
  void judgeMemoryPressure(const Tick& tick);
  void judgeDiskBurst(const Tick& tick);
  void judgeNetworkBurst(const Tick& tick);
  void judgeIdleServers(const Tick& tick);
  void judgeHeat(const Tick& tick);
  void judgeNeuralEngine(const Tick& tick);
  void judgeAppLimit(const AppLimit& limit, const Tick& tick);
  void judgeTopMemoryHolder(const Tick& tick);
  bool canFire(std::string key, double cooldown, Instant now);
  void appendInsight(Insight insight, Instant now);

  Clock clock;
  RandomCalls random;
  /// Guards the fields below, and is held for a whole evaluation, so that two ticks at once can't
  /// tell one finding twice. Nothing called under it blocks.
  std::mutex lock;
  /// Since when an application has been at the limit for busy ones without a break, by its id.
  std::unordered_map<std::string, Instant> appHighCPUSince;
  /// By application id.
  std::unordered_map<std::string, MemoryBaseline> appBaselineMemory;
  /// Since when a limit has been reached without a break, by the limit's id.
  std::unordered_map<Uuid, Instant> appLimitExceededSince;
  /// When each finding was last told.
  std::unordered_map<std::string, Instant> lastFiredByKey;
  /// Newest first.
  std::vector<Insight> recentInsights;
};

}  // namespace korvantis
