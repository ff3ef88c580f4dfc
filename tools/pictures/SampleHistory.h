#pragma once

#include <string>
#include <vector>

#include "core/HistoricalAppSummary.h"
#include "core/Instant.h"
#include "core/Reading.h"

namespace korvantis::pictures {

/// A row for every five minutes from `since` to now: working days with their peaks, quiet nights.
std::vector<Reading> sampleReadings(Instant since);

/// The ledger of the made-up applications, whose bundles lie in `folder`.
std::vector<HistoricalAppSummary> sampleLedger(const std::string& folder);

}  // namespace korvantis::pictures
