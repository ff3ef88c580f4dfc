#pragma once

#include <cstdint>
#include <vector>

#include "core/ContainerSample.h"
#include "core/DevProject.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// Finds the development project that each process works in. For now it finds none. Any thread.
class ProjectLocator {
 public:
  /// Writes the project root of each process into its `projectPath` and folds processes and
  /// containers into projects, whose memory is also a share of `totalMemoryBytes`. For now it
  /// gives no projects and leaves the processes as they are.
  std::vector<DevProject> groupProjects(std::vector<ProcessSample>& processes,
                                        const std::vector<ContainerSample>& containers,
                                        std::uint64_t totalMemoryBytes);
};

}  // namespace korvantis
