// Findings about the whole machine: memory, storage, network, servers, heat, Neural Engine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "analysis/InsightFixtures.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double diskBurst = 83'886'080;
constexpr double networkBurst = 26'214'400;

/// That a finding which goes on is told again after exactly `seconds` and not a moment before.
void expectCooldown(ScriptedInsights& insights, double seconds) {
  const double first = insights.now;
  EXPECT_THAT(insights.tick(), SizeIs(1));
  insights.now = first + seconds - 0.1;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.now = first + seconds;
  EXPECT_THAT(insights.tick(), SizeIs(1));
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
}

TEST(InsightEngineMemoryPressure, EveryLevelButNormalIsTold) {
  ScriptedInsights insights;
  insights.system.memoryPressure = MemoryPressureLevel::warning;
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Memory pressure is warning"));
  ScriptedInsights critical;
  critical.system.memoryPressure = MemoryPressureLevel::critical;
  EXPECT_THAT(titlesOf(critical.tick()), ElementsAre("Memory pressure is critical"));
}

TEST(InsightEngineMemoryPressure, SwapOfExactly2GiBWithNormalPressureDoesNotFire) {
  ScriptedInsights insights;
  insights.system.swapUsedBytes = 2 * GiB;
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineMemoryPressure, AByteOver2GiBOfSwapFiresAndItsTitleEndsInNormal) {
  ScriptedInsights insights;
  insights.system.swapUsedBytes = 2 * GiB + 1;
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Memory pressure is normal"));
}

TEST(InsightEngineMemoryPressure, TheFigureInPercentAloneDoesNotFire) {
  ScriptedInsights insights;
  insights.system.memoryPressurePercent = 100;
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineMemoryPressure, TheFirstGroupIsNamedWhateverItsKindAndThoughItIsMuted) {
  ScriptedInsights insights;
  insights.system.memoryPressure = MemoryPressureLevel::critical;
  insights.groups = {bigApp("kernel_task", 1), bigApp("Browser", 9 * GiB)};
  insights.groups[0].kind = AppGroupKind::system;
  insights.mutes = {mute(insights.groups[0])};
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].targetAppID, insights.groups[0].id);
  EXPECT_EQ(told[0].targetAppName, "kernel_task");
  EXPECT_EQ(told[0].detail, "Swap used: 0 B. Top holder: kernel_task.");
}

TEST(InsightEngineMemoryPressure, WithoutGroupsItHasNoTargetAndNamesTheSystem) {
  ScriptedInsights insights;
  insights.system.memoryPressure = MemoryPressureLevel::critical;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].targetAppID, std::nullopt);
  EXPECT_EQ(told[0].targetAppName, std::nullopt);
  EXPECT_EQ(told[0].detail, "Swap used: 0 B. Top holder: System.");
}

TEST(InsightEngineMemoryPressure, HasACooldownOf600SecondsWhateverTheLevel) {
  ScriptedInsights insights;
  insights.system.memoryPressure = MemoryPressureLevel::warning;
  expectCooldown(insights, 600);
  insights.system.memoryPressure = MemoryPressureLevel::critical;
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineDiskBurst, FiresAt80MiBPerSecondAndNotBelow) {
  ScriptedInsights insights;
  insights.system.diskWriteBytesPerSec = diskBurst - 0.1;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.system.diskWriteBytesPerSec = diskBurst;
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Heavy disk write activity"));
}

TEST(InsightEngineDiskBurst, ReadsDoNotCount) {
  ScriptedInsights insights;
  insights.system.diskReadBytesPerSec = 10 * diskBurst;
  insights.system.diskWriteBytesPerSec = diskBurst - 1;
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineDiskBurst, NamesTheGreatestWriterWhateverItsKindAndThoughItIsMuted) {
  ScriptedInsights insights;
  insights.system.diskWriteBytesPerSec = diskBurst;
  insights.groups = {appNamed("Browser"), appNamed("backupd"), appNamed("Editor")};
  insights.groups[0].diskWriteBytesPerSec = 5;
  insights.groups[1].diskWriteBytesPerSec = 7;
  insights.groups[1].kind = AppGroupKind::system;
  insights.groups[2].diskReadBytesPerSec = 100;
  insights.mutes = {mute(insights.groups[1])};
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].targetAppID, insights.groups[1].id);
  EXPECT_EQ(told[0].targetAppName, "backupd");
  EXPECT_EQ(told[0].detail, "backupd is writing heavily to storage.");
}

