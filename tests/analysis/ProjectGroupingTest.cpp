#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "analysis/ProjectLocator.h"
#include "support/ScriptedFiles.h"

namespace korvantis {
namespace {

using test::ScriptedFiles;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

ProcessSample processIn(std::int32_t pid, const std::optional<std::string>& folder,
                        std::uint64_t memory = 0) {
  ProcessSample process;
  process.pid = pid;
  process.name = "tool";
  process.workingDirectory = folder;
  process.memoryBytes = memory;
  return process;
}

ContainerSample containerIn(const std::string& name, const std::optional<std::string>& folder,
                            std::uint64_t memory = 0) {
  ContainerSample container;
  container.name = name;
  container.workingDirectory = folder;
  container.memoryBytes = memory;
  return container;
}

std::vector<std::string> pathsOf(const std::vector<DevProject>& projects) {
  std::vector<std::string> paths;
  for (const DevProject& project : projects) paths.push_back(project.path);
  return paths;
}

std::vector<std::int32_t> pidsOf(const DevProject& project) {
  std::vector<std::int32_t> pids;
  for (const ProcessSample& process : project.processes) pids.push_back(process.pid);
  return pids;
}

/// A machine with the projects "/code/shop", "/code/shop/api" and "/code/blog".
class ProjectGrouping : public testing::Test {
 protected:
  ProjectGrouping() {
    files.existing = {"/code/shop/.git", "/code/shop/api/package.json", "/code/blog/Gemfile"};
  }

  std::vector<DevProject> group(const std::vector<ProcessSample>& list,
                                const std::vector<ContainerSample>& containers = {},
                                std::uint64_t totalMemory = 1000) {
    processes = list;
    return locator.groupProjects(processes, containers, totalMemory);
  }

