#include "platform/linux/ResponsibleProcess.h"

#include <string_view>

namespace korvantis {
namespace {

// Far deeper than any real chain of processes; ends a walk that hostile figures lead in a circle.
constexpr int deepestWalk = 64;

bool belongsToApplication(std::string_view path) {
  return path.find(".app/") != std::string_view::npos;
}

bool isMainProgram(std::string_view path) {
  return path.find(".app/Contents/MacOS/") != std::string_view::npos;
}

}  // namespace

ProcessIdentity ResponsibleProcess::find(std::int32_t pid, const ProcessIdentity& before) const {
  const auto process = lookUp(pid);
  if (!process) return {};
  if (isMainProgram(process->executablePath)) return {pid, process->startTicks};
  const auto nearest = nearestApplication(process->parent, process->startTicks);
  if (const auto named = aliveApplication(process->groupApplication)) {
    const auto owner = nearest ? lookUp(nearest->pid) : std::nullopt;
    const bool isNearer = owner && owner->controlGroup == process->controlGroup;
    return isNearer ? *nearest : *named;
  }
  if (nearest) return *nearest;
  if (process->session != pid) {
    const auto found = nearestApplication(process->session, process->startTicks);
    if (found) return *found;
  }
  return aliveApplication(before).value_or(ProcessIdentity{});
}

std::optional<ProcessIdentity> ResponsibleProcess::nearestApplication(
    std::int32_t pid, std::uint64_t latestStart) const {
  for (int step = 0; step < deepestWalk && pid > 0; ++step) {
    const auto process = lookUp(pid);
    // One that began later than its child is no ancestor: the number has been given away again.
    if (!process || process->startTicks > latestStart) return std::nullopt;
    if (belongsToApplication(process->executablePath)) {
      return ProcessIdentity{pid, process->startTicks};
    }
    latestStart = process->startTicks;
    pid = process->parent;
  }
  return std::nullopt;
}

std::optional<ProcessIdentity> ResponsibleProcess::aliveApplication(
    const ProcessIdentity& identity) const {
  if (identity.pid <= 0) return std::nullopt;
  const auto process = lookUp(identity.pid);
  if (!process || process->startTicks != identity.startTicks) return std::nullopt;
  return identity;
}

}  // namespace korvantis
