#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvantis {

/// One running application instance. Both requests say whether they were accepted, not whether
/// the application has ended.
struct RunningApplication {
  std::function<bool()> terminate;
  std::function<bool()> forceTerminate;
};

/// Applications that can be asked to quit (`NSRunningApplication`). Main thread.
struct RunningApplicationCalls {
  /// The running instances of a bundle identifier.
  std::function<std::vector<RunningApplication>(const std::string& bundleIdentifier)>
      runningApplicationsWithBundleIdentifier;

  /// The application whose main process is `pid`; absent for helpers, tools and daemons.
  std::function<std::optional<RunningApplication>(std::int32_t pid)>
      runningApplicationWithProcessIdentifier;
};

}  // namespace korvantis
