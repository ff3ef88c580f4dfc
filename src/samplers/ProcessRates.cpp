#include "samplers/ProcessRates.h"

#include <algorithm>
#include <cstdint>

namespace korvantis {

namespace {

constexpr double rateFloorSeconds = 0.15;
constexpr double cpuCapPercent = 1600.0;
constexpr double gpuCapPercent = 100.0;
constexpr double nanosecondsPerSecond = 1e9;

double growth(std::uint64_t before, std::uint64_t after) {
  return after < before ? 0 : static_cast<double>(after - before);
}

double percentOf(double nanoseconds, double elapsed, double cap) {
  return std::clamp(nanoseconds / nanosecondsPerSecond / elapsed * 100, 0.0, cap);
}

}  // namespace

ProcessRates processRates(const PreviousProcCounters& previous,
                          const PreviousProcCounters& current) {
  const double elapsed = std::max(current.timestamp - previous.timestamp, rateFloorSeconds);
  const double gpuGrowth =
      previous.gpuTimeNs > 0 ? growth(previous.gpuTimeNs, current.gpuTimeNs) : 0;
  return {
      .cpuPercent =
          percentOf(growth(previous.cpuTimeNs, current.cpuTimeNs), elapsed, cpuCapPercent),
      .gpuPercent = percentOf(gpuGrowth, elapsed, gpuCapPercent),
      .diskReadBytesPerSec = growth(previous.diskReadBytes, current.diskReadBytes) / elapsed,
      .diskWriteBytesPerSec = growth(previous.diskWriteBytes, current.diskWriteBytes) / elapsed,
  };
}

}  // namespace korvantis
