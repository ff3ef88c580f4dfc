#include "state/InsightList.h"

#include <algorithm>

namespace korvantis::InsightList {

namespace {

bool isListed(const Insight& insight, const std::vector<Insight>& listed) {
  return std::any_of(listed.begin(), listed.end(), [&](const Insight& present) {
    return present.kind == insight.kind && present.targetAppID == insight.targetAppID;
  });
}

void sortForDisplay(std::vector<Insight>& insights, const std::set<Uuid>& pinnedIDs) {
  std::stable_sort(insights.begin(), insights.end(),
                   [&](const Insight& left, const Insight& right) {
                     const bool leftIsPinned = isPinned(left, pinnedIDs);
                     const bool rightIsPinned = isPinned(right, pinnedIDs);
                     if (leftIsPinned != rightIsPinned) return leftIsPinned;
                     return left.createdAt > right.createdAt;
                   });
}

}  // namespace

bool isPinned(const Insight& insight, const std::set<Uuid>& pinnedIDs) {
  return insight.isPinned || pinnedIDs.contains(insight.id);
}

std::vector<Insight> merged(std::vector<Insight> listed, const std::vector<Insight>& newInsights,
                            const std::set<Uuid>& pinnedIDs) {
  for (const Insight& insight : newInsights) {
    if (!isListed(insight, listed)) listed.insert(listed.begin(), insight);
  }
  sortForDisplay(listed, pinnedIDs);
  if (listed.size() > maximumCount) listed.resize(maximumCount);
  return listed;
}

}  // namespace korvantis::InsightList
