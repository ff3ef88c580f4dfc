#include "analysis/QuitCheck.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>

#include "analysis/OrdinaryPID.h"
#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"

namespace korvantis::QuitCheck {

namespace {

using Verdict = QuitSafetyVerdictKind;

constexpr double busyWriterBytesPerSec = 100000.0;
constexpr double busyWritingProcessBytesPerSec = 50000.0;
constexpr double busyCPUPercent = 25.0;
constexpr std::size_t mostPortsNamed = 4;

bool isCritical(const std::string& name) {
  return std::find(criticalSystemNames.begin(), criticalSystemNames.end(), name) !=
         criticalSystemNames.end();
}

/// The Finder lies among the core services as well; its name alone is enough.
bool isOfTheDesktop(const AppGroup& group) {
  return group.kind == AppGroupKind::system || isCritical(group.name) ||
         (group.bundlePath && group.bundlePath->starts_with("/System/Library/CoreServices/"));
}

bool isOfTheSystem(const ProcessSample& process) {
  return process.pid < firstOrdinaryPID || process.uid == 0 || isCritical(process.name) ||
         process.executablePath.starts_with("/System/");
}

bool isHeldBy(std::int32_t pid, const std::vector<SleepBlocker>& sleepBlockers) {
  return std::any_of(sleepBlockers.begin(), sleepBlockers.end(),
                     [pid](const SleepBlocker& blocker) { return blocker.pid == pid; });
}

bool holdsTheMachineAwake(const AppGroup& group, const std::vector<SleepBlocker>& sleepBlockers) {
  return std::any_of(
      group.processes.begin(), group.processes.end(),
      [&](const ProcessSample& process) { return isHeldBy(process.pid, sleepBlockers); });
}

std::vector<std::uint16_t> servicePortsOf(const AppGroup& group) {
  std::set<std::uint16_t> ports;
  for (const ProcessSample& process : group.processes) {
    const std::vector<std::uint16_t> own = process.servicePorts();
    ports.insert(own.begin(), own.end());
  }
  return {ports.begin(), ports.end()};
}

std::string firstPorts(const std::vector<std::uint16_t>& ports) {
  std::string joined;
  for (std::size_t index = 0; index < std::min(ports.size(), mostPortsNamed); ++index) {
    if (index > 0) joined += ", ";
    joined += std::to_string(ports[index]);
  }
  return joined;
}

using VerdictAndReason = std::pair<Verdict, std::string>;

VerdictAndReason judged(const AppGroup& group, const std::vector<std::uint16_t>& ports,
                        const std::vector<SleepBlocker>& sleepBlockers) {
  if (isOfTheDesktop(group)) {
    return {Verdict::doNot, "Required by macOS desktop & system services."};
  }
  if (group.diskWriteBytesPerSec > busyWriterBytesPerSec) {
    return {Verdict::askFirst,
            "Actively writing " + OstrelFormat::rate(group.diskWriteBytesPerSec) + " to disk."};
  }
  if (!ports.empty()) {
    return {Verdict::askFirst, "Listening on local port(s) " + firstPorts(ports) +
                                   ". Quitting will close active servers."};
  }
  if (holdsTheMachineAwake(group, sleepBlockers)) {
    return {Verdict::askFirst, "Holding an active power/media assertion preventing idle sleep."};
  }
  if (group.cpuPercent > busyCPUPercent) {
    return {Verdict::askFirst, "Currently busy (" + fixedDecimals(group.cpuPercent, 0) +
                                   "% CPU). Save unsaved work before quitting."};
  }
  return {Verdict::safe, "Idle in the background with no disk writes or open server ports. Frees " +
                             OstrelFormat::bytes(group.memoryBytes) + "."};
}

VerdictAndReason judged(const ProcessSample& process,
                        const std::vector<SleepBlocker>& sleepBlockers) {
  if (isOfTheSystem(process)) {
    return {Verdict::doNot, "System process owned by macOS (" + process.name +
                                "). Stopping it may destabilize your session."};
  }
  if (process.diskWriteBytesPerSec > busyWritingProcessBytesPerSec) {
    return {Verdict::askFirst,
            "Writing " + OstrelFormat::rate(process.diskWriteBytesPerSec) + " to disk right now."};
  }
  if (isHeldBy(process.pid, sleepBlockers)) {
    return {Verdict::askFirst, "Holding an active power assertion."};
  }
  return {Verdict::safe, "User process (" + process.name + ") is safe to stop. Frees " +
                             OstrelFormat::bytes(process.memoryBytes) + "."};
}

}  // namespace

QuitSafetyResult evaluate(const AppGroup& group, const std::vector<SleepBlocker>& sleepBlockers) {
  std::vector<std::uint16_t> ports = servicePortsOf(group);
  auto [verdict, reason] = judged(group, ports, sleepBlockers);
  return {.verdict = verdict,
          .reason = std::move(reason),
          .freedMemoryBytes = group.memoryBytes,
          .freedPorts = std::move(ports)};
}

QuitSafetyResult evaluate(std::int32_t pid, const std::vector<ProcessSample>& processes,
                          const std::vector<SleepBlocker>& sleepBlockers) {
  const auto process = std::find_if(processes.begin(), processes.end(),
                                    [pid](const ProcessSample& each) { return each.pid == pid; });
  if (process == processes.end()) {
    return {.verdict = Verdict::askFirst,
            .reason = "Process " + std::to_string(pid) + " is no longer running.",
            .freedMemoryBytes = 0,
            .freedPorts = {}};
  }
  auto [verdict, reason] = judged(*process, sleepBlockers);
  return {.verdict = verdict,
          .reason = std::move(reason),
          .freedMemoryBytes = process->memoryBytes,
          .freedPorts = process->servicePorts()};
}

}  // namespace korvantis::QuitCheck
