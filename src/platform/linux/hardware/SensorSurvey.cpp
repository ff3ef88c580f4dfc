#include "platform/linux/hardware/SensorSurvey.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <unistd.h>

#include "platform/linux/FolderNames.h"
#include "platform/linux/MachineProcessor.h"
#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/NumberedFolders.h"

namespace korvantis {
namespace {

/// The numbers that the firmware gave to the frugal cores of a processor of two kinds.
std::set<int> efficiencyCoreNumbers(const std::string& root) {
  std::set<int> cores;
  for (const int processor :
       parseProcessorList(attributeText(root + "/sys/devices/cpu_atom/cpus"))) {
    const auto core = attributeNumber(root + "/sys/devices/system/cpu/cpu" +
                                      std::to_string(processor) + "/topology/core_id");
    if (core) cores.insert(static_cast<int>(*core));
  }
  return cores;
}

/// One device of `/sys/class/hwmon`.
struct Chip {
  std::string folder;
  std::string name;
  std::vector<std::string> entries;
  const std::set<int>& efficiencyCores;
};

bool isWireless(std::string_view name) {
  return name.starts_with("iwlwifi") || name.starts_with("ath") || name.starts_with("mt79");
}

bool isProcessorZone(std::string_view name) {
  return name.starts_with("cpu") && (name.ends_with("_thermal") || name.ends_with("-thermal"));
}

std::optional<SensorRole> intelRole(const Chip& chip, const std::string& label) {
  if (label == "Package id 0") return SensorRole::processorPackage;
  const int core = numberWithin(label, "Core ", "");
  if (core < 0) return std::nullopt;
  return chip.efficiencyCores.contains(core) ? SensorRole::efficiencyCore
                                             : SensorRole::performanceCore;
}

std::optional<SensorRole> roleByTable(const std::string& label) {
  constexpr std::array<std::pair<std::string_view, SensorRole>, 4> dies{{
      {"Tctl", SensorRole::processorPackage},
      {"Tccd1", SensorRole::firstDie},
      {"Tccd2", SensorRole::secondDie},
      {"Tccd3", SensorRole::thirdDie},
  }};
  for (const auto& [name, role] : dies) {
    if (label == name) return role;
  }
  return std::nullopt;
}

std::optional<SensorRole> roleOf(const Chip& chip, int number) {
  if (isWireless(chip.name)) {
    return number == 1 ? std::optional(SensorRole::wireless) : std::nullopt;
  }
  if (isProcessorZone(chip.name)) {
    return number == 1 ? std::optional(SensorRole::processorPackage) : std::nullopt;
  }
  const std::string label =
      attributeText(chip.folder + "/temp" + std::to_string(number) + "_label");
  if (chip.name == "coretemp") return intelRole(chip, label);
  if (chip.name == "k10temp") return roleByTable(label);
  if (chip.name == "nvme" && label == "Composite") return SensorRole::drive;
  if (chip.name == "amdgpu" && label == "edge") return SensorRole::graphicsEdge;
  if (chip.name == "amdgpu" && label == "junction") return SensorRole::graphicsJunction;
  return std::nullopt;
}

/// Only graphics cards fall asleep while the machine is in use; asking any other device whether it
/// does would cost a reading more.
std::string sleepPathOf(const Chip& chip) {
  constexpr std::array<std::string_view, 5> cards{"amdgpu", "radeon", "nouveau", "i915", "xe"};
  if (std::find(cards.begin(), cards.end(), chip.name) == cards.end()) return {};
  return chip.folder + "/device/power/runtime_status";
}

/// The numbers of the entries made like "fan2_input", ascending.
std::vector<int> numbersOf(const Chip& chip, std::string_view prefix) {
  std::vector<int> numbers;
  for (const std::string& entry : chip.entries) {
    const int number = numberWithin(entry, prefix, "_input");
    if (number >= 0) numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

void addSensors(SensorSurvey& survey, const Chip& chip) {
  for (const int number : numbersOf(chip, "temp")) {
    const auto role = roleOf(chip, number);
    if (!role) continue;
    const std::string path = chip.folder + "/temp" + std::to_string(number) + "_input";
    survey.sensors.push_back({*role, path, sleepPathOf(chip)});
  }
}

void addFans(SensorSurvey& survey, const Chip& chip) {
  for (const int number : numbersOf(chip, "fan")) {
    const std::string fan = chip.folder + "/fan" + std::to_string(number);
    const auto ifThere = [&](const char* suffix) {
      return ::access((fan + suffix).c_str(), F_OK) == 0 ? fan + suffix : std::string();
    };
    survey.fans.push_back({fan + "_input", ifThere("_min"), ifThere("_max"), sleepPathOf(chip)});
  }
}

}  // namespace

SensorSurvey surveySensors(const std::string& root) {
  SensorSurvey survey;
  const std::set<int> efficiencyCores = efficiencyCoreNumbers(root);
  for (const std::string& folder : numberedFolders(root + "/sys/class/hwmon", "hwmon")) {
    const Chip chip{folder, attributeText(folder + "/name"), namesInFolder(folder),
                    efficiencyCores};
    addSensors(survey, chip);
    addFans(survey, chip);
  }
  return survey;
}

}  // namespace korvantis
