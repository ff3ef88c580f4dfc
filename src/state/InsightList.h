#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "core/Insight.h"
#include "core/Uuid.h"

/// The rules of the list of findings on screen. Any thread.
namespace korvantis::InsightList {

/// How many findings are listed at most.
inline constexpr std::size_t maximumCount = 80;

/// Whether the user pinned it: by its id or by its own mark.
bool isPinned(const Insight& insight, const std::set<Uuid>& pinnedIDs);

/// The list after a tick: a finding whose kind and target are listed already is dropped, however
/// old the listed one is; the others enter. Pinned ones come first, within both groups the newer
/// ones, and equals keep their order. What lies beyond `maximumCount` falls off.
std::vector<Insight> merged(std::vector<Insight> listed, const std::vector<Insight>& newInsights,
                            const std::set<Uuid>& pinnedIDs);

}  // namespace korvantis::InsightList
