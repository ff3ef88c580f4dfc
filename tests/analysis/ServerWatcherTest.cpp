#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "analysis/ServerWatcher.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double start = 1'750'000'000;
constexpr double threshold = 1800;

/// A quiet server of the project "/code/shop", started `age` seconds before `start`.
ProcessSample server(std::int32_t pid, double age = 0) {
  ProcessSample process;
  process.pid = pid;
  process.name = "node";
  process.projectPath = "/code/shop";
  process.listeningPorts = {3000};
  process.startedAt = Instant{start - age};
  return process;
}

AppGroup groupNamed(const std::string& name, const std::vector<ProcessSample>& processes) {
  AppGroup group;
  group.name = name;
  group.processes = processes;
  return group;
}

std::vector<std::int32_t> pidsOf(const std::vector<IdleServer>& servers) {
  std::vector<std::int32_t> pids;
  for (const IdleServer& idle : servers) pids.push_back(idle.pid);
  return pids;
}

class ServerWatching : public testing::Test {
 protected:
  ServerWatcher::Evaluation evaluate(const std::vector<ProcessSample>& processes,
                                     const std::vector<AppGroup>& groups = {}) {
    return watcher.evaluate(processes, groups);
  }

  /// For how long the one process has been idle; absent when it is not.
  std::optional<double> idleSeconds(const ProcessSample& process) {
    const auto [idle, ports] = evaluate({process});
    EXPECT_EQ(ports.at(0).isIdle, !idle.empty());
    if (idle.empty()) return std::nullopt;
    return idle[0].idleSeconds;
  }

  double now = start;
  int clockReadings = 0;
  ServerWatcher watcher{Clock{[this] {
    ++clockReadings;
    return now;
  }}};
};

TEST_F(ServerWatching, ThresholdIsHalfAnHour) {
  EXPECT_EQ(watcher.idleThresholdSeconds, 1800);
}

TEST_F(ServerWatching, TimeIsTakenOnceForAWholeCall) {
  evaluate({server(1), server(2), server(3)});
  EXPECT_EQ(clockReadings, 1);
}

TEST_F(ServerWatching, EmptyProcessListYieldsEmptyListsAndForgetsEverything) {
  ProcessSample process = server(1, 5000);
  process.cpuPercent = 1;
  evaluate({process});
  const auto [idle, ports] = evaluate({});
  EXPECT_THAT(idle, IsEmpty());
  EXPECT_THAT(ports, IsEmpty());
  // Its quiet time would begin at the busy tick if that were still remembered.
  process.cpuPercent = 0;
  EXPECT_EQ(idleSeconds(process), 5000);
}

TEST_F(ServerWatching, ServerNeverSeenBeforeIsIdleAtOnceByItsStart) {
  ProcessSample process = server(1, 1801);
  process.cpuPercent = 0.5;
  EXPECT_EQ(idleSeconds(process), 1801);
}

TEST_F(ServerWatching, IdleSecondsExactlyAtTheThresholdCount) {
  EXPECT_EQ(idleSeconds(server(1, 1800)), 1800);
  EXPECT_EQ(idleSeconds(server(2, 1799.5)), std::nullopt);
}

TEST_F(ServerWatching, OnePercentIsNotQuietAndAnythingBelowIs) {
  ProcessSample process = server(1, 1801);
  process.cpuPercent = 1.0;
  EXPECT_EQ(idleSeconds(process), std::nullopt);
  // Its quiet time begins now.
  process.cpuPercent = 0.99;
  now += threshold - 1;
  EXPECT_EQ(idleSeconds(process), std::nullopt);
  now += 1;
  EXPECT_EQ(idleSeconds(process), 1800);
}

TEST_F(ServerWatching, QuietTimeBeginsAtTheLastBusyTickNotAtTheFirstQuietOne) {
  ProcessSample process = server(1);
  process.cpuPercent = 50;
  evaluate({process});
  now += 1000;
  evaluate({process});
  process.cpuPercent = 0;
  now += 2;
  EXPECT_EQ(idleSeconds(process), std::nullopt);
  now += threshold - 2;
  EXPECT_EQ(idleSeconds(process), 1800);
}

