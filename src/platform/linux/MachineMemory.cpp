#include "platform/linux/MachineMemory.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

constexpr double manyStallsPercent = 10.0;

std::uint64_t lessNotBelowZero(std::uint64_t value, std::uint64_t taken) {
  return value > taken ? value - taken : 0;
}

std::uint32_t pages(std::uint64_t bytes, std::uint64_t pageSize) {
  constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(bytes / pageSize, most));
}

/// The share of the last ten seconds in which tasks stood still, in percent; 0 when the text
/// does not say.
double stallPercent(std::string_view stalls, std::string_view kind) {
  while (!stalls.empty()) {
    std::string_view line = takeLine(stalls);
    if (takeWord(line) != kind) continue;
    std::string_view average = takeWord(line);
    if (!average.starts_with("avg10=")) return 0;
    average.remove_prefix(6);
    double percent = 0;
    std::from_chars(average.data(), average.data() + average.size(), percent);
    return percent;
  }
  return 0;
}

}  // namespace

std::optional<vm_statistics64> parsePageCounters(std::string_view text, std::uint64_t zramBytes,
                                                 std::uint64_t pageSize) {
  const auto bytes = [&](std::string_view name) { return kilobytesField(text, name).value_or(0); };
  const std::uint64_t total = bytes("MemTotal");
  if (total == 0) return std::nullopt;
  const std::uint64_t free = bytes("MemFree");
  const std::uint64_t anonymous = bytes("AnonPages");
  const std::uint64_t shared = bytes("Shmem");
  const std::uint64_t cached = bytes("Cached");
  // Kernels before 4.20 know only the part of it that slabs hold.
  const std::uint64_t reclaimable =
      kilobytesField(text, "KReclaimable").value_or(bytes("SReclaimable"));
  const std::uint64_t files = bytes("Buffers") + reclaimable;
  const std::uint64_t compressed = bytes("Zswap") + zramBytes;
  const std::uint64_t accounted = free + anonymous + cached + files + compressed;
  vm_statistics64 counters{};
  counters.free_count = pages(free, pageSize);
  counters.internal_page_count = pages(anonymous + shared, pageSize);
  counters.external_page_count = pages(lessNotBelowZero(cached, shared) + files, pageSize);
  counters.compressor_page_count = pages(compressed, pageSize);
  counters.wire_count = pages(lessNotBelowZero(total, accounted), pageSize);
  return counters;
}

std::optional<xsw_usage> parseSwapUsage(std::string_view text, std::uint64_t pageSize) {
  const auto total = kilobytesField(text, "SwapTotal");
  if (!total) return std::nullopt;
  const std::uint64_t free = std::min(kilobytesField(text, "SwapFree").value_or(0), *total);
  xsw_usage usage{};
  usage.xsu_total = *total;
  usage.xsu_avail = free;
  usage.xsu_used = *total - free;
  usage.xsu_pagesize = static_cast<std::uint32_t>(pageSize);
  return usage;
}

std::optional<std::int32_t> parsePercentFree(std::string_view text) {
  const auto total = kilobytesField(text, "MemTotal");
  const auto available = kilobytesField(text, "MemAvailable");
  if (!total || *total == 0 || !available) return std::nullopt;
  return static_cast<std::int32_t>(std::min(*available, *total) * 100 / *total);
}

std::uint64_t parseZramBytes(std::string_view text) {
  takeWord(text);
  takeWord(text);
  return unsignedNumber(takeWord(text)).value_or(0);
}

std::int32_t memoryPressureLevel(std::int32_t percentFree, std::string_view stalls) {
  if (percentFree < 5 || stallPercent(stalls, "full") >= manyStallsPercent) return 4;
  const bool someStall = stallPercent(stalls, "some") >= manyStallsPercent;
  return percentFree < 10 || (someStall && percentFree < 25) ? 2 : 1;
}

}  // namespace korvantis
