#include "platform/linux/audio/AudioObjects.h"

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

namespace korvantis {
namespace {

using Bytes = std::vector<std::byte>;

/// A property's bytes, or why there are none.
struct Property {
  std::int32_t status = 0;
  Bytes bytes;
};

template <typename Value>
void append(Bytes& bytes, const Value& value) {
  static_assert(std::is_trivially_copyable_v<Value>);
  const auto* const first = reinterpret_cast<const std::byte*>(&value);
  bytes.insert(bytes.end(), first, first + sizeof value);
}

Property deviceIDs(const AudioDevices& seen) {
  Property property;
  for (const AudioDevice& device : seen.devices) append(property.bytes, device.id);
  return property;
}

Property defaultDevice(const AudioDevices& seen, bool isInput) {
  const std::uint32_t id = seen.defaultID(isInput);
  Property property;
  if (id == 0) {
    property.status = kAudioHardwareUnknownPropertyError;
  } else {
    append(property.bytes, id);
  }
  return property;
}

/// A buffer list: one stream with the device's channels in its own direction, none in the other.
Property streamConfiguration(const AudioDevice& device, std::uint32_t scope) {
  const bool isOwnScope =
      scope == (device.isInput ? kAudioObjectPropertyScopeInput : kAudioObjectPropertyScopeOutput);
  AudioBufferList list{};
  list.mNumberBuffers = isOwnScope ? 1 : 0;
  list.mBuffers[0].mNumberChannels = device.channels;
  Property property;
  append(property.bytes, list);
  if (!isOwnScope) property.bytes.resize(offsetof(AudioBufferList, mBuffers));
  return property;
}

Property systemProperty(const AudioDevices& seen, std::uint32_t selector) {
  switch (selector) {
    case kAudioHardwarePropertyDevices: return deviceIDs(seen);
    case kAudioHardwarePropertyDefaultOutputDevice: return defaultDevice(seen, false);
    case kAudioHardwarePropertyDefaultInputDevice: return defaultDevice(seen, true);
    default: return {.status = kAudioHardwareUnknownPropertyError, .bytes = {}};
  }
}

Property propertyOf(const std::optional<AudioDevices>& seen, std::uint32_t object,
                    const AudioObjectPropertyAddress& address) {
  if (!seen) return {.status = kAudioHardwareNotRunningError, .bytes = {}};
  if (object == kAudioObjectSystemObject) return systemProperty(*seen, address.mSelector);
  const AudioDevice* const device = seen->find(object);
  if (device == nullptr) return {.status = kAudioHardwareBadObjectError, .bytes = {}};
  if (address.mSelector != kAudioDevicePropertyStreamConfiguration)
    return {.status = kAudioHardwareUnknownPropertyError, .bytes = {}};
  return streamConfiguration(*device, address.mScope);
}

std::int32_t sizeOf(PulseDevices& server, std::uint32_t object,
                    const AudioObjectPropertyAddress& address, std::uint32_t* size) {
  const bool isList =
      object == kAudioObjectSystemObject && address.mSelector == kAudioHardwarePropertyDevices;
  const Property property =
      propertyOf(isList ? server.refreshed() : server.lastSeen(), object, address);
  *size = static_cast<std::uint32_t>(property.bytes.size());
  return property.status;
}

std::int32_t dataOf(PulseDevices& server, std::uint32_t object,
                    const AudioObjectPropertyAddress& address, std::uint32_t* size, void* data) {
  const Property property = propertyOf(server.lastSeen(), object, address);
  if (property.status != 0) return property.status;
  if (*size < property.bytes.size()) return kAudioHardwareBadPropertySizeError;
  *size = static_cast<std::uint32_t>(property.bytes.size());
  if (*size > 0) std::memcpy(data, property.bytes.data(), *size);
  return 0;
}

std::int32_t setData(PulseDevices& server, std::uint32_t object,
                     const AudioObjectPropertyAddress& address, std::uint32_t size,
                     const void* data) {
  std::uint32_t id = 0;
  if (size != sizeof id) return kAudioHardwareBadPropertySizeError;
  std::memcpy(&id, data, sizeof id);
  const bool isInput = address.mSelector == kAudioHardwarePropertyDefaultInputDevice;
  const bool isDefault = isInput || address.mSelector == kAudioHardwarePropertyDefaultOutputDevice;
  if (object != kAudioObjectSystemObject || !isDefault) return kAudioHardwareUnknownPropertyError;
  const auto seen = server.lastSeen();
  const AudioDevice* const device = seen ? seen->find(id) : nullptr;
  if (device == nullptr || device->isInput != isInput) return kAudioHardwareBadDeviceError;
  return server.setDefault(id) ? 0 : kAudioHardwareNotRunningError;
}

std::optional<std::string> nameOf(PulseDevices& server, std::uint32_t object,
                                  const AudioObjectPropertyAddress& address) {
  const auto seen = server.lastSeen();
  const AudioDevice* const device = seen ? seen->find(object) : nullptr;
  if (device == nullptr || address.mSelector != kAudioObjectPropertyName) return std::nullopt;
  if (device->description.empty()) return std::nullopt;
  return device->description;
}

}  // namespace

AudioObjectCalls pulseAudioObjectCalls(const std::shared_ptr<PulseDevices>& server) {
  AudioObjectCalls calls;
  calls.AudioObjectGetPropertyDataSize =
      [server](std::uint32_t object, const AudioObjectPropertyAddress& address,
               std::uint32_t* size) { return sizeOf(*server, object, address, size); };
  calls.AudioObjectGetPropertyData =
      [server](std::uint32_t object, const AudioObjectPropertyAddress& address, std::uint32_t* size,
               void* data) { return dataOf(*server, object, address, size, data); };
  calls.AudioObjectSetPropertyData =
      [server](std::uint32_t object, const AudioObjectPropertyAddress& address, std::uint32_t size,
               const void* data) { return setData(*server, object, address, size, data); };
  calls.copyTextProperty = [server](std::uint32_t object,
                                    const AudioObjectPropertyAddress& address) {
    return nameOf(*server, object, address);
  };
  return calls;
}

AudioObjectCalls systemAudioObjectCalls() {
  return pulseAudioObjectCalls(std::make_shared<PulseDevices>());
}

}  // namespace korvantis
