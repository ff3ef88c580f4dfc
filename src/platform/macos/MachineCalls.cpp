#include "platform/macos/MachineCalls.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>
#include <mach/mach.h>
#include <memory>
#include <stdlib.h>
#include <sys/sysctl.h>
#include <utility>

#include "platform/macos/FoundationValues.h"
#include "platform/macos/VolumesAndPower.h"

namespace korvantis {
namespace {

/// Owns a registry object and gives it back.
using RegistryObject = std::shared_ptr<const io_object_t>;

RegistryObject owned(io_object_t object) {
  return RegistryObject(new io_object_t(object), [](const io_object_t* held) {
    IOObjectRelease(*held);
    delete held;
  });
}

IORegistryEntry registryEntry(const RegistryObject& object);

std::vector<IORegistryEntry> entriesOf(io_iterator_t iterator) {
  std::vector<IORegistryEntry> entries;
  while (const io_object_t object = IOIteratorNext(iterator)) {
    entries.push_back(registryEntry(owned(object)));
  }
  IOObjectRelease(iterator);
  return entries;
}

std::optional<PropertyMap> propertiesOf(const RegistryObject& object) {
  CFMutableDictionaryRef properties = nullptr;
  if (IORegistryEntryCreateCFProperties(*object, &properties, kCFAllocatorDefault, 0) !=
          KERN_SUCCESS ||
      properties == nullptr) {
    return std::nullopt;
  }
  const OwnedFoundationValue guard(properties);
  return propertyMapOf(properties);
}

std::vector<IORegistryEntry> childrenOf(const RegistryObject& object) {
  io_iterator_t iterator = 0;
  if (IORegistryEntryGetChildIterator(*object, kIOServicePlane, &iterator) != KERN_SUCCESS) {
    return {};
  }
  return entriesOf(iterator);
}

IORegistryEntry registryEntry(const RegistryObject& object) {
  return IORegistryEntry{[object] { return propertiesOf(object); },
                         [object] { return childrenOf(object); }};
}

std::optional<std::vector<IORegistryEntry>> matchingServices(const std::string& className) {
  io_iterator_t iterator = 0;
  // The match takes over the dictionary that IOServiceMatching makes.
  CFMutableDictionaryRef match = IOServiceMatching(className.c_str());
  if (match == nullptr ||
      IOServiceGetMatchingServices(kIOMainPortDefault, match, &iterator) != KERN_SUCCESS) {
    return std::nullopt;
  }
  return entriesOf(iterator);
}

/// The send right of the host port, taken once: each call of mach_host_self adds a reference.
host_t hostPort() {
  static const host_t port = mach_host_self();
  return port;
}

void addHostCalls(MachHostCalls& calls) {
  calls.host_processor_info = [](int flavor, std::uint32_t* processorCount, std::int32_t** reply,
                                 std::uint32_t* replyWords) {
    return ::host_processor_info(hostPort(), flavor, processorCount, reply, replyWords);
  };
  calls.vm_deallocate = [](std::uintptr_t address, std::size_t size) {
    return ::vm_deallocate(mach_task_self(), address, size);
  };
  calls.host_statistics64 = [](int flavor, std::int32_t* buffer, std::uint32_t* words) {
    return ::host_statistics64(hostPort(), flavor, buffer, words);
  };
  calls.host_page_size = [](std::uintptr_t* size) { return ::host_page_size(hostPort(), size); };
}

}  // namespace

void addMachineCalls(PlatformCalls& calls) {
  addHostCalls(calls.machHost);
  calls.sysctl.sysctlbyname = [](const char* name, void* oldValue, std::size_t* oldSize) {
    return ::sysctlbyname(name, oldValue, oldSize, nullptr, 0);
  };
  calls.sysctl.sysctl = [](const int* name, unsigned nameLength, void* oldValue,
                           std::size_t* oldSize) {
    return ::sysctl(const_cast<int*>(name), nameLength, oldValue, oldSize, nullptr, 0);
  };
  calls.posix.getloadavg = [](double* averages, int count) {
    return ::getloadavg(averages, count);
  };
  calls.ioRegistry.matchingServices = matchingServices;
  calls.volumes = systemVolumeCalls();
  calls.power = systemPowerCalls();
}

}  // namespace korvantis
