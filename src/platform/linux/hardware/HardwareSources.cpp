#include "platform/linux/hardware/HardwareSources.h"

#include <chrono>
#include <cstdlib>
#include <poll.h>

#include "platform/linux/SessionBusAddress.h"

namespace korvantis {
namespace {

std::string environmentText(const char* name, const char* otherwise) {
  const char* const text = std::getenv(name);
  return text != nullptr && *text != '\0' ? text : otherwise;
}

/// The kernel reports a change as an error condition, once for each open file.
bool mountsChangedByPoll(int mountList) {
  pollfd question{mountList, POLLPRI, 0};
  return ::poll(&question, 1, 0) > 0 && (question.revents & (POLLERR | POLLPRI)) != 0;
}

}  // namespace

HardwareSources systemHardwareSources() {
  HardwareSources sources;
  sources.monotonicSeconds = [] {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceStart).count();
  };
  sources.inBackground = true;
  sources.mountsChanged = mountsChangedByPoll;
  sources.nvidiaLibrary = "libnvidia-ml.so.1";
  sources.systemBus =
      environmentText("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/run/dbus/system_bus_socket");
  sources.sessionBus = sessionBusAddress();
  return sources;
}

}  // namespace korvantis
