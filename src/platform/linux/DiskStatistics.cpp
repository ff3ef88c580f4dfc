#include "platform/linux/DiskStatistics.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

constexpr std::uint64_t sectorBytes = 512;

void skipWords(std::string_view& line, int count) {
  for (int skipped = 0; skipped < count; ++skipped) takeWord(line);
}

std::optional<BlockDeviceCounters> parseDevice(std::string_view line) {
  skipWords(line, 2);
  BlockDeviceCounters device;
  device.name = takeWord(line);
  skipWords(line, 2);
  const auto readSectors = unsignedNumber(takeWord(line));
  skipWords(line, 3);
  const auto writtenSectors = unsignedNumber(takeWord(line));
  if (!readSectors || !writtenSectors) return std::nullopt;
  device.readBytes = *readSectors * sectorBytes;
  device.writtenBytes = *writtenSectors * sectorBytes;
  return device;
}

/// Takes a number off the front of `name`; whether there was one.
bool takeDigits(std::string_view& name) {
  const std::size_t end = std::min(name.find_first_not_of("0123456789"), name.size());
  name.remove_prefix(end);
  return end > 0;
}

bool takePrefix(std::string_view& name, std::string_view prefix) {
  if (!name.starts_with(prefix)) return false;
  name.remove_prefix(prefix.size());
  return true;
}

}  // namespace

std::vector<BlockDeviceCounters> parseDiskStatistics(std::string_view text) {
  std::vector<BlockDeviceCounters> devices;
  while (text.find('\n') != std::string_view::npos) {
    if (auto device = parseDevice(takeLine(text))) devices.push_back(std::move(*device));
  }
  return devices;
}

bool isWholeDiskName(std::string_view name) {
  // Such as nvme0n1, and mmcblk0; their partitions end in "p" and a number.
  if (takePrefix(name, "nvme")) {
    return takeDigits(name) && takePrefix(name, "n") && takeDigits(name) && name.empty();
  }
  if (takePrefix(name, "mmcblk")) return takeDigits(name) && name.empty();
  // Such as sda; its partitions end in a number.
  for (const std::string_view prefix : {"sd", "hd", "vd", "xvd"}) {
    if (!takePrefix(name, prefix)) continue;
    const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
    return !name.empty() && std::all_of(name.begin(), name.end(), isLetter);
  }
  return false;
}

}  // namespace korvantis
