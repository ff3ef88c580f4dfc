// What one tick costs, whole and step by step, over scripted tables of 100, 400 and 1000 processes
// and over the machine that this runs on. The scripted figures leave the operating system out, so
// they compare one version of our own work with another.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/OstrelEngine.h"
#include "support/PrivateFolders.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

constexpr double tickSeconds = 2.0;
constexpr std::uint64_t mebibyte = 1ULL << 20U;

/// One process of a developer's machine: by turns a browser's helper, a server in a project, a
/// tool and a daemon.
test::ScriptedProcess scriptedProcess(std::int32_t pid) {
  test::ScriptedProcess process;
  process.pid = pid;
  process.name = "process" + std::to_string(pid % 60);
  process.footprint = static_cast<std::uint64_t>(pid % 97) * mebibyte;
  process.idleWakeups = static_cast<std::uint64_t>(pid);
  process.workingDirectory = "/home/ada";
  switch (pid % 4) {
    case 0:
      process.name = "Browser Helper";
      process.ppid = 104;
      process.path =
          "/Applications/Browser.app/Contents/Frameworks/Browser Helper.app/Contents/MacOS/"
          "Browser Helper";
      process.argumentBlock =
          test::argumentBlock(2, process.path, {process.path, "--type=renderer"});
      break;
    case 1:
      process.path = "/usr/local/bin/" + process.name;
      process.workingDirectory = "/home/ada/shop" + std::to_string(pid % 20);
      process.argumentBlock = test::argumentBlock(2, process.path, {process.path, "server.js"});
      process.descriptors.push_back({.port = static_cast<std::uint16_t>(3000 + pid)});
      break;
    case 2: process.path = "/usr/bin/" + process.name; break;
    default:
      process.uid = 0;
      process.path = "/usr/libexec/" + process.name;
      break;
  }
  return process;
}

/// The real system's operations, but with folders of their own for what is kept.
PlatformCalls realPlatform() {
  PlatformCalls platform = systemPlatformCalls();
  test::usePrivateFolders(platform);
  return platform;
}

/// The same with a scripted table in place of the system's processes.
PlatformCalls platformOver(test::ScriptedProcesses& table) {
  PlatformCalls platform = realPlatform();
  table.install(platform);
  return platform;
}

/// A machine with `count` scripted processes, those who look at it, and what they have seen.
struct ScriptedMachine {
  explicit ScriptedMachine(std::int64_t count) {
    for (std::int32_t pid = 100; pid < 100 + count; ++pid) {
      table.add(scriptedProcess(pid));
    }
    processes = procSampler.sampleProcesses({});
    projectLocator.groupProjects(processes, {}, totalMemory);
    appGroups = appGrouper.group(processes, totalMemory);
  }

  static constexpr std::uint64_t totalMemory = 32768 * mebibyte;

  test::ScriptedProcesses table;
  PlatformCalls platform = platformOver(table);
  SystemHardwareSampler hardwareSampler{platform};
  LibProcSampler procSampler{platform};
  AppGrouper appGrouper{platform.propertyLists};
  ProjectLocator projectLocator{platform.files};
  ContainerSampler containerSampler{platform};
  ServerWatcher serverWatcher{platform.clock};
  InsightEngine insightEngine{platform.clock, platform.random};
  AgentScanner agentScanner{platform.clock, platform.files};
  HistoryDatabase historyDB{platform};
  OstrelEngine engine{platform};

  std::vector<ProcessSample> processes;
  std::vector<AppGroup> appGroups;
  SystemSample system;
};

/// The step at the normal pace of a tick, so that what is paced inside it is paid as often as it
/// really is.
template <typename Step>
void step(benchmark::State& state, Step run) {
  ScriptedMachine machine(state.range(0));
  for (auto _ : state) {
    machine.table.advance(tickSeconds);
    benchmark::DoNotOptimize(run(machine));
  }
}

auto wholeTick(ScriptedMachine& machine) {
  return machine.engine.sampleTick({}, {});
}

