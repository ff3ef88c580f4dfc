#include "samplers/MachineScript.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace korvantis::test {

PlatformCalls MachineScript::platform() {
  PlatformCalls calls;
  calls.clock.now = [this] {
    note("now");
    return now;
  };
  calls.processInfo.physicalMemory = [this] {
    note("physicalMemory");
    return physicalMemory;
  };
  calls.processInfo.processorCount = [this] {
    note("processorCount");
    return processorCount;
  };
  calls.machHost.host_processor_info = [this](int flavor, std::uint32_t* count,
                                              std::int32_t** reply, std::uint32_t* words) {
    return processorInfo(flavor, count, reply, words);
  };
  calls.machHost.vm_deallocate = [this](std::uintptr_t address, std::size_t size) {
    return deallocate(address, size);
  };
  calls.machHost.host_statistics64 = [this](int flavor, std::int32_t* buffer,
                                            std::uint32_t* words) {
    return statistics(flavor, buffer, words);
  };
  calls.machHost.host_page_size = [this](std::uintptr_t* size) {
    note("host_page_size");
    if (!pageSize) return -1;
    *size = *pageSize;
    return 0;
  };
  calls.posix.getloadavg = [this](double* averages, int count) {
    note("getloadavg");
    check(count == 3 && averages[0] == 0 && averages[1] == 0 && averages[2] == 0,
          "getloadavg wants three zeros");
    if (!loadAverages) return -1;
    std::copy(loadAverages->begin(), loadAverages->end(), averages);
    return 3;
  };
  calls.sysctl.sysctlbyname = [this](const char* name, void* oldValue, std::size_t* oldSize) {
    return named(name, oldValue, oldSize);
  };
  calls.sysctl.sysctl = [this](const int* name, unsigned nameLength, void* oldValue,
                               std::size_t* oldSize) {
    return interfaces(name, nameLength, oldValue, oldSize);
  };
  calls.ioRegistry.matchingServices = [this](const std::string& className) {
    return match(className);
  };
  calls.volumes.resourceValues = [this](const std::string& path) {
    note("resourceValues " + path);
    return rootVolume;
  };
  calls.volumes.mountedVolumePaths = [] { return std::nullopt; };
  calls.power.powerSources = [this] {
    note("powerSources");
    return std::nullopt;
  };
  calls.power.IOPMCopyAssertionsByProcess = [] { return std::nullopt; };
  return calls;
}

int MachineScript::processorInfo(int flavor, std::uint32_t* count, std::int32_t** reply,
                                 std::uint32_t* words) {
  note("host_processor_info");
  check(flavor == PROCESSOR_CPU_LOAD_INFO, "wrong flavor of host_processor_info");
  std::vector<std::int32_t> numbers;
  for (const Core& core : cores) numbers.insert(numbers.end(), core.begin(), core.end());
  // Room for a reply of no core has an address too.
  numbers.push_back(0);
  *count = processorInfoCores.value_or(static_cast<std::uint32_t>(cores.size()));
  *words = processorInfoWords.value_or(static_cast<std::uint32_t>(cores.size() * 4));
  if (processorInfoGivesReply) {
    *reply = numbers.data();
    const std::scoped_lock guard(mutex);
    replies.emplace(reinterpret_cast<std::uintptr_t>(numbers.data()), std::move(numbers));
  }
  return processorInfoResult;
}

int MachineScript::deallocate(std::uintptr_t address, std::size_t size) {
  const std::scoped_lock guard(mutex);
  const auto found = replies.find(address);
  if (found == replies.end()) {
    wrongQuestions.emplace_back("vm_deallocate of what was not handed over");
    return -1;
  }
  if (!processorInfoWords && size != (found->second.size() - 1) * sizeof(std::int32_t)) {
    wrongQuestions.emplace_back("vm_deallocate with a wrong size");
  }
  replies.erase(found);
  return 0;
}

int MachineScript::statistics(int flavor, std::int32_t* buffer, std::uint32_t* words) {
  note("host_statistics64");
  check(flavor == HOST_VM_INFO64, "wrong flavor of host_statistics64");
  check(*words == 104, "host_statistics64 wants 104 words");
  check(std::all_of(buffer, buffer + *words, [](std::int32_t word) { return word == 0; }),
        "host_statistics64 wants a zeroed buffer");
  if (statisticsResult == 0) std::memcpy(buffer, &pageCounters, sizeof pageCounters);
  return statisticsResult;
}

