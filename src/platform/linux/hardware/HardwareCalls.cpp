#include "platform/linux/hardware/HardwareCalls.h"

#include <utility>

#include "platform/linux/hardware/ControllerExchange.h"
#include "platform/linux/hardware/LinuxVolumes.h"

namespace korvantis {

void addHardwareCalls(PlatformCalls& calls, const HardwareSources& sources,
                      const std::shared_ptr<LinuxHardware>& hardware) {
  calls.ioRegistry.matchingServices =
      [hardware,
       others = std::move(calls.ioRegistry.matchingServices)](const std::string& className) {
        auto services = hardware->services(className);
        return services || !others ? services : others(className);
      };
  calls.power.powerSources = [hardware] { return hardware->powerSources(); };
  calls.power.IOPMCopyAssertionsByProcess = [hardware] {
    return std::optional(hardware->assertions());
  };
  calls.processInfo.thermalState = [hardware] { return hardware->thermalState(); };
  const auto volumes =
      std::make_shared<LinuxVolumes>(sources, std::move(calls.volumes.resourceValues));
  calls.volumes.resourceValues = [volumes](const std::string& path) {
    return volumes->values(path);
  };
  calls.volumes.mountedVolumePaths = [volumes] { return volumes->paths(); };
}

SMCCalls controllerCallsOf(const std::shared_ptr<LinuxHardware>& hardware) {
  // The keys live as long as the hardware does.
  return controllerCalls({hardware, &hardware->controllerKeys()});
}

}  // namespace korvantis
