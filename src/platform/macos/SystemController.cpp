#include <IOKit/IOKitLib.h>

#include "platform/SMCCalls.h"

namespace korvantis {

SMCCalls systemSMCCalls() {
  SMCCalls calls;
  calls.IOServiceGetMatchingService = [](const char* className) {
    return ::IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching(className));
  };
  calls.IOServiceOpen = [](std::uint32_t service, std::uint32_t type, std::uint32_t* connection) {
    return ::IOServiceOpen(service, mach_task_self(), type, connection);
  };
  calls.IOObjectRelease = [](std::uint32_t object) { return ::IOObjectRelease(object); };
  calls.IOServiceClose = [](std::uint32_t connection) { return ::IOServiceClose(connection); };
  calls.IOConnectCallStructMethod = ::IOConnectCallStructMethod;
  return calls;
}

}  // namespace korvantis
