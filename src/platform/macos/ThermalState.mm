#include "platform/macos/ThermalState.h"

#import <Foundation/Foundation.h>

namespace korvantis {

std::int64_t processInfoThermalState() {
  return static_cast<std::int64_t>(NSProcessInfo.processInfo.thermalState);
}

}  // namespace korvantis
