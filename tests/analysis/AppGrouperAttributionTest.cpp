#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/AppGrouper.h"
#include "analysis/GrouperFixtures.h"

namespace korvantis {
namespace {

const std::string terminal = "/Applications/Terminal.app";
const std::string editor = "/Applications/Editor.app";

ProcessSample terminalProcess(std::int32_t pid) {
  return processAt(pid, terminal + "/Contents/MacOS/Terminal", "Terminal");
}

ProcessSample childOf(std::int32_t parent, std::int32_t pid, const std::string& name = "sh") {
  ProcessSample process = processAt(pid, "/bin/" + name, name);
  process.ppid = parent;
  return process;
}

/// A chain of `length` shells below pid 100, with the pids 101, 102, ...
std::vector<ProcessSample> chainOfShells(std::int32_t length) {
  std::vector<ProcessSample> processes{terminalProcess(100)};
  for (std::int32_t step = 1; step <= length; ++step) {
    processes.push_back(childOf(99 + step, 100 + step));
  }
  return processes;
}

std::vector<AppGroup> grouped(const std::vector<ProcessSample>& processes) {
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  return grouper.group(processes, 1000);
}

std::string groupIDOf(const std::vector<ProcessSample>& processes, std::int32_t pid) {
  return groupOfPID(grouped(processes), pid);
}

TEST(AppGrouper, NestedAppBelongsToTheGroupOfTheOuterBundle) {
  EXPECT_EQ(
      groupIDOf({processAt(7,
                           "/Applications/Outer.app/Contents/Helpers/Inner.app/Contents/MacOS/"
                           "Inner")},
                7),
      "/Applications/Outer.app");
}

TEST(AppGrouper, ShellAndToolBelowATerminalJoinItThroughTheirAncestors) {
  const std::vector<ProcessSample> processes{terminalProcess(100), childOf(100, 101, "zsh"),
                                             childOf(101, 102, "make")};
  const auto groups = grouped(processes);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].id, terminal);
  EXPECT_EQ(groups[0].processes.size(), 3U);
}

TEST(AppGrouper, ShellAndToolJoinThroughTheirResponsibleProcess) {
  ProcessSample tool = childOf(1, 102, "make");
  tool.responsiblePID = 100;
  EXPECT_EQ(groupIDOf({tool, terminalProcess(100)}, 102), terminal);
}

TEST(AppGrouper, OwnBundleGoesOverResponsibleAndAncestors) {
  ProcessSample own = processAt(102, editor + "/Contents/MacOS/Editor");
  own.ppid = 100;
  own.responsiblePID = 100;
  EXPECT_EQ(groupIDOf({own, terminalProcess(100)}, 102), editor);
}

TEST(AppGrouper, ResponsibleProcessGoesOverAncestors) {
  ProcessSample tool = childOf(100, 102, "make");
  tool.responsiblePID = 103;
  EXPECT_EQ(
      groupIDOf({tool, terminalProcess(100), processAt(103, editor + "/Contents/MacOS/E")}, 102),
      editor);
}

TEST(AppGrouper, ResponsibleProcessCountsOnlyWithItsOwnPath) {
  // 103 would join the editor through its parent, but a responsible process lends only its own
  // bundle; the terminal is found among the ancestors.
  ProcessSample tool = childOf(100, 102, "make");
  tool.responsiblePID = 103;
  const std::vector<ProcessSample> processes{tool, terminalProcess(100), childOf(104, 103),
                                             processAt(104, editor + "/Contents/MacOS/E")};
  EXPECT_EQ(groupIDOf(processes, 102), terminal);
  EXPECT_EQ(groupIDOf(processes, 103), editor);
}

TEST(AppGrouper, ResponsibleProcessThatIsNotInTheListIsPassedOver) {
  ProcessSample tool = childOf(100, 102, "make");
  tool.responsiblePID = 999;
  EXPECT_EQ(groupIDOf({tool, terminalProcess(100)}, 102), terminal);
}

