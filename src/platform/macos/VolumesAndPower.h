#pragma once

#include "platform/PowerCalls.h"
#include "platform/VolumeCalls.h"

namespace korvantis {

/// Volumes as the file manager knows them.
VolumeCalls systemVolumeCalls();

/// Power sources and assertions as the power manager knows them.
PowerCalls systemPowerCalls();

}  // namespace korvantis
