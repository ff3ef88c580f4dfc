#include "samplers/MemoryReadings.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "platform/DarwinTypes.h"

namespace korvantis {
namespace {

constexpr std::uintptr_t usualPageSize = 16384;

}  // namespace

MemoryFigures readMemoryFigures(const MachHostCalls& calls, std::uint64_t physicalMemory) {
  std::array<std::int32_t, vmStatisticsWords> buffer{};
  std::uint32_t words = vmStatisticsWords;
  const int result = calls.host_statistics64(HOST_VM_INFO64, buffer.data(), &words);
  std::uintptr_t pageSize = usualPageSize;
  // Where it fails the usual size stands.
  calls.host_page_size(&pageSize);
  if (result != 0) return memoryFiguresWithoutCounters(physicalMemory);
  vm_statistics64 counters;  // NOLINT: filled below
  std::memcpy(&counters, buffer.data(), sizeof counters);
  return memoryFigures(counters, pageSize, physicalMemory);
}

std::uint64_t readSwapUsedBytes(const SysctlCalls& calls) {
  xsw_usage usage{};
  std::size_t size = sizeof usage;
  return calls.sysctlbyname("vm.swapusage", &usage, &size) == 0 ? usage.xsu_used : 0;
}

}  // namespace korvantis
