#include "platform/linux/applications/ControlGroupName.h"

#include <string>

namespace korvantis {
namespace {

EntryPointer entryOfUnit(const ControlGroup::Unit& unit, const DesktopEntryIndex& index) {
  for (const std::string& id : unit.ids) {
    if (EntryPointer entry = index.withId(id)) return entry;
  }
  return nullptr;
}

/// The number in the group's name decides. Some desktops write a random text there instead: then
/// the process that has come from outside of the group is the one that was started.
bool isLeader(const ControlGroup::Unit& unit, ProcessEvidence& process,
              const ProcessSurroundings& around) {
  if (!unit.isOfOneStart) return false;
  if (unit.leader) return *unit.leader == process.identity().pid;
  // Some applications divide their group further.
  return !(around.groupOf(process.parent()) + "/").starts_with(unit.path + "/");
}

}  // namespace

EntryPointer ControlGroupName::named(ProcessEvidence& process, const DesktopEntryIndex& index) {
  for (const ControlGroup::Unit& unit : process.group().units) {
    if (EntryPointer entry = entryOfUnit(unit, index)) return entry;
  }
  return nullptr;
}

EntryPointer ControlGroupName::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  for (const ControlGroup::Unit& unit : process.group().units) {
    const EntryPointer entry = entryOfUnit(unit, *around.index);
    if (entry) return isLeader(unit, process, around) ? entry : nullptr;
  }
  return nullptr;
}

}  // namespace korvantis
