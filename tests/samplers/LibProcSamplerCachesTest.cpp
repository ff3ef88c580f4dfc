#include <array>
#include <gtest/gtest.h>
#include <vector>

#include "samplers/LibProcSamplerFixture.h"

namespace korvantis {
namespace {

using test::argumentBlock;
using test::LibProcSamplerFixture;
using test::ProcessOperation;
using test::ScriptedProcess;

using Ports = std::vector<std::uint16_t>;

constexpr std::array slowOperations{ProcessOperation::path, ProcessOperation::responsiblePID,
                                    ProcessOperation::workingDirectory};

/// What is kept between ticks about one process, pid 7, at a clock that starts at 10000 s.
class LibProcSamplerCaches : public LibProcSamplerFixture {
 protected:
  void SetUp() override {
    processes.setNow(10'000);
    processes.add({.pid = 7,
                   .name = "tool",
                   .path = "/bin/tool",
                   .workingDirectory = "/old",
                   .responsiblePID = 3,
                   .descriptors = {{.port = 3000}},
                   .argumentBlock = argumentBlock(1, "/bin/tool", {"tool"})});
  }

  /// Samples at this time; says how often each slow fact was read then.
  int slowReadsAt(double now) {
    processes.setNow(now);
    processes.resetCounts();
    sampleOne();
    const int reads = processes.count(ProcessOperation::path, 7);
    for (const ProcessOperation operation : slowOperations) {
      EXPECT_EQ(processes.count(operation, 7), reads);
    }
    EXPECT_EQ(processes.count(ProcessOperation::arguments, 7), 2 * reads);
    return reads;
  }

  /// Samples at this time; says how often the descriptors were walked then.
  int scansAt(double now) {
    processes.setNow(now);
    processes.resetCounts();
    sample();
    return processes.count(ProcessOperation::descriptors, 7);
  }
};

TEST_F(LibProcSamplerCaches, SlowFactsAreReadAgainAt25SecondsAndNotBefore) {
  EXPECT_EQ(slowReadsAt(10'000), 1);
  EXPECT_EQ(slowReadsAt(10'002), 0);
  EXPECT_EQ(slowReadsAt(10'024.9), 0);
  EXPECT_EQ(slowReadsAt(10'025), 1);
  EXPECT_EQ(slowReadsAt(10'049.9), 0);
  EXPECT_EQ(slowReadsAt(10'050), 1);
}

TEST_F(LibProcSamplerCaches, SlowFactsStayForAsLongAsTheClockStandsBeforeTheirReading) {
  EXPECT_EQ(slowReadsAt(10'000), 1);
  EXPECT_EQ(slowReadsAt(5'000), 0);
  EXPECT_EQ(slowReadsAt(10'024.9), 0);
  EXPECT_EQ(slowReadsAt(10'025), 1);
}

TEST_F(LibProcSamplerCaches, RecordsShowTheKeptFactsUntilTheyAreReadAgain) {
  sampleOne();
  processes.change(7, [](ScriptedProcess& process) {
    process.path = "/bin/new";
    process.workingDirectory = "/new";
    process.responsiblePID = 4;
    process.argumentBlock = argumentBlock(1, "/bin/new", {"new"});
    process.name = "newname";
  });
  processes.advance(24);
  const ProcessSample kept = sampleOne();
  EXPECT_EQ(kept.executablePath, "/bin/tool");
  EXPECT_EQ(kept.workingDirectory, "/old");
  EXPECT_EQ(kept.responsiblePID, 3);
  EXPECT_EQ(kept.arguments, "tool");
  EXPECT_EQ(kept.name, "newname") << "the name is read on each tick";
  processes.advance(1);
  const ProcessSample fresh = sampleOne();
  EXPECT_EQ(fresh.executablePath, "/bin/new");
  EXPECT_EQ(fresh.workingDirectory, "/new");
  EXPECT_EQ(fresh.responsiblePID, 4);
  EXPECT_EQ(fresh.arguments, "new");
}

TEST_F(LibProcSamplerCaches, EachProcessKeepsItsOwnPace) {
  slowReadsAt(10'000);
  processes.setNow(10'010);
  processes.add({.pid = 8});
  sample();
  processes.setNow(10'025);
  processes.resetCounts();
  sample();
  EXPECT_EQ(processes.count(ProcessOperation::path, 7), 1);
  EXPECT_EQ(processes.count(ProcessOperation::path, 8), 0);
}

TEST_F(LibProcSamplerCaches, FailedSlowFactsAreKeptLikeOthers) {
  processes.change(7, [](ScriptedProcess& process) {
    process.path.clear();
    process.workingDirectory.clear();
    process.argumentBlock.reset();
  });
  sampleOne();
  processes.advance(24);
  processes.resetCounts();
  EXPECT_EQ(sampleOne().executablePath, "");
  for (const ProcessOperation operation : slowOperations) EXPECT_EQ(processes.count(operation), 0);
}

TEST_F(LibProcSamplerCaches, PortsAreScannedAgainAt35SecondsAndNotBefore) {
  EXPECT_EQ(scansAt(10'000), 1);
  EXPECT_EQ(scansAt(10'003.4), 0);
  EXPECT_EQ(scansAt(10'003.5), 1);
  EXPECT_EQ(scansAt(10'006.9), 0);
  EXPECT_EQ(scansAt(10'007), 1);
}

TEST_F(LibProcSamplerCaches, TheFirstScanTakesPlaceAt35SecondsAfter1970) {
  EXPECT_EQ(scansAt(3.4), 0);
  EXPECT_EQ(scansAt(3.5), 1);
}

TEST_F(LibProcSamplerCaches, AClockThatJumpsBackPausesTheScanUntilItHasCaughtUp) {
  EXPECT_EQ(scansAt(10'000), 1);
  EXPECT_EQ(scansAt(9'000), 0);
  EXPECT_EQ(scansAt(10'003.4), 0);
  EXPECT_EQ(scansAt(10'003.5), 1);
}

TEST_F(LibProcSamplerCaches, OnTicksWithoutAScanTheKeptPortsAreShown) {
  EXPECT_EQ(sampleOne().listeningPorts, Ports{3000});
  processes.change(7, [](ScriptedProcess& process) { process.descriptors = {{.port = 4000}}; });
  processes.advance(2);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{3000});
  processes.advance(1.5);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{4000});
}

TEST_F(LibProcSamplerCaches, AScanThatFindsNothingEmptiesTheKeptPorts) {
  sampleOne();
  processes.change(7, [](ScriptedProcess& process) { process.descriptors.clear(); });
  processes.advance(3.5);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{});
  processes.advance(1);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{});
}

TEST_F(LibProcSamplerCaches, AScanThatIsDueWalksEveryProcessOfTheUserInThatTick) {
  processes.add({.pid = 8});
  processes.add({.pid = 9, .uid = 0});
  processes.add({.pid = 10});
  sample();
  EXPECT_EQ(processes.count(ProcessOperation::descriptors), 3);
  EXPECT_EQ(processes.count(ProcessOperation::descriptors, 9), 0);
  processes.advance(2);
  sample();
  EXPECT_EQ(processes.count(ProcessOperation::descriptors), 3);
}

TEST_F(LibProcSamplerCaches, AProcessThatComesBetweenScansHasNoPortsUntilTheNextOne) {
  sample();
  processes.remove(7);
  processes.add({.pid = 8, .descriptors = {{.port = 5000}}});
  processes.advance(2);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{});
  processes.advance(1.5);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{5000});
}

TEST_F(LibProcSamplerCaches, AnEmptyProcessListStillTakesTheScansTimeStamp) {
  processes.setReply(ProcessOperation::listAllPIDs, [](int, int) { return 3; });
  EXPECT_TRUE(sample().empty());
  processes.setReply(ProcessOperation::listAllPIDs, [](int, int honest) { return honest; });
  EXPECT_EQ(scansAt(10'003.4), 0);
  EXPECT_EQ(scansAt(10'003.5), 1);
}

TEST_F(LibProcSamplerCaches, AProcessWhoseUsageCantBeReadIsReadAfreshOnEachTick) {
  processes.change(7, [](ScriptedProcess& process) { process.usageIsReadable = false; });
  EXPECT_EQ(slowReadsAt(10'000), 1);
  EXPECT_EQ(slowReadsAt(10'001), 1);
  EXPECT_EQ(slowReadsAt(10'002), 1);
}

TEST_F(LibProcSamplerCaches, AProcessWhoseUsageCantBeReadShowsItsPortsOnlyOnScanTicks) {
  processes.change(7, [](ScriptedProcess& process) { process.usageIsReadable = false; });
  EXPECT_EQ(sampleOne().listeningPorts, Ports{3000});
  processes.advance(2);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{});
  processes.advance(1.5);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{3000});
}

TEST_F(LibProcSamplerCaches, AProcessThatBecomesUnreadableShowsItsKeptFactsOnceMoreAndLosesThem) {
  sampleOne();
  processes.change(7, [](ScriptedProcess& process) { process.usageIsReadable = false; });
  EXPECT_EQ(slowReadsAt(10'001), 0);
  EXPECT_EQ(slowReadsAt(10'002), 1);
}

TEST_F(LibProcSamplerCaches, WhatIsGoneForOneTickIsForgotten) {
  sampleOne();
  processes.listPIDs({99});
  processes.setNow(10'001);
  EXPECT_TRUE(sample().empty());
  processes.listPIDs({7});
  processes.setNow(10'002);
  processes.resetCounts();
  EXPECT_EQ(sampleOne().listeningPorts, Ports{}) << "kept ports are gone and no scan is due";
  EXPECT_EQ(processes.count(ProcessOperation::path), 1);
}

TEST_F(LibProcSamplerCaches, APidReusedWithinOneTickKeepsTheOldFactsFor25Seconds) {
  sampleOne();
  processes.remove(7);
  processes.add({.pid = 7, .path = "/bin/successor"});
  processes.setNow(10'024.9);
  EXPECT_EQ(sampleOne().executablePath, "/bin/tool");
  processes.setNow(10'025);
  EXPECT_EQ(sampleOne().executablePath, "/bin/successor");
}

TEST_F(LibProcSamplerCaches, APortListKeptFromTheOwnUserStaysWhenTheProcessChangesItsUser) {
  sampleOne();
  processes.change(7, [](ScriptedProcess& process) { process.uid = 0; });
  processes.advance(4);
  EXPECT_EQ(sampleOne().listeningPorts, Ports{3000});
}

TEST_F(LibProcSamplerCaches, AnOrdinaryTickAsksTwoQuestionsPerProcess) {
  for (std::int32_t pid = 100; pid < 200; ++pid) processes.add({.pid = pid});
  sample();
  processes.advance(2);
  processes.resetCounts();
  sample();
  EXPECT_EQ(processes.count(ProcessOperation::basicInfo), 101);
  EXPECT_EQ(processes.count(ProcessOperation::resourceUsage), 101);
  EXPECT_EQ(processes.count(ProcessOperation::listAllPIDs), 1);
  EXPECT_LE(processes.count(ProcessOperation::ownUID), 1);
  for (const ProcessOperation operation :
       {ProcessOperation::path, ProcessOperation::responsiblePID,
        ProcessOperation::workingDirectory, ProcessOperation::arguments,
        ProcessOperation::descriptors, ProcessOperation::socket, ProcessOperation::timebase}) {
    EXPECT_EQ(processes.count(operation), 0);
  }
}

}  // namespace
}  // namespace korvantis
