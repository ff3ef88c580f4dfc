#include "platform/linux/applications/LaunchEnvironment.h"

#include <string>

namespace korvantis {

EntryPointer LaunchEnvironment::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  const std::string number = std::to_string(process.identity().pid);
  if (process.variable("GIO_LAUNCHED_DESKTOP_FILE_PID") != number) return nullptr;
  return around.index->withPath(process.variable("GIO_LAUNCHED_DESKTOP_FILE"));
}

}  // namespace korvantis
