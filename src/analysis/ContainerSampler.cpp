#include "analysis/ContainerSampler.h"

namespace korvantis {

std::vector<ContainerSample> ContainerSampler::sampleContainers() {
  return {};
}

}  // namespace korvantis
