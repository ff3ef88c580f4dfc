#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One row of the per-application ledger.
struct HistoricalAppSummary {
  std::string appID;
  std::string name;
  std::string kind = "app";
  std::optional<std::string> bundlePath;
  double activeSeconds = 0;
  double cpuLoadSeconds = 0;
  double memoryByteSeconds = 0;
  std::uint64_t peakMemoryBytes = 0;
  std::uint64_t networkBytesIn = 0;
  std::uint64_t networkBytesOut = 0;
  std::uint64_t diskBytesRead = 0;
  std::uint64_t diskBytesWritten = 0;
  double energyJoules = 0;

  bool operator==(const HistoricalAppSummary&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return appID; }

  /// `memoryByteSeconds` / `activeSeconds`, or the peak when nothing was active.
  std::uint64_t averageMemoryBytes() const;

  /// The energy in watt hours.
  double energyWattHours() const { return energyJoules / 3600; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"appID", &HistoricalAppSummary::appID},
                      Field{"name", &HistoricalAppSummary::name},
                      Field{"kind", &HistoricalAppSummary::kind},
                      Field{"bundlePath", &HistoricalAppSummary::bundlePath},
                      Field{"activeSeconds", &HistoricalAppSummary::activeSeconds},
                      Field{"cpuLoadSeconds", &HistoricalAppSummary::cpuLoadSeconds},
                      Field{"memoryByteSeconds", &HistoricalAppSummary::memoryByteSeconds},
                      Field{"peakMemoryBytes", &HistoricalAppSummary::peakMemoryBytes},
                      Field{"networkBytesIn", &HistoricalAppSummary::networkBytesIn},
                      Field{"networkBytesOut", &HistoricalAppSummary::networkBytesOut},
                      Field{"diskBytesRead", &HistoricalAppSummary::diskBytesRead},
                      Field{"diskBytesWritten", &HistoricalAppSummary::diskBytesWritten},
                      Field{"energyJoules", &HistoricalAppSummary::energyJoules}};
  }
};

}  // namespace korvantis
