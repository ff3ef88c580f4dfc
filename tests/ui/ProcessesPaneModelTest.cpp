#include <QCoreApplication>
#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/SampleMachine.h"
#include "ui/ScriptedStore.h"
#include "ui/panes/ProcessesPaneModel.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

AppGroup makeApp(const std::string& name, std::vector<ProcessSample> processes = {}) {
  AppGroup group = makeGroup(name, std::move(processes));
  group.kind = AppGroupKind::app;
  return group;
}

AppGroup withMemory(AppGroup group, std::uint64_t bytes) {
  group.memoryBytes = bytes;
  return group;
}

class ProcessesPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  ProcessesPaneModel pane;

  void start(std::vector<AppGroup> groups) {
    scripted.next.appGroups = std::move(groups);
    pane.setStore(&scripted.store());
  }
  void startWithSamples() {
    scripted.next = makeSampleMachine();
    pane.setStore(&scripted.store());
  }
  void tick(std::vector<AppGroup> groups) {
    scripted.next.appGroups = std::move(groups);
    scripted.tick();
  }
  void select(ProcessesSubTab tab) { scripted.store().setSelectedProcessSubTab(tab); }
  std::vector<std::string> titles() {
    std::vector<std::string> titles;
    for (int index = 0; index < pane.rows()->rowCount(); ++index) {
      titles.push_back(pane.rows()->rowAt(index)->title.toStdString());
    }
    return titles;
  }
  ProcessesRow rowAt(int index) { return *pane.rows()->rowAt(index); }
};

TEST_F(ProcessesPaneModelTest, FivePillsStandInTheirOrderUnderTheirLabels) {
  QStringList labels;
  for (const Choice& tab : pane.tabs()) labels.append(tab.label);
  EXPECT_THAT(labels, ElementsAre(QStringLiteral("Apps"), QStringLiteral("Projects"),
                                  QStringLiteral("Containers"), QStringLiteral("Ports"),
                                  QStringLiteral("Idle Servers")));
  EXPECT_EQ(pane.tabs()[4].name, QStringLiteral("idleServers"));
}

TEST_F(ProcessesPaneModelTest, ThePickerOffersAllSortFieldsUnderTheirLabels) {
  QStringList labels;
  for (const Choice& field : pane.sortFields()) labels.append(field.label);
  EXPECT_THAT(labels, ElementsAre(QStringLiteral("Memory"), QStringLiteral("CPU"),
                                  QStringLiteral("Energy"), QStringLiteral("Network"),
                                  QStringLiteral("Disk"), QStringLiteral("GPU")));
  EXPECT_EQ(pane.indexOfSortField(QStringLiteral("disk")), 4);
  EXPECT_EQ(pane.indexOfSortField(QStringLiteral("none")), -1);
}

TEST_F(ProcessesPaneModelTest, TheBadgesCountEachListAndACountOf0ShowsNone) {
  scripted.next.appGroups = {makeApp("a"), makeApp("b"), makeGroup("tool")};
  scripted.next.appGroups[2].kind = AppGroupKind::other;
  scripted.next.projects.resize(1);
  scripted.next.listeningPorts.resize(3);
  scripted.next.idleServers.resize(4);
  pane.setStore(&scripted.store());
  const QString none;
  EXPECT_THAT(pane.badges(), ElementsAre(QStringLiteral("2"), QStringLiteral("1"), none,
                                         QStringLiteral("3"), QStringLiteral("4")));
}

TEST_F(ProcessesPaneModelTest, AToolOfKindOtherIsHiddenAlsoFromTheBadgeUntilTheToggleBringsItBack) {
  AppGroup tool = makeGroup("tool");
  tool.kind = AppGroupKind::other;
  start({makeApp("app"), tool});
  EXPECT_THAT(titles(), ElementsAre("app"));
  EXPECT_EQ(pane.badges()[0], QStringLiteral("1"));
  scripted.store().setShowSystemProcesses(true);
  EXPECT_THAT(titles(), ElementsAre("app", "tool"));
  EXPECT_EQ(pane.badges()[0], QStringLiteral("2"));
}

TEST_F(ProcessesPaneModelTest, TheBadgesAreNotAffectedByTheSearchText) {
  startWithSamples();
  const QStringList before = pane.badges();
  scripted.store().setProcessSearchText(QStringLiteral("nothing is called this"));
  EXPECT_THAT(titles(), IsEmpty());
  EXPECT_EQ(pane.badges(), before);
}

