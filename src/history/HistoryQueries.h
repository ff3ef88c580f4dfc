#pragma once

#include <cstdint>
#include <vector>

#include "core/HistoricalAppSummary.h"
#include "core/Reading.h"
#include "history/SQLiteConnection.h"

/// What is read back from the history. Rows come as they are stored; a statement that fails gives
/// an empty list, and one that fails half-way what it gave until then.
namespace korvantis::HistoryQueries {

/// The readings that begin at `sinceSeconds` (whole seconds since 1970) or later, oldest first.
/// `nowSeconds` only tells how many there may be.
std::vector<Reading> readings(const SQLiteConnection& db, std::int64_t sinceSeconds,
                              std::int64_t nowSeconds);

/// The totals of each application over the hours that begin at `sinceSeconds` or later: at most
/// 50, by energy and then by peak memory.
std::vector<HistoricalAppSummary> appSummaries(const SQLiteConnection& db,
                                               std::int64_t sinceSeconds);

}  // namespace korvantis::HistoryQueries
