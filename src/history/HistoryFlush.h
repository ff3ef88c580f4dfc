#pragma once

#include <vector>

#include "core/AppGroup.h"
#include "core/SystemSample.h"
#include "history/SQLiteConnection.h"

/// One flush: a tick folded into the buckets in which it lies.
namespace korvantis::HistoryFlush {

/// Folds the sample into the 5 minutes, and the first 35 groups into the hour, of its time stamp,
/// all in one transaction; `interval` is the time in seconds that the tick stands for. It commits
/// whatever could be written: a flush that fails is neither undone nor tried again.
void write(const SQLiteConnection& db, const SystemSample& system,
           const std::vector<AppGroup>& appGroups, double interval);

}  // namespace korvantis::HistoryFlush