TEST_F(ProcessesPaneModelTest, TheSearchTextActsOnTheAppsTabAlone) {
  startWithSamples();
  scripted.store().setProcessSearchText(QStringLiteral("nothing is called this"));
  for (const ProcessesSubTab tab : {ProcessesSubTab::projects, ProcessesSubTab::containers,
                                    ProcessesSubTab::ports, ProcessesSubTab::idleServers}) {
    select(tab);
    EXPECT_THAT(titles(), testing::Not(IsEmpty())) << rawValue(tab);
  }
}

TEST_F(ProcessesPaneModelTest, SearchingAProjectsNameFindsNothingAndTheProjectsTabKeepsListingAll) {
  scripted.next.appGroups = {makeApp("Terminal", {makeProcess(1, "node")})};
  scripted.next.appGroups[0].processes[0].projectPath = "/home/me/shop";
  scripted.next.projects.resize(2);
  scripted.next.projects[0].name = "shop";
  scripted.next.projects[1].name = "blog";
  pane.setStore(&scripted.store());
  scripted.store().setProcessSearchText(QStringLiteral("shop"));
  EXPECT_THAT(titles(), IsEmpty());
  select(ProcessesSubTab::projects);
  EXPECT_THAT(titles(), ElementsAre("shop", "blog"));
}

TEST_F(ProcessesPaneModelTest, EachTabShowsItsList) {
  startWithSamples();
  for (const auto& [tab, kind] :
       {std::pair{ProcessesSubTab::apps, ProcessesRowKind::appGroup},
        std::pair{ProcessesSubTab::projects, ProcessesRowKind::project},
        std::pair{ProcessesSubTab::containers, ProcessesRowKind::container},
        std::pair{ProcessesSubTab::ports, ProcessesRowKind::port},
        std::pair{ProcessesSubTab::idleServers, ProcessesRowKind::idleServer}}) {
    select(tab);
    EXPECT_EQ(rowAt(0).kind, kind) << rawValue(tab);
  }
}

struct EmptyStateCase {
  ProcessesSubTab tab;
  EmptyStateWords words;
};

TEST_F(ProcessesPaneModelTest, EachEmptyListSaysWhatItIsForAndTheAppsListSaysNothing) {
  pane.setStore(&scripted.store());
  const auto words = [](const char* icon, const char* title, const char* subtitle) {
    return EmptyStateWords{QString::fromUtf8(icon), QString::fromUtf8(title),
                           QString::fromUtf8(subtitle)};
  };
  for (const auto& [tab, expected] : {
           EmptyStateCase{ProcessesSubTab::apps, {}},
           EmptyStateCase{
               ProcessesSubTab::projects,
               words("folder.badge.gearshape", "No Active Dev Projects Detected",
                     "Korvantis automatically groups running node, python, rust, go, swift, and "
                     "ruby processes by their Git or package manifest directory.")},
           EmptyStateCase{ProcessesSubTab::containers,
                          words("shippingbox.fill", "No Running Containers",
                                "Docker, OrbStack, and Podman containers will appear here with "
                                "live CPU, RAM, and mapped ports.")},
           EmptyStateCase{ProcessesSubTab::ports,
                          words("network", "No Open Listening TCP Ports Found",
                                "Local web servers, databases, and dev tools listening on TCP "
                                "ports will be listed here.")},
           EmptyStateCase{ProcessesSubTab::idleServers,
                          words("checkmark.circle.fill", "Zero Forgotten Dev Servers",
                                "No idle local development servers are currently wasting RAM.")},
       }) {
    select(tab);
    EXPECT_EQ(pane.emptyState(), expected) << rawValue(tab);
  }
}

TEST_F(ProcessesPaneModelTest, FollowsEachTickTheFilterAndTheSortFieldAtOnce) {
  AppGroup busy = withMemory(makeApp("busy"), 1);
  busy.cpuPercent = 90;
  start({busy, withMemory(makeApp("large"), 2)});
  EXPECT_THAT(titles(), ElementsAre("large", "busy"));
  scripted.store().setProcessSortField(ProcessSortField::cpu);
  EXPECT_THAT(titles(), ElementsAre("busy", "large"));
  scripted.store().setProcessSearchText(QStringLiteral("LAR"));
  EXPECT_THAT(titles(), ElementsAre("large"));
  tick({makeApp("larch"), makeApp("oak")});
  EXPECT_THAT(titles(), ElementsAre("larch"));
}

