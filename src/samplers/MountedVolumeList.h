#pragma once

#include <vector>

#include "core/MountedVolume.h"
#include "platform/VolumeCalls.h"

namespace korvantis {

/// The mounted volumes in the system's order, without those that belong to the system itself and
/// those without a size; empty when there is no reply. Any thread.
std::vector<MountedVolume> readMountedVolumes(const VolumeCalls& volumes);

}  // namespace korvantis
