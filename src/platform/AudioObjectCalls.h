#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/AudioObjectTypes.h"

namespace korvantis {

/// Sound devices and the two default ones, as properties of audio objects. Main thread: none of
/// these holds it for more than 300 ms, nor do those of one refresh together.
struct AudioObjectCalls {
  /// Stores the size in bytes of a property; 0 on success. Asked for the list of devices, it looks
  /// at the machine anew; the operations after it tell of the devices that it found.
  std::function<std::int32_t(std::uint32_t object, const AudioObjectPropertyAddress& address,
                             std::uint32_t* size)>
      AudioObjectGetPropertyDataSize = [](std::uint32_t, const AudioObjectPropertyAddress&,
                                          std::uint32_t*) { return std::int32_t{-1}; };

  /// Fills at most `*size` bytes with a property and stores how many; 0 on success.
  std::function<std::int32_t(std::uint32_t object, const AudioObjectPropertyAddress& address,
                             std::uint32_t* size, void* data)>
      AudioObjectGetPropertyData = [](std::uint32_t, const AudioObjectPropertyAddress&,
                                      std::uint32_t*, void*) { return std::int32_t{-1}; };

  /// Sets a property to `size` bytes; 0 on success.
  std::function<std::int32_t(std::uint32_t object, const AudioObjectPropertyAddress& address,
                             std::uint32_t size, const void* data)>
      AudioObjectSetPropertyData = [](std::uint32_t, const AudioObjectPropertyAddress&,
                                      std::uint32_t, const void*) { return std::int32_t{-1}; };

  /// A property whose data is a text object (`AudioObjectGetPropertyData`, the object turned into
  /// UTF-8 and released); absent on failure.
  std::function<std::optional<std::string>(std::uint32_t object,
                                           const AudioObjectPropertyAddress& address)>
      copyTextProperty = [](std::uint32_t, const AudioObjectPropertyAddress&) {
        return std::optional<std::string>();
      };
};

/// The operating system's own answers. Ask once and copy the struct: its operations share what
/// they last saw.
AudioObjectCalls systemAudioObjectCalls();

}  // namespace korvantis