TEST_F(ProcessesPaneModelTest, TheVerdictOfEachShownGroupIsAskedForOncePerTickAndOfNoOther) {
  AppGroup tool = makeGroup("tool");
  tool.kind = AppGroupKind::other;
  start({makeApp("a"), makeApp("b"), tool});
  EXPECT_EQ(scripted.verdicts, 2);
  scripted.tick();
  scripted.next.appGroups[0].cpuPercent = 30;
  scripted.tick();
  EXPECT_EQ(rowAt(0).verdict, QStringLiteral("ask_first"));
  EXPECT_EQ(rowAt(0).subtitle,
            QStringLiteral("Currently busy (30% CPU). Save unsaved work before quitting."));
  select(ProcessesSubTab::ports);
  const int before = scripted.verdicts;
  tick({makeApp("c")});
  EXPECT_EQ(scripted.verdicts, before);
}

TEST_F(ProcessesPaneModelTest, OpeningShowsTheProcessesAndClosingHidesThem) {
  start({makeApp("app", {makeProcess(1, "one"), makeProcess(2, "two")})});
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_THAT(titles(), ElementsAre("app", "PROCESS TREE (2)", "one", "two"));
  EXPECT_THAT(scripted.store().expandedAppGroupIDs(), ElementsAre("daemon:app"));
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_THAT(titles(), ElementsAre("app"));
  EXPECT_THAT(scripted.store().expandedAppGroupIDs(), IsEmpty());
}

TEST_F(ProcessesPaneModelTest, OpeningARowAndGoingToAnotherTabAndBackKeepsItOpen) {
  start({makeApp("app", {makeProcess(1, "one")})});
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  select(ProcessesSubTab::ports);
  EXPECT_THAT(titles(), IsEmpty());
  select(ProcessesSubTab::apps);
  EXPECT_THAT(titles(), ElementsAre("app", "PROCESS TREE (1)", "one"));
}

TEST_F(ProcessesPaneModelTest, AnIdOfAGoneGroupLeavesAHarmlessEntryThatCanBeTakenAway) {
  start({makeApp("app", {makeProcess(1, "one")})});
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  tick({makeApp("other")});
  EXPECT_THAT(titles(), ElementsAre("other"));
  EXPECT_THAT(scripted.store().expandedAppGroupIDs(), ElementsAre("daemon:app"));
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_THAT(scripted.store().expandedAppGroupIDs(), IsEmpty());
}

TEST_F(ProcessesPaneModelTest, KnowsThePlaceOfAnApplicationsOwnRow) {
  start({makeApp("app", {makeProcess(1, "one")}), makeApp("other")});
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_EQ(pane.indexOfGroup(QStringLiteral("daemon:app")), 0);
  EXPECT_EQ(pane.indexOfGroup(QStringLiteral("daemon:other")), 3);
  EXPECT_EQ(pane.indexOfGroup(QStringLiteral("daemon:none")), -1);
}

TEST_F(ProcessesPaneModelTest, QuittingHandsOnTheGroupOfThePresentSnapshot) {
  start({makeApp("app")});
  EXPECT_TRUE(pane.quitGroup(QStringLiteral("daemon:app"), false));
  EXPECT_TRUE(pane.quitGroup(QStringLiteral("daemon:app"), true));
  EXPECT_THAT(scripted.quitGroups,
              ElementsAre(Pair("daemon:app", false), Pair("daemon:app", true)));
}

TEST_F(ProcessesPaneModelTest, ADoNotIsAdviceAndBlocksNothing) {
  AppGroup group = makeApp("Finder");
  start({group});
  EXPECT_EQ(rowAt(0).verdict, QStringLiteral("do_not"));
  EXPECT_TRUE(pane.quitGroup(QStringLiteral("daemon:Finder"), true));
}

TEST_F(ProcessesPaneModelTest, QuittingAGroupThatIsGoneDoesNothing) {
  start({makeApp("app")});
  tick({});
  EXPECT_FALSE(pane.quitGroup(QStringLiteral("daemon:app"), true));
  EXPECT_THAT(scripted.quitGroups, IsEmpty());
}

