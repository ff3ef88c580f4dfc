#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <sys/random.h>
#include <sys/types.h>
#include <unistd.h>
#include <vector>

#include "platform/PlatformCalls.h"
#include "platform/SMCCalls.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/MachineCalls.h"
#include "platform/linux/MemoryInformation.h"
#include "platform/linux/PropertyListFile.h"
#include "platform/linux/hardware/HardwareCalls.h"

namespace korvantis {
namespace {

/// Fills the whole buffer: the system may give fewer bytes than asked for.
void fillRandom(void* buffer, std::size_t size) {
  auto* bytes = static_cast<unsigned char*>(buffer);
  while (size > 0) {
    const ssize_t got = ::getrandom(bytes, size, 0);
    if (got < 0 && errno == EINTR) continue;
    // Identifiers that are not random would be worse than none.
    if (got <= 0) std::abort();
    bytes += got;
    size -= static_cast<std::size_t>(got);
  }
}

LibProcCalls libProcCalls(const std::shared_ptr<LinuxProcesses>& processes) {
  LibProcCalls calls;
  calls.proc_listallpids = [processes](void* buffer, int bufferSize) {
    return processes->listAllPids(buffer, bufferSize);
  };
  calls.proc_pidinfo = [processes](int pid, int flavor, std::uint64_t, void* buffer,
                                   int bufferSize) {
    return processes->processInfo(pid, flavor, buffer, bufferSize);
  };
  calls.proc_pid_rusage = [processes](int pid, int flavor, void* buffer) {
    return processes->resourceUsage(pid, flavor, buffer);
  };
  calls.proc_pidpath = [processes](int pid, void* buffer, std::uint32_t bufferSize) {
    return processes->executablePath(pid, buffer, bufferSize);
  };
  calls.proc_pidfdinfo = [processes](int pid, int descriptor, int flavor, void* buffer,
                                     int bufferSize) {
    return processes->descriptorInfo(pid, descriptor, flavor, buffer, bufferSize);
  };
  calls.responsibility_get_pid_responsible_for_pid = [processes](std::int32_t pid) {
    return processes->responsiblePid(pid);
  };
  return calls;
}

/// No program can be asked to quit here: whoever asks goes on to a signal.
RunningApplicationCalls noRunningApplications() {
  RunningApplicationCalls calls;
  calls.runningApplicationsWithBundleIdentifier = [](const std::string&) {
    return std::vector<RunningApplication>();
  };
  calls.runningApplicationWithProcessIdentifier = [](std::int32_t) {
    return std::optional<RunningApplication>();
  };
  return calls;
}

}  // namespace

Clock systemClock() {
  return Clock{[] {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceEpoch).count();
  }};
}

RandomCalls systemRandomCalls() {
  return RandomCalls{fillRandom};
}

ProcessInfoCalls systemProcessInfoCalls() {
  return ProcessInfoCalls{[] { return physicalMemoryBytes("/"); },
                          [] { return std::max<std::int64_t>(::sysconf(_SC_NPROCESSORS_ONLN), 1); },
                          [hardware = systemHardware()] { return hardware->thermalState(); }};
}

SMCCalls systemSMCCalls() {
  return controllerCallsOf(systemHardware());
}

PlatformCalls systemPlatformCalls() {
  const auto processes = std::make_shared<LinuxProcesses>(systemProcessSources());
  PlatformCalls calls;
  calls.clock = systemClock();
  calls.random = systemRandomCalls();
  calls.processInfo = systemProcessInfoCalls();
  calls.posix.getuid = [] { return static_cast<std::uint32_t>(::getuid()); };
  calls.posix.kill = [processes](std::int32_t pid, int signal) {
    return processes->kill(pid, signal);
  };
  calls.libProc = libProcCalls(processes);
  calls.sysctl.sysctl = [processes](const int* name, unsigned nameLength, void* oldValue,
                                    std::size_t* oldSize) {
    return processes->argumentBlock(name, nameLength, oldValue, oldSize);
  };
  // Times are told in nanoseconds already.
  calls.machHost.mach_timebase_info = [](mach_timebase_info_data_t* info) {
    *info = mach_timebase_info_data_t{1, 1};
    return 0;
  };
  calls.files = systemFileManagerCalls();
  calls.sockets = systemSocketCalls();
  calls.workQueues = systemWorkQueueCalls();
  calls.propertyLists.dictionaryWithContentsOfFile = readPropertyListFile;
  calls.runningApplications = noRunningApplications();
  addMachineCalls(calls, systemMachineSources());
  addHardwareCalls(calls, systemHardwareSources(), systemHardware());
  return calls;
}

}  // namespace korvantis
