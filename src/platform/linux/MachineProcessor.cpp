#include "platform/linux/MachineProcessor.h"

#include <algorithm>
#include <fcntl.h>
#include <set>

#include "platform/linux/FileText.h"
#include "platform/linux/MachineTicks.h"
#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

/// No kernel numbers its processors beyond this.
constexpr std::uint64_t mostProcessors = 65536;

std::string readText(const std::string& path) {
  // The first processor's part of a long listing is enough.
  return readFileText(AT_FDCWD, path, 65536).text;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks(" \t\r\n\0", 5);
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string processorFolder(const std::string& root, int processor) {
  return root + "/sys/devices/system/cpu/cpu" + std::to_string(processor);
}

std::vector<int> readProcessors(const std::string& path) {
  const std::string text = readText(path);
  return parseProcessorList(trimmed(text));
}

/// The core of a processor, told by the list of all processors on it; empty when unknown.
std::string coreOf(const std::string& root, int processor) {
  const std::string topology = processorFolder(root, processor) + "/topology/";
  std::string core = readText(topology + "core_cpus_list");
  // The name that the same list had before kernel 5.3.
  return core.empty() ? readText(topology + "thread_siblings_list") : core;
}

std::int32_t physicalCores(const std::string& root, const std::vector<int>& processors) {
  std::set<std::string> cores;
  for (const int processor : processors) {
    const std::string core = coreOf(root, processor);
    if (!core.empty()) cores.insert(core);
  }
  return static_cast<std::int32_t>(cores.size());
}

/// The processors of the least capacity, where capacities differ.
std::vector<int> leastCapableProcessors(const std::string& root, const std::vector<int>& all) {
  std::vector<std::uint64_t> capacities;
  for (const int processor : all) {
    const std::string text = readText(processorFolder(root, processor) + "/cpu_capacity");
    const auto capacity = unsignedNumber(trimmed(text));
    if (!capacity) return {};
    capacities.push_back(*capacity);
  }
  if (capacities.empty()) return {};
  const auto [least, most] = std::minmax_element(capacities.begin(), capacities.end());
  std::vector<int> processors;
  for (std::size_t index = 0; *least < *most && index < all.size(); ++index) {
    if (capacities[index] == *least) processors.push_back(all[index]);
  }
  return processors;
}

}  // namespace

std::vector<int> parseProcessorList(std::string_view text) {
  std::vector<int> processors;
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find(','));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    const std::size_t dash = part.find('-');
    const auto first = unsignedNumber(part.substr(0, dash));
    const auto last =
        dash == std::string_view::npos ? first : unsignedNumber(part.substr(dash + 1));
    if (!first || !last || *last >= mostProcessors) return {};
    for (std::uint64_t number = *first; number <= *last; ++number) {
      processors.push_back(static_cast<int>(number));
    }
  }
  return processors;
}

std::optional<std::string> readProcessorName(const std::string& root) {
  const std::string listing = readText(root + "/proc/cpuinfo");
  std::string_view rest = listing;
  while (!rest.empty()) {
    const std::string_view line = takeLine(rest);
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || trimmed(line.substr(0, colon)) != "model name") continue;
    const std::string_view name = trimmed(line.substr(colon + 1));
    if (!name.empty()) return std::string(name);
  }
  for (const char* const tree :
       {"/sys/firmware/devicetree/base/model", "/proc/device-tree/model"}) {
    const std::string model = readText(root + tree);
    if (const auto name = trimmed(model); !name.empty()) return std::string(name);
  }
  return std::nullopt;
}

std::optional<std::int32_t> readLogicalCores(const std::string& root) {
  std::size_t cores = readProcessors(root + "/sys/devices/system/cpu/online").size();
  if (cores == 0)
    cores = parseMachineTicks(readFileText(AT_FDCWD, root + "/proc/stat").text).size();
  return cores > 0 ? std::optional(static_cast<std::int32_t>(cores)) : std::nullopt;
}

std::optional<CoreKinds> readCoreKinds(const std::string& root) {
  const auto fast = readProcessors(root + "/sys/devices/cpu_core/cpus");
  if (!fast.empty()) {
    const auto frugal = readProcessors(root + "/sys/devices/cpu_atom/cpus");
    const CoreKinds kinds{physicalCores(root, fast), physicalCores(root, frugal)};
    if (kinds.performance > 0) return kinds;
  }
  const auto online = readProcessors(root + "/sys/devices/system/cpu/online");
  const std::int32_t all = physicalCores(root, online);
  if (all == 0) return std::nullopt;
  const std::int32_t efficiency = physicalCores(root, leastCapableProcessors(root, online));
  return CoreKinds{all - efficiency, efficiency};
}

}  // namespace korvantis
