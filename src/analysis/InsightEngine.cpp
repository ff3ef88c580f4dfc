#include "analysis/InsightEngine.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "analysis/CaseInsensitiveText.h"
#include "analysis/InsightTexts.h"
#include "analysis/StrainRules.h"

namespace korvantis {

namespace {

using MutedAppIDs = std::unordered_set<std::string_view>;

constexpr std::size_t mostRecentInsights = 25;
constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;

constexpr double busyCPUPercent = 150;
constexpr double veryBusyCPUPercent = 260;
constexpr double secondsUntilSustained = 30;
constexpr std::uint64_t leastBaselineBytes = 64 * mebibyte;
constexpr std::uint64_t leastGrowthBytes = 512 * mebibyte;
constexpr double leastGrowthFactor = 1.5;
constexpr std::uint64_t mostSwapBytes = 2048 * mebibyte;
constexpr double diskBurstBytesPerSec = 83'886'080;
constexpr double networkBurstBytesPerSec = 26'214'400;
constexpr double busyNeuralEnginePercent = 15;
/// A limit of fewer minutes than these does not wait at all.
constexpr std::int64_t leastWaitingMinutes = 2;

/// How many seconds must pass before a finding is told again.
constexpr double usualCooldown = 600;
constexpr double memoryGrowthCooldown = 1200;
constexpr double networkBurstCooldown = 300;
constexpr double idleServersCooldown = 900;

/// The applications whose mutes are in force. A mute that ends now still is.
MutedAppIDs mutedAppIDs(const std::vector<MutedApp>& mutedApps, Instant now) {
  MutedAppIDs ids;
  for (const MutedApp& muted : mutedApps) {
    if (!muted.until || *muted.until >= now) ids.insert(muted.appID);
  }
  return ids;
}

/// The group with the greatest `figure`, the earliest of those that share it; nullptr when there
/// is no group.
template <typename Figure>
const AppGroup* groupWithMost(const std::vector<AppGroup>& groups, Figure AppGroup::*figure) {
  const auto most = std::max_element(groups.begin(), groups.end(),
                                     [figure](const AppGroup& left, const AppGroup& right) {
                                       return left.*figure < right.*figure;
                                     });
  return most == groups.end() ? nullptr : &*most;
}

/// The first group that a limit can mean, by id or else by name; nullptr when there is none.
const AppGroup* groupOf(const AppLimit& limit, const std::vector<AppGroup>& groups) {
  const auto found = std::find_if(groups.begin(), groups.end(), [&limit](const AppGroup& group) {
    return group.id == limit.appID || equalIgnoringCase(group.name, limit.appName);
  });
  return found == groups.end() ? nullptr : &*found;
}

/// The figure in the unit of its limit.
double valueOf(AppLimitFigure figure, const AppGroup& app) {
  switch (figure) {
    case AppLimitFigure::cpuPercent: return app.cpuPercent;
    case AppLimitFigure::memoryMB:
      return static_cast<double>(app.memoryBytes) / static_cast<double>(mebibyte);
    case AppLimitFigure::gpuPercent: return app.gpuPercent;
    case AppLimitFigure::energyWatts: return app.energyWatts;
  }
  return 0;
}

/// Whether a limit has been reached for long enough.
bool isDue(const AppLimit& limit, double secondsReached) {
  if (limit.minutes < leastWaitingMinutes) return true;
  return secondsReached >= static_cast<double>(limit.minutes) * 60;
}

}  // namespace

/// What all rules of one evaluation look at.
struct InsightEngine::Tick {
  const SystemSample& system;
  const std::vector<AppGroup>& appGroups;
  const std::vector<IdleServer>& idleServers;
  const std::vector<AppLimit>& appLimits;
  const MutedAppIDs& muted;
  double hotCelsius;
  Instant now;
};

InsightEngine::InsightEngine(Clock timeSource, RandomCalls chance)
    : clock(std::move(timeSource)), random(std::move(chance)) {}

InsightEngine::Evaluation InsightEngine::evaluate(const SystemSample& system,
                                                  const std::vector<AppGroup>& appGroups,
                                                  const std::vector<IdleServer>& idleServers,
                                                  const std::vector<AppLimit>& appLimits,
                                                  const std::vector<MutedApp>& mutedApps,
                                                  double hotCelsius) {
  const Instant now{clock.now()};
  const MutedAppIDs muted = mutedAppIDs(mutedApps, now);
  const Tick tick{system, appGroups, idleServers, appLimits, muted, hotCelsius, now};

  const std::scoped_lock guard(lock);
  judgeApps(tick);
  judgeMemoryPressure(tick);
  judgeDiskBurst(tick);
  judgeNetworkBurst(tick);
  judgeIdleServers(tick);
  judgeHeat(tick);
  judgeNeuralEngine(tick);
  for (const AppLimit& limit : appLimits) judgeAppLimit(limit, tick);
  judgeTopMemoryHolder(tick);
  return {.newInsights = recentInsights,
          .activeStrains = StrainRules::activeStrains(system, hotCelsius)};
}

void InsightEngine::judgeApps(const Tick& tick) {
  for (const AppGroup& group : tick.appGroups) {
    // What is remembered of a muted application stays as it is, and counts again after the mute.
    if (group.kind != AppGroupKind::app || tick.muted.contains(group.id)) continue;
    judgeSustainedCPU(group, tick.now);
    judgeMemoryGrowth(group, tick.now);
  }
}

void InsightEngine::judgeSustainedCPU(const AppGroup& app, Instant now) {
  if (app.cpuPercent < busyCPUPercent) {
    appHighCPUSince.erase(app.id);
    return;
  }
  const Instant since = appHighCPUSince.try_emplace(app.id, now).first->second;
  const bool isSustained =
      secondsBetween(since, now) >= secondsUntilSustained || app.cpuPercent >= veryBusyCPUPercent;
  if (isSustained && canFire("cpu:" + app.id, usualCooldown, now)) {
    appendInsight(InsightTexts::sustainedCPU(app), now);
  }
}

void InsightEngine::judgeMemoryGrowth(const AppGroup& app, Instant now) {
  const std::uint64_t memory = app.memoryBytes;
  const auto baseline = appBaselineMemory.find(app.id);
  if (baseline == appBaselineMemory.end()) {
    if (memory > leastBaselineBytes) appBaselineMemory.emplace(app.id, MemoryBaseline{memory, now});
    return;
  }
  const std::uint64_t base = baseline->second.bytes;
  if (memory <= base || memory - base < leastGrowthBytes) return;
  if (static_cast<double>(base) * leastGrowthFactor > static_cast<double>(memory)) return;
  if (canFire("memgrowth:" + app.id, memoryGrowthCooldown, now)) {
    appendInsight(InsightTexts::memoryGrowth(app, base), now);
  }
  // Also when it was not told: growth inside a cooldown is not told later.
  baseline->second = MemoryBaseline{memory, now};
}

void InsightEngine::judgeMemoryPressure(const Tick& tick) {
  const bool isShort = tick.system.memoryPressure != MemoryPressureLevel::normal ||
                       tick.system.swapUsedBytes > mostSwapBytes;
  if (isShort && canFire("sys:mempressure", usualCooldown, tick.now)) {
    const AppGroup* const first = tick.appGroups.empty() ? nullptr : &tick.appGroups.front();
    appendInsight(InsightTexts::memoryPressure(tick.system, first), tick.now);
  }
}

void InsightEngine::judgeDiskBurst(const Tick& tick) {
  // What is read does not count.
  if (tick.system.diskWriteBytesPerSec >= diskBurstBytesPerSec &&
      canFire("sys:diskburst", usualCooldown, tick.now)) {
    const AppGroup* const writer = groupWithMost(tick.appGroups, &AppGroup::diskWriteBytesPerSec);
    appendInsight(InsightTexts::diskBurst(tick.system, writer), tick.now);
  }
}

void InsightEngine::judgeNetworkBurst(const Tick& tick) {
  const double rate = tick.system.networkInBytesPerSec + tick.system.networkOutBytesPerSec;
  if (rate >= networkBurstBytesPerSec && canFire("sys:netburst", networkBurstCooldown, tick.now)) {
    appendInsight(InsightTexts::networkBurst(tick.system), tick.now);
  }
}

void InsightEngine::judgeIdleServers(const Tick& tick) {
  if (tick.idleServers.empty()) return;
  // Each number of servers has a cooldown of its own, so that a change is told at once.
  const std::string key = "sys:idleservers:" + std::to_string(tick.idleServers.size());
  if (canFire(key, idleServersCooldown, tick.now)) {
    appendInsight(InsightTexts::idleServers(tick.idleServers), tick.now);
  }
}

void InsightEngine::judgeHeat(const Tick& tick) {
  const ThermalSample& thermal = tick.system.thermal;
  if (StrainRules::isHot(thermal, tick.hotCelsius) && canFire("sys:hot", usualCooldown, tick.now)) {
    appendInsight(InsightTexts::runningHot(thermal), tick.now);
  }
}

void InsightEngine::judgeNeuralEngine(const Tick& tick) {
  const double percent = tick.system.neuralEnginePercent;
  const std::optional<std::string>& holder = tick.system.neuralEngineHolder;
  if (percent >= busyNeuralEnginePercent && holder &&
      canFire("sys:ane:" + *holder, usualCooldown, tick.now)) {
    appendInsight(InsightTexts::neuralEngineBusy(*holder, percent), tick.now);
  }
}

void InsightEngine::judgeAppLimit(const AppLimit& limit, const Tick& tick) {
  if (!limit.isEnabled) return;
  const AppGroup* const app = groupOf(limit, tick.appGroups);
  const bool isWatched = app != nullptr && !tick.muted.contains(app->id);
  if (!isWatched || limit.limit > valueOf(limit.figure, *app)) {
    appLimitExceededSince.erase(limit.id);
    return;
  }
  const Instant since = appLimitExceededSince.try_emplace(limit.id, tick.now).first->second;
  if (isDue(limit, secondsBetween(since, tick.now)) &&
      canFire("limit:" + limit.id.text(), usualCooldown, tick.now)) {
    appendInsight(InsightTexts::appLimit(*app, limit), tick.now);
  }
}

void InsightEngine::judgeTopMemoryHolder(const Tick& tick) {
  // Nothing ever empties the list, so this is told once at most.
  if (tick.appGroups.empty() || !recentInsights.empty()) return;
  const AppGroup* const holder = groupWithMost(tick.appGroups, &AppGroup::memoryBytes);
  appendInsight(InsightTexts::topMemoryHolder(*holder), tick.now);
}

/// Whether the finding may be told again. Asking is telling: a yes begins its cooldown.
bool InsightEngine::canFire(std::string key, double cooldown, Instant now) {
  const auto [entry, isNew] = lastFiredByKey.try_emplace(std::move(key), now);
  if (!isNew && secondsBetween(entry->second, now) < cooldown) return false;
  entry->second = now;
  return true;
}

void InsightEngine::appendInsight(Insight insight, Instant now) {
  insight.id = Uuid::random(random);
  insight.createdAt = now;
  recentInsights.insert(recentInsights.begin(), std::move(insight));
  if (recentInsights.size() > mostRecentInsights) recentInsights.resize(mostRecentInsights);
}

}  // namespace korvantis
