#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace korvantis {

/// One sink or source of the sound server.
struct AudioDevice {
  /// The number under which the program knows it.
  std::uint32_t id = 0;
  /// The server's own name for it, which never changes while it is there.
  std::string serverName;
  /// The words for it.
  std::string description;
  bool isInput = false;
  std::uint32_t channels = 0;

  bool operator==(const AudioDevice&) const = default;
};

/// What the sound server had when it was last asked.
struct AudioDevices {
  /// Sinks first, then sources, each in the server's order.
  std::vector<AudioDevice> devices;
  /// The server's names of the default devices; empty when there are none.
  std::string defaultSink;
  std::string defaultSource;

  bool operator==(const AudioDevices&) const = default;

  /// The device with that id; null when there is none.
  const AudioDevice* find(std::uint32_t id) const;

  /// The id of the default device of a direction; 0 when there is none.
  std::uint32_t defaultID(bool isInput) const;
};

/// The id of a sink or source with that index. Indexes of both begin at 0, so sinks take the even
/// numbers and sources the odd ones; the first 16 are free for what is made up.
constexpr std::uint32_t audioDeviceID(std::uint32_t serverIndex, bool isInput) {
  return (isInput ? 17U : 16U) + 2U * serverIndex;
}

}  // namespace korvantis
