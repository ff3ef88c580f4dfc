#include "core/MachineDefaults.h"

#include "platform/ProcessInfoCalls.h"

namespace korvantis {

std::uint64_t machineMemoryBytes() {
  // Lives for ever: at exit other threads may still ask.
  static const ProcessInfoCalls& calls = *new ProcessInfoCalls(systemProcessInfoCalls());
  return calls.physicalMemory();
}

}  // namespace korvantis
