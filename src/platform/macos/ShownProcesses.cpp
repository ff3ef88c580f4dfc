#include "platform/macos/ShownProcesses.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <signal.h>
#include <unordered_set>

namespace korvantis {
namespace {

std::pair<std::uint64_t, std::uint64_t> startOf(const proc_bsdinfo& record) {
  return {record.pbi_start_tvsec, record.pbi_start_tvusec};
}

}  // namespace

int ShownProcesses::listAllPids(void* buffer, int bufferSize) {
  const int filled = ::proc_listallpids(buffer, bufferSize);
  if (filled < 1 || buffer == nullptr) return filled;
  const auto* const pids = static_cast<const pid_t*>(buffer);
  // The result is the number of pids.
  const std::size_t room = static_cast<std::size_t>(bufferSize) / sizeof(pid_t);
  const std::size_t count = std::min(static_cast<std::size_t>(filled), room);
  const std::unordered_set<pid_t> listed(pids, pids + count);
  const std::lock_guard guard(lock);
  std::erase_if(starts, [&](const auto& entry) { return !listed.contains(entry.first); });
  return filled;
}

int ShownProcesses::processInfo(int pid, int flavor, std::uint64_t argument, void* buffer,
                                int bufferSize) {
  const int filled = ::proc_pidinfo(pid, flavor, argument, buffer, bufferSize);
  if (flavor == PROC_PIDTBSDINFO && filled == static_cast<int>(sizeof(proc_bsdinfo))) {
    const std::lock_guard guard(lock);
    starts.insert_or_assign(pid, startOf(*static_cast<const proc_bsdinfo*>(buffer)));
  }
  return filled;
}

int ShownProcesses::kill(std::int32_t pid, int signal) const {
  std::optional<Start> shown;
  if (pid > 0) {
    const std::lock_guard guard(lock);
    const auto found = starts.find(pid);
    if (found != starts.end()) shown = found->second;
  }
  proc_bsdinfo record{};
  const int size = static_cast<int>(sizeof record);
  if (!shown || ::proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &record, size) != size ||
      startOf(record) != *shown) {
    errno = ESRCH;
    return -1;
  }
  return ::kill(pid, signal);
}

}  // namespace korvantis
