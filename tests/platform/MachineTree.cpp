#include "platform/MachineTree.h"

#include <array>
#include <cstring>
#include <utility>

namespace korvantis::test {
namespace {

constexpr const char* laptopMemory =
    "MemTotal:       16000000 kB\n"
    "MemFree:         2000000 kB\n"
    "MemAvailable:    8000000 kB\n"
    "Buffers:          100000 kB\n"
    "Cached:          5000000 kB\n"
    "SwapCached:        10000 kB\n"
    "SwapTotal:       4000000 kB\n"
    "SwapFree:        3000000 kB\n"
    "Zswap:             50000 kB\n"
    "AnonPages:       4000000 kB\n"
    "Shmem:           1000000 kB\n"
    "KReclaimable:     300000 kB\n"
    "SReclaimable:     250000 kB\n";

constexpr const char* laptopDisks =
    "   7       0 loop0 10 0 999999 0 0 0 999999 0 0 0 0\n"
    " 259       0 nvme0n1 500 20 2000 30 600 40 4000 50 0 60 70 0 0 0 0 0 0\n"
    " 259       1 nvme0n1p1 100 0 1500 0 100 0 3000 0 0 0 0 0 0 0 0 0 0\n"
    " 253       0 dm-0 100 0 1500 0 100 0 3000 0 0 0 0 0 0 0 0 0 0\n"
    " 252       0 zram0 100 0 800 0 100 0 800 0 0 0 0 0 0 0 0 0 0\n"
    "   8       0 sda 10 0 100 0 20 0 200 0 0 0 0\n"
    "   8       1 sda1 10 0 100 0 20 0 200 0 0 0 0\n";

}  // namespace

PlatformCalls MachineTree::calls() {
  MachineSources sources;
  sources.root = folder.path();
  sources.monotonicSeconds = [this] { return seconds; };
  sources.dumpLinks = [this] {
    ++dumps;
    return links;
  };
  PlatformCalls result;
  addMachineCalls(result, sources);
  return result;
}

void MachineTree::makeProcessor(int number, const std::string& coreList) {
  const std::string topology = "sys/devices/system/cpu/cpu" + std::to_string(number) + "/topology/";
  write(topology + "core_cpus_list", coreList + "\n");
}

void MachineTree::makeLaptop() {
  write("proc/stat",
        "cpu  30 3 30 300 30 3 3 30 30 0\n"
        "cpu0 10 1 10 100 10 1 1 10 10 0\n"
        "cpu1 20 2 20 200 20 2 2 20 20 0\n"
        "intr 1 2 3\n");
  write("proc/cpuinfo", "processor\t: 0\nmodel name\t: Some Processor @ 2.00GHz \nflags\t: fpu\n");
  write("proc/meminfo", laptopMemory);
  write("proc/loadavg", "0.25 1.50 3.00 2/345 6789\n");
  write("proc/diskstats", laptopDisks);
  write("proc/pressure/memory",
        "some avg10=0.00 avg60=0.00 avg300=0.00 total=0\n"
        "full avg10=0.00 avg60=0.00 avg300=0.00 total=0\n");
  write("sys/devices/system/cpu/online", "0-7\n");
  for (int number = 0; number < 8; ++number) {
    makeProcessor(number, std::to_string(number % 4) + "," + std::to_string(number % 4 + 4));
  }
  for (const char* const device : {"nvme0n1", "sda"}) {
    write(std::string("sys/block/") + device + "/device/model", "Disk\n");
    write(std::string("sys/block/") + device + "/hidden", "0\n");
  }
  write("sys/block/dm-0/dm/name", "root\n");
  write("sys/block/loop0/size", "8\n");
  write("sys/block/zram0/mm_stat", " 900000 300000 409600 0 409600 0 0 0 0\n");
  write("sys/class/net/wlan0/device/vendor", "0x1\n");
  write("sys/class/net/lo/flags", "0x9\n");
  write("sys/class/net/br0/flags", "0x1003\n");
  links = {{"lo", 1, 0x9, 10, 10}, {"wlan0", 2, 0x11043, 3000, 200}, {"br0", 3, 0x1003, 3000, 200}};
}

void MachineTree::makeContainer() {
  write("proc/stat", "cpu  10 1 10 100 10 1 1 10 10 0\ncpu0 10 1 10 100 10 1 1 10 10 0\n");
  write("proc/cpuinfo", "processor\t: 0\nmodel name\t: Some Processor\n");
  write("proc/meminfo", laptopMemory);
  write("proc/loadavg", "0.25 1.50 3.00 2/345 6789\n");
  links = {{"lo", 1, 0x9, 10, 10}, {"eth0", 2, 0x1043, 700, 90}};
}

void MachineTree::makeBigLittleBoard() {
  write("proc/cpuinfo", "processor\t: 0\nBogoMIPS\t: 48.00\n");
  write("sys/firmware/devicetree/base/model", std::string("Some Board Rev 2\0", 17));
  write("sys/devices/system/cpu/online", "0-5\n");
  for (int number = 0; number < 6; ++number) {
    makeProcessor(number, std::to_string(number));
    write("sys/devices/system/cpu/cpu" + std::to_string(number) + "/cpu_capacity",
          number < 4 ? "485\n" : "1024\n");
  }
}

void MachineTree::makeHybrid() {
  write("sys/devices/cpu_core/cpus", "0-3\n");
  write("sys/devices/cpu_atom/cpus", "4-7\n");
  write("sys/devices/system/cpu/online", "0-7\n");
  for (int number = 0; number < 4; ++number) makeProcessor(number, number < 2 ? "0-1" : "2-3");
  for (int number = 4; number < 8; ++number) makeProcessor(number, std::to_string(number));
}

std::optional<std::int32_t> int32Figure(const PlatformCalls& calls, const char* name) {
  std::int32_t value = 0;
  std::size_t size = sizeof value;
  if (calls.sysctl.sysctlbyname(name, &value, &size) != 0 || size != sizeof value) {
    return std::nullopt;
  }
  return value;
}

std::optional<std::string> textFigure(const PlatformCalls& calls, const char* name) {
  std::size_t size = 0;
  if (calls.sysctl.sysctlbyname(name, nullptr, &size) != 0) return std::nullopt;
  std::string text(size, '?');
  if (calls.sysctl.sysctlbyname(name, text.data(), &size) != 0) return std::nullopt;
  // Such a text ends in its zero byte.
  if (text.empty() || text.back() != '\0') return std::nullopt;
  text.pop_back();
  return text;
}

std::optional<vm_statistics64> pageCounters(const PlatformCalls& calls) {
  std::array<std::int32_t, vmStatisticsWords> buffer{};
  std::uint32_t words = vmStatisticsWords;
  if (calls.machHost.host_statistics64(HOST_VM_INFO64, buffer.data(), &words) != 0) {
    return std::nullopt;
  }
  vm_statistics64 counters{};
  std::memcpy(&counters, buffer.data(), sizeof counters);
  return counters;
}

std::optional<std::vector<if_msghdr2>> interfaceMessages(const PlatformCalls& calls) {
  constexpr std::array name{CTL_NET, DARWIN_PF_ROUTE, 0, 0, NET_RT_IFLIST2, 0};
  const auto length = static_cast<unsigned>(name.size());
  std::size_t size = 0;
  if (calls.sysctl.sysctl(name.data(), length, nullptr, &size) != 0) return std::nullopt;
  std::vector<if_msghdr2> messages(size / sizeof(if_msghdr2) + 1);
  if (calls.sysctl.sysctl(name.data(), length, messages.data(), &size) != 0) return std::nullopt;
  messages.resize(size / sizeof(if_msghdr2));
  return messages;
}

std::vector<std::pair<std::int64_t, std::int64_t>> diskCounters(const PlatformCalls& calls) {
  std::vector<std::pair<std::int64_t, std::int64_t>> counters;
  const auto services = calls.ioRegistry.matchingServices("IOBlockStorageDriver");
  for (const IORegistryEntry& service : services.value_or(std::vector<IORegistryEntry>())) {
    const PropertyMap properties = service.createCFProperties().value();
    const auto statistics = std::get<PropertyMap>(properties.at("Statistics").value);
    counters.emplace_back(std::get<std::int64_t>(statistics.at("Bytes (Read)").value),
                          std::get<std::int64_t>(statistics.at("Bytes (Write)").value));
  }
  return counters;
}

std::vector<processor_cpu_load_info> coreTicks(const PlatformCalls& calls) {
  std::uint32_t count = 0;
  std::uint32_t words = 0;
  std::int32_t* reply = nullptr;
  if (calls.machHost.host_processor_info(PROCESSOR_CPU_LOAD_INFO, &count, &reply, &words) != 0) {
    return {};
  }
  std::vector<processor_cpu_load_info> cores(count);
  std::memcpy(cores.data(), reply, words * sizeof(std::int32_t));
  calls.machHost.vm_deallocate(reinterpret_cast<std::uintptr_t>(reply),
                               words * sizeof(std::int32_t));
  return cores;
}

}  // namespace korvantis::test
