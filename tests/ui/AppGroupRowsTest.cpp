#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/AppGroupRows.h"

namespace korvantis {
namespace {

using Kind = ProcessesRowKind;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

std::vector<ProcessesRow> cardOf(const AppGroup& group, bool isExpanded = false,
                                 const QuitSafetyResult& safety = {}) {
  std::vector<ProcessesRow> rows;
  AppGroupRows::append(rows, group, safety, isExpanded);
  return rows;
}

QuitSafetyResult safetyOf(QuitSafetyVerdictKind verdict, const std::string& reason) {
  QuitSafetyResult safety;
  safety.verdict = verdict;
  safety.reason = reason;
  return safety;
}

ProcessesRow headOf(const AppGroup& group) {
  return cardOf(group)[0];
}

AppGroup makeHerd(int count) {
  std::vector<ProcessSample> processes;
  for (int pid = 1; pid <= count; ++pid) processes.push_back(makeProcess(pid, "worker"));
  return makeGroup("herd", processes);
}

std::vector<Kind> kindsOf(const std::vector<ProcessesRow>& rows) {
  std::vector<Kind> kinds;
  for (const ProcessesRow& row : rows) kinds.push_back(row.kind);
  return kinds;
}

TEST(AppGroupRows, AnApplicationIsOneRowWithItsNameAndWhereItLies) {
  AppGroup group = makeGroup("Editor");
  group.bundlePath = "/Applications/Editor.app";
  const auto rows = cardOf(group);
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0].kind, Kind::appGroup);
  EXPECT_EQ(rows[0].title, QStringLiteral("Editor"));
  EXPECT_EQ(rows[0].groupID, QStringLiteral("daemon:Editor"));
  EXPECT_EQ(rows[0].bundlePath, QStringLiteral("/Applications/Editor.app"));
  EXPECT_FALSE(rows[0].isExpanded);
  EXPECT_TRUE(rows[0].isFirstOfCard);
  EXPECT_TRUE(rows[0].isLastOfCard);
  group.bundlePath.reset();
  EXPECT_EQ(headOf(group).bundlePath, QString());
}

TEST(AppGroupRows, TheHelpersChipOfAGroupWith7ProcessesSays7AndOneProcessShowsNoChip) {
  EXPECT_EQ(headOf(makeHerd(7)).countText, QStringLiteral("7 helpers"));
  EXPECT_EQ(headOf(makeHerd(2)).countText, QStringLiteral("2 helpers"));
  EXPECT_EQ(headOf(makeHerd(1)).countText, QString());
  EXPECT_EQ(headOf(makeHerd(0)).countText, QString());
}

TEST(AppGroupRows, TheVerdictAndItsReasonAreTheOnesGiven) {
  const auto row =
      cardOf(makeGroup("Editor"), false, safetyOf(QuitSafetyVerdictKind::doNot, "Because."))[0];
  EXPECT_EQ(row.verdict, QStringLiteral("do_not"));
  EXPECT_EQ(row.subtitle, QStringLiteral("Because."));
}

TEST(AppGroupRows, TheFourFiguresAreWordedByTheirFormats) {
  AppGroup group = makeGroup("Editor");
  group.cpuPercent = 12.34;
  group.memoryBytes = 3ULL << 30;
  group.energyWatts = 1.25;
  group.networkInBytesPerSec = 1024;
  group.networkOutBytesPerSec = 2048;
  const ProcessesRow row = headOf(group);
  EXPECT_EQ(row.cpuText, QStringLiteral("12.3%"));
  EXPECT_EQ(row.memoryText, QStringLiteral("3.0 GB"));
  EXPECT_EQ(row.energyText, QStringLiteral("1.2 W"));
  EXPECT_EQ(row.networkText, QStringLiteral("3 KB/s"));
}

TEST(AppGroupRows, CPUAbove50IsHotAndExactly50IsNot) {
  AppGroup group = makeGroup("busy");
  group.cpuPercent = 50;
  EXPECT_FALSE(headOf(group).isHot);
  group.cpuPercent = 50.1;
  EXPECT_TRUE(headOf(group).isHot);
}

TEST(AppGroupRows, AnOpenedApplicationShowsItsBreakdownAndItsTree) {
  AppGroup group = makeHerd(2);
  group.helperShares = {{.role = HelperRole::main, .processCount = 1},
                        {.role = HelperRole::renderer, .processCount = 1}};
  const auto rows = cardOf(group, true);
  EXPECT_THAT(kindsOf(rows),
              ElementsAre(Kind::appGroup, Kind::caption, Kind::helperShare, Kind::helperShare,
                          Kind::caption, Kind::process, Kind::process));
  EXPECT_TRUE(rows[0].isExpanded);
  EXPECT_EQ(rows[1].title, QStringLiteral("HELPER BREAKDOWN BY ROLE"));
  EXPECT_EQ(rows[4].title, QStringLiteral("PROCESS TREE (2)"));
}

