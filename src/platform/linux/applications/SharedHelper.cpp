#include "platform/linux/applications/SharedHelper.h"

#include <cstdint>

#include "platform/linux/applications/KnownPrograms.h"

namespace korvantis {
namespace {

// A sandbox can stand between the two, with a process of its own on either side.
constexpr int mostAncestors = 4;

}  // namespace

EntryPointer SharedHelper::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  if (!KnownPrograms::isSharedHelper(process.program())) return nullptr;
  std::int32_t pid = process.parent();
  for (int looked = 0; looked < mostAncestors && pid > 1; ++looked) {
    if (EntryPointer entry = around.applicationOf(pid)) return entry;
    pid = around.parentOf(pid);
  }
  return nullptr;
}

}  // namespace korvantis