TEST(AppGrouper, ResponsiblePIDOfZeroOrBelowIsPassedOver) {
  for (const std::int32_t pid : {0, -1}) {
    ProcessSample tool = childOf(1, 102, "make");
    tool.responsiblePID = pid;
    ProcessSample bundled = terminalProcess(pid);
    EXPECT_EQ(groupIDOf({tool, bundled}, 102), "daemon:make") << pid;
  }
}

TEST(AppGrouper, ResponsiblePIDOfOneIsLookedAt) {
  ProcessSample tool = childOf(0, 102, "make");
  tool.responsiblePID = 1;
  EXPECT_EQ(groupIDOf({tool, terminalProcess(1)}, 102), terminal);
}

TEST(AppGrouper, ApplicationWithinSixAncestorsIsFound) {
  EXPECT_EQ(groupIDOf(chainOfShells(6), 106), terminal);
}

TEST(AppGrouper, DescendantsBeyondSixAncestorsBecomeDaemonGroups) {
  const auto groups = grouped(chainOfShells(8));
  EXPECT_EQ(groupOfPID(groups, 106), terminal);
  EXPECT_EQ(groupOfPID(groups, 107), "daemon:sh");
  EXPECT_EQ(groupOfPID(groups, 108), "daemon:sh");
}

TEST(AppGrouper, NearestAncestorWithABundleDecides) {
  ProcessSample inner = processAt(101, editor + "/Contents/MacOS/E");
  inner.ppid = 100;
  EXPECT_EQ(groupIDOf({terminalProcess(100), inner, childOf(101, 102)}, 102), editor);
}

TEST(AppGrouper, AncestorsResponsibleProcessIsNotAsked) {
  ProcessSample shell = childOf(1, 101);
  shell.responsiblePID = 100;
  const std::vector<ProcessSample> processes{terminalProcess(100), shell, childOf(101, 102)};
  EXPECT_EQ(groupIDOf(processes, 101), terminal);
  EXPECT_EQ(groupIDOf(processes, 102), "daemon:sh");
}

TEST(AppGrouper, AncestorWithoutAPathIsPassedOver) {
  ProcessSample nameless = childOf(100, 101);
  nameless.executablePath.clear();
  EXPECT_EQ(groupIDOf({terminalProcess(100), nameless, childOf(101, 102)}, 102), terminal);
}

TEST(AppGrouper, AncestorThatIsNotInTheListEndsTheWalk) {
  EXPECT_EQ(groupIDOf({terminalProcess(100), childOf(101, 102)}, 102), "daemon:sh");
}

TEST(AppGrouper, PidsZeroAndOneAreNeverAncestors) {
  for (const std::int32_t pid : {0, 1, -5}) {
    EXPECT_EQ(groupIDOf({terminalProcess(pid), childOf(pid, 102)}, 102), "daemon:sh") << pid;
  }
  EXPECT_EQ(groupIDOf({terminalProcess(2), childOf(2, 102)}, 102), terminal);
}

TEST(AppGrouper, ProcessThatIsItsOwnParentEndsTheWalk) {
  EXPECT_EQ(groupIDOf({childOf(102, 102)}, 102), "daemon:sh");
  EXPECT_EQ(groupIDOf({childOf(101, 101), childOf(101, 102)}, 102), "daemon:sh");
}

TEST(AppGrouper, ParentsInACircleEndTheWalk) {
  const std::vector<ProcessSample> processes{childOf(102, 101), childOf(101, 102)};
  EXPECT_EQ(groupIDOf(processes, 101), "daemon:sh");
  EXPECT_EQ(groupIDOf(processes, 102), "daemon:sh");
}

TEST(AppGrouper, ChildOfPidOneResponsibleForItselfStandsAlone) {
  ProcessSample process = childOf(1, 102, "tool");
  process.responsiblePID = 102;
  EXPECT_EQ(groupIDOf({process, terminalProcess(1)}, 102), "daemon:tool");
}

TEST(AppGrouper, ProcessWithoutAPathJoinsThroughResponsibleOrAncestors) {
  ProcessSample responsible = childOf(1, 102);
  responsible.executablePath.clear();
  responsible.responsiblePID = 100;
  ProcessSample child = childOf(100, 103);
  child.executablePath.clear();
  const auto groups = grouped({terminalProcess(100), responsible, child});
  EXPECT_EQ(groupOfPID(groups, 102), terminal);
  EXPECT_EQ(groupOfPID(groups, 103), terminal);
}

