#include <gtest/gtest.h>

#include "samplers/MemoryFigures.h"

namespace korvantis {
namespace {

constexpr std::uint64_t page = 16384;
constexpr std::uint64_t plenty = std::uint64_t{64} << 30;

vm_statistics64 counters(std::uint32_t internal, std::uint32_t purgeable, std::uint32_t wired = 0,
                         std::uint32_t compressor = 0, std::uint32_t external = 0) {
  vm_statistics64 result{};
  result.internal_page_count = internal;
  result.purgeable_count = purgeable;
  result.wire_count = wired;
  result.compressor_page_count = compressor;
  result.external_page_count = external;
  return result;
}

TEST(MachineMemoryFigures, EveryFigureFollowsItsFormula) {
  const MemoryFigures figures = memoryFigures(counters(1000, 100, 50, 30, 400), page, plenty);
  EXPECT_EQ(figures.memoryAppBytes, 900 * page);
  EXPECT_EQ(figures.memoryWiredBytes, 50 * page);
  EXPECT_EQ(figures.memoryCompressedBytes, 30 * page);
  EXPECT_EQ(figures.memoryCachedBytes, 500 * page);
  EXPECT_EQ(figures.memoryUsedBytes, 980 * page);
}

TEST(MachineMemoryFigures, InternalBelowPurgeableReportsTheWholeInternalCount) {
  EXPECT_EQ(memoryFigures(counters(80, 100), page, plenty).memoryAppBytes, 80 * page);
}

TEST(MachineMemoryFigures, InternalEqualToPurgeableReportsTheWholeInternalCountAndNotZero) {
  EXPECT_EQ(memoryFigures(counters(100, 100), page, plenty).memoryAppBytes, 100 * page);
  EXPECT_EQ(memoryFigures(counters(101, 100), page, plenty).memoryAppBytes, page);
}

TEST(MachineMemoryFigures, UsedIsNotAbovePhysicalMemory) {
  const MemoryFigures figures = memoryFigures(counters(1000, 0, 1000, 1000), page, 2000 * page);
  EXPECT_EQ(figures.memoryUsedBytes, 2000 * page);
  EXPECT_EQ(figures.memoryAppBytes, 1000 * page);
}

TEST(MachineMemoryFigures, LargestCountersDoNotOverflow) {
  constexpr std::uint32_t most = 0xFFFFFFFF;
  const MemoryFigures figures = memoryFigures(counters(most, 0, most, most, most), page, ~0ULL);
  EXPECT_EQ(figures.memoryAppBytes, std::uint64_t{most} * page);
  EXPECT_EQ(figures.memoryUsedBytes, std::uint64_t{most} * 3 * page);
  EXPECT_EQ(memoryFigures(counters(0, most, 0, 0, most), page, plenty).memoryCachedBytes,
            std::uint64_t{most} * 2 * page);
}

TEST(MachineMemoryFigures, WithoutCountersFixedSharesOfInstalledMemoryStand) {
  const MemoryFigures figures = memoryFiguresWithoutCounters(1000);
  EXPECT_EQ(figures.memoryUsedBytes, 500U);
  EXPECT_EQ(figures.memoryAppBytes, 333U);
  EXPECT_EQ(figures.memoryWiredBytes, 100U);
  EXPECT_EQ(figures.memoryCompressedBytes, 66U);
  EXPECT_EQ(figures.memoryCachedBytes, 0U);
}

TEST(MachineMemoryPressure, EveryLevelOfTheKernelHasItsWord) {
  EXPECT_EQ(memoryPressureOfLevel(std::nullopt), MemoryPressureLevel::normal);
  EXPECT_EQ(memoryPressureOfLevel(-1), MemoryPressureLevel::normal);
  EXPECT_EQ(memoryPressureOfLevel(0), MemoryPressureLevel::normal);
  EXPECT_EQ(memoryPressureOfLevel(1), MemoryPressureLevel::normal);
  EXPECT_EQ(memoryPressureOfLevel(2), MemoryPressureLevel::warning);
  EXPECT_EQ(memoryPressureOfLevel(4), MemoryPressureLevel::critical);
  EXPECT_EQ(memoryPressureOfLevel(5), MemoryPressureLevel::critical);
}

TEST(MachineMemoryPressure, LevelOfThreeIsWarning) {
  EXPECT_EQ(memoryPressureOfLevel(3), MemoryPressureLevel::warning);
}

TEST(MachineMemoryPressure, HundredPercentFreeGivesTwoAndNotZero) {
  EXPECT_EQ(memoryPressurePercent(100, {}, plenty), 2.0);
  EXPECT_EQ(memoryPressurePercent(99, {}, plenty), 2.0);
  EXPECT_EQ(memoryPressurePercent(98, {}, plenty), 2.0);
  EXPECT_EQ(memoryPressurePercent(97, {}, plenty), 3.0);
}

TEST(MachineMemoryPressure, NothingFreeGivesNinetyNine) {
  EXPECT_EQ(memoryPressurePercent(0, {}, plenty), 99.0);
  EXPECT_EQ(memoryPressurePercent(1, {}, plenty), 99.0);
  EXPECT_EQ(memoryPressurePercent(2, {}, plenty), 98.0);
  EXPECT_EQ(memoryPressurePercent(60, {}, plenty), 40.0);
}

TEST(MachineMemoryPressure, AbsentOrImpossiblePercentFallsBackOnCompressedAndWiredMemory) {
  const MemoryFigures figures{.memoryWiredBytes = 200, .memoryCompressedBytes = 50};
  EXPECT_DOUBLE_EQ(memoryPressurePercent(std::nullopt, figures, 1000), 25.0);
  EXPECT_DOUBLE_EQ(memoryPressurePercent(101, figures, 1000), 25.0);
  EXPECT_DOUBLE_EQ(memoryPressurePercent(-1, figures, 1000), 25.0);
}

TEST(MachineMemoryPressure, TheFallbackIsCappedAtNinetyEightAndHasNoFloor) {
  const MemoryFigures all{.memoryWiredBytes = 600, .memoryCompressedBytes = 400};
  EXPECT_DOUBLE_EQ(memoryPressurePercent(101, all, 1000), 98.0);
  EXPECT_DOUBLE_EQ(memoryPressurePercent(std::nullopt, {}, 1000), 0.0);
}

TEST(MachineMemoryPressure, TheFallbackDividesByAtLeastOne) {
  EXPECT_DOUBLE_EQ(memoryPressurePercent(std::nullopt, {}, 0), 0.0);
  EXPECT_DOUBLE_EQ(memoryPressurePercent(std::nullopt, {.memoryWiredBytes = 1}, 0), 98.0);
}

}  // namespace
}  // namespace korvantis
