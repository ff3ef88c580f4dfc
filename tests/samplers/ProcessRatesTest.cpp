#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

#include "samplers/ProcessRates.h"

namespace korvantis {
namespace {

constexpr std::uint64_t second = 1'000'000'000;

/// Rates between two readings of equal counters of 1000, the later one changed by a test.
struct Readings {
  PreviousProcCounters before{1000 * second, 1000 * second, 1000, 1000, 100};
  PreviousProcCounters after{1000 * second, 1000 * second, 1000, 1000, 102};

  ProcessRates rates() const { return processRates(before, after); }
};

TEST(ProcessRates, CountersThatStandStillGiveZero) {
  EXPECT_EQ(Readings().rates(), ProcessRates{});
}

TEST(ProcessRates, RatesAreGrowthOverElapsedTime) {
  Readings readings;
  readings.after = {1001 * second, 1000 * second + second / 2, 5000, 2000, 102};
  EXPECT_EQ(readings.rates(), (ProcessRates{50, 25, 2000, 500}));
}

TEST(ProcessRates, EachCounterThatFellGivesZeroAndLeavesTheOthersAlone) {
  const PreviousProcCounters grown{1001 * second, 1000 * second + second / 2, 5000, 2000, 102};
  Readings readings;

  readings.after = grown;
  readings.after.cpuTimeNs = 1000 * second - 1;
  EXPECT_EQ(readings.rates(), (ProcessRates{0, 25, 2000, 500}));

  readings.after = grown;
  readings.after.gpuTimeNs = 1000 * second - 1;
  EXPECT_EQ(readings.rates(), (ProcessRates{50, 0, 2000, 500}));

  readings.after = grown;
  readings.after.diskReadBytes = 999;
  EXPECT_EQ(readings.rates(), (ProcessRates{50, 25, 0, 500}));

  readings.after = grown;
  readings.after.diskWriteBytes = 999;
  EXPECT_EQ(readings.rates(), (ProcessRates{50, 25, 2000, 0}));
}

TEST(ProcessRates, GPUTimeThatWasZeroBeforeGivesZero) {
  Readings readings;
  readings.before.gpuTimeNs = 0;
  EXPECT_EQ(readings.rates().gpuPercent, 0);
  readings.before.gpuTimeNs = 1;
  readings.after.gpuTimeNs = 1 + second / 2;
  EXPECT_EQ(readings.rates().gpuPercent, 25);
}

TEST(ProcessRates, CPUAndDiskThatWereZeroBeforeGiveTheirRate) {
  Readings readings;
  readings.before = {0, 0, 0, 0, 100};
  readings.after = {second, 0, 200, 400, 102};
  EXPECT_EQ(readings.rates(), (ProcessRates{50, 0, 100, 200}));
}

TEST(ProcessRates, ElapsedTimeHasAFloorOf015Seconds) {
  for (const double elapsed : {0.15, 0.1499, 0.01, 0.0, -0.01, -3600.0}) {
    Readings readings;
    readings.before.timestamp = 0;
    readings.after.timestamp = elapsed;
    readings.after.diskReadBytes = 1000 + 300;
    EXPECT_EQ(readings.rates().diskReadBytesPerSec, 300 / 0.15) << elapsed;
  }
}

TEST(ProcessRates, ElapsedTimeAboveTheFloorIsUsedAsItIs) {
  Readings readings;
  readings.before.timestamp = 0;
  readings.after.timestamp = 0.16;
  readings.after.diskReadBytes = 1000 + 300;
  EXPECT_EQ(readings.rates().diskReadBytesPerSec, 300 / 0.16);
}

TEST(ProcessRates, CPUIsHeldTo1600AndGPUTo100) {
  Readings readings;
  readings.after.timestamp = 101;
  readings.after.cpuTimeNs = 1016 * second;
  readings.after.gpuTimeNs = 1001 * second;
  EXPECT_EQ(readings.rates(), (ProcessRates{1600, 100, 0, 0}));
  readings.after.cpuTimeNs = 1040 * second;
  readings.after.gpuTimeNs = 1002 * second;
  EXPECT_EQ(readings.rates(), (ProcessRates{1600, 100, 0, 0}));
}

TEST(ProcessRates, DiskRatesHaveNoUpperLimit) {
  Readings readings;
  readings.before.diskWriteBytes = 0;
  readings.after.diskWriteBytes = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(readings.rates().diskWriteBytesPerSec, 18446744073709551615.0 / 2);
}

}  // namespace
}  // namespace korvantis
