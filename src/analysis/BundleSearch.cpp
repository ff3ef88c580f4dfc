#include "analysis/BundleSearch.h"

#include "analysis/AppGrouper.h"

namespace korvantis {

namespace {

constexpr int mostAncestors = 6;
/// Pid 0 is the kernel and pid 1 starts everything: neither says whose a process is.
constexpr std::int32_t firstOrdinaryPID = 2;

}  // namespace

BundleSearch::BundleSearch(const std::vector<ProcessSample>& list) : processes(list) {
  ownBundles.reserve(processes.size());
  indexByPID.reserve(processes.size());
  for (std::size_t index = 0; index < processes.size(); ++index) {
    ownBundles.push_back(AppGrouper::outermostAppBundlePath(processes[index].executablePath));
    indexByPID.insert_or_assign(processes[index].pid, index);
  }
}

const std::optional<std::string>& BundleSearch::bundleOf(std::size_t index) const {
  if (ownBundles[index]) return ownBundles[index];
  const ProcessSample& process = processes[index];
  const std::optional<std::string>& responsible = responsibleBundle(process);
  return responsible ? responsible : ancestorBundle(process);
}

const std::optional<std::string>& BundleSearch::responsibleBundle(
    const ProcessSample& process) const {
  if (process.responsiblePID <= 0 || process.responsiblePID == process.pid) return noBundle;
  const auto found = indexByPID.find(process.responsiblePID);
  return found == indexByPID.end() ? noBundle : ownBundles[found->second];
}

const std::optional<std::string>& BundleSearch::ancestorBundle(const ProcessSample& process) const {
  std::int32_t pid = process.ppid;
  for (int looked = 0; looked < mostAncestors && pid >= firstOrdinaryPID; ++looked) {
    const auto found = indexByPID.find(pid);
    if (found == indexByPID.end()) break;
    if (ownBundles[found->second]) return ownBundles[found->second];
    const std::int32_t parent = processes[found->second].ppid;
    if (parent == pid) break;
    pid = parent;
  }
  return noBundle;
}

}  // namespace korvantis
