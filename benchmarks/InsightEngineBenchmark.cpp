// Judging one tick: with the user's two limits and a mute, after the list of findings has filled.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/InsightEngine.h"

namespace korvantis {
namespace {

constexpr double start = 1'700'000'000;

/// Applications and tools as a desktop has them, all of them at `cpuPercent`.
std::vector<AppGroup> groupsAt(std::int64_t count, double cpuPercent) {
  std::vector<AppGroup> groups(static_cast<std::size_t>(count));
  for (std::size_t number = 0; number < groups.size(); ++number) {
    AppGroup& group = groups[number];
    group.name = "Application Number " + std::to_string(number);
    group.id = "/Applications/" + group.name + ".app";
    group.kind = number % 4 == 3 ? AppGroupKind::other : AppGroupKind::app;
    group.cpuPercent = cpuPercent;
    group.memoryBytes = (number + 1) << 24U;
    group.processes.resize(10);
  }
  return groups;
}

/// Limits on applications that do not run, so that every name is compared.
std::vector<AppLimit> absentLimits() {
  std::vector<AppLimit> limits(2);
  limits[0].appID = "com.google.Chrome";
  limits[0].appName = "Google Chrome";
  limits[1].appID = "com.apple.dt.Xcode";
  limits[1].appName = "Xcode";
  return limits;
}

/// Ticks two seconds apart over groups at `cpuPercent`.
void evaluateTick(benchmark::State& state, double cpuPercent) {
  double now = start;
  InsightEngine engine(Clock{[&now] { return now; }}, systemRandomCalls());
  const SystemSample system;
  const std::vector<AppLimit> limits = absentLimits();
  const std::vector<MutedApp> mutes(1);
  engine.evaluate(system, groupsAt(40, 300), {}, limits, mutes, 82);
  const std::vector<AppGroup> groups = groupsAt(state.range(0), cpuPercent);
  std::size_t listed = 0;
  for ([[maybe_unused]] auto tick : state) {
    now += 2;
    const auto evaluation = engine.evaluate(system, groups, {}, limits, mutes, 82);
    listed = evaluation.newInsights.size();
    benchmark::DoNotOptimize(evaluation.newInsights.data());
  }
  state.counters["listed"] = static_cast<double>(listed);
}

void evaluateQuietTick(benchmark::State& state) {
  evaluateTick(state, 12);
}
BENCHMARK(evaluateQuietTick)
    ->Name("InsightEngine/evaluate quiet")
    ->Arg(40)
    ->Arg(400)
    ->Unit(benchmark::kMicrosecond);

/// Every application has something to tell, and nearly always its cooldown forbids it.
void evaluateBusyTick(benchmark::State& state) {
  evaluateTick(state, 300);
}
BENCHMARK(evaluateBusyTick)
    ->Name("InsightEngine/evaluate busy")
    ->Arg(40)
    ->Arg(400)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace korvantis
