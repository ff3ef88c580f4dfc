#include "platform/linux/applications/EntryExecutable.h"

#include "platform/linux/applications/EntryChoice.h"

namespace korvantis {

EntryPointer EntryExecutable::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  return chooseEntry(around.index->withProgram(process.executable()), process, around);
}

}  // namespace korvantis
