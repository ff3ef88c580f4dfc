#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <signal.h>
#include <string>
#include <sys/random.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

#include "platform/PlatformCalls.h"
#include "platform/SMCCalls.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/MachineCalls.h"
#include "platform/linux/MemoryInformation.h"
#include "platform/linux/PropertyListFile.h"
#include "platform/linux/applications/ApplicationSources.h"
#include "platform/linux/applications/LinuxApplications.h"
#include "platform/linux/applications/LinuxRunningApplications.h"
#include "platform/linux/applications/SessionBus.h"
#include "platform/linux/applications/WindowClosing.h"
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

QuitWays quitWays(const std::shared_ptr<LinuxProcesses>& processes) {
  QuitWays ways;
  ways.overBus = quitOverSessionBus;
  ways.byWindows = closeWindowsOf;
  ways.signal = [processes](std::int32_t pid, int signal) { return processes->kill(pid, signal); };
  ways.mayReach = [](std::int32_t pid) { return ::kill(pid, 0) == 0; };
  ways.isThere = [](const ProcessIdentity& process) {
    const auto reading = ProcessReading::open("", process.pid);
    return reading && reading->identity() == process;
  };
  return ways;
}

/// Bundles that stand for desktop applications lie beside those on disk.
void addPresentedFiles(PlatformCalls& calls,
                       const std::shared_ptr<LinuxApplications>& applications) {
  calls.files.fileExistsAtPath = [applications,
                                  onDisk = calls.files.fileExistsAtPath](const std::string& path) {
    return onDisk(path) || applications->presents(path);
  };
  calls.propertyLists.dictionaryWithContentsOfFile = [applications](const std::string& path) {
    auto list = applications->propertyList(path);
    return list ? list : readPropertyListFile(path);
  };
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
  const auto applications = std::make_shared<LinuxApplications>(systemApplicationSources());
  ProcessSources processSources = systemProcessSources();
  processSources.applications = applications;
  const auto processes = std::make_shared<LinuxProcesses>(std::move(processSources));
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
  addPresentedFiles(calls, applications);
  calls.runningApplications = linuxRunningApplications(applications, quitWays(processes));
  addMachineCalls(calls, systemMachineSources());
  addHardwareCalls(calls, systemHardwareSources(), systemHardware());
  return calls;
}

}  // namespace korvantis