TEST(AppGrouper, LaterRecordOfAPidAnswersForItAndBothStandInGroups) {
  const std::vector<ProcessSample> processes{
      terminalProcess(100), processAt(100, editor + "/Contents/MacOS/E"), childOf(100, 102)};
  const auto groups = grouped(processes);
  EXPECT_EQ(groupOfPID(groups, 102), editor);
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(pidsOf(*groupWithID(groups, terminal)), std::vector<std::int32_t>{100});
  EXPECT_EQ(pidsOf(*groupWithID(groups, editor)), (std::vector<std::int32_t>{100, 102}));
}

TEST(AppGrouper, ProcessesWithoutABundleGroupByNameWhateverTheirPath) {
  const auto groups = grouped({processAt(7, "/usr/bin/node", "node"),
                               processAt(8, "/opt/node", "node"), processAt(9, "/opt/vim", "vim")});
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].id, "daemon:node");
  EXPECT_EQ(groups[0].name, "node");
  EXPECT_EQ(groups[0].bundlePath, std::nullopt);
  EXPECT_EQ(groups[0].bundleIdentifier, std::nullopt);
  EXPECT_EQ(groups[0].processes.size(), 2U);
}

TEST(AppGrouper, ProcessWithNothingKnownStillStandsInAGroup) {
  ProcessSample bare;
  bare.pid = 7;
  const auto groups = grouped({bare});
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].id, "daemon:");
  EXPECT_EQ(groups[0].name, "");
  EXPECT_EQ(groups[0].kind, AppGroupKind::other);
}

AppGroupKind loneKind(const std::string& path, std::uint32_t uid) {
  ProcessSample process = processAt(7, path);
  process.uid = uid;
  return grouped({process})[0].kind;
}

TEST(AppGrouper, UserZeroIsSystemWhereverItsProgramLies) {
  EXPECT_EQ(loneKind("/usr/local/bin/tool", 0), AppGroupKind::system);
  EXPECT_EQ(loneKind("", 0), AppGroupKind::system);
}

TEST(AppGrouper, SystemFoldersAreSystemForAnyUser) {
  for (const std::string folder : {"/System/", "/usr/libexec/", "/sbin/", "/usr/sbin/"}) {
    EXPECT_EQ(loneKind(folder + "tool", 501), AppGroupKind::system) << folder;
    EXPECT_EQ(loneKind("/opt" + folder + "tool", 501), AppGroupKind::other) << folder;
  }
}

TEST(AppGrouper, OtherFoldersAreOtherForAUser) {
  for (const std::string path : {"/usr/local/bin/tool", "/bin/tool", "/usr/bin/tool", "",
                                 "/Library/Apple/tool", "/Systems/tool", "/usr/libexec"}) {
    EXPECT_EQ(loneKind(path, 501), AppGroupKind::other) << path;
  }
}

TEST(AppGrouper, DaemonBucketKeepsTheKindOfTheOneThatCameFirst) {
  ProcessSample ofRoot = processAt(7, "/usr/local/bin/tool");
  ofRoot.uid = 0;
  const ProcessSample ofUser = processAt(8, "/usr/local/bin/tool");
  const auto rootFirst = grouped({ofRoot, ofUser});
  ASSERT_EQ(rootFirst.size(), 1U);
  EXPECT_EQ(rootFirst[0].kind, AppGroupKind::system);
  const auto userFirst = grouped({ofUser, ofRoot});
  ASSERT_EQ(userFirst.size(), 1U);
  EXPECT_EQ(userFirst[0].kind, AppGroupKind::other);
}

TEST(AppGrouper, GroupWithABundleIsNeverOther) {
  const auto groups = grouped({processAt(7, "/opt/x/Foo.app/Contents/MacOS/Foo")});
  EXPECT_EQ(groups[0].kind, AppGroupKind::app);
  EXPECT_EQ(groups[0].id, "/opt/x/Foo.app");
  EXPECT_EQ(groups[0].bundlePath, "/opt/x/Foo.app");
}

}  // namespace
}  // namespace korvantis
