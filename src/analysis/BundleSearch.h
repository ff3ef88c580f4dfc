#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/ApplicationFacts.h"
#include "analysis/TextFacts.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// Finds the application bundle that each process of one tick belongs to. Lives for one grouping
/// and refers to the list and the facts that it was made for. One thread.
class BundleSearch {
 public:
  /// `facts` are those of `processes`.
  BundleSearch(const std::vector<ProcessSample>& processes,
               const TextFacts<ApplicationFacts>& facts);

  /// The bundle of the process at `index`: the one in its own path, else the one of its
  /// responsible process, else that of the nearest of six ancestors that has one; absent when
  /// none has. Where a pid stands twice in the list, the later record answers for it. Valid as
  /// long as the search and the facts live.
  const std::optional<std::string>& bundleOf(std::size_t index) const;

 private:
  const std::optional<std::string>& responsibleBundle(const ProcessSample& process) const;
  const std::optional<std::string>& ancestorBundle(const ProcessSample& process) const;

  const std::vector<ProcessSample>& processes;
  const TextFacts<ApplicationFacts>& facts;
  /// What a search that found nothing refers to.
  const std::optional<std::string> noBundle;
};

}  // namespace korvantis
