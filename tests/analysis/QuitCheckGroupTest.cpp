// Whether an application may be stopped.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "analysis/QuitCheck.h"
#include "analysis/QuitFixtures.h"
#include "core/EnumerationTable.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Verdict = QuitSafetyVerdictKind;

void expectDoNot(const AppGroup& group) {
  const auto result = QuitCheck::evaluate(group, {});
  EXPECT_EQ(result.verdict, Verdict::doNot) << group.name;
  EXPECT_EQ(result.reason, desktopReason);
}

void expectAskFirst(const QuitSafetyResult& result, const std::string& reason) {
  EXPECT_EQ(result.verdict, Verdict::askFirst);
  EXPECT_EQ(result.reason, reason);
}

TEST(QuitCheckNames, AreExactlyThese25) {
  const std::set<std::string_view> expected{
      "kernel_task",    "launchd",       "WindowServer",   "loginwindow", "Finder",     "Dock",
      "SystemUIServer", "ControlCenter", "UserEventAgent", "coreaudiod",  "bluetoothd", "mds",
      "mds_stores",     "notifyd",       "securityd",      "trustd",      "powerd",     "configd",
      "fseventsd",      "runningboardd", "distnoted",      "cfprefsd",    "Ostrel",     "Korvantis",
      "korvantis"};
  const std::set<std::string_view> names(QuitCheck::criticalSystemNames.begin(),
                                         QuitCheck::criticalSystemNames.end());
  EXPECT_EQ(names, expected);
  EXPECT_EQ(QuitCheck::criticalSystemNames.size(), 25U);
}

TEST(QuitCheckGroup, AnIdleAppIsSafe) {
  const auto result = QuitCheck::evaluate(idleApp(), {});
  EXPECT_EQ(result.verdict, Verdict::safe);
  EXPECT_EQ(result.reason, idleReason);
  EXPECT_EQ(result.freedMemoryBytes, std::uint64_t{512} << 20);
  EXPECT_THAT(result.freedPorts, IsEmpty());
}

TEST(QuitCheckGroup, AGroupOfTheSystemIsNotToBeStopped) {
  AppGroup group = idleApp();
  group.kind = AppGroupKind::system;
  expectDoNot(group);
}

TEST(QuitCheckGroup, EveryCriticalNameIsNotToBeStopped) {
  for (const std::string_view name : QuitCheck::criticalSystemNames) {
    for (const AppGroupKind kind : {AppGroupKind::app, AppGroupKind::other}) {
      AppGroup group = idleApp(std::string(name));
      group.kind = kind;
      expectDoNot(group);
    }
  }
}

TEST(QuitCheckGroup, CriticalNamesAreComparedExactlyAndWithCase) {
  for (const char* name : {"finder", "DOCK", "Dock ", "Doc", "KORVANTIS", "Launchd", ""}) {
    EXPECT_EQ(QuitCheck::evaluate(idleApp(name), {}).verdict, Verdict::safe) << name;
  }
}

TEST(QuitCheckGroup, AnAppNamedFinderIsDoNotAlthoughItsKindIsApp) {
  AppGroup finder = idleApp("Finder");
  expectDoNot(finder);
  finder.bundlePath = "/System/Library/CoreServices/Finder.app";
  expectDoNot(finder);
  finder.bundlePath.reset();
  expectDoNot(finder);
}

TEST(QuitCheckGroup, ABundleInCoreServicesIsDoNotAlthoughItsKindIsApp) {
  AppGroup group = idleApp("Screen Sharing");
  group.bundlePath = "/System/Library/CoreServices/Screen Sharing.app";
  expectDoNot(group);
}

TEST(QuitCheckGroup, ABundleElsewhereUnderSystemIsNotProtectedByItsPath) {
  for (const char* path : {"/System/Applications/Mail.app", "/System/Library/CoreServices",
                           "/Users/ada/System/Library/CoreServices/X.app"}) {
    AppGroup group = idleApp("Mail");
    group.bundlePath = path;
    EXPECT_EQ(QuitCheck::evaluate(group, {}).verdict, Verdict::safe) << path;
  }
}

TEST(QuitCheckGroup, GroupsOfKindOtherGoThroughTheSameRules) {
  AppGroup group = idleApp();
  group.kind = AppGroupKind::other;
  group.bundlePath.reset();
  EXPECT_EQ(QuitCheck::evaluate(group, {}).reason, idleReason);
  group.cpuPercent = 30;
  EXPECT_EQ(QuitCheck::evaluate(group, {}).verdict, Verdict::askFirst);
}

TEST(QuitCheckGroup, WritingAbove100000BytesASecondAsksFirst) {
  AppGroup group = idleApp();
  group.diskWriteBytesPerSec = 100000.1;
  expectAskFirst(QuitCheck::evaluate(group, {}), "Actively writing 98 KB/s to disk.");
}

TEST(QuitCheckGroup, ExactlyTheThresholdsWithoutPortsOrBlockersAreSafe) {
  AppGroup group = idleApp();
  group.diskWriteBytesPerSec = 100000.0;
  group.cpuPercent = 25.0;
  EXPECT_EQ(QuitCheck::evaluate(group, {}).verdict, Verdict::safe);
}

