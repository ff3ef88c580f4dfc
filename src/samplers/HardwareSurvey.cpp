#include "samplers/HardwareSurvey.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Utf8.h"
#include "samplers/RegistryNumbers.h"
#include "samplers/SysctlHelper.h"

namespace korvantis {
namespace {

constexpr std::int64_t usualNeuralEngineCores = 16;

/// Firmware pads names with zeros and blanks.
std::string_view withoutPadding(std::string_view text) {
  constexpr std::string_view padding("\0 \t\n", 4);
  const std::size_t first = text.find_first_not_of(padding);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(padding) - first + 1);
}

std::optional<std::string> modelName(const PropertyMap& properties) {
  const auto found = properties.find("model");
  if (found == properties.end()) return std::nullopt;
  if (const auto* bytes = std::get_if<PropertyValue::Bytes>(&found->second.value)) {
    const std::string text(bytes->begin(), bytes->end());
    const std::string_view name = withoutPadding(text);
    if (name.empty() || !isValidUtf8(text)) return std::nullopt;
    return std::string(name);
  }
  const auto text = textProperty(properties, "model");
  return text && !text->empty() ? text : std::nullopt;
}

void surveyCores(HardwareInfo& info, const PlatformCalls& calls) {
  const auto logical = SysctlHelper::int32(calls.sysctl, "hw.logicalcpu");
  info.logicalCores = logical ? *logical : calls.processInfo.processorCount();
  const auto performance = SysctlHelper::int32(calls.sysctl, "hw.perflevel0.physicalcpu");
  const std::int64_t half = info.logicalCores < 2 ? 1 : info.logicalCores / 2;
  info.performanceCores = performance ? *performance : half;
  const auto efficiency = SysctlHelper::int32(calls.sysctl, "hw.perflevel1.physicalcpu");
  info.efficiencyCores = efficiency
                             ? *efficiency
                             : std::max<std::int64_t>(info.logicalCores - info.performanceCores, 0);
}

void surveyGPU(HardwareInfo& info, const IORegistryCalls& registry) {
  info.gpuCores = std::max<std::int64_t>(info.performanceCores, 4) + 4;
  info.gpuName = info.chipName;
  const auto accelerators = registry.matchingServices("IOAccelerator");
  if (!accelerators || accelerators->empty()) return;
  const auto properties = accelerators->front().createCFProperties();
  if (!properties) return;
  info.gpuName = modelName(*properties).value_or(info.gpuName);
  const auto cores = numberProperty(*properties, "gpu-core-count");
  if (cores && *cores >= 1) info.gpuCores = *cores;
}

std::int64_t surveyNeuralEngineCores(const IORegistryCalls& registry) {
  const auto devices = registry.matchingServices("AppleARMIODevice");
  if (!devices) return usualNeuralEngineCores;
  for (const IORegistryEntry& device : *devices) {
    const auto properties = device.createCFProperties();
    if (!properties) continue;
    const auto cores = wholeNumberProperty(*properties, "ANEDevicePropertyNumANECores");
    if (cores && *cores >= 1) return *cores;
  }
  return usualNeuralEngineCores;
}

}  // namespace

HardwareInfo surveyHardware(const PlatformCalls& calls) {
  HardwareInfo info;
  info.chipName =
      SysctlHelper::string(calls.sysctl, "machdep.cpu.brand_string").value_or("Apple Silicon");
  surveyCores(info, calls);
  surveyGPU(info, calls.ioRegistry);
  info.neuralEngineCores = surveyNeuralEngineCores(calls.ioRegistry);
  info.totalMemoryBytes = calls.processInfo.physicalMemory();
  return info;
}

}  // namespace korvantis
