#include "platform/linux/audio/AudioDevices.h"

#include <algorithm>

namespace korvantis {

const AudioDevice* AudioDevices::find(std::uint32_t id) const {
  const auto found = std::find_if(devices.begin(), devices.end(),
                                  [id](const AudioDevice& device) { return device.id == id; });
  return found != devices.end() ? &*found : nullptr;
}

std::uint32_t AudioDevices::defaultID(bool isInput) const {
  const std::string& name = isInput ? defaultSource : defaultSink;
  const auto found = std::find_if(devices.begin(), devices.end(), [&](const AudioDevice& device) {
    return device.isInput == isInput && device.serverName == name;
  });
  return found != devices.end() ? found->id : 0;
}

}  // namespace korvantis
