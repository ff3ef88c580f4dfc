#include "platform/linux/hardware/DrmClientText.h"

#include <limits>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

std::uint64_t saturatedSum(std::uint64_t a, std::uint64_t b) {
  return a > std::numeric_limits<std::uint64_t>::max() - b
             ? std::numeric_limits<std::uint64_t>::max()
             : a + b;
}

std::uint64_t bytesOf(std::uint64_t number, std::string_view unit) {
  const unsigned shift = unit == "KiB" ? 10 : unit == "MiB" ? 20 : 0;
  constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
  return number > most >> shift ? most : number << shift;
}

struct Memory {
  std::uint64_t resident = 0;
  std::uint64_t older = 0;
};

/// Whether `name` begins with `prefix`, which is then taken off.
bool take(std::string_view& name, std::string_view prefix) {
  if (!name.starts_with(prefix)) return false;
  name.remove_prefix(prefix.size());
  return true;
}

void readFigure(DrmClientText& client, Memory& memory, std::string_view name,
                std::string_view rest) {
  const auto number = unsignedNumber(takeWord(rest));
  const std::string_view unit = takeWord(rest);
  // How many engines of a kind there are stands under a like name.
  if (!number || name.starts_with("engine-capacity-")) return;
  if (take(name, "engine-")) {
    if (unit == "ns") {
      client.engineNanoseconds = saturatedSum(client.engineNanoseconds.value_or(0), *number);
    }
  } else if (take(name, "cycles-")) {
    client.cycles[std::string(name)] = *number;
  } else if (take(name, "total-cycles-")) {
    client.totalCycles[std::string(name)] = *number;
  } else if (take(name, "resident-")) {
    memory.resident = saturatedSum(memory.resident, bytesOf(*number, unit));
  } else if (take(name, "memory-")) {
    memory.older = saturatedSum(memory.older, bytesOf(*number, unit));
  }
}

}  // namespace

std::optional<DrmClientText> parseDrmClient(std::string_view fdinfo) {
  DrmClientText client;
  Memory memory;
  bool hasClient = false;
  while (!fdinfo.empty()) {
    std::string_view line = takeLine(fdinfo);
    const std::size_t colon = line.find(':');
    if (!take(line, "drm-") || colon == std::string_view::npos) continue;
    const std::string_view name = line.substr(0, colon - 4);
    std::string_view rest = line.substr(colon - 3);
    if (name == "driver") {
      client.driver = takeWord(rest);
    } else if (name == "pdev") {
      client.device = takeWord(rest);
    } else if (name == "client-id") {
      const auto number = unsignedNumber(takeWord(rest));
      hasClient = number.has_value();
      client.client = number.value_or(0);
    } else {
      readFigure(client, memory, name, rest);
    }
  }
  // Newer kernels tell the memory under both names.
  client.memoryBytes = memory.resident != 0 ? memory.resident : memory.older;
  return hasClient ? std::optional(client) : std::nullopt;
}

}  // namespace korvantis
