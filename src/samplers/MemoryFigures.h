#pragma once

#include <cstdint>
#include <optional>

#include "core/MemoryPressureLevel.h"
#include "platform/DarwinTypes.h"

namespace korvantis {

/// What the memory is used for, in bytes.
struct MemoryFigures {
  std::uint64_t memoryUsedBytes = 0;
  std::uint64_t memoryAppBytes = 0;
  std::uint64_t memoryWiredBytes = 0;
  std::uint64_t memoryCompressedBytes = 0;
  std::uint64_t memoryCachedBytes = 0;

  bool operator==(const MemoryFigures&) const = default;
};

/// The figures that page counters give. Used memory never exceeds `physicalMemory`.
MemoryFigures memoryFigures(const vm_statistics64& counters, std::uint64_t pageSize,
                            std::uint64_t physicalMemory);

/// What stands in when the system gives no page counters: fixed shares of `physicalMemory`.
MemoryFigures memoryFiguresWithoutCounters(std::uint64_t physicalMemory);

/// The pressure behind the kernel's level; `normal` when it gives none.
MemoryPressureLevel memoryPressureOfLevel(std::optional<std::int32_t> level);

/// How scarce memory is, from 2 to 99, by the percent of memory that the kernel calls free; where
/// that is absent or no percent, by compressed and wired memory, from 0 to 98.
double memoryPressurePercent(std::optional<std::int32_t> percentFree, const MemoryFigures& figures,
                             std::uint64_t memoryTotalBytes);

}  // namespace korvantis