TEST_F(ProcessesPaneModelTest, StopsTheProcessOfARowPolitely) {
  start({makeApp("app", {makeProcess(41, "one"), makeProcess(42, "two")})});
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_TRUE(pane.stopProcess(rowAt(3)));
  EXPECT_THAT(scripted.stoppedProcesses, ElementsAre(Pair(42, false)));
}

TEST_F(ProcessesPaneModelTest, StopsWhatTheRowsOfTheOtherListsShow) {
  startWithSamples();
  for (const ProcessesSubTab tab :
       {ProcessesSubTab::projects, ProcessesSubTab::ports, ProcessesSubTab::idleServers}) {
    select(tab);
    const int index = tab == ProcessesSubTab::projects ? 1 : 0;
    scripted.stoppedProcesses.clear();
    EXPECT_TRUE(pane.stopProcess(rowAt(index))) << rawValue(tab);
    EXPECT_THAT(scripted.stoppedProcesses, ElementsAre(Pair(rowAt(index).pid, false)));
  }
}

TEST_F(ProcessesPaneModelTest, ARowWithoutAProcessStopsNothing) {
  startWithSamples();
  EXPECT_FALSE(pane.stopProcess(rowAt(0)));
  select(ProcessesSubTab::containers);
  EXPECT_FALSE(pane.stopProcess(rowAt(0)));
  EXPECT_FALSE(pane.stopProcess(ProcessesRow()));
  EXPECT_THAT(scripted.stoppedProcesses, IsEmpty());
}

TEST_F(ProcessesPaneModelTest, ARecycledPidIsNotStopped) {
  start({makeApp("app", {makeProcess(42, "one")})});
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  const ProcessesRow shown = rowAt(2);
  ProcessSample recycled = makeProcess(42, "another");
  recycled.startedAt = Instant{9999};
  tick({makeApp("app", {recycled})});
  EXPECT_FALSE(pane.stopProcess(shown));
  EXPECT_THAT(scripted.stoppedProcesses, IsEmpty());
}

TEST_F(ProcessesPaneModelTest, ARecycledPidBehindAPortIsNotStopped) {
  scripted.next.listeningPorts.resize(1);
  scripted.next.listeningPorts[0].pid = 42;
  start({makeApp("app", {makeProcess(42, "one")})});
  select(ProcessesSubTab::ports);
  const ProcessesRow shown = rowAt(0);
  tick({});
  EXPECT_FALSE(pane.stopProcess(shown));
  EXPECT_THAT(scripted.stoppedProcesses, IsEmpty());
}

TEST_F(ProcessesPaneModelTest, WhileAButtonIsPressedATickLeavesTheRowsAndLaterTheyCatchUp) {
  start({makeApp("a"), makeApp("b")});
  pane.hold();
  tick({makeApp("c")});
  EXPECT_THAT(titles(), ElementsAre("a", "b"));
  EXPECT_EQ(pane.badges()[0], QStringLiteral("1"));
  pane.release();
  EXPECT_THAT(titles(), ElementsAre("a", "b"));
  QCoreApplication::processEvents();
  EXPECT_THAT(titles(), ElementsAre("c"));
}

TEST_F(ProcessesPaneModelTest, WhatTheUserSetsTakesEffectDuringAPressToo) {
  start({makeApp("a"), makeApp("b")});
  pane.hold();
  scripted.store().setProcessSearchText(QStringLiteral("b"));
  EXPECT_THAT(titles(), ElementsAre("b"));
}

TEST_F(ProcessesPaneModelTest, AnIdleTickChangesNothing) {
  startWithSamples();
  QSignalSpy changed(pane.rows(), &QAbstractItemModel::dataChanged);
  QSignalSpy badges(&pane, &ProcessesPaneModel::badgesChanged);
  QSignalSpy empty(&pane, &ProcessesPaneModel::emptyStateChanged);
  // A snapshot that differs in nothing that is shown here.
  scripted.next.system.cpuPercent = 3;
  scripted.tick();
  EXPECT_EQ(changed.size() + badges.size() + empty.size(), 0);
}

TEST_F(ProcessesPaneModelTest, WithoutAStoreNothingCanBeDone) {
  pane.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_FALSE(pane.quitGroup(QStringLiteral("daemon:app"), true));
  ProcessesRow row;
  row.pid = 1;
  EXPECT_FALSE(pane.stopProcess(row));
  EXPECT_EQ(pane.rows()->rowCount(), 0);
}

}  // namespace
}  // namespace korvantis
