// Grouping the processes of one tick: a synthetic machine with browsers and editors full of
// helpers, shells below terminals, and daemons.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/AppGrouper.h"

namespace korvantis {
namespace {

constexpr std::uint64_t totalMemoryBytes = std::uint64_t{16} << 30;

/// A command line as long as those of a browser's helpers.
std::string longArguments(const std::string& type) {
  std::string text = type;
  while (text.size() < 900) text += " --enable-something=FirstValue,SecondValue --lang=en-GB";
  return text;
}

ProcessSample processNumber(std::int32_t number) {
  const std::string app = "/Applications/Suite " + std::to_string(number / 40) + ".app/Contents/";
  ProcessSample process;
  process.pid = 1000 + number;
  process.ppid = 1;
  process.responsiblePID = process.pid;
  process.cpuPercent = number % 17;
  process.memoryBytes = static_cast<std::uint64_t>(number * 7919 % 4001) << 16;
  switch (number % 8) {
    case 0:
      process.name = "Suite";
      process.executablePath = app + "MacOS/Suite";
      break;
    case 1:
    case 2:
    case 3:
      process.name = "Suite Helper";
      process.executablePath = app + "Frameworks/Suite Helper.app/Contents/MacOS/Suite Helper";
      process.arguments = longArguments(number % 2 == 0 ? "--type=renderer" : "--type=broker");
      break;
    case 4:
      process.name = "zsh";
      process.executablePath = "/bin/zsh";
      process.ppid = process.pid - 4;
      break;
    case 5:
      process.name = "make";
      process.executablePath = "/usr/bin/make";
      process.ppid = process.pid - 1;
      process.arguments = "make -j8 all";
      break;
    default:
      process.name = "daemon" + std::to_string(number % 150);
      process.executablePath = "/usr/libexec/" + process.name;
      break;
  }
  return process;
}

void groupTick(benchmark::State& state) {
  std::vector<ProcessSample> processes;
  for (std::int32_t number = 0; number < state.range(0); ++number) {
    processes.push_back(processNumber(number));
  }
  PropertyListCalls calls;
  calls.dictionaryWithContentsOfFile = [](const std::string&) { return std::nullopt; };
  AppGrouper grouper(calls);
  std::size_t groups = 0;
  for ([[maybe_unused]] auto tick : state) {
    const std::vector<AppGroup> result = grouper.group(processes, totalMemoryBytes);
    groups = result.size();
    benchmark::DoNotOptimize(result.data());
  }
  state.counters["groups"] = static_cast<double>(groups);
}
BENCHMARK(groupTick)
    ->Name("AppGrouper/group")
    ->Arg(100)
    ->Arg(400)
    ->Arg(1000)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace korvantis
