#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

#include "samplers/LibProcSamplerFixture.h"

namespace korvantis {
namespace {

using test::LibProcSamplerFixture;
using test::ProcessOperation;
using test::ScriptedProcess;

constexpr std::uint64_t second = 1'000'000'000;

/// The rates of one process, pid 7, whose counters a test moves.
class LibProcSamplerRates : public LibProcSamplerFixture {
 protected:
  void SetUp() override {
    processes.add({.pid = 7,
                   .userTime = 100 * second,
                   .systemTime = 50 * second,
                   .idleWakeups = 12,
                   .footprint = 1 << 20,
                   .diskReadBytes = 5'000'000,
                   .diskWriteBytes = 6'000'000});
  }

  /// Lets `seconds` pass, changes the process and samples it.
  ProcessSample after(double seconds, const std::function<void(ScriptedProcess&)>& edit,
                      const GPUTimeByPID& gpuTimes = {}) {
    processes.advance(seconds);
    processes.change(7, edit);
    return sampleOne(gpuTimes);
  }
};

TEST_F(LibProcSamplerRates, FirstSeenProcessShowsZeroRatesButRealMemoryAndWakeups) {
  const ProcessSample first = sampleOne({{7, 30 * second}});
  EXPECT_EQ(first.cpuPercent, 0);
  EXPECT_EQ(first.gpuPercent, 0);
  EXPECT_EQ(first.diskReadBytesPerSec, 0);
  EXPECT_EQ(first.diskWriteBytesPerSec, 0);
  EXPECT_EQ(first.networkInBytesPerSec, 0);
  EXPECT_EQ(first.networkOutBytesPerSec, 0);
  EXPECT_EQ(first.energyWatts, 0);
  EXPECT_EQ(first.memoryBytes, 1U << 20);
  EXPECT_EQ(first.idleWakeups, 12U);
}

TEST_F(LibProcSamplerRates, CPUIsUserPlusSystemTimeOverTheTimeSinceTheLastTick) {
  sampleOne();
  const ProcessSample second2 = after(2, [](ScriptedProcess& process) {
    process.userTime += second;
    process.systemTime += second / 2;
  });
  EXPECT_DOUBLE_EQ(second2.cpuPercent, 75);
  EXPECT_DOUBLE_EQ(second2.energyWatts, 75 * 0.085);
}

TEST_F(LibProcSamplerRates, ACPUTotalThatFallsBelowThePreviousValueGivesZeroPercent) {
  sampleOne();
  EXPECT_EQ(after(2, [](ScriptedProcess& process) { process.userTime = 0; }).cpuPercent, 0);
  EXPECT_DOUBLE_EQ(after(2, [](ScriptedProcess& process) { process.userTime = second; }).cpuPercent,
                   50)
      << "the lower total is the new baseline";
}

TEST_F(LibProcSamplerRates, AReusedPidInheritsTheOldCountersAndShowsZeroOrMore) {
  sampleOne({{7, 9 * second}});
  processes.remove(7);
  processes.add({.pid = 7, .userTime = second, .diskReadBytes = 10, .diskWriteBytes = 7'000'000});
  processes.advance(2);
  const ProcessSample reused = sampleOne({{7, second}});
  EXPECT_EQ(reused.cpuPercent, 0);
  EXPECT_EQ(reused.gpuPercent, 0);
  EXPECT_EQ(reused.diskReadBytesPerSec, 0);
  EXPECT_EQ(reused.diskWriteBytesPerSec, 500'000);
}

TEST_F(LibProcSamplerRates, TwoTicksAHundredthOfASecondApartComputeWith015Seconds) {
  processes.setNow(1000);
  sampleOne();
  const ProcessSample next = after(0.01, [](ScriptedProcess& process) {
    process.userTime += 15'000'000;
    process.diskReadBytes += 1'500;
  });
  EXPECT_DOUBLE_EQ(next.cpuPercent, 10);
  EXPECT_DOUBLE_EQ(next.diskReadBytesPerSec, 10'000);
}

TEST_F(LibProcSamplerRates, AClockThatGoesBackwardsComputesWith015Seconds) {
  sampleOne();
  const ProcessSample next =
      after(-3600, [](ScriptedProcess& process) { process.userTime += 15'000'000; });
  EXPECT_DOUBLE_EQ(next.cpuPercent, 10);
}

TEST_F(LibProcSamplerRates, AJumpOf40SecondsOfCPUInOneSecondShows1600) {
  sampleOne();
  EXPECT_EQ(after(1, [](ScriptedProcess& process) { process.userTime += 40 * second; }).cpuPercent,
            1600.0);
}

TEST_F(LibProcSamplerRates, GPUIsMeasuredOnceTheOldValueIsAboveZero) {
  const auto nothing = [](ScriptedProcess&) {};
  sampleOne();
  EXPECT_EQ(after(2, nothing, {{7, 10 * second}}).gpuPercent, 0) << "the first GPU time";
  EXPECT_DOUBLE_EQ(after(2, nothing, {{7, 11 * second}}).gpuPercent, 50);
  EXPECT_EQ(after(2, nothing, {{7, 31 * second}}).gpuPercent, 100) << "held to 100";
  EXPECT_EQ(after(2, nothing, {{7, 30 * second}}).gpuPercent, 0) << "it fell";
  EXPECT_EQ(after(2, nothing, {{8, 40 * second}}).gpuPercent, 0) << "no entry for this pid";
  EXPECT_EQ(after(2, nothing, {{7, 41 * second}}).gpuPercent, 0) << "the old value is 0 again";
}

TEST_F(LibProcSamplerRates, DiskRatesAreGrowthOverElapsedTime) {
  sampleOne();
  const ProcessSample next = after(4, [](ScriptedProcess& process) {
    process.diskReadBytes += 1'000;
    process.diskWriteBytes += 2'000;
  });
  EXPECT_DOUBLE_EQ(next.diskReadBytesPerSec, 250);
  EXPECT_DOUBLE_EQ(next.diskWriteBytesPerSec, 500);
}

TEST_F(LibProcSamplerRates, EachDiskCounterThatFellGivesZeroAlone) {
  sampleOne();
  const ProcessSample next = after(1, [](ScriptedProcess& process) {
    process.diskReadBytes -= 1;
    process.diskWriteBytes += 10;
  });
  EXPECT_EQ(next.diskReadBytesPerSec, 0);
  EXPECT_DOUBLE_EQ(next.diskWriteBytesPerSec, 10);
  const ProcessSample last = after(1, [](ScriptedProcess& process) {
    process.diskReadBytes += 10;
    process.diskWriteBytes -= 1;
  });
  EXPECT_DOUBLE_EQ(last.diskReadBytesPerSec, 10);
  EXPECT_EQ(last.diskWriteBytesPerSec, 0);
}

TEST_F(LibProcSamplerRates, AListenerThatReadsAMillionBytesPerSecondShows20000In) {
  processes.change(7, [](ScriptedProcess& process) { process.descriptors = {{.port = 3000}}; });
  sampleOne();
  const ProcessSample next = after(1, [](ScriptedProcess& process) {
    process.userTime += second / 1000;
    process.diskReadBytes += 1'000'000;
  });
  EXPECT_DOUBLE_EQ(next.networkInBytesPerSec, 20000.0);
}

TEST_F(LibProcSamplerRates, TheSameProcessWithoutPortsAt01PercentCPUShowsNoNetwork) {
  sampleOne();
  const ProcessSample next = after(1, [](ScriptedProcess& process) {
    process.userTime += second / 1000;
    process.diskReadBytes += 1'000'000;
  });
  EXPECT_DOUBLE_EQ(next.cpuPercent, 0.1);
  EXPECT_EQ(next.networkInBytesPerSec, 0);
}

TEST_F(LibProcSamplerRates, The501stWakeupAddsTheWakeupTermForGood) {
  sampleOne();
  const auto wakeups = [](std::uint64_t count) {
    return [count](ScriptedProcess& process) { process.idleWakeups = count; };
  };
  EXPECT_EQ(after(1, wakeups(500)).energyWatts, 0);
  EXPECT_EQ(after(1, wakeups(501)).energyWatts, 0.15);
  EXPECT_EQ(after(1, wakeups(501)).energyWatts, 0.15);
}

TEST_F(LibProcSamplerRates, ATimebaseOf125To3TurnsUnitsIntoNanoseconds) {
  processes.setTimebase(125, 3);
  sampleOne();
  // 24 million units are one second.
  const ProcessSample next =
      after(2, [](ScriptedProcess& process) { process.systemTime += 24'000'000; });
  EXPECT_DOUBLE_EQ(next.cpuPercent, 50);
}

TEST_F(LibProcSamplerRates, TheTimebaseIsAppliedToTheTotalInIntegers) {
  processes.setTimebase(125, 3);
  processes.change(7, [](ScriptedProcess& process) { process.userTime = process.systemTime = 0; });
  sampleOne();
  // 1 unit is 41.67 ns and counts as 41; 2 units as 83, 3 as 125.
  const auto oneMore = [](ScriptedProcess& process) { ++process.userTime; };
  EXPECT_DOUBLE_EQ(after(1, oneMore).cpuPercent, 41 / 1e9 * 100);
  EXPECT_DOUBLE_EQ(after(1, oneMore).cpuPercent, 42 / 1e9 * 100);
  EXPECT_DOUBLE_EQ(after(1, oneMore).cpuPercent, 42 / 1e9 * 100);
}

TEST_F(LibProcSamplerRates, TimesWhoseProductIsBeyond64BitsAreStillMeasured) {
  processes.setTimebase(125, 3);
  processes.change(7, [](ScriptedProcess& process) { process.userTime = std::uint64_t{1} << 58; });
  sampleOne();
  const ProcessSample next =
      after(2, [](ScriptedProcess& process) { process.userTime += 24'000'000; });
  EXPECT_DOUBLE_EQ(next.cpuPercent, 50);
}

TEST_F(LibProcSamplerRates, TimesBeyondAllBoundsStandStillInsteadOfWrappingRound) {
  processes.setTimebase(125, 3);
  processes.change(7, [](ScriptedProcess& process) {
    process.userTime = process.systemTime = std::numeric_limits<std::uint64_t>::max() - 9;
  });
  sampleOne();
  EXPECT_EQ(after(2, [](ScriptedProcess& process) { process.userTime += 9; }).cpuPercent, 0);
}

TEST_F(LibProcSamplerRates, ATimebaseOfZerosCountsAsOneToOne) {
  processes.setTimebase(0, 0);
  sampleOne();
  EXPECT_DOUBLE_EQ(
      after(2, [](ScriptedProcess& process) { process.userTime += second; }).cpuPercent, 50);
}

TEST_F(LibProcSamplerRates, ADenominatorOfZeroCountsAsOne) {
  processes.setTimebase(2, 0);
  sampleOne();
  EXPECT_DOUBLE_EQ(
      after(2, [](ScriptedProcess& process) { process.userTime += second; }).cpuPercent, 100);
}

TEST_F(LibProcSamplerRates, EqualNumbersOfATimebaseChangeNothing) {
  processes.setTimebase(1'000'000'000, 1'000'000'000);
  sampleOne();
  EXPECT_DOUBLE_EQ(
      after(2, [](ScriptedProcess& process) { process.userTime += second; }).cpuPercent, 50);
}

TEST_F(LibProcSamplerRates, TheTimebaseIsAskedForOnce) {
  sampleOne();
  sampleOne();
  EXPECT_EQ(processes.count(ProcessOperation::timebase), 1);
}

TEST_F(LibProcSamplerRates, ATickOnWhichUsageCantBeReadTakesTheBaselineAway) {
  sampleOne();
  const ProcessSample unreadable =
      after(1, [](ScriptedProcess& process) { process.usageIsReadable = false; });
  EXPECT_EQ(unreadable.memoryBytes, 0U);
  const ProcessSample readable = after(1, [](ScriptedProcess& process) {
    process.usageIsReadable = true;
    process.userTime += second;
  });
  EXPECT_EQ(readable.cpuPercent, 0);
  EXPECT_DOUBLE_EQ(
      after(1, [](ScriptedProcess& process) { process.userTime += second; }).cpuPercent, 100);
}

TEST_F(LibProcSamplerRates, AProcessThatLeavesAndComesBackHasNoBaseline) {
  sampleOne();
  processes.listPIDs({8});
  EXPECT_TRUE(sample().empty());
  processes.listPIDs({7});
  EXPECT_EQ(after(1, [](ScriptedProcess& process) { process.userTime += second; }).cpuPercent, 0);
}

}  // namespace
}  // namespace korvantis
