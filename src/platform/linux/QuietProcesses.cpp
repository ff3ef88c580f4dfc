#include "platform/linux/QuietProcesses.h"

#include <memory>
#include <utility>

namespace korvantis {
namespace {

/// Longer command lines are rare, and not worth the memory.
constexpr std::size_t mostBytesKept = 4096;

}  // namespace

void QuietProcesses::begin(ProcessReading& reading) const {
  if (!sources.cpuNanoseconds) return;
  if (!remembered.visit(reading.identity(), [](const RememberedProcess&) {})) return;
  const auto cpu = reading.cpuNanoseconds = sources.cpuNanoseconds(reading.identity().pid);
  if (!cpu) return;
  const double now = sources.steadySeconds();
  remembered.visit(reading.identity(), [&](const RememberedProcess& kept) {
    if (!kept.standing) return;
    const StandingFigures& standing = *kept.standing;
    reading.isBusy = standing.cpuNanoseconds != *cpu;
    // Memory can be taken away from a process that sleeps.
    reading.isQuiet = !reading.isBusy && now < standing.dueAt &&
                      standing.residentPages == reading.stat().residentPages;
    if (!reading.isQuiet) return;
    reading.setStatus(standing.status);
    reading.shownName = standing.name;
    reading.standingUsage = {standing.disk, kept.wakeups};
  });
}

void QuietProcesses::keep(const ProcessReading& reading, const ProcessStatus& status,
                          const ProcessDiskBytes& disk) const {
  if (!reading.cpuNanoseconds) return;
  const double now = sources.steadySeconds();
  remembered.update(reading.identity(), [&](RememberedProcess& process) {
    const std::int32_t spread = process.standing ? 0 : reading.identity().pid % life;
    process.standing = StandingFigures{.cpuNanoseconds = *reading.cpuNanoseconds,
                                       .residentPages = reading.stat().residentPages,
                                       .name = reading.shownName,
                                       .status = status,
                                       .disk = disk,
                                       .dueAt = now + life + spread};
  });
}

std::string QuietProcesses::commandLine(const ProcessReading& reading) const {
  if (!reading.cpuNanoseconds) return reading.commandLine();
  const auto kept = remembered.find(reading.identity());
  if (kept && kept->arguments && kept->arguments->cpuNanoseconds == *reading.cpuNanoseconds) {
    return kept->arguments->bytes;
  }
  std::string bytes = reading.commandLine();
  if (bytes.size() <= mostBytesKept) {
    auto arguments = std::make_shared<const StandingArguments>(
        StandingArguments{*reading.cpuNanoseconds, bytes});
    remembered.update(reading.identity(), [&](RememberedProcess& process) {
      process.arguments = std::move(arguments);
    });
  }
  return bytes;
}

}  // namespace korvantis
