#include "platform/linux/applications/FlatpakSandbox.h"

namespace korvantis {

EntryPointer FlatpakSandbox::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  const std::string& id = process.sandboxId();
  return id.empty() ? nullptr : around.index->withId(id);
}

}  // namespace korvantis