TEST_F(ServerWatching, OneBusyTickRestartsTheCountOfAnIdleServer) {
  ProcessSample process = server(1, 90000);
  EXPECT_EQ(idleSeconds(process), 90000);
  process.cpuPercent = 1;
  EXPECT_EQ(idleSeconds(process), std::nullopt);
  process.cpuPercent = 0;
  now += 60;
  EXPECT_EQ(idleSeconds(process), std::nullopt);
}

TEST_F(ServerWatching, ThresholdCanBeChanged) {
  watcher.idleThresholdSeconds = 60;
  EXPECT_EQ(idleSeconds(server(1, 59)), std::nullopt);
  EXPECT_EQ(idleSeconds(server(2, 60)), 60);
}

TEST_F(ServerWatching, StartInTheFutureIsNotIdle) {
  EXPECT_EQ(idleSeconds(server(1, -100)), std::nullopt);
}

TEST_F(ServerWatching, IdleServerHasTheProcessesFigures) {
  ProcessSample process = server(7, 2000);
  process.listeningPorts = {80, 3000, 50000};
  process.memoryBytes = 12345;
  process.cpuPercent = 0.25;
  const IdleServer expected{.pid = 7,
                            .name = "node",
                            .projectName = "shop",
                            .projectPath = "/code/shop",
                            .ports = {80, 3000},
                            .memoryBytes = 12345,
                            .cpuPercent = 0.25,
                            .startedAt = Instant{start - 2000},
                            .idleSeconds = 2000};
  EXPECT_THAT(evaluate({process}).idleServers, ElementsAre(expected));
}

TEST_F(ServerWatching, PortRowHasTheProcessesFigures) {
  ProcessSample process = server(7);
  process.memoryBytes = 12345;
  const ListeningPortItem expected{.port = 3000,
                                   .pid = 7,
                                   .processName = "node",
                                   .appName = "Terminal",
                                   .projectName = "shop",
                                   .projectPath = "/code/shop",
                                   .isIdle = false,
                                   .memoryBytes = 12345};
  EXPECT_THAT(evaluate({process}, {groupNamed("Terminal", {process})}).listeningPorts,
              ElementsAre(expected));
}

TEST_F(ServerWatching, ProcessInNoGroupIsItsOwnApplication) {
  const auto rows = evaluate({server(1)}, {groupNamed("Editor", {server(2)})}).listeningPorts;
  EXPECT_EQ(rows.at(0).appName, "node");
}

TEST_F(ServerWatching, LastGroupThatHoldsAPidNamesTheApplication) {
  const std::vector<AppGroup> groups{groupNamed("First", {server(1)}),
                                     groupNamed("Second", {server(1)})};
  EXPECT_EQ(evaluate({server(1)}, groups).listeningPorts.at(0).appName, "Second");
}

TEST_F(ServerWatching, ServerWithThreePortsIsOneIdleServerAndThreeRows) {
  ProcessSample process = server(1, 2000);
  process.listeningPorts = {3000, 3001, 9229};
  process.memoryBytes = 77;
  const auto [idle, rows] = evaluate({process});
  ASSERT_THAT(idle, SizeIs(1));
  EXPECT_THAT(idle[0].ports, ElementsAre(3000, 3001, 9229));
  ASSERT_THAT(rows, SizeIs(3));
  for (const ListeningPortItem& row : rows) {
    EXPECT_TRUE(row.isIdle);
    EXPECT_EQ(row.memoryBytes, 77U);
  }
}

TEST_F(ServerWatching, ProcessWithoutAProjectIsARowWithoutProjectAndNeverIdle) {
  ProcessSample process = server(1, 90000);
  process.projectPath = std::nullopt;
  const auto [idle, rows] = evaluate({process});
  EXPECT_THAT(idle, IsEmpty());
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_FALSE(rows[0].isIdle);
  EXPECT_EQ(rows[0].projectName, std::nullopt);
  EXPECT_EQ(rows[0].projectPath, std::nullopt);
}

TEST_F(ServerWatching, ProcessWithoutAProjectGetsNoQuietEntry) {
  ProcessSample process = server(1, 5000);
  process.projectPath = std::nullopt;
  process.cpuPercent = 50;
  evaluate({process});
  // With an entry from the busy tick it would not be idle yet.
  process.projectPath = "/code/shop";
  process.cpuPercent = 0;
  now += 10;
  EXPECT_EQ(idleSeconds(process), 5010);
}

