#pragma once

#include <optional>
#include <vector>

#include "core/AudioDeviceItem.h"
#include "platform/AudioObjectCalls.h"

namespace korvantis {

/// The sound devices of the machine as the mixer lists them.
struct AudioDeviceSurvey {
  std::vector<AudioDeviceItem> outputs;
  std::vector<AudioDeviceItem> inputs;

  /// Asks the system; absent when it names no devices at all. A device that does both stands in
  /// both lists; a list without any gets the made-up device. Main thread.
  static std::optional<AudioDeviceSurvey> read(const AudioObjectCalls& calls);

  /// What stands for the speakers of a machine that names none.
  static AudioDeviceItem madeUpOutput();
  /// What stands for its microphone.
  static AudioDeviceItem madeUpInput();
};

}  // namespace korvantis
