#include "platform/linux/MachineTicks.h"

#include <array>
#include <optional>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

enum Column : std::size_t { user, nice, system, idle, ioWait, irq, softIrq, columns };

std::uint32_t withoutSign(std::uint64_t ticks) {
  return static_cast<std::uint32_t>(ticks & 0x7FFF'FFFF);
}

std::optional<processor_cpu_load_info> parseCore(std::string_view line) {
  const std::string_view label = takeWord(line);
  // The first line, without a number, is the sum of the others.
  if (!label.starts_with("cpu") || !unsignedNumber(label.substr(3))) return std::nullopt;
  std::array<std::uint64_t, columns> ticks{};
  for (std::uint64_t& count : ticks) {
    const auto number = unsignedNumber(takeWord(line));
    if (!number) return std::nullopt;
    count = *number;
  }
  processor_cpu_load_info core{};
  core.cpu_ticks[CPU_STATE_USER] = withoutSign(ticks[user]);
  core.cpu_ticks[CPU_STATE_NICE] = withoutSign(ticks[nice]);
  core.cpu_ticks[CPU_STATE_SYSTEM] = withoutSign(ticks[system] + ticks[irq] + ticks[softIrq]);
  core.cpu_ticks[CPU_STATE_IDLE] = withoutSign(ticks[idle] + ticks[ioWait]);
  return core;
}

}  // namespace

std::vector<processor_cpu_load_info> parseMachineTicks(std::string_view text) {
  std::vector<processor_cpu_load_info> cores;
  while (text.starts_with("cpu") && text.find('\n') != std::string_view::npos) {
    if (const auto core = parseCore(takeLine(text))) cores.push_back(*core);
  }
  return cores;
}

}  // namespace korvantis
