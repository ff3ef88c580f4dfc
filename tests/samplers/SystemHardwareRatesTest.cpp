#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplers/MachineScript.h"
#include "samplers/SystemHardwareSampler.h"

namespace korvantis {
namespace {

using test::diskProperties;
using test::interfaceMessage;
using test::MachineScript;
using test::oneInterface;

class SystemHardwareRates : public testing::Test {
 protected:
  SystemSample sampleAfter(double seconds) {
    machine.now += seconds;
    return sampler.sampleSystem(std::nullopt);
  }

  /// One sample with these counters, `seconds` after the last.
  SystemSample diskAfter(double seconds, std::int64_t read, std::int64_t written) {
    machine.setDisk(read, written);
    return sampleAfter(seconds);
  }

  SystemSample networkAfter(double seconds, std::uint64_t in, std::uint64_t out) {
    machine.interfaceList = oneInterface(in, out);
    return sampleAfter(seconds);
  }

  void TearDown() override { EXPECT_THAT(machine.complaints(), testing::IsEmpty()); }

  MachineScript machine;
  SystemHardwareSampler sampler{machine.platform()};
};

using SystemHardwareDisk = SystemHardwareRates;
using SystemHardwareNetwork = SystemHardwareRates;

TEST_F(SystemHardwareDisk, RatesAreGrowthOverTheTimeBetweenSamples) {
  diskAfter(0, 1000, 5000);
  const SystemSample sample = diskAfter(2, 3000, 5500);
  EXPECT_DOUBLE_EQ(sample.diskReadBytesPerSec, 1000);
  EXPECT_DOUBLE_EQ(sample.diskWriteBytesPerSec, 250);
}

TEST_F(SystemHardwareDisk, TheTimeHasAFloorOfAFifthOfASecond) {
  diskAfter(0, 1000, 1000);
  EXPECT_DOUBLE_EQ(diskAfter(0.05, 1200, 1000).diskReadBytesPerSec, 1000);
  EXPECT_NEAR(diskAfter(0.25, 1450, 1000).diskReadBytesPerSec, 1000, 1e-3);
}

TEST_F(SystemHardwareDisk, AClockThatWentBackCountsAsTheFloor) {
  diskAfter(0, 1000, 1000);
  EXPECT_DOUBLE_EQ(diskAfter(-50, 1200, 1000).diskReadBytesPerSec, 1000);
}

TEST_F(SystemHardwareDisk, ACounterThatWasZeroGivesNoRate) {
  diskAfter(0, 0, 1);
  const SystemSample sample = diskAfter(2, 3000, 2001);
  EXPECT_EQ(sample.diskReadBytesPerSec, 0);
  EXPECT_DOUBLE_EQ(sample.diskWriteBytesPerSec, 1000);
}

TEST_F(SystemHardwareDisk, ACounterThatFallsGivesNoRateAndIsStored) {
  diskAfter(0, 9000, 9000);
  EXPECT_EQ(diskAfter(2, 1000, 9000).diskReadBytesPerSec, 0);
  EXPECT_DOUBLE_EQ(diskAfter(2, 3000, 9000).diskReadBytesPerSec, 1000);
}

TEST_F(SystemHardwareDisk, AllDriversAreSummedAndOneWithoutStatisticsAddsNothing) {
  machine.services["IOBlockStorageDriver"] = {
      diskProperties(100, 10),
      std::nullopt,
      PropertyMap{},
      PropertyMap{{"Statistics", PropertyValue{std::string("none")}}},
      PropertyMap{{"Statistics", PropertyValue{PropertyMap{}}}},
      diskProperties(200, 20)};
  sampleAfter(0);
  machine.services["IOBlockStorageDriver"] = {diskProperties(400, 40), diskProperties(300, 30)};
  const SystemSample sample = sampleAfter(2);
  EXPECT_DOUBLE_EQ(sample.diskReadBytesPerSec, 200);
  EXPECT_DOUBLE_EQ(sample.diskWriteBytesPerSec, 20);
}

TEST_F(SystemHardwareDisk, CountersKeepAll64Bits) {
  // The registry hands a number without a sign over as a signed one.
  diskAfter(0, -4000, 1);
  EXPECT_DOUBLE_EQ(diskAfter(2, -2000, 1).diskReadBytesPerSec, 1000);
}

TEST_F(SystemHardwareDisk, AFailedMatchCountsAsSumsOfZero) {
  diskAfter(0, 1000, 1000);
  machine.classesThatFailToMatch = {"IOBlockStorageDriver"};
  EXPECT_EQ(sampleAfter(2).diskReadBytesPerSec, 0);
  machine.classesThatFailToMatch = {};
  // The zero was stored, so this is a first reading again.
  EXPECT_EQ(diskAfter(2, 5000, 5000).diskReadBytesPerSec, 0);
  EXPECT_DOUBLE_EQ(diskAfter(2, 7000, 5000).diskReadBytesPerSec, 1000);
}

TEST_F(SystemHardwareDisk, CapacitiesAreThoseOfTheRootVolume) {
  machine.rootVolume = VolumeResourceValues{1000, 300};
  const SystemSample sample = sampleAfter(0);
  EXPECT_EQ(sample.diskTotalBytes, 1000U);
  EXPECT_EQ(sample.diskFreeBytes, 300U);
}

TEST_F(SystemHardwareDisk, AFailedReadOfTheVolumeGivesBothPlaceholders) {
  machine.rootVolume = std::nullopt;
  const SystemSample sample = sampleAfter(0);
  EXPECT_EQ(sample.diskTotalBytes, 549755813888U);
  EXPECT_EQ(sample.diskFreeBytes, 137438953472U);
}

TEST_F(SystemHardwareDisk, AMissingCapacityGivesItsOwnPlaceholder) {
  machine.rootVolume = VolumeResourceValues{std::nullopt, 300};
  EXPECT_EQ(sampleAfter(0).diskTotalBytes, 549755813888U);
  EXPECT_EQ(sampleAfter(2).diskFreeBytes, 300U);
  machine.rootVolume = VolumeResourceValues{1000, std::nullopt};
  EXPECT_EQ(sampleAfter(2).diskTotalBytes, 1000U);
  EXPECT_EQ(sampleAfter(2).diskFreeBytes, 137438953472U);
}

TEST_F(SystemHardwareDisk, ANegativeCapacityCountsAsZero) {
  machine.rootVolume = VolumeResourceValues{-1, -2};
  const SystemSample sample = sampleAfter(0);
  EXPECT_EQ(sample.diskTotalBytes, 0U);
  EXPECT_EQ(sample.diskFreeBytes, 0U);
}

TEST_F(SystemHardwareNetwork, RatesAreGrowthOverTheTimeBetweenSamples) {
  networkAfter(0, 1000, 5000);
  const SystemSample sample = networkAfter(2, 3000, 5500);
  EXPECT_DOUBLE_EQ(sample.networkInBytesPerSec, 1000);
  EXPECT_DOUBLE_EQ(sample.networkOutBytesPerSec, 250);
  EXPECT_EQ(sample.totalNetworkInBytes, 3000U);
  EXPECT_EQ(sample.totalNetworkOutBytes, 5500U);
}

TEST_F(SystemHardwareNetwork, TheTimeHasAFloorOfAFifthOfASecond) {
  networkAfter(0, 1000, 1000);
  EXPECT_DOUBLE_EQ(networkAfter(0.05, 1000, 1200).networkOutBytesPerSec, 1000);
}

TEST_F(SystemHardwareNetwork, ACounterThatFallsGivesARateOfZeroAndTheSmallerValueIsStored) {
  networkAfter(0, 9000, 100);
  const SystemSample fallen = networkAfter(2, 1000, 300);
  EXPECT_EQ(fallen.networkInBytesPerSec, 0);
  EXPECT_EQ(fallen.totalNetworkInBytes, 1000U);
  EXPECT_DOUBLE_EQ(fallen.networkOutBytesPerSec, 100);
  EXPECT_DOUBLE_EQ(networkAfter(2, 3000, 300).networkInBytesPerSec, 1000);
}

TEST_F(SystemHardwareNetwork, ACounterThatWasZeroGivesNoRate) {
  networkAfter(0, 0, 1);
  const SystemSample sample = networkAfter(2, 5000, 2001);
  EXPECT_EQ(sample.networkInBytesPerSec, 0);
  EXPECT_DOUBLE_EQ(sample.networkOutBytesPerSec, 1000);
}

TEST_F(SystemHardwareNetwork, AListWithoutInterfacesIsNewDataOfZero) {
  networkAfter(0, 1000, 1000);
  machine.interfaceList = test::interfaceList({interfaceMessage(0, 5, 5)});
  const SystemSample sample = sampleAfter(2);
  EXPECT_EQ(sample.totalNetworkInBytes, 0U);
  EXPECT_EQ(sample.networkInBytesPerSec, 0);
}

TEST_F(SystemHardwareNetwork, OnlyWhatTheSystemFilledIsRead) {
  machine.interfaceList =
      test::interfaceList({interfaceMessage(1, 100, 10), interfaceMessage(1, 200, 20)});
  machine.interfaceBytesFilled = 300;
  EXPECT_EQ(sampleAfter(0).totalNetworkInBytes, 100U);
}

class SystemHardwareNetworkFailure : public SystemHardwareRates {
 protected:
  /// No new data: the stored totals stand, with no rate, and the next list is measured from them.
  void expectStoredTotalsToStay() {
    const SystemSample failed = sampleAfter(2);
    EXPECT_EQ(failed.totalNetworkInBytes, 1000U);
    EXPECT_EQ(failed.totalNetworkOutBytes, 2000U);
    EXPECT_EQ(failed.networkInBytesPerSec, 0);
    EXPECT_EQ(failed.networkOutBytesPerSec, 0);
    machine.interfaceListFailsToBeRead = false;
    EXPECT_DOUBLE_EQ(networkAfter(2, 3000, 2000).networkInBytesPerSec, 1000);
  }
};

TEST_F(SystemHardwareNetworkFailure, AFailedSizeKeepsTheStoredTotals) {
  networkAfter(0, 1000, 2000);
  machine.interfaceList = std::nullopt;
  expectStoredTotalsToStay();
}

TEST_F(SystemHardwareNetworkFailure, ASizeBelowOneKeepsTheStoredTotals) {
  networkAfter(0, 1000, 2000);
  machine.interfaceList->clear();
  expectStoredTotalsToStay();
}

TEST_F(SystemHardwareNetworkFailure, AFailedReadKeepsTheStoredTotals) {
  networkAfter(0, 1000, 2000);
  machine.interfaceListFailsToBeRead = true;
  expectStoredTotalsToStay();
}

TEST_F(SystemHardwareRates, EveryCallerMovesTheBaseline) {
  machine.setDisk(1000, 1000);
  sampleAfter(0);
  diskAfter(1, 2000, 1000);
  EXPECT_DOUBLE_EQ(diskAfter(1, 2500, 1000).diskReadBytesPerSec, 500);
}

TEST_F(SystemHardwareRates, TheFirstSampleCountsOneSecond) {
  // Its rates are 0 whatever the time; that it leaves its own date shows in the second.
  machine.now = 50;
  diskAfter(0, 1000, 1000);
  EXPECT_DOUBLE_EQ(diskAfter(4, 5000, 1000).diskReadBytesPerSec, 1000);
}

}  // namespace
}  // namespace korvantis
