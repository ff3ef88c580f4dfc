#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/AppGroup.h"
#include "core/ProcessSample.h"
#include "core/QuitSafetyResult.h"
#include "core/SleepBlocker.h"

/// Whether an application or a process may be stopped, why, and what that frees, judged by the
/// figures of a finished tick. The first rule that holds decides. An application and a single
/// process are judged by different rules on purpose. Asks the system nothing. Any thread.
namespace korvantis::QuitCheck {

/// What nobody may stop, by exact process name: the session's own processes and, as the last
/// three, this program.
inline constexpr std::array<std::string_view, 25> criticalSystemNames{
    "kernel_task",    "launchd",       "WindowServer",   "loginwindow", "Finder",     "Dock",
    "SystemUIServer", "ControlCenter", "UserEventAgent", "coreaudiod",  "bluetoothd", "mds",
    "mds_stores",     "notifyd",       "securityd",      "trustd",      "powerd",     "configd",
    "fseventsd",      "runningboardd", "distnoted",      "cfprefsd",    "Ostrel",     "Korvantis",
    "korvantis"};

/// The verdict on an application. What it frees is its memory and every service port of its
/// processes, ascending.
QuitSafetyResult evaluate(const AppGroup& group, const std::vector<SleepBlocker>& sleepBlockers);

/// The verdict on the first process of `processes` with this pid. One that is not there is
/// `askFirst` and frees nothing.
QuitSafetyResult evaluate(std::int32_t pid, const std::vector<ProcessSample>& processes,
                          const std::vector<SleepBlocker>& sleepBlockers);

}  // namespace korvantis::QuitCheck
