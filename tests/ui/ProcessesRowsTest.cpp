#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/ProcessesRows.h"

namespace korvantis {
namespace {

using Kind = ProcessesRowKind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

DevProject makeProject(int processCount) {
  DevProject project;
  project.name = "shop";
  project.path = "/home/me/shop";
  project.ports = {3000, 50000};
  project.memoryBytes = 300 << 20;
  project.cpuPercent = 7.25;
  for (int pid = 1; pid <= processCount; ++pid) {
    project.processes.push_back(makeProcess(pid, "node"));
  }
  return project;
}

EngineSnapshot withProject(DevProject project) {
  EngineSnapshot snapshot;
  snapshot.projects = {std::move(project)};
  return snapshot;
}

ListeningPortItem makePort(std::uint16_t port, std::int32_t pid) {
  ListeningPortItem item;
  item.port = port;
  item.pid = pid;
  item.processName = "node";
  item.appName = "Terminal";
  item.memoryBytes = 1 << 20;
  return item;
}

IdleServer makeIdleServer() {
  IdleServer server;
  server.pid = 9;
  server.name = "vite";
  server.projectName = "shop";
  server.projectPath = "/home/me/shop";
  server.ports = {5173};
  server.memoryBytes = 90 << 20;
  server.startedAt = Instant{4};
  server.idleSeconds = 3 * 3600 + 61;
  return server;
}

EngineSnapshot withPort(ListeningPortItem item) {
  EngineSnapshot snapshot;
  snapshot.listeningPorts = {std::move(item)};
  return snapshot;
}

TEST(ProcessesRows, AProjectIsWordedWithItsPathPortsMemoryAndCPU) {
  const auto rows = ProcessesRows::projects(withProject(makeProject(0)));
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0].kind, Kind::project);
  EXPECT_EQ(rows[0].title, QStringLiteral("shop"));
  EXPECT_EQ(rows[0].subtitle, QStringLiteral("/home/me/shop"));
  EXPECT_THAT(rows[0].ports, ElementsAre(QStringLiteral(":3000"), QStringLiteral(":50000")));
  EXPECT_EQ(rows[0].memoryText, QStringLiteral("300 MB"));
  EXPECT_EQ(rows[0].cpuText, QStringLiteral("7.2% CPU"));
  EXPECT_TRUE(rows[0].isFirstOfCard && rows[0].isLastOfCard);
}

TEST(ProcessesRows, AProjectWith8ProcessesShows6Rows) {
  const auto rows = ProcessesRows::projects(withProject(makeProject(8)));
  ASSERT_THAT(rows, SizeIs(1 + 6));
  EXPECT_EQ(rows[6].pidText, QStringLiteral("PID 6"));
  EXPECT_TRUE(rows[6].isLastOfCard);
}

TEST(ProcessesRows, AProcessOfAProjectIsWordedWithItsArguments) {
  DevProject project = makeProject(1);
  project.processes[0].arguments = "node server.js --watch";
  project.processes[0].memoryBytes = 5 << 20;
  const ProcessesRow row = ProcessesRows::projects(withProject(project))[1];
  EXPECT_EQ(row.kind, Kind::projectProcess);
  EXPECT_EQ(row.pidText, QStringLiteral("PID 1"));
  EXPECT_EQ(row.title, QStringLiteral("node"));
  EXPECT_EQ(row.subtitle, QStringLiteral("node server.js --watch"));
  EXPECT_EQ(row.memoryText, QStringLiteral("5 MB"));
  EXPECT_EQ(row.pid, 1);
  EXPECT_EQ(row.startedAt, Instant{1});
}

TEST(ProcessesRows, TheContainersOfAProjectAreNotListedInItsCard) {
  DevProject project = makeProject(1);
  project.containers.resize(3);
  EXPECT_THAT(ProcessesRows::projects(withProject(project)), SizeIs(2));
}

TEST(ProcessesRows, ProjectsStandInTheOrderOfTheSnapshot) {
  EngineSnapshot snapshot;
  snapshot.projects = {makeProject(0), makeProject(0)};
  snapshot.projects[0].path = "/z";
  snapshot.projects[1].path = "/a";
  const auto rows = ProcessesRows::projects(snapshot);
  EXPECT_EQ(rows[0].subtitle, QStringLiteral("/z"));
  EXPECT_EQ(rows[1].subtitle, QStringLiteral("/a"));
}

