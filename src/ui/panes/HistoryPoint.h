#pragma once

namespace korvantis {

/// One point of the history chart, made of one row for one metric.
struct HistoryPoint {
  /// Seconds since 1970.
  double date = 0;
  double avg = 0;
  double peak = 0;

  bool operator==(const HistoryPoint&) const = default;
};

}  // namespace korvantis
