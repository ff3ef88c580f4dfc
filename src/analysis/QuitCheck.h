#pragma once

#include <cstdint>
#include <vector>

#include "core/AppGroup.h"
#include "core/ProcessSample.h"
#include "core/QuitSafetyResult.h"
#include "core/SleepBlocker.h"

/// Whether an application or a process may be stopped, and what that frees. Until the rules are
/// here every answer is the careful one: ask first, for no reason given, with nothing freed. Any
/// thread.
namespace korvantis::QuitCheck {

/// The verdict on an application.
QuitSafetyResult evaluate(const AppGroup& group, const std::vector<SleepBlocker>& sleepBlockers);

/// The verdict on one process of `processes`.
QuitSafetyResult evaluate(std::int32_t pid, const std::vector<ProcessSample>& processes,
                          const std::vector<SleepBlocker>& sleepBlockers);

}  // namespace korvantis::QuitCheck
