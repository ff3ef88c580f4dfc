#include "samplers/MemoryFigures.h"

#include <algorithm>

namespace korvantis {

MemoryFigures memoryFigures(const vm_statistics64& counters, std::uint64_t pageSize,
                            std::uint64_t physicalMemory) {
  const std::uint64_t internal = counters.internal_page_count;
  const std::uint64_t purgeable = counters.purgeable_count;
  // The two counters are not read at one moment: an impossible pair takes nothing away.
  const std::uint64_t appPages = internal > purgeable ? internal - purgeable : internal;
  MemoryFigures figures;
  figures.memoryAppBytes = appPages * pageSize;
  figures.memoryWiredBytes = counters.wire_count * pageSize;
  figures.memoryCompressedBytes = counters.compressor_page_count * pageSize;
  figures.memoryCachedBytes = (counters.external_page_count + purgeable) * pageSize;
  figures.memoryUsedBytes =
      std::min(figures.memoryAppBytes + figures.memoryWiredBytes + figures.memoryCompressedBytes,
               physicalMemory);
  return figures;
}

MemoryFigures memoryFiguresWithoutCounters(std::uint64_t physicalMemory) {
  return {.memoryUsedBytes = physicalMemory / 2,
          .memoryAppBytes = physicalMemory / 3,
          .memoryWiredBytes = physicalMemory / 10,
          .memoryCompressedBytes = physicalMemory / 15,
          .memoryCachedBytes = 0};
}

MemoryPressureLevel memoryPressureOfLevel(std::optional<std::int32_t> level) {
  if (!level || *level <= 1) return MemoryPressureLevel::normal;
  return *level < 4 ? MemoryPressureLevel::warning : MemoryPressureLevel::critical;
}

double memoryPressurePercent(std::optional<std::int32_t> percentFree, const MemoryFigures& figures,
                             std::uint64_t memoryTotalBytes) {
  if (percentFree && *percentFree >= 0 && *percentFree <= 100) {
    return std::clamp(100.0 - *percentFree, 2.0, 99.0);
  }
  const std::uint64_t scarce = figures.memoryCompressedBytes + figures.memoryWiredBytes;
  const std::uint64_t divisor = std::max<std::uint64_t>(memoryTotalBytes, 1);
  return std::min(static_cast<double>(scarce) / static_cast<double>(divisor) * 100, 98.0);
}

}  // namespace korvantis
