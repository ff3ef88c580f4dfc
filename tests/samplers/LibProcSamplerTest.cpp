#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "core/Utf8.h"
#include "samplers/LibProcSampler.h"
#include "samplers/LibProcSamplerFixture.h"

namespace korvantis {
namespace {

using test::argumentBlock;
using test::LibProcSamplerFixture;
using test::ProcessOperation;
using test::ScriptedProcess;

/// The list of processes, and the facts of a record that are read on each tick.
class LibProcSamplerRecords : public LibProcSamplerFixture {
 protected:
  std::vector<std::int32_t> sampledPIDs() {
    std::vector<std::int32_t> pids;
    for (const ProcessSample& sample : sample()) pids.push_back(sample.pid);
    return pids;
  }
};

using PIDs = std::vector<std::int32_t>;

TEST_F(LibProcSamplerRecords, ARecordHoldsWhatTheOperationsTell) {
  processes.add({.pid = 7,
                 .ppid = 3,
                 .uid = 501,
                 .name = "tool",
                 .comm = "comm",
                 .startSeconds = 1'700'000'123,
                 .startMicroseconds = 999'999,
                 .userTime = 5,
                 .idleWakeups = 17,
                 .footprint = 4096,
                 .path = "/bin/tool",
                 .workingDirectory = "/home/me",
                 .responsiblePID = 2,
                 .descriptors = {{.port = 3000}},
                 .argumentBlock = argumentBlock(2, "/bin/tool", {"tool", "-x"})});
  ProcessSample expected;
  expected.pid = 7;
  expected.ppid = 3;
  expected.responsiblePID = 2;
  expected.uid = 501;
  expected.name = "tool";
  expected.executablePath = "/bin/tool";
  expected.arguments = "tool -x";
  expected.workingDirectory = "/home/me";
  expected.projectPath = std::nullopt;
  expected.listeningPorts = {3000};
  expected.memoryBytes = 4096;
  expected.idleWakeups = 17;
  expected.startedAt = {1'700'000'123};
  expected.helperRole = HelperRole::main;
  EXPECT_EQ(sample(), std::vector{expected});
}

TEST_F(LibProcSamplerRecords, RecordsStandInTheOrderOfThePidBuffer) {
  for (const std::int32_t pid : {30, 10, 20}) processes.add({.pid = pid});
  EXPECT_EQ(sampledPIDs(), (PIDs{30, 10, 20}));
}

TEST_F(LibProcSamplerRecords, PidsBelowOneAreSkippedAndNotAskedAbout) {
  for (const std::int32_t pid : {0, -1, 5}) processes.add({.pid = pid});
  processes.listPIDs({0, 5, -1, std::numeric_limits<std::int32_t>::min()});
  EXPECT_EQ(sampledPIDs(), PIDs{5});
  EXPECT_EQ(processes.count(ProcessOperation::basicInfo), 1);
}

TEST_F(LibProcSamplerRecords, TheResultOfTheListIsAByteLength) {
  for (const std::int32_t pid : {1, 2, 3}) processes.add({.pid = pid});
  const std::vector<std::pair<int, PIDs>> results = {{12, {1, 2, 3}}, {11, {1, 2}},   {8, {1, 2}},
                                                     {7, {1}},        {4, {1}},       {3, {}},
                                                     {1, {}},         {16, {1, 2, 3}}};
  for (const auto& [result, pids] : results) {
    processes.setReply(ProcessOperation::listAllPIDs,
                       [result = result](int, int) { return result; });
    EXPECT_EQ(sampledPIDs(), pids) << result;
  }
}

TEST_F(LibProcSamplerRecords, NoMoreThan1024SlotsAreEverRead) {
  std::vector<std::int32_t> pids(1030);
  std::iota(pids.begin(), pids.end(), 1);
  for (const std::int32_t pid : pids) processes.add({.pid = pid});
  for (const int result : {4096, 4100, 4 * 1030, 16384, 1 << 30}) {
    processes.setReply(ProcessOperation::listAllPIDs, [result](int, int) { return result; });
    const PIDs sampled = sampledPIDs();
    EXPECT_EQ(sampled.size(), 1024U) << result;
    EXPECT_EQ(sampled.back(), 1024) << result;
  }
}

TEST_F(LibProcSamplerRecords, AListResultBelowOneGivesAnEmptyListAndChangesNothing) {
  processes.add({.pid = 7, .descriptors = {{.port = 80}}});
  sample();
  for (const int result : {0, -1}) {
    processes.advance(4);
    processes.setReply(ProcessOperation::listAllPIDs, [result](int, int) { return result; });
    EXPECT_TRUE(sample().empty());
  }
  processes.setReply(ProcessOperation::listAllPIDs, [](int, int honest) { return honest; });
  processes.change(7, [](ScriptedProcess& process) { process.diskReadBytes = 800; });
  processes.resetCounts();
  const ProcessSample after = sampleOne();
  EXPECT_EQ(after.diskReadBytesPerSec, 100) << "the baseline is still the one of 8 s ago";
  EXPECT_EQ(processes.count(ProcessOperation::path), 0) << "the slow facts are still kept";
  EXPECT_EQ(processes.count(ProcessOperation::descriptors), 1) << "the failures took no scan";
}

TEST_F(LibProcSamplerRecords, ABasicInfoReplyOfAnySizeBut136SkipsTheProcess) {
  processes.add({.pid = 6});
  processes.add({.pid = 7});
  for (const int size : {135, 137, 1, 0, -1}) {
    processes.setReply(ProcessOperation::basicInfo,
                       [size](std::int32_t pid, int honest) { return pid == 6 ? size : honest; });
    processes.resetCounts();
    EXPECT_EQ(sampledPIDs(), PIDs{7}) << size;
    EXPECT_EQ(processes.count(ProcessOperation::resourceUsage, 6), 0);
  }
}

TEST_F(LibProcSamplerRecords, AProcessThatIsGoneSinceTheListIsSkipped) {
  processes.add({.pid = 7});
  processes.listPIDs({6, 7, 8});
  EXPECT_EQ(sampledPIDs(), PIDs{7});
}

TEST_F(LibProcSamplerRecords, AStartOfZeroIsNow) {
  processes.setNow(1'234.5);
  processes.add({.pid = 7, .startSeconds = 0, .startMicroseconds = 5});
  EXPECT_EQ(sampleOne().startedAt, Instant{1'234.5});
}

TEST_F(LibProcSamplerRecords, TheStartHasWholeSeconds) {
  processes.add({.pid = 7, .startSeconds = 1'700'000'000, .startMicroseconds = 900'000});
  EXPECT_EQ(sampleOne().startedAt, Instant{1'700'000'000});
}

TEST_F(LibProcSamplerRecords, TheNameIsTheLongOneElseTheShortOne) {
  processes.add({.pid = 7, .name = "long name", .comm = "short"});
  EXPECT_EQ(sampleOne().name, "long name");
  processes.change(7, [](ScriptedProcess& process) { process.name.clear(); });
  EXPECT_EQ(sampleOne().name, "short");
}

TEST_F(LibProcSamplerRecords, AProcessWithBothNamesEmptyIsNamedPid123) {
  processes.add({.pid = 123});
  EXPECT_EQ(sampleOne().name, "pid-123");
}

TEST_F(LibProcSamplerRecords, ANameThatFillsItsFieldEndsWithTheField) {
  processes.add({.pid = 7, .name = std::string(32, 'n'), .comm = std::string(16, 'c')});
  EXPECT_EQ(sampleOne().name, std::string(32, 'n'));
  processes.change(7, [](ScriptedProcess& process) { process.name.clear(); });
  EXPECT_EQ(sampleOne().name, std::string(16, 'c'));
}

TEST_F(LibProcSamplerRecords, ANameThatEndsInHalfACharacterIsRepaired) {
  processes.add({.pid = 7, .comm = "fourteen bytes\xC3"});
  EXPECT_EQ(sampleOne().name, "fourteen bytes\xEF\xBF\xBD");
}

TEST_F(LibProcSamplerRecords, AllTextsOfARecordAreWellFormedWhateverTheBytes) {
  const std::string bytes = "\xFF\xC3(\xE2\x82\x1B[0m\n\"\\";
  processes.add({.pid = 7,
                 .name = bytes,
                 .path = "/" + bytes,
                 .workingDirectory = "/" + bytes,
                 .argumentBlock = argumentBlock(2, "/" + bytes, {bytes, "ok"})});
  const ProcessSample record = sampleOne();
  EXPECT_TRUE(isValidUtf8(record.name));
  EXPECT_TRUE(isValidUtf8(record.executablePath));
  EXPECT_TRUE(isValidUtf8(record.workingDirectory.value_or("\xFF")));
  EXPECT_EQ(record.arguments, "ok");
}

TEST_F(LibProcSamplerRecords, TheNameStandsForArgumentsThatCantBeRead) {
  processes.add({.pid = 7, .comm = "tool"});
  EXPECT_EQ(sampleOne().arguments, "tool");
}

TEST_F(LibProcSamplerRecords, AProcessOfAnotherUserHasNoFolderNoPortsAndItsNameAsArguments) {
  processes.add({.pid = 7,
                 .uid = 502,
                 .name = "other",
                 .path = "/bin/other",
                 .workingDirectory = "/home/other",
                 .descriptors = {{.port = 80}},
                 .argumentBlock = argumentBlock(1, "/p", {"secret"})});
  const ProcessSample record = sampleOne();
  EXPECT_EQ(record.workingDirectory, std::nullopt);
  EXPECT_EQ(record.arguments, "other");
  EXPECT_TRUE(record.listeningPorts.empty());
  EXPECT_EQ(record.executablePath, "/bin/other");
  EXPECT_EQ(record.uid, 502U);
  EXPECT_EQ(processes.count(ProcessOperation::descriptors), 0);
}

TEST_F(LibProcSamplerRecords, OwnIsWhoThisProgramRunsAs) {
  processes.setOwnUID(0);
  processes.add({.pid = 7, .uid = 0, .workingDirectory = "/root"});
  processes.add({.pid = 8, .uid = 501, .workingDirectory = "/home/me"});
  const auto records = sample();
  EXPECT_EQ(records[0].workingDirectory, "/root");
  EXPECT_EQ(records[1].workingDirectory, std::nullopt);
}

TEST_F(LibProcSamplerRecords, AProcessWhoseUsageCantBeReadHasARecordWithZeroFigures) {
  processes.add({.pid = 7,
                 .name = "tool",
                 .usageIsReadable = false,
                 .userTime = 9,
                 .idleWakeups = 600,
                 .footprint = 4096,
                 .diskReadBytes = 5,
                 .path = "/bin/tool"});
  ProcessSample expected;
  expected.pid = expected.responsiblePID = 7;
  expected.ppid = 1;
  expected.name = expected.arguments = "tool";
  expected.executablePath = "/bin/tool";
  expected.startedAt = {1'700'000'000};
  EXPECT_EQ(sampleOne(), expected);
}

}  // namespace
}  // namespace korvantis
