#include "platform/macos/RunningApplications.h"

#import <AppKit/AppKit.h>

namespace korvantis {
namespace {

RunningApplication applicationOf(NSRunningApplication* application) {
  return RunningApplication{[application] { return [application terminate] == YES; },
                            [application] { return [application forceTerminate] == YES; }};
}

std::vector<RunningApplication> applicationsWithIdentifier(const std::string& bundleIdentifier) {
  std::vector<RunningApplication> found;
  @autoreleasepool {
    NSString* const identifier = [NSString stringWithUTF8String:bundleIdentifier.c_str()];
    if (identifier == nil) return found;
    for (NSRunningApplication* application in
         [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
      found.push_back(applicationOf(application));
    }
  }
  return found;
}

std::optional<RunningApplication> applicationWithProcess(std::int32_t pid) {
  @autoreleasepool {
    NSRunningApplication* const application =
        [NSRunningApplication runningApplicationWithProcessIdentifier:pid];
    if (application == nil) return std::nullopt;
    return applicationOf(application);
  }
}

}  // namespace

RunningApplicationCalls systemRunningApplicationCalls() {
  return RunningApplicationCalls{applicationsWithIdentifier, applicationWithProcess};
}

}  // namespace korvantis
