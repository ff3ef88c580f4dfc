#pragma once

#include <vector>

#include "core/ContainerSample.h"

namespace korvantis {

/// Lists the running containers of the machine's container engine. For now it gives none. Any
/// thread.
class ContainerSampler {
 public:
  /// The containers of the last poll; empty when no engine answers. For now always empty.
  std::vector<ContainerSample> sampleContainers();
};

}  // namespace korvantis
