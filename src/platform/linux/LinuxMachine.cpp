#include "platform/linux/LinuxMachine.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/MachineMemory.h"
#include "platform/linux/MachineProcessor.h"
#include "platform/linux/MachineTicks.h"
#include "platform/linux/MemoryInformation.h"
#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

template <typename Value>
std::string bytesOf(const Value& value) {
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

template <typename Value>
std::optional<std::string> bytesOf(const std::optional<Value>& value) {
  return value ? std::optional(bytesOf(*value)) : std::nullopt;
}

PropertyValue wholeNumber(std::uint64_t number) {
  return PropertyValue{static_cast<std::int64_t>(number)};
}

IORegistryEntry storageDriver(const BlockDeviceCounters& disk) {
  const PropertyMap counters{{"Bytes (Read)", wholeNumber(disk.readBytes)},
                             {"Bytes (Write)", wholeNumber(disk.writtenBytes)}};
  const PropertyMap properties{{"Statistics", PropertyValue{counters}}};
  return IORegistryEntry{[properties] { return std::optional(properties); },
                         [] { return std::vector<IORegistryEntry>(); }};
}

/// Capacities do not come near what a signed number holds; a damaged answer must not wrap.
std::int64_t capacity(std::uint64_t blocks, std::uint64_t blockSize) {
  constexpr std::uint64_t most = INT64_MAX;
  if (blockSize != 0 && blocks > most / blockSize) return INT64_MAX;
  return static_cast<std::int64_t>(blocks * blockSize);
}

}  // namespace

LinuxMachine::LinuxMachine(const MachineSources& sources)
    : root(sources.root),
      monotonicSeconds(sources.monotonicSeconds),
      pageSize(static_cast<std::uint64_t>(std::max(::sysconf(_SC_PAGESIZE), 1L))),
      ticks(root + "/proc/stat"),
      memory(root + "/proc/meminfo"),
      stalls(root + "/proc/pressure/memory"),
      load(root + "/proc/loadavg"),
      disks(sources),
      interfaces(sources) {}

int LinuxMachine::processorInfo(int flavor, std::uint32_t* processorCount, std::int32_t** reply,
                                std::uint32_t* replyWords) {
  if (flavor != PROCESSOR_CPU_LOAD_INFO) return -1;
  const auto text = ticks.read();
  if (!text) return -1;
  const auto cores = parseMachineTicks(*text);
  if (cores.empty()) return -1;
  const std::size_t words = cores.size() * CPU_STATE_MAX;
  // Handed over to the caller, who gives it back through `deallocate`.
  auto* const buffer = new std::int32_t[words];
  std::memcpy(buffer, cores.data(), words * sizeof(std::int32_t));
  *reply = buffer;
  *processorCount = static_cast<std::uint32_t>(cores.size());
  *replyWords = static_cast<std::uint32_t>(words);
  return 0;
}

int LinuxMachine::deallocate(std::uintptr_t address) {
  // `vm_deallocate` takes addresses as numbers.
  // NOLINTNEXTLINE(performance-no-int-to-ptr)
  delete[] reinterpret_cast<std::int32_t*>(address);
  return 0;
}

int LinuxMachine::statistics(int flavor, std::int32_t* buffer, std::uint32_t* words) {
  if (flavor != HOST_VM_INFO64 || *words * sizeof *buffer < sizeof(vm_statistics64)) return -1;
  const auto text = memoryText();
  if (!text) return -1;
  const auto counters = parsePageCounters(*text, disks.readZramBytes(), pageSize);
  if (!counters) return -1;
  std::memcpy(buffer, &*counters, sizeof *counters);
  *words = sizeof *counters / sizeof *buffer;
  return 0;
}

int LinuxMachine::namedFigure(const std::string& name, void* oldValue, std::size_t* oldSize) {
  const auto bytes = figure(name);
  if (!bytes || (oldValue != nullptr && bytes->size() > *oldSize)) return -1;
  if (oldValue != nullptr) std::memcpy(oldValue, bytes->data(), bytes->size());
  *oldSize = bytes->size();
  return 0;
}

std::optional<std::string> LinuxMachine::figure(const std::string& name) {
  if (name == "vm.swapusage") return swapUsage();
  if (name == "kern.memorystatus_level") return bytesOf(percentFree());
  if (name == "kern.memorystatus_vm_pressure_level") return bytesOf(pressureLevel());
  if (name == "hw.logicalcpu") return bytesOf(readLogicalCores(root));
  if (name == "machdep.cpu.brand_string") {
    const auto text = readProcessorName(root);
    return text ? std::optional(*text + '\0') : std::nullopt;
  }
  const auto kinds = readCoreKinds(root);
  if (kinds && name == "hw.perflevel0.physicalcpu") return bytesOf(kinds->performance);
  if (kinds && name == "hw.perflevel1.physicalcpu") return bytesOf(kinds->efficiency);
  return std::nullopt;
}

/// A tick asks for half a dozen figures of this one file.
std::optional<std::string> LinuxMachine::memoryText() {
  return memory.readOnceAround(monotonicSeconds());
}

std::uint64_t LinuxMachine::installedMemory() {
  return memoryInformationBytes(memoryText().value_or(""), "MemTotal");
}

std::optional<std::string> LinuxMachine::swapUsage() {
  const auto text = memoryText();
  return text ? bytesOf(parseSwapUsage(*text, pageSize)) : std::nullopt;
}

std::optional<std::int32_t> LinuxMachine::percentFree() {
  const auto text = memoryText();
  return text ? parsePercentFree(*text) : std::nullopt;
}

std::optional<std::int32_t> LinuxMachine::pressureLevel() {
  const auto percent = percentFree();
  if (!percent) return std::nullopt;
  return memoryPressureLevel(*percent, stalls.read().value_or(""));
}

int LinuxMachine::interfaceList(void* oldValue, std::size_t* oldSize) {
  return interfaces.list(oldValue, oldSize);
}

int LinuxMachine::loadAverages(double* averages, int count) {
  const std::string text = load.read().value_or("");
  std::string_view rest = text;
  const int wanted = std::min(count, 3);
  for (int index = 0; index < wanted; ++index) {
    const std::string_view word = takeWord(rest);
    const auto [stop, error] =
        std::from_chars(word.data(), word.data() + word.size(), averages[index]);
    if (error != std::errc{}) return index == 0 ? -1 : index;
  }
  return wanted;
}

std::optional<std::vector<IORegistryEntry>> LinuxMachine::matchingServices(
    const std::string& className) {
  std::vector<IORegistryEntry> services;
  if (className != "IOBlockStorageDriver") return services;
  const auto counters = disks.read();
  if (!counters) return std::nullopt;
  for (const BlockDeviceCounters& disk : *counters) services.push_back(storageDriver(disk));
  return services;
}

std::optional<VolumeResourceValues> LinuxMachine::volumeValues(const std::string& path) const {
  struct statvfs volume {};
  if (::statvfs((root + path).c_str(), &volume) != 0) return std::nullopt;
  VolumeResourceValues values;
  values.totalCapacity = capacity(volume.f_blocks, volume.f_frsize);
  values.availableCapacityForImportantUsage = capacity(volume.f_bavail, volume.f_frsize);
  return values;
}

}  // namespace korvantis
