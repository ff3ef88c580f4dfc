#pragma once

#include <cstdint>

#include "history/SQLiteConnection.h"

/// The invented week that a new database begins with, so that there is something to see from the
/// first minute. Real rows follow it and stand beside it.
namespace korvantis::HistorySeed {

/// Writes 672 rows into "readings", one for each of the 15 minutes before `nowSeconds` (whole
/// seconds since 1970), and 35 into "app_hours". Readings that are there stay; the ledger's rows
/// are replaced. `physicalMemory` is in bytes. A statement that fails is passed over.
void write(const SQLiteConnection& db, std::int64_t nowSeconds, double physicalMemory);

}  // namespace korvantis::HistorySeed
