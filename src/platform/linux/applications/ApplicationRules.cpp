#include "platform/linux/applications/ApplicationRules.h"

#include <array>
#include <utility>

#include "platform/linux/applications/BusNameOwner.h"
#include "platform/linux/applications/ControlGroupName.h"
#include "platform/linux/applications/EntryExecutable.h"
#include "platform/linux/applications/ExecutableLocation.h"
#include "platform/linux/applications/FlatpakSandbox.h"
#include "platform/linux/applications/InterpreterScript.h"
#include "platform/linux/applications/KnownPrograms.h"
#include "platform/linux/applications/LaunchEnvironment.h"
#include "platform/linux/applications/SharedHelper.h"

namespace korvantis {

std::optional<ApplicationMatch> ApplicationRules::find(ProcessEvidence& process,
                                                       const ProcessSurroundings& around) {
  using Find = EntryPointer (*)(ProcessEvidence&, const ProcessSurroundings&);
  // From what a process is to what others say of it: each kind is less exact than those before.
  static constexpr std::array<std::pair<ApplicationRule, Find>, 7> order{{
      {ApplicationRule::entryExecutable, EntryExecutable::find},
      {ApplicationRule::executableLocation, ExecutableLocation::find},
      {ApplicationRule::interpreterScript, InterpreterScript::find},
      {ApplicationRule::launchEnvironment, LaunchEnvironment::find},
      {ApplicationRule::busName, BusNameOwner::find},
      {ApplicationRule::controlGroup, ControlGroupName::find},
      {ApplicationRule::sharedHelper, SharedHelper::find},
  }};
  if (KnownPrograms::startsOthers(process.program())) return std::nullopt;
  // Inside of a sandbox and of a mount of its own the paths mean other files than here.
  if (EntryPointer entry = FlatpakSandbox::find(process, around)) {
    return ApplicationMatch{std::move(entry), ApplicationRule::sandbox};
  }
  if (!process.sandboxId().empty()) return std::nullopt;
  if (EntryPointer entry = appImages.find(process, around)) {
    return ApplicationMatch{std::move(entry), ApplicationRule::appImage};
  }
  for (const auto& [rule, find] : order) {
    if (EntryPointer entry = find(process, around)) return ApplicationMatch{std::move(entry), rule};
  }
  return std::nullopt;
}

}  // namespace korvantis