TEST_F(ServerWatching, EntryOutlivesATimeWithoutAProjectAndAChangeOfProject) {
  ProcessSample process = server(1, 5000);
  process.cpuPercent = 50;
  evaluate({process});
  process.cpuPercent = 0;
  process.projectPath = std::nullopt;
  now += 100;
  evaluate({process});
  process.projectPath = "/code/blog";
  now += threshold - 100;
  EXPECT_EQ(idleSeconds(process), 1800);
}

TEST_F(ServerWatching, ProcessWithoutServicePortsAppearsInNeitherList) {
  ProcessSample without = server(1, 90000);
  without.listeningPorts = {};
  ProcessSample ephemeral = server(2, 90000);
  ephemeral.listeningPorts = {49152, 65535};
  const auto [idle, rows] = evaluate({without, ephemeral});
  EXPECT_THAT(idle, IsEmpty());
  EXPECT_THAT(rows, IsEmpty());
}

TEST_F(ServerWatching, PortsBelow49152AllCountAlsoThoseOfTheSystem) {
  ProcessSample process = server(1);
  process.projectPath = std::nullopt;
  process.uid = 0;
  process.listeningPorts = {22, 80, 49151, 49152};
  std::vector<std::uint16_t> ports;
  for (const ListeningPortItem& row : evaluate({process}).listeningPorts) ports.push_back(row.port);
  EXPECT_THAT(ports, ElementsAre(22, 80, 49151));
}

TEST_F(ServerWatching, ServerThatDropsItsPortsLosesItsEntryAndMayBeIdleAtOnceLater) {
  ProcessSample process = server(1, 5000);
  process.cpuPercent = 50;
  evaluate({process});
  process.cpuPercent = 0;
  process.listeningPorts = {};
  now += 2;
  evaluate({process});
  process.listeningPorts = {3000};
  now += 2;
  EXPECT_EQ(idleSeconds(process), 5004);
}

TEST_F(ServerWatching, PidThatLeftLosesItsEntry) {
  ProcessSample process = server(1, 5000);
  process.cpuPercent = 50;
  evaluate({process, server(2)});
  now += 2;
  evaluate({server(2)});
  process.cpuPercent = 0;
  EXPECT_EQ(idleSeconds(process), 5002);
}

TEST_F(ServerWatching, PidGivenToANewProcessAtOnceContinuesTheOldEntry) {
  evaluate({server(1, 5000)});
  now += 10;
  // Just started, but the number was seen quiet at every tick.
  EXPECT_EQ(idleSeconds(server(1, -10)), 5010);
}

TEST_F(ServerWatching, RowsAscendByPortOverTheWholeMachineAndEqualPortsKeepListOrder) {
  ProcessSample first = server(9);
  first.listeningPorts = {3000, 8080};
  ProcessSample second = server(4);
  second.listeningPorts = {80, 3000, 9000};
  ProcessSample third = server(6);
  std::vector<std::string> rows;
  for (const ListeningPortItem& row : evaluate({first, second, third}).listeningPorts) {
    rows.push_back(row.identity());
  }
  EXPECT_THAT(rows, ElementsAre("80-4", "3000-9", "3000-4", "3000-6", "8080-9", "9000-4"));
}

TEST_F(ServerWatching, IdleServersStandByMemoryLargestFirstAndEqualsAsTheyCame) {
  std::vector<ProcessSample> processes;
  for (const auto& [pid, memory] : {std::pair{9, 10}, {3, 20}, {5, 10}, {1, 20}}) {
    processes.push_back(server(pid, 5000));
    processes.back().memoryBytes = static_cast<std::uint64_t>(memory);
  }
  EXPECT_THAT(pidsOf(evaluate(processes).idleServers), ElementsAre(3, 1, 9, 5));
}

TEST_F(ServerWatching, NameUserAndApplicationPlayNoPart) {
  ProcessSample database = server(1, 5000);
  database.name = "postgres";
  database.uid = 70;
  EXPECT_THAT(pidsOf(evaluate({database}, {groupNamed("Postgres", {database})}).idleServers),
              ElementsAre(1));
}

}  // namespace
}  // namespace korvantis
