/// tick_shares [TICKS]: what share of a tick of this machine goes to telling what its processes
/// mean. The engine's own samplers and analysers tick every 2 seconds (25 times by default, after a
/// first tick that reads everything), each under a clock of the CPU time that it takes. It prints a
/// table: the median of each step and its share of the median tick.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <time.h>
#include <utility>
#include <vector>

#include "engine/CollaboratorCalls.h"
#include "engine/OstrelEngine.h"
#include "platform/PlatformCalls.h"
#include "support/PrivateFolders.h"

namespace korvantis {
namespace {

constexpr int usualTicks = 25;
constexpr std::chrono::seconds interval(2);
constexpr const char* wholeTick = "whole tick";
constexpr const char* readProcesses = "read the processes";

double cpuMicroseconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// The cost of each step in each tick, in microseconds.
using Costs = std::map<std::string, std::vector<double>>;

/// The same call, its cost noted under `step`.
template <typename Call>
auto timed(Costs& costs, const char* step, Call call) {
  return [&costs, step, call](auto&&... arguments) {
    const double before = cpuMicroseconds();
    auto result = call(std::forward<decltype(arguments)>(arguments)...);
    costs[step].push_back(cpuMicroseconds() - before);
    return result;
  };
}

/// The samplers and analysers that the engine has of its own, with a clock beside each step that
/// has to do with processes.
class TimedCollaborators {
 public:
  explicit TimedCollaborators(const PlatformCalls& calls) : platform(calls) {}

  CollaboratorCalls calls() {
    using std::bind_front;
    CollaboratorCalls calls;
    calls.readPerPIDGPUTime = bind_front(&SystemHardwareSampler::readPerPIDGPUTime, &hardware);
    calls.sampleProcesses =
        timed(costs, readProcesses, bind_front(&LibProcSampler::sampleProcesses, &processes));
    calls.sampleContainers = bind_front(&ContainerSampler::sampleContainers, &containers);
    calls.groupProjects =
        timed(costs, "find the projects", bind_front(&ProjectLocator::groupProjects, &projects));
    calls.group = timed(costs, "group into applications", bind_front(&AppGrouper::group, &grouper));
    calls.sampleSystem = bind_front(&SystemHardwareSampler::sampleSystem, &hardware);
    calls.evaluateServers =
        timed(costs, "watch the servers", bind_front(&ServerWatcher::evaluate, &servers));
    calls.evaluateInsights =
        timed(costs, "judge the machine", bind_front(&InsightEngine::evaluate, &insights));
    calls.scanAgentsAndLimits =
        timed(costs, "find the agents", bind_front(&AgentScanner::scanAgentsAndLimits, &agents));
    calls.sampleSleepBlockers = bind_front(&SystemHardwareSampler::sampleSleepBlockers, &hardware);
    calls.sampleBluetoothPeripherals =
        bind_front(&SystemHardwareSampler::sampleBluetoothPeripherals, &hardware);
    calls.sampleMountedVolumes =
        bind_front(&SystemHardwareSampler::sampleMountedVolumes, &hardware);
    calls.recordSample = bind_front(&HistoryDatabase::recordSample, &history);
    return calls;
  }

  Costs costs;

 private:
  const PlatformCalls platform;
  SystemHardwareSampler hardware{platform};
  LibProcSampler processes{platform};
  AppGrouper grouper{platform.propertyLists};
  ProjectLocator projects{platform.files};
  ContainerSampler containers{platform};
  ServerWatcher servers{platform.clock};
  InsightEngine insights{platform.clock, platform.random};
  AgentScanner agents{platform.clock, platform.files};
  HistoryDatabase history{platform};
};

double median(std::vector<double> figures) {
  const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
  std::nth_element(figures.begin(), middle, figures.end());
  return *middle;
}

void printTable(const Costs& costs, const EngineSnapshot& last) {
  std::size_t processes = 0;
  for (const AppGroup& group : last.appGroups) processes += group.processes.size();
  std::printf("%zu processes, %zu groups, %zu projects, %zu ports; median of %zu ticks\n\n",
              processes, last.appGroups.size(), last.projects.size(), last.listeningPorts.size(),
              costs.at(wholeTick).size());
  std::printf("| step | CPU ms | share of a tick |\n|---|---|---|\n");
  const double whole = median(costs.at(wholeTick));
  double meaning = 0;
  const auto row = [whole](const std::string& step, double cost) {
    std::printf("| %s | %.3f | %.1f %% |\n", step.c_str(), cost / 1e3, cost / whole * 100);
  };
  for (const auto& [step, figures] : costs) {
    row(step, median(figures));
    if (step != wholeTick && step != readProcesses) meaning += median(figures);
  }
  row("all that tells what processes mean", meaning);
}

int run(int ticks) {
  PlatformCalls platform = systemPlatformCalls();
  test::usePrivateFolders(platform);
  TimedCollaborators collaborators(platform);
  Costs& costs = collaborators.costs;
  OstrelEngine engine(platform, collaborators.calls());
  EngineSnapshot last;
  const auto begin = std::chrono::steady_clock::now();
  for (int tick = 0; tick <= ticks; ++tick) {
    std::this_thread::sleep_until(begin + tick * interval);
    if (tick == 1) costs.clear();
    const double before = cpuMicroseconds();
    last = engine.sampleTick({}, {});
    costs[wholeTick].push_back(cpuMicroseconds() - before);
  }
  printTable(costs, last);
  return 0;
}

}  // namespace
}  // namespace korvantis

int main(int count, char** words) {
  return korvantis::run(count > 1 ? std::max(std::atoi(words[1]), 1) : korvantis::usualTicks);
}
