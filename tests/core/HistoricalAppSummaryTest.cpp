#include <gtest/gtest.h>
#include <limits>

#include "core/HistoricalAppSummary.h"

namespace korvantis {
namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// The average of a ledger row with these sums.
std::uint64_t average(double activeSeconds, double memoryByteSeconds, std::uint64_t peak) {
  HistoricalAppSummary summary;
  summary.activeSeconds = activeSeconds;
  summary.memoryByteSeconds = memoryByteSeconds;
  summary.peakMemoryBytes = peak;
  return summary.averageMemoryBytes();
}

TEST(HistoricalAppSummary, AverageMemoryWithNoActiveSecondsIsThePeak) {
  EXPECT_EQ(average(0, 5000, 777), 777U);
}

TEST(HistoricalAppSummary, AverageMemoryIsByteSecondsOverActiveSecondsCutToWholeBytes) {
  EXPECT_EQ(average(4, 4099, 5000), 1024U);
  EXPECT_EQ(average(0.5, 100, 5000), 200U);
}

TEST(HistoricalAppSummary, AverageMemoryWithNegativeOrUnknownActiveSecondsIsThePeak) {
  EXPECT_EQ(average(-1, 5000, 9), 9U);
  EXPECT_EQ(average(none, 5000, 9), 9U);
}

TEST(HistoricalAppSummary, AverageMemoryOfDamagedSumsStaysInRange) {
  EXPECT_EQ(average(1, infinity, 9), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(average(1, -5, 9), 0U);
  EXPECT_EQ(average(1, none, 9), 0U);
}

TEST(HistoricalAppSummary, EnergyInWattHoursIsJoulesOver3600) {
  HistoricalAppSummary summary;
  summary.energyJoules = 9000;
  EXPECT_EQ(summary.energyWattHours(), 2.5);
}

}  // namespace
}  // namespace korvantis