TEST(InsightEngineDiskBurst, OfEqualWritersTheEarliestIsNamed) {
  ScriptedInsights insights;
  insights.system.diskWriteBytesPerSec = diskBurst;
  insights.groups = {appNamed("A"), appNamed("B"), appNamed("C")};
  insights.groups[1].diskWriteBytesPerSec = 7;
  insights.groups[2].diskWriteBytesPerSec = 7;
  EXPECT_EQ(insights.tick().at(0).targetAppName, "B");
  ScriptedInsights idle;
  idle.system = insights.system;
  idle.groups = {appNamed("A"), appNamed("B")};
  EXPECT_EQ(idle.tick().at(0).targetAppName, "A");
}

TEST(InsightEngineDiskBurst, WithoutGroupsItHasNoTargetAndNamesTheSystem) {
  ScriptedInsights insights;
  insights.system.diskWriteBytesPerSec = diskBurst;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].targetAppID, std::nullopt);
  EXPECT_EQ(told[0].targetAppName, std::nullopt);
  EXPECT_EQ(told[0].detail, "System is writing heavily to storage.");
}

TEST(InsightEngineDiskBurst, HasACooldownOf600Seconds) {
  ScriptedInsights insights;
  insights.system.diskWriteBytesPerSec = diskBurst;
  expectCooldown(insights, 600);
}

TEST(InsightEngineNetworkBurst, FiresAt25MiBPerSecondInBothDirectionsTogether) {
  ScriptedInsights insights;
  insights.system.networkInBytesPerSec = networkBurst - 1000;
  insights.system.networkOutBytesPerSec = 999;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.system.networkOutBytesPerSec = 1000;
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Sustained high network transfer"));
}

TEST(InsightEngineNetworkBurst, HasNoTargetAlthoughThereAreGroups) {
  ScriptedInsights insights;
  insights.system.networkOutBytesPerSec = networkBurst;
  insights.groups = {appNamed("Browser")};
  EXPECT_EQ(insights.tick().at(0).targetAppID, std::nullopt);
}

TEST(InsightEngineNetworkBurst, HasACooldownOf300Seconds) {
  ScriptedInsights insights;
  insights.system.networkInBytesPerSec = networkBurst;
  expectCooldown(insights, 300);
}

TEST(InsightEngineIdleServers, OneServerIsToldInTheSingularAndNoneNotAtAll) {
  ScriptedInsights insights;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.servers = {serverWith({3000})};
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("1 idle dev server listening"));
}

TEST(InsightEngineIdleServers, AThirdServerFiresAtOnceAndBackAtTwoTheirCooldownStillHolds) {
  ScriptedInsights insights;
  insights.servers = {serverWith({3000}), serverWith({4000})};
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("2 idle dev servers listening"));
  insights.servers.push_back(serverWith({5000}));
  EXPECT_THAT(titlesOf(insights.tickAfter(2)), ElementsAre("3 idle dev servers listening"));
  insights.servers.pop_back();
  EXPECT_THAT(insights.tickAfter(897), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineIdleServers, HasACooldownOf900Seconds) {
  ScriptedInsights insights;
  insights.servers = {serverWith({3000})};
  expectCooldown(insights, 900);
}

TEST(InsightEngineIdleServers, OtherServersInTheSameNumberCountAsTheSameFinding) {
  ScriptedInsights insights;
  insights.servers = {serverWith({3000})};
  insights.tick();
  insights.servers = {serverWith({9000})};
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
}

