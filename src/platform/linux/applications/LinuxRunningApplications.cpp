#include "platform/linux/applications/LinuxRunningApplications.h"

#include <csignal>
#include <utility>
#include <vector>

namespace korvantis {
namespace {

RunningApplication running(const ApplicationProcess& process,
                           const std::shared_ptr<const QuitWays>& ways) {
  RunningApplication application;
  application.terminate = [process, ways] {
    if (!ways->isThere(process.identity)) return false;
    const std::int32_t pid = process.identity.pid;
    return ways->overBus(process.entry->id, pid) || ways->byWindows(pid);
  };
  application.forceTerminate = [process, ways] {
    return ways->isThere(process.identity) && ways->signal(process.identity.pid, SIGKILL) == 0;
  };
  return application;
}

}  // namespace

RunningApplicationCalls linuxRunningApplications(
    const std::shared_ptr<LinuxApplications>& applications, QuitWays ways) {
  const auto shared = std::make_shared<const QuitWays>(std::move(ways));
  RunningApplicationCalls calls;
  calls.runningApplicationsWithBundleIdentifier = [applications, shared](const std::string& id) {
    std::vector<RunningApplication> instances;
    for (const ApplicationProcess& process : applications->instances(id)) {
      if (!shared->mayReach(process.identity.pid)) continue;
      instances.push_back(running(process, shared));
    }
    return instances;
  };
  calls.runningApplicationWithProcessIdentifier = [applications, shared](std::int32_t pid) {
    const auto root = applications->rootWithPid(pid);
    const bool isOurs = root && shared->mayReach(pid);
    return isOurs ? std::optional(running(*root, shared)) : std::nullopt;
  };
  return calls;
}

}  // namespace korvantis
