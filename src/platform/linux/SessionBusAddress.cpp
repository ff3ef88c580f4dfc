#include "platform/linux/SessionBusAddress.h"

#include <cstdlib>
#include <unistd.h>

namespace korvantis {

std::string sessionBusAddress() {
  const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  if (address != nullptr && address[0] != '\0') return address;
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  if (folder == nullptr || folder[0] != '/') return "";
  const std::string socket = std::string(folder) + "/bus";
  return ::access(socket.c_str(), F_OK) == 0 ? "unix:path=" + socket : "";
}

}  // namespace korvantis
