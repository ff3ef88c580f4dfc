#pragma once

#include <string>

/// The texts of the history's statements. Each is made at its first use and kept. Any thread.
namespace korvantis::HistoryStatements {

/// Creates the seven tables where they are missing. Only "readings" and "app_hours" are used; the
/// others are part of the file's form, room for a rollup that nobody makes, and stay empty.
const std::string& schema();

/// Puts one seeded row into "readings" unless one with its start is there; 25 parameters.
const std::string& insertSeedReading();

/// Puts one seeded row into "app_hours" in place of one with its key; 13 parameters, since the kind
/// is always "app".
const std::string& replaceSeedAppHour();

/// Folds one flush into "readings"; 25 parameters.
const std::string& upsertReading();

/// Folds one flush of an application into "app_hours"; 14 parameters.
const std::string& upsertAppHour();

/// All columns of "readings" from a start on, oldest first.
const std::string& selectReadings();

/// The 50 thirstiest applications from a bucket on.
const std::string& selectAppSummaries();

}  // namespace korvantis::HistoryStatements
