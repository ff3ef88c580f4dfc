#include <algorithm>
#include <chrono>
#include <dlfcn.h>
#include <memory>
#include <stdlib.h>
#include <sys/sysctl.h>
#include <unistd.h>

#include "platform/PlatformCalls.h"
#include "platform/macos/MachineCalls.h"
#include "platform/macos/PropertyListFile.h"
#include "platform/macos/RunningApplications.h"
#include "platform/macos/ShownProcesses.h"
#include "platform/macos/ThermalState.h"

namespace korvantis {
namespace {

using ResponsibilityFunction = pid_t (*)(pid_t);

/// No public header declares it, so it is looked up in the running program.
ResponsibilityFunction responsibilityFunction() {
  void* const program = ::dlopen(nullptr, RTLD_LAZY);
  if (program == nullptr) return nullptr;
  return reinterpret_cast<ResponsibilityFunction>(
      ::dlsym(program, "responsibility_get_pid_responsible_for_pid"));
}

LibProcCalls libProcCalls(const std::shared_ptr<ShownProcesses>& shown) {
  LibProcCalls calls;
  calls.proc_listallpids = [shown](void* buffer, int bufferSize) {
    return shown->listAllPids(buffer, bufferSize);
  };
  calls.proc_pidinfo = [shown](int pid, int flavor, std::uint64_t argument, void* buffer,
                               int bufferSize) {
    return shown->processInfo(pid, flavor, argument, buffer, bufferSize);
  };
  calls.proc_pid_rusage = [](int pid, int flavor, void* buffer) {
    return ::proc_pid_rusage(pid, flavor, static_cast<rusage_info_t*>(buffer));
  };
  calls.proc_pidpath = ::proc_pidpath;
  calls.proc_pidfdinfo = ::proc_pidfdinfo;
  static const ResponsibilityFunction responsible = responsibilityFunction();
  if (responsible != nullptr) calls.responsibility_get_pid_responsible_for_pid = responsible;
  return calls;
}

std::uint64_t physicalMemory() {
  std::uint64_t bytes = 0;
  std::size_t size = sizeof bytes;
  return ::sysctlbyname("hw.memsize", &bytes, &size, nullptr, 0) == 0 ? bytes : 0;
}

}  // namespace

Clock systemClock() {
  return Clock{[] {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceEpoch).count();
  }};
}

RandomCalls systemRandomCalls() {
  return RandomCalls{::arc4random_buf};
}

ProcessInfoCalls systemProcessInfoCalls() {
  return ProcessInfoCalls{physicalMemory,
                          [] { return std::max<std::int64_t>(::sysconf(_SC_NPROCESSORS_ONLN), 1); },
                          processInfoThermalState};
}

PlatformCalls systemPlatformCalls() {
  const auto shown = std::make_shared<ShownProcesses>();
  PlatformCalls calls;
  calls.clock = systemClock();
  calls.random = systemRandomCalls();
  calls.processInfo = systemProcessInfoCalls();
  calls.posix.getuid = ::getuid;
  calls.posix.kill = [shown](std::int32_t pid, int signal) { return shown->kill(pid, signal); };
  calls.libProc = libProcCalls(shown);
  calls.machHost.mach_timebase_info = [](mach_timebase_info_data_t* info) {
    return ::mach_timebase_info(info);
  };
  addMachineCalls(calls);
  calls.files = systemFileManagerCalls();
  calls.sockets = systemSocketCalls();
  calls.workQueues = systemWorkQueueCalls();
  calls.propertyLists.dictionaryWithContentsOfFile = readPropertyListFile;
  calls.runningApplications = systemRunningApplicationCalls();
  return calls;
}

}  // namespace korvantis
