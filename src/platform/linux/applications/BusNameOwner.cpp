#include "platform/linux/applications/BusNameOwner.h"

#include <string>

namespace korvantis {

EntryPointer BusNameOwner::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  for (const std::string& name : around.busNamesOf(process.identity())) {
    if (EntryPointer entry = around.index->withId(name)) return entry;
  }
  return nullptr;
}

}  // namespace korvantis
