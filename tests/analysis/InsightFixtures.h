#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/InsightEngine.h"

namespace korvantis {

inline constexpr std::uint64_t MiB = std::uint64_t{1} << 20;
inline constexpr std::uint64_t GiB = std::uint64_t{1} << 30;

/// Chance that counts: every identifier differs from every other one.
inline RandomCalls countingChance() {
  return RandomCalls{[count = std::uint64_t{0}](void* buffer, std::size_t size) mutable {
    ++count;
    std::memset(buffer, 0, size);
    std::memcpy(buffer, &count, std::min(size, sizeof(count)));
  }};
}

/// An application of its own bundle.
inline AppGroup appNamed(const std::string& name) {
  AppGroup app;
  app.id = "/Applications/" + name + ".app";
  app.name = name;
  app.bundlePath = app.id;
  return app;
}

inline AppGroup busyApp(const std::string& name, double cpuPercent) {
  AppGroup app = appNamed(name);
  app.cpuPercent = cpuPercent;
  return app;
}

inline AppGroup bigApp(const std::string& name, std::uint64_t memoryBytes) {
  AppGroup app = appNamed(name);
  app.memoryBytes = memoryBytes;
  return app;
}

/// A mute that ends at that moment, or never.
inline MutedApp mute(const AppGroup& app, std::optional<double> until = std::nullopt) {
  MutedApp muted;
  muted.appID = app.id;
  muted.appName = app.name;
  if (until) muted.until = Instant{*until};
  return muted;
}

inline IdleServer serverWith(std::vector<std::uint16_t> ports, std::uint64_t memoryBytes = 0) {
  IdleServer server;
  server.ports = std::move(ports);
  server.memoryBytes = memoryBytes;
  return server;
}

/// The titles in their order.
inline std::vector<std::string> titlesOf(const std::vector<Insight>& insights) {
  std::vector<std::string> titles;
  titles.reserve(insights.size());
  for (const Insight& insight : insights) titles.push_back(insight.title);
  return titles;
}

/// A new engine over a scripted clock, and the tick that it judges next. Starts with a quiet
/// machine without groups.
class NewInsights {
 public:
  double now = 1'700'000'000;
  SystemSample system;
  std::vector<AppGroup> groups;
  std::vector<IdleServer> servers;
  std::vector<AppLimit> limits;
  std::vector<MutedApp> mutes;
  double hotCelsius = 82;

  /// The last evaluation.
  InsightEngine::Evaluation last;

  /// Judges the tick and gives the findings that it told, the first one first.
  std::vector<Insight> tick() {
    const std::optional<Uuid> newestBefore =
        last.newInsights.empty() ? std::nullopt : std::optional(last.newInsights.front().id);
    last = engine.evaluate(system, groups, servers, limits, mutes, hotCelsius);
    std::vector<Insight> told;
    for (const Insight& insight : last.newInsights) {
      if (insight.id == newestBefore) break;
      told.insert(told.begin(), insight);
    }
    return told;
  }

  /// The same after some time.
  std::vector<Insight> tickAfter(double seconds) {
    now += seconds;
    return tick();
  }

  /// A tick as the bridge asks for it: without the user's limits and mutes, at its own heat limit.
  InsightEngine::Evaluation bridgeTick() {
    return engine.evaluate(system, groups, servers, {}, {}, 82.0);
  }

 private:
  InsightEngine engine{Clock{[this] { return now; }}, countingChance()};
};

/// An engine that has had its first tick, so that the one finding of a quiet start is behind it.
class ScriptedInsights : public NewInsights {
 public:
  ScriptedInsights() {
    groups = {appNamed("Opening")};
    tick();
    groups.clear();
  }
};

}  // namespace korvantis
