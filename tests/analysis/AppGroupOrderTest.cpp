#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "analysis/AppGroupOrder.h"
#include "analysis/AppGrouper.h"
#include "analysis/GrouperFixtures.h"
#include "analysis/StableMergeSort.h"

namespace korvantis {
namespace {

AppGroup groupWith(AppGroupKind kind, double cpu, std::uint64_t memory,
                   const std::string& id = "x") {
  AppGroup group;
  group.id = id;
  group.kind = kind;
  group.cpuPercent = cpu;
  group.memoryBytes = memory;
  return group;
}

AppGroup app(double cpu, std::uint64_t memory, const std::string& id = "x") {
  return groupWith(AppGroupKind::app, cpu, memory, id);
}

void expectBefore(const AppGroup& first, const AppGroup& second) {
  EXPECT_TRUE(goesBefore(first, second));
  EXPECT_FALSE(goesBefore(second, first));
}

void expectTie(const AppGroup& first, const AppGroup& second) {
  EXPECT_FALSE(goesBefore(first, second));
  EXPECT_FALSE(goesBefore(second, first));
}

std::vector<std::string> sortedIDs(std::vector<AppGroup> groups) {
  stableMergeSort(groups, goesBefore);
  return idsOf(groups);
}

using IDs = std::vector<std::string>;

TEST(AppGroupOrder, IdleAppStandsBeforeABusySystemGroup) {
  expectBefore(app(0, 0), groupWith(AppGroupKind::system, 90, 900));
  expectBefore(app(0, 0), groupWith(AppGroupKind::other, 90, 900));
}

TEST(AppGroupOrder, SystemAndOtherCountAlike) {
  const AppGroup system = groupWith(AppGroupKind::system, 5, 10);
  expectTie(system, groupWith(AppGroupKind::other, 5, 10));
  expectBefore(groupWith(AppGroupKind::other, 5, 11), system);
  expectBefore(system, groupWith(AppGroupKind::other, 5, 9));
  expectBefore(groupWith(AppGroupKind::other, 8, 0), system);
}

TEST(AppGroupOrder, CloseLoadsAreOrderedByMemory) {
  expectBefore(app(10, 200), app(11.5, 100));
}

TEST(AppGroupOrder, LoadsFurtherApartAreOrderedByCPU) {
  expectBefore(app(12.5, 100), app(10, 200));
}

TEST(AppGroupOrder, DifferenceOfExactlyTwoIsStillClose) {
  expectBefore(app(10, 200), app(12, 100));
  expectBefore(app(12.0000001, 100), app(10, 200));
}

TEST(AppGroupOrder, EqualMemoryAndCloseLoadTie) {
  expectTie(app(10, 100), app(11, 100));
  expectTie(app(10, 100), app(10, 100));
}

TEST(AppGroupOrder, LoadThatIsNoNumberIsOrderedByMemory) {
  expectBefore(app(std::numeric_limits<double>::quiet_NaN(), 200), app(50, 100));
}

TEST(AppGroupOrder, RunsInACircle) {
  const AppGroup heavy = app(1.5, 300);
  const AppGroup middle = app(3.0, 200);
  const AppGroup light = app(4.5, 100);
  expectBefore(heavy, middle);
  expectBefore(middle, light);
  expectBefore(light, heavy);
}

TEST(AppGroupOrder, CircleOfThreeIsMergedByHalves) {
  const AppGroup heavy = app(1.5, 300, "heavy");
  const AppGroup middle = app(3.0, 200, "middle");
  const AppGroup light = app(4.5, 100, "light");
  // The first stands alone, the other two are put in order, then the halves are merged.
  EXPECT_EQ(sortedIDs({heavy, middle, light}), (IDs{"heavy", "middle", "light"}));
  EXPECT_EQ(sortedIDs({heavy, light, middle}), (IDs{"heavy", "middle", "light"}));
  EXPECT_EQ(sortedIDs({middle, light, heavy}), (IDs{"middle", "light", "heavy"}));
  EXPECT_EQ(sortedIDs({middle, heavy, light}), (IDs{"middle", "light", "heavy"}));
  EXPECT_EQ(sortedIDs({light, heavy, middle}), (IDs{"light", "heavy", "middle"}));
  EXPECT_EQ(sortedIDs({light, middle, heavy}), (IDs{"light", "heavy", "middle"}));
}

ProcessSample lone(std::int32_t pid, const std::string& name, double cpu, std::uint64_t memory) {
  ProcessSample process = processAt(pid, "/opt/" + name, name);
  process.cpuPercent = cpu;
  process.memoryBytes = memory;
  return process;
}

IDs groupedIDs(const std::vector<ProcessSample>& processes) {
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  return idsOf(grouper.group(processes, 1000));
}

TEST(AppGroupOrder, GrouperSortsItsResult) {
  ProcessSample application = processAt(1, "/Applications/A.app/Contents/MacOS/A");
  EXPECT_EQ(groupedIDs({lone(2, "busy", 90, 5), lone(3, "close", 11.5, 10),
                        lone(4, "large", 10, 20), application}),
            (IDs{"/Applications/A.app", "daemon:busy", "daemon:large", "daemon:close"}));
}

TEST(AppGroupOrder, GrouperMergesACircleInTheOrderOfFirstSight) {
  EXPECT_EQ(groupedIDs({lone(2, "light", 4.5, 100), lone(3, "middle", 3.0, 200),
                        lone(4, "heavy", 1.5, 300)}),
            (IDs{"daemon:light", "daemon:heavy", "daemon:middle"}));
}

TEST(AppGroupOrder, GroupsThatTieStandAsTheirFirstProcessesCame) {
  EXPECT_EQ(groupedIDs({lone(9, "c", 1, 5), lone(2, "a", 1, 5), lone(7, "b", 0.5, 5)}),
            (IDs{"daemon:c", "daemon:a", "daemon:b"}));
}

}  // namespace
}  // namespace korvantis
