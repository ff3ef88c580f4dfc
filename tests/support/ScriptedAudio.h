#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/AudioObjectCalls.h"

namespace korvantis::test {

/// A machine's sound devices, scripted. Every operation can be made to fail.
struct ScriptedAudio {
  struct Device {
    std::uint32_t id = 0;
    std::optional<std::string> name;
    /// Channels of each stream, out and in.
    std::vector<std::uint32_t> outputs;
    std::vector<std::uint32_t> inputs;
  };

  std::vector<Device> devices;
  std::uint32_t defaultOutput = 0;
  std::uint32_t defaultInput = 0;
  bool failsSize = false;
  bool failsList = false;
  bool failsDefaults = false;
  bool failsStreamSize = false;
  bool failsStreams = false;
  bool refusesSetting = false;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> settings;
  /// Calls that no sound system would accept.
  int wrongCalls = 0;

  AudioObjectCalls calls() {
    AudioObjectCalls calls;
    calls.AudioObjectGetPropertyDataSize = [this](std::uint32_t object,
                                                  const AudioObjectPropertyAddress& address,
                                                  std::uint32_t* size) {
      if (address.mElement != 0) ++wrongCalls;
      if (object == kAudioObjectSystemObject ? failsSize : failsStreamSize) return -1;
      *size = static_cast<std::uint32_t>(bytes(object, address).size());
      return 0;
    };
    calls.AudioObjectGetPropertyData = [this](std::uint32_t object,
                                              const AudioObjectPropertyAddress& address,
                                              std::uint32_t* size, void* data) {
      if (fails(object, address.mSelector)) return -1;
      const auto all = bytes(object, address);
      if (*size < all.size()) {
        ++wrongCalls;
        return -1;
      }
      *size = static_cast<std::uint32_t>(all.size());
      std::memcpy(data, all.data(), all.size());
      return 0;
    };
    calls.AudioObjectSetPropertyData = [this](std::uint32_t object,
                                              const AudioObjectPropertyAddress& address,
                                              std::uint32_t size, const void* data) {
      std::uint32_t id = 0;
      if (object != kAudioObjectSystemObject || size != sizeof id ||
          address.mScope != kAudioObjectPropertyScopeGlobal) {
        ++wrongCalls;
        return -1;
      }
      std::memcpy(&id, data, sizeof id);
      settings.emplace_back(address.mSelector, id);
      if (refusesSetting) return -1;
      (address.mSelector == kAudioHardwarePropertyDefaultOutputDevice ? defaultOutput
                                                                      : defaultInput) = id;
      return 0;
    };
    calls.copyTextProperty = [this](std::uint32_t object,
                                    const AudioObjectPropertyAddress& address) {
      if (address.mSelector != kAudioObjectPropertyName) ++wrongCalls;
      return find(object).name;
    };
    return calls;
  }

 private:
  bool fails(std::uint32_t object, std::uint32_t selector) const {
    if (object != kAudioObjectSystemObject) return failsStreams;
    return selector == kAudioHardwarePropertyDevices ? failsList : failsDefaults;
  }

  const Device& find(std::uint32_t id) const {
    for (const Device& device : devices) {
      if (device.id == id) return device;
    }
    static const Device none;
    return none;
  }

  template <typename Value>
  static void append(std::vector<char>& bytes, const Value& value) {
    const auto* const first = reinterpret_cast<const char*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof value);
  }

  std::vector<char> bytes(std::uint32_t object, const AudioObjectPropertyAddress& address) const {
    std::vector<char> all;
    if (address.mSelector == kAudioHardwarePropertyDevices) {
      for (const Device& device : devices) append(all, device.id);
    } else if (address.mSelector == kAudioHardwarePropertyDefaultOutputDevice) {
      append(all, defaultOutput);
    } else if (address.mSelector == kAudioHardwarePropertyDefaultInputDevice) {
      append(all, defaultInput);
    } else if (address.mSelector == kAudioDevicePropertyStreamConfiguration) {
      const Device& device = find(object);
      const auto& streams =
          address.mScope == kAudioObjectPropertyScopeOutput ? device.outputs : device.inputs;
      append(all, static_cast<std::uint32_t>(streams.size()));
      append(all, std::uint32_t{0});
      for (const std::uint32_t channels : streams) append(all, AudioBuffer{channels, 0, nullptr});
    }
    return all;
  }
};

}  // namespace korvantis::test