TEST(QuitCheckGroup, FiveServicePortsAreFourInTheReasonAndFiveFreed) {
  AppGroup group = idleApp();
  group.processes = {idleProcess(700, {8080, 9000}), idleProcess(701, {3000, 8080}),
                     idleProcess(702, {80, 5432})};
  const auto result = QuitCheck::evaluate(group, {});
  expectAskFirst(result,
                 "Listening on local port(s) 80, 3000, 5432, 8080. Quitting will close active "
                 "servers.");
  EXPECT_THAT(result.freedPorts, ElementsAre(80, 3000, 5432, 8080, 9000));
}

TEST(QuitCheckGroup, OnePortStandsAlone) {
  AppGroup group = idleApp();
  group.processes = {idleProcess(700, {3000})};
  expectAskFirst(QuitCheck::evaluate(group, {}),
                 "Listening on local port(s) 3000. Quitting will close active servers.");
}

TEST(QuitCheckGroup, APortFrom49152OnNeitherCountsNorIsFreed) {
  AppGroup group = idleApp();
  group.processes = {idleProcess(700, {49152, 60000})};
  auto result = QuitCheck::evaluate(group, {});
  EXPECT_EQ(result.verdict, Verdict::safe);
  EXPECT_THAT(result.freedPorts, IsEmpty());
  group.processes = {idleProcess(700, {49151, 49152})};
  result = QuitCheck::evaluate(group, {});
  EXPECT_EQ(result.verdict, Verdict::askFirst);
  EXPECT_THAT(result.freedPorts, ElementsAre(49151));
}

TEST(QuitCheckGroup, ASleepBlockerOfAnyOfItsProcessesAsksFirst) {
  AppGroup group = idleApp();
  group.processes = {idleProcess(700), idleProcess(701)};
  expectAskFirst(QuitCheck::evaluate(group, {blockerOf(12), blockerOf(701)}),
                 "Holding an active power/media assertion preventing idle sleep.");
}

TEST(QuitCheckGroup, SleepBlockersOfOthersDoNotCount) {
  EXPECT_EQ(QuitCheck::evaluate(idleApp(), {blockerOf(12)}).verdict, Verdict::safe);
}

TEST(QuitCheckGroup, CPU32Point6ReadsAs33Percent) {
  AppGroup group = idleApp();
  group.cpuPercent = 32.6;
  expectAskFirst(QuitCheck::evaluate(group, {}),
                 "Currently busy (33% CPU). Save unsaved work before quitting.");
}

TEST(QuitCheckGroup, JustAbove25PercentOfCPUAsksFirst) {
  AppGroup group = idleApp();
  group.cpuPercent = 25.1;
  expectAskFirst(QuitCheck::evaluate(group, {}),
                 "Currently busy (25% CPU). Save unsaved work before quitting.");
}

TEST(QuitCheckGroup, TheFirstRuleThatHoldsGivesTheReason) {
  AppGroup group = idleApp();
  group.cpuPercent = 30;
  EXPECT_THAT(QuitCheck::evaluate(group, {}).reason, testing::StartsWith("Currently busy"));
  const std::vector<SleepBlocker> blockers{blockerOf(700)};
  EXPECT_THAT(QuitCheck::evaluate(group, blockers).reason, testing::StartsWith("Holding"))
      << "a blocker before 30% CPU";
  group.processes[0].listeningPorts = {3000};
  EXPECT_THAT(QuitCheck::evaluate(group, blockers).reason, testing::StartsWith("Listening"))
      << "a port before a blocker";
  group.diskWriteBytesPerSec = 200000;
  EXPECT_EQ(QuitCheck::evaluate(group, blockers).reason, "Actively writing 195 KB/s to disk.")
      << "disk writes before a port";
  group.kind = AppGroupKind::system;
  EXPECT_EQ(QuitCheck::evaluate(group, blockers).reason, desktopReason)
      << "the system before everything";
}

TEST(QuitCheckGroup, MemoryAndPortsAreFreedWhateverTheVerdict) {
  AppGroup group = idleApp("Dock");
  group.processes = {idleProcess(700, {3000})};
  const auto result = QuitCheck::evaluate(group, {});
  EXPECT_EQ(result.verdict, Verdict::doNot);
  EXPECT_EQ(result.freedMemoryBytes, group.memoryBytes);
  EXPECT_THAT(result.freedPorts, ElementsAre(3000));
}

TEST(QuitCheckGroup, TheFiguresAreTheGroupsAndNotThoseOfItsProcesses) {
  AppGroup group = idleApp();
  group.processes[0].diskWriteBytesPerSec = 1e9;
  group.processes[0].cpuPercent = 400;
  group.processes[0].uid = 0;
  group.processes[0].name = "Dock";
  EXPECT_EQ(QuitCheck::evaluate(group, {}).verdict, Verdict::safe);
}

}  // namespace
}  // namespace korvantis
