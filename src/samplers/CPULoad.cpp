#include "samplers/CPULoad.h"

#include <algorithm>

#include "platform/DarwinTypes.h"

namespace korvantis {
namespace {

constexpr std::size_t wordsPerCore = CPU_STATE_MAX;

std::uint64_t growth(std::uint64_t before, std::uint64_t after) {
  return after < before ? 0 : after - before;
}

CoreTicks growth(const CoreTicks& before, const CoreTicks& after) {
  return {.user = growth(before.user, after.user),
          .system = growth(before.system, after.system),
          .idle = growth(before.idle, after.idle),
          .nice = growth(before.nice, after.nice)};
}

double percent(std::uint64_t part, std::uint64_t total) {
  return total == 0 ? 0 : static_cast<double>(part) / static_cast<double>(total) * 100;
}

CPULoad loadWithoutComparison(std::size_t cores) {
  return {.perCoreCPUPercent = std::vector<double>(cores, 12.0),
          .cpuPercent = 12.0,
          .cpuUserPercent = 8.0,
          .cpuSystemPercent = 4.0};
}

}  // namespace

CPULoad cpuLoadWithoutTicks() {
  return {.perCoreCPUPercent = {10.0, 8.0, 6.0, 8.0},
          .cpuPercent = 8.0,
          .cpuUserPercent = 5.0,
          .cpuSystemPercent = 3.0};
}

std::vector<CoreTicks> decodedCoreTicks(std::span<const std::int32_t> reply) {
  std::vector<CoreTicks> cores;
  cores.reserve(reply.size() / wordsPerCore);
  for (; reply.size() >= wordsPerCore; reply = reply.subspan(wordsPerCore)) {
    const auto ticks = [&](int state) {
      return static_cast<std::uint64_t>(std::max(reply[static_cast<std::size_t>(state)], 0));
    };
    cores.push_back({.user = ticks(CPU_STATE_USER),
                     .system = ticks(CPU_STATE_SYSTEM),
                     .idle = ticks(CPU_STATE_IDLE),
                     .nice = ticks(CPU_STATE_NICE)});
  }
  return cores;
}

std::vector<CoreTicks> readCoreTicks(const MachHostCalls& calls) {
  std::uint32_t cores = 0;
  std::uint32_t words = 0;
  std::int32_t* reply = nullptr;
  const int result = calls.host_processor_info(PROCESSOR_CPU_LOAD_INFO, &cores, &reply, &words);
  std::vector<CoreTicks> ticks;
  const std::size_t needed = cores * wordsPerCore;
  if (result == 0 && reply != nullptr && words >= needed) {
    ticks = decodedCoreTicks(std::span(reply, needed));
  }
  if (reply != nullptr) {
    calls.vm_deallocate(reinterpret_cast<std::uintptr_t>(reply), words * sizeof(std::int32_t));
  }
  return ticks;
}

CPULoad cpuLoad(std::span<const CoreTicks> previous, std::span<const CoreTicks> current) {
  if (previous.size() != current.size()) return loadWithoutComparison(current.size());
  CPULoad load;
  load.perCoreCPUPercent.reserve(current.size());
  std::uint64_t userSum = 0;
  std::uint64_t systemSum = 0;
  std::uint64_t totalSum = 0;
  for (std::size_t core = 0; core < current.size(); ++core) {
    const CoreTicks spent = growth(previous[core], current[core]);
    const std::uint64_t busy = spent.user + spent.system + spent.nice;
    const std::uint64_t total = busy + spent.idle;
    load.perCoreCPUPercent.push_back(std::clamp(percent(busy, total), 0.0, 100.0));
    userSum += spent.user + spent.nice;
    systemSum += spent.system;
    totalSum += total;
  }
  load.cpuUserPercent = std::min(percent(userSum, totalSum), 100.0);
  load.cpuSystemPercent = std::min(percent(systemSum, totalSum), 100.0);
  load.cpuPercent = std::min(load.cpuUserPercent + load.cpuSystemPercent, 100.0);
  return load;
}

}  // namespace korvantis