auto readPerPIDGPUTime(ScriptedMachine& machine) {
  return machine.hardwareSampler.readPerPIDGPUTime();
}

auto sampleProcesses(ScriptedMachine& machine) {
  return machine.procSampler.sampleProcesses({});
}

auto sampleContainers(ScriptedMachine& machine) {
  return machine.containerSampler.sampleContainers();
}

auto groupProjects(ScriptedMachine& machine) {
  return machine.projectLocator.groupProjects(machine.processes, {}, machine.totalMemory);
}

auto group(ScriptedMachine& machine) {
  return machine.appGrouper.group(machine.processes, machine.totalMemory);
}

auto sampleSystem(ScriptedMachine& machine) {
  return machine.hardwareSampler.sampleSystem("Browser");
}

auto evaluateServers(ScriptedMachine& machine) {
  return machine.serverWatcher.evaluate(machine.processes, machine.appGroups);
}

auto evaluateInsights(ScriptedMachine& machine) {
  return machine.insightEngine.evaluate(machine.system, machine.appGroups, {}, {}, {}, 85.0);
}

auto scanAgentsAndLimits(ScriptedMachine& machine) {
  return machine.agentScanner.scanAgentsAndLimits(machine.processes);
}

auto sampleSleepBlockers(ScriptedMachine& machine) {
  return machine.hardwareSampler.sampleSleepBlockers();
}

auto sampleBluetoothPeripherals(ScriptedMachine& machine) {
  return machine.hardwareSampler.sampleBluetoothPeripherals();
}

auto sampleMountedVolumes(ScriptedMachine& machine) {
  return machine.hardwareSampler.sampleMountedVolumes();
}

auto recordSample(ScriptedMachine& machine) {
  machine.system.timestamp.secondsSince1970 += tickSeconds;
  machine.historyDB.recordSample(machine.system, machine.appGroups, tickSeconds);
  return 0;
}

void processCounts(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(100)->Arg(400)->Arg(1000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(step, wholeTick, wholeTick)->Apply(processCounts);
BENCHMARK_CAPTURE(step, readPerPIDGPUTime, readPerPIDGPUTime)->Apply(processCounts);
BENCHMARK_CAPTURE(step, sampleProcesses, sampleProcesses)->Apply(processCounts);
BENCHMARK_CAPTURE(step, sampleContainers, sampleContainers)->Apply(processCounts);
BENCHMARK_CAPTURE(step, groupProjects, groupProjects)->Apply(processCounts);
BENCHMARK_CAPTURE(step, group, group)->Apply(processCounts);
BENCHMARK_CAPTURE(step, sampleSystem, sampleSystem)->Apply(processCounts);
BENCHMARK_CAPTURE(step, evaluateServers, evaluateServers)->Apply(processCounts);
BENCHMARK_CAPTURE(step, evaluateInsights, evaluateInsights)->Apply(processCounts);
BENCHMARK_CAPTURE(step, scanAgentsAndLimits, scanAgentsAndLimits)->Apply(processCounts);
BENCHMARK_CAPTURE(step, sampleSleepBlockers, sampleSleepBlockers)->Apply(processCounts);
BENCHMARK_CAPTURE(step, sampleBluetoothPeripherals, sampleBluetoothPeripherals)
    ->Apply(processCounts);
BENCHMARK_CAPTURE(step, sampleMountedVolumes, sampleMountedVolumes)->Apply(processCounts);
BENCHMARK_CAPTURE(step, recordSample, recordSample)->Apply(processCounts);

/// The whole tick over the machine that this runs on, one right after the other.
void realTick(benchmark::State& state) {
  OstrelEngine engine(realPlatform());
  std::size_t processCount = 0;
  for (auto _ : state) {
    const EngineSnapshot snapshot = engine.sampleTick({}, {});
    processCount = 0;
    for (const AppGroup& appGroup : snapshot.appGroups) {
      processCount += appGroup.processes.size();
    }
  }
  state.counters["processes"] = static_cast<double>(processCount);
}
BENCHMARK(realTick)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace korvantis
