#include "samplers/SleepBlockerList.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/LocalizedOrder.h"
#include "core/LowerCase.h"

namespace korvantis {
namespace {

SleepBlocker blockerOf(std::int32_t pid, const PropertyMap& assertion) {
  SleepBlocker blocker;
  blocker.pid = pid;
  blocker.assertionType =
      textProperty(assertion, "AssertType").value_or("PreventUserIdleSystemSleep");
  blocker.processName =
      textProperty(assertion, "Process Name").value_or("Process " + std::to_string(pid));
  blocker.reason = textProperty(assertion, "AssertName").value_or("Active power assertion");
  blocker.preventsDisplaySleep =
      lowerCased(blocker.assertionType).find("display") != std::string::npos;
  return blocker;
}

}  // namespace

std::vector<SleepBlocker> readSleepBlockers(const PowerCalls& power) {
  std::vector<SleepBlocker> blockers;
  const auto byProcess = power.IOPMCopyAssertionsByProcess();
  if (!byProcess) return blockers;
  for (const auto& [pid, assertions] : *byProcess) {
    for (const PropertyMap& assertion : assertions) blockers.push_back(blockerOf(pid, assertion));
  }
  std::stable_sort(
      blockers.begin(), blockers.end(), [](const SleepBlocker& left, const SleepBlocker& right) {
        return compareLocalizedCaseInsensitive(left.processName, right.processName) < 0;
      });
  return blockers;
}

}  // namespace korvantis
