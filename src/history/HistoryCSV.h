#pragma once

#include <string>
#include <vector>

#include "core/HistoricalAppSummary.h"
#include "core/Reading.h"

/// The texts of the exported files: a header and one line a record, whatever the locale. Any
/// thread.
namespace korvantis::HistoryCSV {

/// The machine's readings, eleven of their figures.
std::string readingsText(const std::vector<Reading>& readings);

/// The ledger of the applications. Ids and names are quoted, the kind never is.
std::string appsText(const std::vector<HistoricalAppSummary>& summaries);

}  // namespace korvantis::HistoryCSV
