#include "analysis/ProjectLocator.h"

namespace korvantis {

std::vector<DevProject> ProjectLocator::groupProjects(
    std::vector<ProcessSample>& /*processes*/, const std::vector<ContainerSample>& /*containers*/,
    std::uint64_t /*totalMemoryBytes*/) {
  return {};
}

}  // namespace korvantis
