// What a tick's processes mean: projects, servers and agents on a developer's machine in its steady
// state, with 30 projects and 60 ports. Two further figures are the walk through the agents' logs,
// which a tick pays every 30 seconds: over a folder full of logs, and over one with none among
// 10,000 files.

#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/AgentScanner.h"
#include "analysis/AgentTokenLogs.h"
#include "analysis/AppGrouper.h"
#include "analysis/ProjectLocator.h"
#include "analysis/ServerWatcher.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

constexpr std::uint64_t totalMemoryBytes = std::uint64_t{16} << 30;
constexpr double now = 1'750'000'000;
constexpr std::int32_t projects = 30;
constexpr std::int32_t ports = 60;

/// A command line as long as those of a browser's helpers.
std::string longArguments() {
  std::string text = "--type=renderer";
  while (text.size() < 900) text += " --enable-something=FirstValue,SecondValue --lang=en-GB";
  return text;
}

std::string projectNumber(std::int32_t number) {
  return "/home/ada/code/project-" + std::to_string(number % projects);
}

/// A third of them are browser helpers, a third work in projects, a third are daemons.
ProcessSample processNumber(std::int32_t number) {
  ProcessSample process;
  process.pid = 1000 + number;
  process.ppid = 1;
  process.responsiblePID = process.pid;
  process.cpuPercent = number % 17;
  process.memoryBytes = static_cast<std::uint64_t>(number * 7919 % 4001) << 16;
  process.startedAt = Instant{now - 10 * number};
  process.workingDirectory = "/";
  switch (number % 3) {
    case 0:
      process.name = "Suite Helper";
      process.executablePath = "/opt/suite/lib/Suite Helper";
      process.arguments = longArguments();
      process.workingDirectory = "/home/ada";
      break;
    case 1:
      process.name = number % 60 == 1 ? "claude" : "node";
      process.executablePath = "/usr/local/bin/node";
      process.arguments = "node /home/ada/code/tool/node_modules/.bin/vite --port 5173 --host";
      process.workingDirectory = projectNumber(number / 3) + "/packages/app";
      break;
    default:
      process.name = "daemon" + std::to_string(number % 150);
      process.executablePath = "/usr/libexec/" + process.name;
      process.arguments = process.name;
      break;
  }
  return process;
}

/// Files among which every project has its marker, and agent logs without any bytes.
FileManagerCalls scriptedFiles() {
  FileManagerCalls files;
  files.homeDirectoryForCurrentUser = [] { return "/home/ada"; };
  files.fileExistsAtPath = [](const std::string& path) {
    return path.ends_with("/.git") && path.find("/packages") == std::string::npos;
  };
  files.enumeratorAtPath = [](const std::string&) { return std::nullopt; };
  return files;
}

/// The processes of one tick, their projects written in, and their applications.
struct Tick {
  explicit Tick(std::int64_t count) {
    for (std::int32_t number = 0; number < count; ++number) {
      processes.push_back(processNumber(number));
    }
    std::int32_t given = 0;
    for (ProcessSample& process : processes) {
      if (process.name != "node" || given == ports) continue;
      process.listeningPorts = {static_cast<std::uint16_t>(3000 + given++)};
    }
    for (ProcessSample& process : processes) {
      if (given == ports) break;
      process.listeningPorts.push_back(static_cast<std::uint16_t>(3000 + given++));
    }
    found = locator.groupProjects(processes, {}, totalMemoryBytes).size();
    PropertyListCalls lists;
    lists.dictionaryWithContentsOfFile = [](const std::string&) { return std::nullopt; };
    groups = AppGrouper(lists).group(processes, totalMemoryBytes);
  }

  std::vector<ProcessSample> processes;
  std::vector<AppGroup> groups;
  ProjectLocator locator{scriptedFiles()};
  std::size_t found = 0;
};

void groupProjects(benchmark::State& state) {
  Tick tick(state.range(0));
  for ([[maybe_unused]] auto round : state) {
    benchmark::DoNotOptimize(tick.locator.groupProjects(tick.processes, {}, totalMemoryBytes));
  }
  state.counters["projects"] = static_cast<double>(tick.found);
}

void evaluateServers(benchmark::State& state) {
  const Tick tick(state.range(0));
  ServerWatcher watcher(Clock{[] { return now; }});
  std::size_t rows = 0;
  for ([[maybe_unused]] auto round : state) {
    const auto evaluation = watcher.evaluate(tick.processes, tick.groups);
    rows = evaluation.listeningPorts.size();
    benchmark::DoNotOptimize(evaluation.idleServers.data());
  }
  state.counters["ports"] = static_cast<double>(rows);
}

void scanAgents(benchmark::State& state) {
  const Tick tick(state.range(0));
  AgentScanner scanner(Clock{[] { return now; }}, scriptedFiles());
  std::size_t sessions = 0;
  for ([[maybe_unused]] auto round : state) {
    const auto scan = scanner.scanAgentsAndLimits(tick.processes);
    sessions = scan.sessions.size();
    benchmark::DoNotOptimize(scan.planLimits.data());
  }
  state.counters["sessions"] = static_cast<double>(sessions);
}

/// A walk over 100 folders with 100 files each.
void walkLogs(benchmark::State& state, const std::string& suffix) {
  const test::TemporaryFolder files;
  for (int number = 0; number < 10'000; ++number) {
    files.write(std::to_string(number % 100) + "/" + std::to_string(number) + suffix, "x");
  }
  const FileManagerCalls calls = systemFileManagerCalls();
  std::uint64_t bytes = 0;
  for ([[maybe_unused]] auto round : state) bytes = bytesOfTokenLogs(calls, files.path());
  state.counters["bytes"] = static_cast<double>(bytes);
}

void processCounts(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(100)->Arg(400)->Arg(1000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(groupProjects)->Name("ProjectLocator/groupProjects")->Apply(processCounts);
BENCHMARK(evaluateServers)->Name("ServerWatcher/evaluate")->Apply(processCounts);
BENCHMARK_CAPTURE(walkLogs, logs, ".jsonl")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(walkLogs, noLogs, ".txt")->Unit(benchmark::kMicrosecond);
BENCHMARK(scanAgents)->Name("AgentScanner/scanAgentsAndLimits")->Apply(processCounts);

}  // namespace
}  // namespace korvantis
