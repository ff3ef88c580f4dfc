#include "platform/linux/MachineCalls.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <unistd.h>
#include <utility>

#include "platform/linux/LinuxMachine.h"

namespace korvantis {
namespace {

bool asksForInterfaceList(std::span<const int> name) {
  constexpr std::array interfaceList{CTL_NET, DARWIN_PF_ROUTE, 0, 0, NET_RT_IFLIST2, 0};
  return std::equal(name.begin(), name.end(), interfaceList.begin(), interfaceList.end());
}

void addHostCalls(MachHostCalls& calls, const std::shared_ptr<LinuxMachine>& machine) {
  calls.host_processor_info = [machine](int flavor, std::uint32_t* processorCount,
                                        std::int32_t** reply, std::uint32_t* replyWords) {
    return machine->processorInfo(flavor, processorCount, reply, replyWords);
  };
  calls.vm_deallocate = [](std::uintptr_t address, std::size_t) {
    return LinuxMachine::deallocate(address);
  };
  calls.host_statistics64 = [machine](int flavor, std::int32_t* buffer, std::uint32_t* words) {
    return machine->statistics(flavor, buffer, words);
  };
  calls.host_page_size = [](std::uintptr_t* size) {
    const long told = ::sysconf(_SC_PAGESIZE);
    if (told < 1) return -1;
    *size = static_cast<std::uintptr_t>(told);
    return 0;
  };
}

void addSysctlCalls(SysctlCalls& calls, const std::shared_ptr<LinuxMachine>& machine) {
  calls.sysctlbyname = [machine](const char* name, void* oldValue, std::size_t* oldSize) {
    return machine->namedFigure(name, oldValue, oldSize);
  };
  calls.sysctl = [machine, others = std::move(calls.sysctl)](const int* name, unsigned nameLength,
                                                             void* oldValue, std::size_t* oldSize) {
    if (asksForInterfaceList(std::span(name, nameLength))) {
      return machine->interfaceList(oldValue, oldSize);
    }
    return others ? others(name, nameLength, oldValue, oldSize) : -1;
  };
}

}  // namespace

void addMachineCalls(PlatformCalls& calls, const MachineSources& sources) {
  const auto machine = std::make_shared<LinuxMachine>(sources);
  addHostCalls(calls.machHost, machine);
  addSysctlCalls(calls.sysctl, machine);
  calls.posix.getloadavg = [machine](double* averages, int count) {
    return machine->loadAverages(averages, count);
  };
  calls.processInfo.physicalMemory = [machine] { return machine->installedMemory(); };
  calls.ioRegistry.matchingServices = [machine](const std::string& className) {
    return machine->matchingServices(className);
  };
  calls.volumes.resourceValues = [machine](const std::string& path) {
    return machine->volumeValues(path);
  };
}

}  // namespace korvantis