TEST(InsightEngineIdleServers, NamesTheFirstFourPortsInListOrderWhoseverTheyAre) {
  ScriptedInsights insights;
  insights.servers = {serverWith({9000, 80}), serverWith({}), serverWith({3000, 80, 5000})};
  EXPECT_EQ(insights.tick().at(0).detail, "Ports 9000, 80, 3000, 80 idle for >30m.");
}

TEST(InsightEngineIdleServers, WithNoPortsAtAllTwoBlanksStandInARow) {
  ScriptedInsights insights;
  insights.servers = {serverWith({})};
  EXPECT_EQ(insights.tick().at(0).detail, "Ports  idle for >30m.");
}

TEST(InsightEngineHeat, FiresAtTheLimitAndNotATenthBelow) {
  ScriptedInsights insights;
  insights.system.thermal.hottestCelsius = 81.9;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.system.thermal.hottestCelsius = 82;
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Mac is running warm (82°C)"));
}

TEST(InsightEngineHeat, TheLimitIsTheCallers) {
  ScriptedInsights insights;
  insights.hotCelsius = 46.5;
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineHeat, FiresFromThermalState2OnHoweverColdItIs) {
  ScriptedInsights insights;
  insights.system.thermal.hottestCelsius = 30;
  insights.system.thermal.thermalStateLevel = 1;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.system.thermal.thermalStateLevel = 2;
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineHeat, TheDegreesInTheTitleAreCutAndThoseInTheDetailRounded) {
  ScriptedInsights insights;
  insights.system.thermal.hottestCelsius = 88.96;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].title, "Mac is running warm (88°C)");
  EXPECT_EQ(told[0].detail, "Hottest sensor: CPU Performance Core at 89.0°C.");
  EXPECT_EQ(told[0].metricText, "89.0°C");
}

TEST(InsightEngineHeat, DegreesBelowZeroAreCutTowardZero) {
  ScriptedInsights insights;
  insights.system.thermal.thermalStateLevel = 3;
  insights.system.thermal.hottestCelsius = -0.9;
  EXPECT_EQ(insights.tick().at(0).title, "Mac is running warm (0°C)");
  insights.system.thermal.hottestCelsius = -7.9;
  EXPECT_EQ(insights.tickAfter(600).at(0).title, "Mac is running warm (-7°C)");
}

TEST(InsightEngineHeat, HasACooldownOf600Seconds) {
  ScriptedInsights insights;
  insights.system.thermal.hottestCelsius = 95;
  expectCooldown(insights, 600);
}

TEST(InsightEngineNeuralEngine, FiresAt15PercentWithAHolder) {
  ScriptedInsights insights;
  insights.system.neuralEngineHolder = "Photos";
  insights.system.neuralEnginePercent = 14.9;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.system.neuralEnginePercent = 15;
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Neural Engine active (Photos)"));
}

TEST(InsightEngineNeuralEngine, WithoutAHolderNothingIsTold) {
  ScriptedInsights insights;
  insights.system.neuralEnginePercent = 100;
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineNeuralEngine, EachHolderHasItsOwnCooldownOf600Seconds) {
  ScriptedInsights insights;
  insights.system.neuralEngineHolder = "Photos";
  insights.system.neuralEnginePercent = 50;
  expectCooldown(insights, 600);
  insights.system.neuralEngineHolder = "Mail";
  EXPECT_THAT(insights.tick(), SizeIs(1));
  insights.system.neuralEngineHolder = "Photos";
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineNeuralEngine, HasNoTargetAlthoughTheHolderIsAGroup) {
  ScriptedInsights insights;
  insights.groups = {appNamed("Photos")};
  insights.system.neuralEngineHolder = "Photos";
  insights.system.neuralEnginePercent = 50;
  EXPECT_EQ(insights.tick().at(0).targetAppID, std::nullopt);
}

}  // namespace
}  // namespace korvantis
