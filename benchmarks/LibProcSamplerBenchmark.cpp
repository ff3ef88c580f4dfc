// What one pass of the process sampler costs over scripted tables of 100, 400 and 1000 processes:
// the ordinary tick, one on which the ports are scanned, and one on which every slow fact is read
// again. The last figure is the sampler over the machine that this runs on. The scripted operations
// cost about as much as the sampler's own work; they are the same in all figures.

#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>

#include "samplers/LibProcSampler.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

constexpr double ordinaryTick = 0.001;
constexpr double portScanTick = 3.5;
constexpr double slowFactsTick = 25;

void fill(test::ScriptedProcesses& table, std::int64_t count) {
  for (std::int32_t pid = 1; pid <= static_cast<std::int32_t>(count); ++pid) {
    const std::string number = std::to_string(pid);
    const std::string path = "/usr/local/lib/package/bin/program-" + number;
    const auto port = static_cast<std::uint16_t>(3000 + pid);
    table.add({.pid = pid,
               .name = "program-" + number,
               .path = path,
               .workingDirectory = "/home/somebody/projects/project-" + number,
               .descriptors = {{.type = PROX_FDTYPE_VNODE}, {.port = port}},
               .argumentBlock = test::argumentBlock(4, path, {path, "serve", "--port", number})});
  }
}

/// One pass per iteration over a table of `state.range(0)` processes, `seconds` after the last.
void samplePasses(benchmark::State& state, double seconds) {
  test::ScriptedProcesses table;
  fill(table, state.range(0));
  LibProcSampler sampler(table.platform());
  const GPUTimeByPID gpuTimes{{1, 1'000'000}};
  for (auto _ : state) {
    table.advance(seconds);
    benchmark::DoNotOptimize(sampler.sampleProcesses(gpuTimes));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ordinaryPass(benchmark::State& state) {
  samplePasses(state, ordinaryTick);
}
void portScanPass(benchmark::State& state) {
  samplePasses(state, portScanTick);
}
void slowFactsPass(benchmark::State& state) {
  samplePasses(state, slowFactsTick);
}

void realMachinePass(benchmark::State& state) {
  LibProcSampler sampler(systemPlatformCalls());
  std::size_t processes = 0;
  for (auto _ : state) processes = sampler.sampleProcesses({}).size();
  state.counters["processes"] = static_cast<double>(processes);
}

BENCHMARK(ordinaryPass)->Arg(100)->Arg(400)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(portScanPass)->Arg(100)->Arg(400)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(slowFactsPass)->Arg(100)->Arg(400)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(realMachinePass)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace korvantis
