#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/ProcessSample.h"

namespace korvantis {

/// Finds the application bundle that each process of one tick belongs to. Lives for one grouping
/// and refers to the list that it was made for. One thread.
class BundleSearch {
 public:
  /// Looks at the path of every process once. Where a pid stands twice in `processes`, the later
  /// record answers for it.
  explicit BundleSearch(const std::vector<ProcessSample>& processes);

  /// The bundle of the process at `index`: the one in its own path, else the one of its
  /// responsible process, else that of the nearest of six ancestors that has one; absent when
  /// none has. Valid as long as the search lives.
  const std::optional<std::string>& bundleOf(std::size_t index) const;

 private:
  const std::optional<std::string>& responsibleBundle(const ProcessSample& process) const;
  const std::optional<std::string>& ancestorBundle(const ProcessSample& process) const;

  const std::vector<ProcessSample>& processes;
  /// The bundle in each process's own path, in the order of `processes`: a shell with many
  /// children is asked for it again and again.
  std::vector<std::optional<std::string>> ownBundles;
  std::unordered_map<std::int32_t, std::size_t> indexByPID;
  /// What a search that found nothing refers to.
  const std::optional<std::string> noBundle;
};

}  // namespace korvantis