TEST(AppGroupRows, WithoutSharesThereIsNoBreakdown) {
  const auto rows = cardOf(makeHerd(1), true);
  EXPECT_THAT(kindsOf(rows), ElementsAre(Kind::appGroup, Kind::caption, Kind::process));
  EXPECT_EQ(rows[1].title, QStringLiteral("PROCESS TREE (1)"));
}

TEST(AppGroupRows, TheRowsOfACardKnowItsFirstAndItsLast) {
  const auto rows = cardOf(makeHerd(2), true);
  ASSERT_THAT(rows, SizeIs(4));
  EXPECT_TRUE(rows[0].isFirstOfCard && !rows[0].isLastOfCard);
  EXPECT_TRUE(!rows[1].isFirstOfCard && !rows[1].isLastOfCard);
  EXPECT_TRUE(!rows[3].isFirstOfCard && rows[3].isLastOfCard);
}

TEST(AppGroupRows, ARoleIsWordedWithItsCountMemoryAndCPU) {
  AppGroup group = makeHerd(1);
  group.helperShares = {{.role = HelperRole::extensionHost,
                         .processCount = 3,
                         .cpuPercent = 4.56,
                         .memoryBytes = 12 << 20}};
  const ProcessesRow row = cardOf(group, true)[2];
  EXPECT_EQ(row.title, QStringLiteral("Extensions"));
  EXPECT_EQ(row.countText, QStringLiteral("3p"));
  EXPECT_EQ(row.memoryText, QStringLiteral("12 MB"));
  EXPECT_EQ(row.cpuText, QStringLiteral("4.6% CPU"));
}

TEST(AppGroupRows, AGroupWith20ProcessesSays20InItsCaptionAndShows15Rows) {
  const auto rows = cardOf(makeHerd(20), true);
  EXPECT_EQ(rows[1].title, QStringLiteral("PROCESS TREE (20)"));
  ASSERT_THAT(rows, SizeIs(2 + 15));
  EXPECT_EQ(rows[2].pidText, QStringLiteral("PID 1"));
  EXPECT_EQ(rows[16].pidText, QStringLiteral("PID 15"));
  EXPECT_EQ(rows[0].countText, QStringLiteral("20 helpers"));
}

TEST(AppGroupRows, AProcessIsWordedWithItsPidNameRoleServicePortsAndFigures) {
  ProcessSample process = makeProcess(77, "gpu-process");
  process.helperRole = HelperRole::gpu;
  process.listeningPorts = {3000, 3001, 50000};
  process.cpuPercent = 1;
  process.memoryBytes = 5 << 20;
  const ProcessesRow row = cardOf(makeGroup("Browser", {process}), true)[2];
  EXPECT_EQ(row.pidText, QStringLiteral("PID 77"));
  EXPECT_EQ(row.pid, 77);
  EXPECT_EQ(row.startedAt, Instant{77});
  EXPECT_EQ(row.title, QStringLiteral("gpu-process"));
  EXPECT_EQ(row.roleText, QStringLiteral("Graphics"));
  EXPECT_THAT(row.ports, ElementsAre(QStringLiteral(":3000"), QStringLiteral(":3001")));
  EXPECT_EQ(row.cpuText, QStringLiteral("1.0%"));
  EXPECT_EQ(row.memoryText, QStringLiteral("5 MB"));
  EXPECT_EQ(row.groupID, QStringLiteral("daemon:Browser"));
}

TEST(AppGroupRows, ARecycledPidIsAnotherRow) {
  ProcessSample later = makeProcess(7, "same");
  later.startedAt = Instant{8};
  EXPECT_NE(cardOf(makeGroup("a", {makeProcess(7, "same")}), true)[2].identity,
            cardOf(makeGroup("a", {later}), true)[2].identity);
}

TEST(AppGroupRows, EveryRowOfACardHasAnIdentityOfItsOwn) {
  AppGroup group = makeHerd(3);
  group.helperShares = {{.role = HelperRole::main}, {.role = HelperRole::other}};
  std::set<std::string> identities;
  const auto rows = cardOf(group, true);
  for (const ProcessesRow& row : rows) identities.insert(row.identity);
  EXPECT_THAT(identities, SizeIs(rows.size()));
  EXPECT_THAT(identities, Each(testing::Not(testing::IsEmpty())));
}

TEST(AppGroupRows, ARowIsSaidInOneSentence) {
  AppGroup group = makeHerd(2);
  group.energyWatts = 0.5;
  EXPECT_EQ(cardOf(group, false, safetyOf(QuitSafetyVerdictKind::safe, "Idle."))[0].description(),
            QStringLiteral("herd, 2 helpers, Safe to quit, CPU 0.0%, memory 0 B, energy 0.5 W, "
                           "network 0 B/s, Idle."));
  group.processes[0].listeningPorts = {80, 443};
  EXPECT_EQ(cardOf(group, true)[2].description(),
            QStringLiteral("worker, PID 1, Main app, ports :80 :443, CPU 0.0%, memory 0 B"));
}

}  // namespace
}  // namespace korvantis
