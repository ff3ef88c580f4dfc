#include "state/AudioDeviceSurvey.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace korvantis {

namespace {

AudioObjectPropertyAddress address(std::uint32_t selector,
                                   std::uint32_t scope = kAudioObjectPropertyScopeGlobal) {
  return {selector, scope, 0};
}

std::optional<std::vector<std::uint32_t>> deviceIDs(const AudioObjectCalls& calls) {
  const auto devices = address(kAudioHardwarePropertyDevices);
  std::uint32_t size = 0;
  if (calls.AudioObjectGetPropertyDataSize(kAudioObjectSystemObject, devices, &size) != 0)
    return std::nullopt;
  std::vector<std::uint32_t> ids(size / sizeof(std::uint32_t));
  if (ids.empty()) return std::nullopt;
  size = static_cast<std::uint32_t>(ids.size() * sizeof(std::uint32_t));
  if (calls.AudioObjectGetPropertyData(kAudioObjectSystemObject, devices, &size, ids.data()) != 0)
    return std::nullopt;
  // Fewer than announced when a device went away meanwhile.
  if (size / sizeof(std::uint32_t) < ids.size()) ids.resize(size / sizeof(std::uint32_t));
  return ids;
}

/// 0 when there is none.
std::uint32_t defaultDevice(const AudioObjectCalls& calls, std::uint32_t selector) {
  std::uint32_t id = 0;
  std::uint32_t size = sizeof id;
  const std::int32_t status =
      calls.AudioObjectGetPropertyData(kAudioObjectSystemObject, address(selector), &size, &id);
  return status == 0 ? id : 0;
}

/// The channels of all streams in a block that begins with a buffer list, as far as it reaches.
std::uint64_t channelsIn(const std::vector<std::byte>& block) {
  std::uint32_t buffers = 0;
  if (block.size() < sizeof buffers) return 0;
  std::memcpy(&buffers, block.data(), sizeof buffers);
  std::uint64_t channels = 0;
  std::size_t offset = offsetof(AudioBufferList, mBuffers);
  for (std::uint32_t index = 0; index < buffers && offset + sizeof(AudioBuffer) <= block.size();
       ++index, offset += sizeof(AudioBuffer)) {
    AudioBuffer buffer{};
    std::memcpy(&buffer, block.data() + offset, sizeof buffer);
    channels += buffer.mNumberChannels;
  }
  return channels;
}

bool deviceHasChannels(const AudioObjectCalls& calls, std::uint32_t device, std::uint32_t scope) {
  const auto streams = address(kAudioDevicePropertyStreamConfiguration, scope);
  std::uint32_t size = 0;
  if (calls.AudioObjectGetPropertyDataSize(device, streams, &size) != 0 || size == 0) return false;
  std::vector<std::byte> block(size);
  if (calls.AudioObjectGetPropertyData(device, streams, &size, block.data()) != 0) return false;
  return channelsIn(block) != 0;
}

std::string deviceName(const AudioObjectCalls& calls, std::uint32_t device) {
  const auto name = calls.copyTextProperty(device, address(kAudioObjectPropertyName));
  return name ? *name : "Audio Device " + std::to_string(device);
}

}  // namespace

AudioDeviceItem AudioDeviceSurvey::madeUpOutput() {
  return {.id = 1, .name = "MacBook Pro Speakers", .isInput = false, .isDefault = true};
}

AudioDeviceItem AudioDeviceSurvey::madeUpInput() {
  return {.id = 2, .name = "MacBook Pro Microphone", .isInput = true, .isDefault = true};
}

std::optional<AudioDeviceSurvey> AudioDeviceSurvey::read(const AudioObjectCalls& calls) {
  const auto ids = deviceIDs(calls);
  if (!ids) return std::nullopt;
  const auto defaultOutput = defaultDevice(calls, kAudioHardwarePropertyDefaultOutputDevice);
  const auto defaultInput = defaultDevice(calls, kAudioHardwarePropertyDefaultInputDevice);
  AudioDeviceSurvey survey;
  for (const std::uint32_t id : *ids) {
    const std::string name = deviceName(calls, id);
    if (deviceHasChannels(calls, id, kAudioObjectPropertyScopeOutput))
      survey.outputs.push_back({id, name, false, id == defaultOutput});
    if (deviceHasChannels(calls, id, kAudioObjectPropertyScopeInput))
      survey.inputs.push_back({id, name, true, id == defaultInput});
  }
  if (survey.outputs.empty()) survey.outputs.push_back(madeUpOutput());
  if (survey.inputs.empty()) survey.inputs.push_back(madeUpInput());
  return survey;
}

}  // namespace korvantis
