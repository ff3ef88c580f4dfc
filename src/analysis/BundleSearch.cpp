#include "analysis/BundleSearch.h"

#include "analysis/OrdinaryPID.h"

namespace korvantis {

namespace {
constexpr int mostAncestors = 6;
}

BundleSearch::BundleSearch(const std::vector<ProcessSample>& list,
                           const TextFacts<ApplicationFacts>& factsOfList)
    : processes(list), facts(factsOfList) {}

const std::optional<std::string>& BundleSearch::bundleOf(std::size_t index) const {
  if (facts[index].ownBundle) return facts[index].ownBundle;
  const ProcessSample& process = processes[index];
  const std::optional<std::string>& responsible = responsibleBundle(process);
  return responsible ? responsible : ancestorBundle(process);
}

const std::optional<std::string>& BundleSearch::responsibleBundle(
    const ProcessSample& process) const {
  if (process.responsiblePID <= 0 || process.responsiblePID == process.pid) return noBundle;
  const auto index = facts.indexOf(process.responsiblePID);
  return index ? facts[*index].ownBundle : noBundle;
}

const std::optional<std::string>& BundleSearch::ancestorBundle(const ProcessSample& process) const {
  std::int32_t pid = process.ppid;
  for (int looked = 0; looked < mostAncestors && pid >= firstOrdinaryPID; ++looked) {
    const auto index = facts.indexOf(pid);
    if (!index) break;
    if (facts[*index].ownBundle) return facts[*index].ownBundle;
    const std::int32_t parent = processes[*index].ppid;
    if (parent == pid) break;
    pid = parent;
  }
  return noBundle;
}

}  // namespace korvantis