  ScriptedFiles files;
  ProjectLocator locator{files.calls()};
  /// What the last grouping left in the caller's list.
  std::vector<ProcessSample> processes;
};

TEST_F(ProjectGrouping, NothingToGroupGivesNoProjects) {
  EXPECT_THAT(group({}), IsEmpty());
}

TEST_F(ProjectGrouping, WorkingDirectoryThatIsAbsentEmptyTopOrHomeGivesNoProject) {
  const std::vector<ProcessSample> before{processIn(1, std::nullopt), processIn(2, ""),
                                          processIn(3, "/"), processIn(4, "/home/ada")};
  EXPECT_THAT(group(before), IsEmpty());
  EXPECT_EQ(processes, before);
}

TEST_F(ProjectGrouping, ProcessesInSubfoldersOfOneMarkedFolderMeetInOneProject) {
  const auto projects = group({processIn(1, "/code/shop/src"), processIn(2, "/code/shop/docs/en")});
  ASSERT_THAT(projects, SizeIs(1));
  EXPECT_EQ(projects[0].name, "shop");
  EXPECT_EQ(projects[0].path, "/code/shop");
  EXPECT_THAT(pidsOf(projects[0]), ElementsAre(1, 2));
}

TEST_F(ProjectGrouping, ProjectInsideAnotherIsAProjectOfItsOwn) {
  const auto projects = group({processIn(1, "/code/shop", 2), processIn(2, "/code/shop/api/x", 1)});
  EXPECT_THAT(pathsOf(projects), ElementsAre("/code/shop", "/code/shop/api"));
}

TEST_F(ProjectGrouping, RootIsWrittenIntoTheCallersListAndNothingElseChanges) {
  ProcessSample in = processIn(1, "/code/shop/src", 7);
  in.listeningPorts = {3000, 50000};
  in.helperRole = HelperRole::gpu;
  const ProcessSample out = processIn(2, "/opt");
  const auto projects = group({in, out});
  ProcessSample expected = in;
  expected.projectPath = "/code/shop";
  EXPECT_THAT(processes, ElementsAre(expected, out));
  EXPECT_THAT(projects[0].processes, ElementsAre(expected));
}

TEST_F(ProjectGrouping, ProcessWithoutARootIsLeftAsItIs) {
  ProcessSample process = processIn(1, "/opt");
  process.projectPath = "/somewhere";
  EXPECT_THAT(group({process}), IsEmpty());
  EXPECT_THAT(processes, ElementsAre(process));
}

TEST_F(ProjectGrouping, EveryProcessInTheFolderWorksOnTheProjectWhoeverItIs) {
  ProcessSample shell = processIn(1, "/code/shop");
  shell.name = "zsh";
  ProcessSample system = processIn(2, "/code/shop");
  system.uid = 0;
  system.executablePath = "/System/Library/x";
  EXPECT_THAT(pidsOf(group({shell, system})[0]), ElementsAre(1, 2));
}

TEST_F(ProjectGrouping, FiguresAreTheSumsOfProcessesAndContainers) {
  ProcessSample process = processIn(1, "/code/shop", 100);
  process.cpuPercent = 10;
  process.gpuPercent = 20;
  process.networkInBytesPerSec = 1;
  process.networkOutBytesPerSec = 2;
  process.diskReadBytesPerSec = 3;
  process.diskWriteBytesPerSec = 4;
  process.energyWatts = 5;
  ProcessSample second = process;
  second.pid = 2;
  ContainerSample container = containerIn("db", "/code/shop", 50);
  container.cpuPercent = 100;
  container.networkRxBytesPerSec = 1000;
  container.networkTxBytesPerSec = 2000;
  container.blockReadBytesPerSec = 3000;
  container.blockWriteBytesPerSec = 4000;
  const DevProject project = group({process, second}, {container, container})[0];
  EXPECT_EQ(project.cpuPercent, 220);
  EXPECT_EQ(project.gpuPercent, 40);
  EXPECT_EQ(project.memoryBytes, 300U);
  EXPECT_EQ(project.memoryPercent, 30);
  EXPECT_EQ(project.networkInBytesPerSec, 2002);
  EXPECT_EQ(project.networkOutBytesPerSec, 4004);
  EXPECT_EQ(project.diskReadBytesPerSec, 6006);
  EXPECT_EQ(project.diskWriteBytesPerSec, 8008);
  EXPECT_EQ(project.energyWatts, 10);
}

TEST_F(ProjectGrouping, ProjectOfContainersAloneHasNoProcessesNoGPUAndNoEnergy) {
  ContainerSample container = containerIn("db", "/code/blog/db", 10);
  container.cpuPercent = 3;
  const DevProject project = group({}, {container})[0];
  EXPECT_EQ(project.path, "/code/blog");
  EXPECT_THAT(project.processes, IsEmpty());
  EXPECT_EQ(project.gpuPercent, 0);
  EXPECT_EQ(project.energyWatts, 0);
  EXPECT_EQ(project.cpuPercent, 3);
  EXPECT_THAT(project.containers, ElementsAre(container));
}

TEST_F(ProjectGrouping, ContainerInTheHomeFolderIsAProjectAlthoughAProcessThereIsNone) {
  const auto projects = group({processIn(1, "/home/ada")}, {containerIn("db", "/home/ada")});
  ASSERT_THAT(projects, SizeIs(1));
  EXPECT_EQ(projects[0].name, "ada");
  EXPECT_EQ(projects[0].path, "/home/ada");
  EXPECT_THAT(projects[0].processes, IsEmpty());
}

TEST_F(ProjectGrouping, ContainerWithoutAMarkerHasItsWorkingDirectoryAsItStandsForAProject) {
  const auto projects = group({}, {containerIn("a", "/"), containerIn("b", "/tmp"),
                                   containerIn("c", "/srv/app/"), containerIn("d", "relative/app"),
                                   containerIn("e", "/Library/x"), containerIn("f", "C:\\app")});
  EXPECT_THAT(pathsOf(projects),
              ElementsAre("/", "/tmp", "/srv/app/", "relative/app", "/Library/x", "C:\\app"));
  std::vector<std::string> names;
  for (const DevProject& project : projects) names.push_back(project.name);
  EXPECT_THAT(names, ElementsAre("/", "tmp", "app", "app", "x", "C:\\app"));
}

TEST_F(ProjectGrouping, ContainersOfOneFolderMeetWhetherOrNotAMarkerLiesThere) {
  const auto projects = group({}, {containerIn("a", "/srv/app"), containerIn("b", "/code/blog/x"),
                                   containerIn("c", "/srv/app"), containerIn("d", "/code/blog")});
  ASSERT_THAT(pathsOf(projects), ElementsAre("/srv/app", "/code/blog"));
  EXPECT_EQ(projects[0].containers[1].name, "c");
  EXPECT_EQ(projects[1].containers[1].name, "d");
}

TEST_F(ProjectGrouping, ContainerWithAnAbsentOrEmptyWorkingDirectoryJoinsNothing) {
  EXPECT_THAT(group({}, {containerIn("a", std::nullopt), containerIn("b", "")}), IsEmpty());
}

TEST_F(ProjectGrouping, NameIsTheFoldersNameNotTheComposeProjects) {
  ContainerSample container = containerIn("db", "/code/shop");
  container.composeProject = "storefront";
  EXPECT_EQ(group({}, {container})[0].name, "shop");
}

TEST_F(ProjectGrouping, PortHeldTwiceStandsOnceAndPortsAscend) {
  ProcessSample first = processIn(1, "/code/shop");
  first.listeningPorts = {3000, 8080};
  ProcessSample second = processIn(2, "/code/shop");
  second.listeningPorts = {3000, 9000};
  ContainerSample container = containerIn("db", "/code/shop");
  container.ports = {8080, 5432, 80};
  EXPECT_THAT(group({first, second}, {container})[0].ports,
              ElementsAre(80, 3000, 5432, 8080, 9000));
}

TEST_F(ProjectGrouping, EphemeralPortOfAProcessIsLeftOutAndThatOfAContainerIsNot) {
  ProcessSample process = processIn(1, "/code/shop");
  process.listeningPorts = {49151, 49152, 60000};
  ContainerSample container = containerIn("db", "/code/shop");
  container.ports = {55000};
  EXPECT_THAT(group({process}, {container})[0].ports, ElementsAre(49151, 55000));
}

TEST_F(ProjectGrouping, TotalOfZeroDividesByOneAndThePercentageIsHeldTo100) {
  EXPECT_EQ(group({processIn(1, "/code/shop", 1)}, {}, 0)[0].memoryPercent, 100);
  EXPECT_EQ(group({processIn(1, "/code/shop", 500)}, {}, 0)[0].memoryPercent, 100);
  EXPECT_EQ(group({processIn(1, "/code/shop", 0)}, {}, 0)[0].memoryPercent, 0);
  EXPECT_EQ(group({processIn(1, "/code/shop", 2000)}, {}, 1000)[0].memoryPercent, 100);
  EXPECT_EQ(group({processIn(1, "/code/shop", 995)}, {}, 1000)[0].memoryPercent, 99.5);
}

TEST_F(ProjectGrouping, ProcessesStandByMemoryLargestFirstAndEqualsAsTheyCame) {
  const auto projects = group({processIn(9, "/code/shop", 10), processIn(3, "/code/shop", 20),
                               processIn(5, "/code/shop", 10), processIn(1, "/code/shop", 20)});
  EXPECT_THAT(pidsOf(projects[0]), ElementsAre(3, 1, 9, 5));
}

TEST_F(ProjectGrouping, ContainersStandInTheOrderOfTheList) {
  const auto projects =
      group({}, {containerIn("b", "/code/shop", 1), containerIn("a", "/code/shop/src", 9),
                 containerIn("c", "/code/shop", 5)});
  EXPECT_EQ(projects[0].containers[0].name, "b");
  EXPECT_EQ(projects[0].containers[1].name, "a");
  EXPECT_EQ(projects[0].containers[2].name, "c");
}

TEST_F(ProjectGrouping, ProjectsStandByMemoryOfProcessesAndContainersLargestFirst) {
  const auto projects = group({processIn(1, "/code/shop", 30), processIn(2, "/code/blog", 20)},
                              {containerIn("db", "/code/blog", 20), containerIn("x", "/srv", 45)});
  EXPECT_THAT(pathsOf(projects), ElementsAre("/srv", "/code/blog", "/code/shop"));
}

TEST_F(ProjectGrouping, EqualProjectsStandInTheOrderInWhichTheyCame) {
  const std::vector<ContainerSample> containers{containerIn("x", "/z"), containerIn("y", "/a")};
  const std::vector<ProcessSample> list{processIn(1, "/code/shop"), processIn(2, "/code/blog")};
  EXPECT_THAT(pathsOf(group(list, containers)),
              ElementsAre("/code/shop", "/code/blog", "/z", "/a"));
}

TEST_F(ProjectGrouping, SteadyTickAsksForNoFile) {
  const std::vector<ProcessSample> list{processIn(1, "/code/shop/src"), processIn(2, "/opt/x"),
                                        processIn(3, "/home/ada"), processIn(4, std::nullopt)};
  const std::vector<ContainerSample> containers{containerIn("a", "/code/blog"),
                                                containerIn("b", "/srv/app")};
  const auto first = group(list, containers);
  EXPECT_FALSE(files.takeQuestions().empty());
  for (int tick = 0; tick < 3; ++tick) EXPECT_EQ(group(list, containers), first);
  EXPECT_THAT(files.questions(), IsEmpty());
}

}  // namespace
}  // namespace korvantis
