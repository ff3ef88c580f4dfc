#pragma once

#include <memory>

#include "platform/SMCCalls.h"
#include "platform/linux/hardware/ControllerKeys.h"

namespace korvantis {

/// The user client of a controller whose keys are these: one service of class "AppleSMC" that
/// takes the two reading commands. Sensors may turn up later, so the service is there even where
/// no key is yet.
SMCCalls controllerCalls(std::shared_ptr<ControllerKeys> keys);

}  // namespace korvantis
