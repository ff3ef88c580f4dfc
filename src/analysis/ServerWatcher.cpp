#include "analysis/ServerWatcher.h"

namespace korvantis {

ServerWatcher::Evaluation ServerWatcher::evaluate(const std::vector<ProcessSample>& /*processes*/,
                                                  const std::vector<AppGroup>& /*appGroups*/) {
  return {};
}

}  // namespace korvantis
