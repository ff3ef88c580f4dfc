#include "core/HistoricalAppSummary.h"

#include <limits>

namespace korvantis {

std::uint64_t HistoricalAppSummary::averageMemoryBytes() const {
  constexpr double firstTooLarge = 18446744073709551616.0;
  if (!(activeSeconds > 0)) return peakMemoryBytes;
  const double average = memoryByteSeconds / activeSeconds;
  // The sums come out of a file that anything may have written into.
  if (!(average > 0)) return 0;
  if (average >= firstTooLarge) return std::numeric_limits<std::uint64_t>::max();
  return static_cast<std::uint64_t>(average);
}

}  // namespace korvantis
