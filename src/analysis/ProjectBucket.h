#pragma once

#include <string>
#include <vector>

#include "core/ContainerSample.h"
#include "core/DevProject.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// The processes and containers of one project while a tick is being sorted out; refers to the
/// tick's lists.
struct ProjectBucket {
  /// The project's root.
  std::string path;
  /// In the order of the tick's list.
  std::vector<const ProcessSample*> processes;
  /// In the order of the tick's list.
  std::vector<const ContainerSample*> containers;

  /// What tells this bucket from others.
  const std::string& key() const { return path; }

  /// The project made of this bucket. `installedMemory`, in bytes and above 0, is what its memory
  /// is a share of.
  DevProject folded(double installedMemory) const;
};

}  // namespace korvantis
