#include "core/MachineDefaults.h"

#include "platform/ProcessInfoCalls.h"

namespace korvantis {

std::uint64_t machineMemoryBytes() {
  static const ProcessInfoCalls calls = systemProcessInfoCalls();
  return calls.physicalMemory();
}

}  // namespace korvantis
