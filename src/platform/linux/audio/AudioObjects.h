#pragma once

#include <memory>

#include "platform/AudioObjectCalls.h"
#include "platform/linux/audio/PulseDevices.h"

namespace korvantis {

/// Audio objects that stand for the sinks and sources of a sound server: the system object lists
/// them and names the default ones, each has its name and one stream of its own direction.
AudioObjectCalls pulseAudioObjectCalls(const std::shared_ptr<PulseDevices>& server);

}  // namespace korvantis