TEST(ProcessesRows, AContainerIsWordedWithItsImageEngineAndStatus) {
  ContainerSample container;
  container.id = "1";
  container.name = "db";
  container.image = "postgres:16";
  container.engine = "Podman";
  container.status = "Up 3 hours";
  container.ports = {5432};
  container.cpuPercent = 1.5;
  container.memoryBytes = 128 << 20;
  EngineSnapshot snapshot;
  snapshot.containers = {container};
  const auto rows = ProcessesRows::containers(snapshot);
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0].kind, Kind::container);
  EXPECT_EQ(rows[0].title, QStringLiteral("db"));
  EXPECT_EQ(rows[0].subtitle, QStringLiteral("postgres:16 · Podman · Up 3 hours"));
  EXPECT_THAT(rows[0].ports, ElementsAre(QStringLiteral(":5432")));
  EXPECT_EQ(rows[0].cpuText, QStringLiteral("1.5% CPU"));
  EXPECT_EQ(rows[0].memoryText, QStringLiteral("128 MB"));
  EXPECT_EQ(rows[0].pid, 0);
}

TEST(ProcessesRows, APortIsWordedWithItsHolder) {
  const auto rows = ProcessesRows::ports(withPort(makePort(50000, 9)));
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0].kind, Kind::port);
  EXPECT_THAT(rows[0].ports, ElementsAre(QStringLiteral(":50000")));
  EXPECT_EQ(rows[0].title, QStringLiteral("node"));
  EXPECT_EQ(rows[0].subtitle, QStringLiteral("Terminal"));
  EXPECT_EQ(rows[0].pidText, QStringLiteral("PID 9"));
  EXPECT_EQ(rows[0].memoryText, QStringLiteral("1 MB"));
  EXPECT_EQ(rows[0].idleText, QString());
}

TEST(ProcessesRows, APortNamesItsProjectsPathRatherThanItsApplicationAndIsTaggedWhenIdle) {
  ListeningPortItem item = makePort(3000, 9);
  item.projectPath = "/home/me/shop";
  item.isIdle = true;
  const auto rows = ProcessesRows::ports(withPort(item));
  EXPECT_EQ(rows[0].subtitle, QStringLiteral("/home/me/shop"));
  EXPECT_EQ(rows[0].idleText, QStringLiteral("Idle"));
}

TEST(ProcessesRows, APortKnowsWhenItsHolderBegan) {
  EngineSnapshot snapshot = withPort(makePort(80, 9));
  EXPECT_EQ(ProcessesRows::ports(snapshot)[0].startedAt, std::nullopt);
  snapshot.appGroups = {makeGroup("app", {makeProcess(9, "node")})};
  EXPECT_EQ(ProcessesRows::ports(snapshot)[0].startedAt, Instant{9});
}

TEST(ProcessesRows, AnIdleServerIsWordedWithItsProjectAndHowLongItHasBeenQuiet) {
  EngineSnapshot snapshot;
  snapshot.idleServers = {makeIdleServer()};
  const auto rows = ProcessesRows::idleServers(snapshot);
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0].kind, Kind::idleServer);
  EXPECT_EQ(rows[0].title, QStringLiteral("shop — vite"));
  EXPECT_EQ(rows[0].subtitle, QStringLiteral("/home/me/shop"));
  EXPECT_THAT(rows[0].ports, ElementsAre(QStringLiteral(":5173")));
  EXPECT_EQ(rows[0].idleText, QStringLiteral("Idle 3h 1m"));
  EXPECT_EQ(rows[0].memoryText, QStringLiteral("90 MB"));
  EXPECT_EQ(rows[0].pid, 9);
  EXPECT_EQ(rows[0].startedAt, Instant{4});
}

TEST(ProcessesRows, OnePidInTwoProjectsIsTwoRows) {
  EngineSnapshot snapshot;
  snapshot.projects = {makeProject(1), makeProject(1)};
  snapshot.projects[1].path = "/other";
  const auto rows = ProcessesRows::projects(snapshot);
  EXPECT_NE(rows[1].identity, rows[3].identity);
}

TEST(ProcessesRows, AStartIsKnownFromGroupsProjectsAndIdleServers) {
  EngineSnapshot snapshot = withProject(makeProject(3));
  snapshot.appGroups = {makeGroup("app", {makeProcess(7, "a")})};
  snapshot.idleServers = {makeIdleServer()};
  EXPECT_EQ(ProcessesRows::startOf(snapshot, 7), Instant{7});
  EXPECT_EQ(ProcessesRows::startOf(snapshot, 3), Instant{3});
  EXPECT_EQ(ProcessesRows::startOf(snapshot, 9), Instant{4});
  EXPECT_EQ(ProcessesRows::startOf(snapshot, 8), std::nullopt);
}

TEST(ProcessesRows, NothingGivesNoRows) {
  EXPECT_THAT(ProcessesRows::projects({}), IsEmpty());
  EXPECT_THAT(ProcessesRows::containers({}), IsEmpty());
  EXPECT_THAT(ProcessesRows::ports({}), IsEmpty());
  EXPECT_THAT(ProcessesRows::idleServers({}), IsEmpty());
}

}  // namespace
}  // namespace korvantis