int MachineScript::named(const char* name, void* oldValue, std::size_t* oldSize) {
  note(std::string("sysctlbyname ") + name);
  const auto found = figures.find(name);
  if (found == figures.end()) return -1;
  if (oldValue == nullptr) {
    *oldSize = found->second.size();
    return 0;
  }
  if (figuresThatFailToBeRead.contains(name) || found->second.size() > *oldSize) return -1;
  std::memcpy(oldValue, found->second.data(), found->second.size());
  *oldSize = found->second.size();
  return 0;
}

int MachineScript::interfaces(const int* name, unsigned nameLength, void* oldValue,
                              std::size_t* oldSize) {
  note(oldValue == nullptr ? "sysctl size" : "sysctl list");
  const std::vector<int> expected{4, 17, 0, 0, 6, 0};
  check(std::vector<int>(name, name + nameLength) == expected, "wrong sysctl name");
  if (!interfaceList) return -1;
  if (oldValue == nullptr) {
    *oldSize = interfaceList->size();
    return 0;
  }
  const auto* bytes = static_cast<const std::byte*>(oldValue);
  check(std::all_of(bytes, bytes + *oldSize, [](std::byte value) { return value == std::byte{}; }),
        "sysctl wants a zeroed buffer");
  if (interfaceListFailsToBeRead || interfaceList->size() > *oldSize) return -1;
  *oldSize = interfaceBytesFilled.value_or(interfaceList->size());
  std::memcpy(oldValue, interfaceList->data(), *oldSize);
  return 0;
}

std::optional<std::vector<IORegistryEntry>> MachineScript::match(const std::string& className) {
  note("match " + className);
  if (classesThatFailToMatch.contains(className)) return std::nullopt;
  std::vector<IORegistryEntry> entries;
  const auto found = services.find(className);
  if (found == services.end()) return entries;
  for (const auto& properties : found->second) {
    entries.push_back({.createCFProperties =
                           [this, className, properties] {
                             note("properties " + className);
                             return properties;
                           },
                       .children = [] { return std::vector<IORegistryEntry>(); }});
  }
  return entries;
}

void MachineScript::note(const std::string& operation) {
  const std::scoped_lock guard(mutex);
  log.push_back(operation);
}

void MachineScript::check(bool holds, const std::string& complaint) {
  const std::scoped_lock guard(mutex);
  if (!holds) wrongQuestions.push_back(complaint);
}

std::vector<std::string> MachineScript::operations() const {
  const std::scoped_lock guard(mutex);
  return log;
}

int MachineScript::count(const std::string& operation) const {
  const std::scoped_lock guard(mutex);
  return static_cast<int>(std::count(log.begin(), log.end(), operation));
}

void MachineScript::forgetOperations() {
  const std::scoped_lock guard(mutex);
  log.clear();
}

std::size_t MachineScript::repliesNotGivenBack() const {
  const std::scoped_lock guard(mutex);
  return replies.size();
}

std::vector<std::string> MachineScript::complaints() const {
  const std::scoped_lock guard(mutex);
  return wrongQuestions;
}

void MachineScript::setSwapUsed(std::uint64_t bytes) {
  xsw_usage usage{};
  usage.xsu_used = bytes;
  setFigure("vm.swapusage", usage);
}

void MachineScript::setDisk(std::int64_t readBytes, std::int64_t writtenBytes) {
  services["IOBlockStorageDriver"] = {diskProperties(readBytes, writtenBytes)};
}

if_msghdr2 interfaceMessage(int flags, std::uint64_t inBytes, std::uint64_t outBytes) {
  if_msghdr2 message{};
  message.ifm_msglen = sizeof message;
  message.ifm_type = RTM_IFINFO2;
  message.ifm_flags = flags;
  message.ifm_data.ifi_ibytes = inBytes;
  message.ifm_data.ifi_obytes = outBytes;
  return message;
}

std::vector<std::byte> interfaceList(const std::vector<if_msghdr2>& messages) {
  std::vector<std::byte> bytes(messages.size() * sizeof(if_msghdr2));
  if (!messages.empty()) std::memcpy(bytes.data(), messages.data(), bytes.size());
  return bytes;
}

std::vector<std::byte> oneInterface(std::uint64_t inBytes, std::uint64_t outBytes) {
  return interfaceList({interfaceMessage(DARWIN_IFF_UP, inBytes, outBytes)});
}

PropertyMap diskProperties(std::int64_t readBytes, std::int64_t writtenBytes) {
  const PropertyMap statistics{{"Bytes (Read)", PropertyValue{readBytes}},
                               {"Bytes (Write)", PropertyValue{writtenBytes}}};
  return PropertyMap{{"Statistics", PropertyValue{statistics}}};
}

}  // namespace korvantis::test
