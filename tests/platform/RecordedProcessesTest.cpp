#include <gmock/gmock.h>
#include <limits>
#include <string>

#include "support/ProcessQuestions.h"
#include "support/RecordedProcesses.h"

namespace korvantis {
namespace {

using namespace std::string_literals;
using test::ProcessQuestions;
using test::RecordedProcess;
using test::RecordedProcesses;
using testing::ElementsAre;
using testing::IsEmpty;

RecordedProcess process(std::int32_t pid) {
  RecordedProcess made;
  made.pid = pid;
  return made;
}

TEST(RecordedProcesses, TheUsersOwnComeFirstAndTheNewestOfThemBeforeOthers) {
  RecordedProcesses machine;
  const auto put = [&](std::int32_t pid, std::uint32_t user, std::uint64_t start) {
    auto made = process(pid);
    made.userID = user;
    made.startTicks = start;
    machine.put(made);
  };
  put(1, 0, 1);
  put(20, 501, 50);
  put(21, 501, 90);
  put(22, 501, 90);
  put(23, 0, 95);
  put(300, 501, 60);
  ProcessQuestions questions(machine.sources());
  EXPECT_THAT(questions.pids(), ElementsAre(22, 21, 300, 20, 23, 1));
  EXPECT_THAT(questions.pids(), ElementsAre(22, 21, 300, 20, 23, 1)) << "from memory";
  EXPECT_THAT(questions.pids(8), ElementsAre(22, 21));
  EXPECT_THAT(questions.pids(0), IsEmpty());
}

TEST(RecordedProcesses, KernelThreadsThreadsAndUnreadableProcessesAreLeftOut) {
  RecordedProcesses machine;
  auto kernel = process(2);
  kernel.isKernelThread = true;
  machine.put(kernel);
  machine.put(process(10));
  machine.files.write("proc/11/stat", "garbage");
  machine.files.folderAt("proc/12");
  machine.put(process(13));
  machine.files.write("proc/13/status", "Tgid:\t10\nUid:\t0\t0\t0\t0\n");
  machine.put(process(14));
  machine.files.write("proc/14/status", "Name:\tcut");
  machine.files.write("proc/self/stat", "x");
  machine.files.write("proc/uptime", "1 2\n");
  machine.put(process(15));
  machine.files.write("proc/15/stat", RecordedProcesses::statText(process(99)));
  ProcessQuestions questions(machine.sources());
  EXPECT_THAT(questions.pids(), ElementsAre(10));
  for (const int pid : {2, 11, 12, 13, 14, 15, 16, 0, -1}) {
    EXPECT_FALSE(questions.basic(pid)) << pid;
  }
}

TEST(RecordedProcesses, WithoutAProcFolderTheListFails) {
  const test::TemporaryFolder empty;
  RecordedProcesses machine;
  ProcessSources sources = machine.sources();
  sources.root = empty.path();
  ProcessQuestions questions(sources);
  std::int32_t buffer = 0;
  EXPECT_LT(questions.processes.listAllPids(&buffer, sizeof buffer), 1);
}

TEST(RecordedProcesses, NoMoreThan1024AreListedAndTheNewestOwnAreNeverCut) {
  RecordedProcesses machine;
  for (std::int32_t pid = 1; pid <= 1100; ++pid) {
    auto made = process(pid);
    made.startTicks = static_cast<std::uint64_t>(pid);
    made.userID = pid <= 1050 ? 0 : 501;
    machine.put(made);
  }
  ProcessQuestions questions(machine.sources());
  const auto pids = questions.pids();
  ASSERT_EQ(pids.size(), 1024U);
  EXPECT_EQ(pids.front(), 1100);
  EXPECT_EQ(pids[49], 1051);
  EXPECT_EQ(pids[50], 1050);
  EXPECT_EQ(pids.back(), 77);
}

TEST(RecordedProcesses, AKnownPidIsReadAgainWhenItsKnowledgeIs25SecondsOld) {
  RecordedProcesses machine;
  auto made = process(10);
  made.isKernelThread = true;
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_THAT(questions.pids(), IsEmpty());
  made.isKernelThread = false;
  made.startTicks += 5;
  machine.put(made);
  machine.seconds += 24.5;
  EXPECT_THAT(questions.pids(), IsEmpty());
  machine.seconds += 0.5;
  EXPECT_THAT(questions.pids(), ElementsAre(10));
}

TEST(RecordedProcesses, WhatIsGoneIsForgottenAtTheNextListing) {
  RecordedProcesses machine;
  machine.put(process(10));
  machine.put(process(11));
  ProcessQuestions questions(machine.sources());
  questions.pids();
  EXPECT_EQ(questions.processes.rememberedCount(), 2U);
  machine.remove(10);
  machine.seconds += 2;
  EXPECT_THAT(questions.pids(), ElementsAre(11));
  EXPECT_EQ(questions.processes.rememberedCount(), 1U);
}

TEST(RecordedProcesses, TheBasicRecordHoldsParentOwnerNamesAndStart) {
  RecordedProcesses machine;
  auto made = process(10);
  made.parent = 7;
  made.name = "a) b (c\n\xff";
  made.startTicks = 180;
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  const auto record = questions.basic(10);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->pbi_ppid, 7U);
  EXPECT_EQ(record->pbi_uid, 501U);
  EXPECT_STREQ(record->pbi_comm, "a) b (c\n\xff");
  EXPECT_STREQ(record->pbi_name, "a) b (c\n\xff");
  EXPECT_EQ(record->pbi_start_tvsec, 1'000'002U);
}

TEST(RecordedProcesses, ACutNameIsMendedFromTheExecutableOrTheFirstArgument) {
  RecordedProcesses machine;
  auto made = process(10);
  made.name = "chrome_crashpad";
  made.executable = "/opt/x/chrome_crashpad_handler (deleted)";
  machine.put(made);
  made.pid = 11;
  made.executable = "/usr/bin/python3";
  made.commandLine = "/opt/chrome_crashpad_two\0-x\0"s;
  machine.put(made);
  made.pid = 12;
  made.executable = "/usr/bin/other";
  made.commandLine = "other\0"s;
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_STREQ(questions.basic(10)->pbi_name, "chrome_crashpad_handler");
  EXPECT_STREQ(questions.basic(10)->pbi_comm, "chrome_crashpad");
  EXPECT_STREQ(questions.basic(11)->pbi_name, "chrome_crashpad_two");
  EXPECT_STREQ(questions.basic(12)->pbi_name, "chrome_crashpad");
}

TEST(RecordedProcesses, UsageComesFromTicksMemoryAndDiskFigures) {
  RecordedProcesses machine;
  auto made = process(10);
  made.userTicks = 150;
  made.systemTicks = 50;
  made.anonymousKilobytes = 100;
  made.swapKilobytes = 5;
  made.disk = {4096, 8192};
  made.switches = {10, 20, 30};
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  const auto usage = questions.usage(10);
  ASSERT_TRUE(usage);
  EXPECT_EQ(usage->ri_user_time, 1'500'000'000U);
  EXPECT_EQ(usage->ri_system_time, 500'000'000U);
  EXPECT_EQ(usage->ri_phys_footprint, 105U * 1024U);
  EXPECT_EQ(usage->ri_diskio_bytesread, 4096U);
  EXPECT_EQ(usage->ri_diskio_byteswritten, 8192U);
  EXPECT_EQ(usage->ri_pkg_idle_wkups, 60U);
}

TEST(RecordedProcesses, TheCpuClockIsTakenBeforeTicksAndTicksWhenItIsRefused) {
  RecordedProcesses machine;
  auto made = process(10);
  made.userTicks = 150;
  made.systemTicks = 50;
  machine.put(made);
  made.pid = 11;
  machine.put(made);
  ProcessSources sources = machine.sources();
  sources.cpuNanoseconds = [](std::int32_t pid) {
    return pid == 10 ? std::optional<std::uint64_t>(2'003'000'001) : std::nullopt;
  };
  ProcessQuestions questions(sources);
  EXPECT_EQ(test::cpuTime(*questions.usage(10)), 2'003'000'001U);
  EXPECT_EQ(test::cpuTime(*questions.usage(11)), 2'000'000'000U);
}

TEST(RecordedProcesses, DiskBytesNeverReadableAreZeroAndTheCallSucceeds) {
  RecordedProcesses machine;
  auto made = process(10);
  made.disk.reset();
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  ASSERT_TRUE(questions.usage(10));
  EXPECT_EQ(questions.usage(10)->ri_diskio_bytesread, 0U);
}

TEST(RecordedProcesses, DiskBytesRefusedOnceAfterTheyWereReadableHoldTheLastValue) {
  RecordedProcesses machine;
  auto made = process(10);
  made.disk = {4096, 8192};
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  questions.pids();
  ASSERT_TRUE(questions.usage(10));
  made.disk.reset();
  machine.put(made);
  questions.pids();
  EXPECT_EQ(questions.usage(10)->ri_diskio_bytesread, 4096U);
  EXPECT_EQ(questions.usage(10)->ri_diskio_byteswritten, 8192U);
  made.startTicks += 1;
  machine.put(made);
  questions.pids();
  EXPECT_EQ(questions.usage(10)->ri_diskio_bytesread, 0U) << "not those of the process before";
}

TEST(RecordedProcesses, WakeupsAreSummedAtMostEvery25SecondsAndNeverFall) {
  RecordedProcesses machine;
  auto made = process(25);
  const auto wakeups = [&](ProcessQuestions& questions) {
    questions.pids();
    return questions.usage(25)->ri_pkg_idle_wkups;
  };
  made.switches = {10, 20};
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_EQ(wakeups(questions), 30U);
  made.switches = {10, 50};
  machine.put(made);
  machine.seconds += 24.9;
  EXPECT_EQ(wakeups(questions), 30U) << "held";
  machine.seconds += 0.1;
  EXPECT_EQ(wakeups(questions), 60U);
  made.switches = {11};
  machine.put(made);
  machine.seconds += 25;
  EXPECT_EQ(wakeups(questions), 60U) << "a thread has ended";
}

TEST(RecordedProcesses, TheFirstSumIsHeldLongerByItsNumberSoThatSumsSpread) {
  RecordedProcesses machine;
  auto made = process(34);
  made.switches = {1};
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  questions.pids();
  EXPECT_EQ(questions.usage(34)->ri_pkg_idle_wkups, 1U);
  made.switches = {2};
  machine.put(made);
  machine.seconds += 33.9;
  questions.pids();
  EXPECT_EQ(questions.usage(34)->ri_pkg_idle_wkups, 1U);
  machine.seconds += 0.1;
  questions.pids();
  EXPECT_EQ(questions.usage(34)->ri_pkg_idle_wkups, 2U);
}

TEST(RecordedProcesses, ThePathIsTheLinkWithoutTheMarkOfARemovedFile) {
  RecordedProcesses machine;
  auto made = process(10);
  made.executable = "/opt/a program (deleted)";
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_EQ(questions.path(10), "/opt/a program");
}

TEST(RecordedProcesses, ARefusedLinkLeavesAnAbsoluteFirstArgumentAsThePath) {
  RecordedProcesses machine;
  auto made = process(10);
  made.commandLine = "/opt/web --type=renderer --lang=en\0"s;
  machine.put(made);
  made.pid = 11;
  made.commandLine = "web\0--type=renderer\0"s;
  machine.put(made);
  made.pid = 12;
  made.commandLine = "";
  machine.put(made);
  made.pid = 13;
  made.commandLine = "/opt/a --b\0c\0"s;
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_EQ(questions.path(10), "/opt/web");
  EXPECT_EQ(questions.path(11), std::nullopt) << "a relative word is no path";
  EXPECT_EQ(questions.path(12), std::nullopt) << "a zombie";
  EXPECT_EQ(questions.path(13), "/opt/a --b");
}

TEST(RecordedProcesses, AProcessGoesOnAfterTheEndOfItsFirstThread) {
  RecordedProcesses machine;
  auto made = process(10);
  made.state = 'Z';
  machine.put(made);
  made.pid = 20;
  made.switches = {1, 2, 3};
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_FALSE(questions.basic(10)) << "all of it has ended";
  EXPECT_TRUE(questions.basic(20));
}

TEST(RecordedProcesses, APathThatDoesNotFitTheBufferFails) {
  RecordedProcesses machine;
  auto made = process(10);
  made.executable = "/bin/program";
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  std::array<char, 13> buffer{};
  EXPECT_EQ(questions.processes.executablePath(10, buffer.data(), 12), 0);
  EXPECT_EQ(questions.processes.executablePath(10, buffer.data(), 13), 12);
}

TEST(RecordedProcesses, AWorkingDirectoryThatIsGoneOutOfReachOrTooLongIsAbsent) {
  RecordedProcesses machine;
  const auto folderOf = [&](const std::string& link) {
    auto made = process(10);
    made.folder = link;
    machine.put(made);
    ProcessQuestions questions(machine.sources());
    return questions.folder(10);
  };
  EXPECT_EQ(folderOf("/home/me"), "/home/me");
  EXPECT_EQ(folderOf(""), std::nullopt);
  EXPECT_EQ(folderOf("/home/me (deleted)"), std::nullopt);
  EXPECT_EQ(folderOf("(unreachable)/home/me"), std::nullopt);
  const std::string longest = "/" + std::string(1022, 'x');
  EXPECT_EQ(folderOf(longest), longest);
  EXPECT_EQ(folderOf(longest + "x"), std::nullopt);
}

TEST(RecordedProcesses, TheArgumentBlockComesInTwoCalls) {
  RecordedProcesses machine;
  auto made = process(10);
  made.executable = "/bin/ls";
  made.commandLine = "ls\0-l"s;
  machine.put(made);
  made.pid = 11;
  made.commandLine = "";
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_EQ(questions.block(10), "\2\0\0\0/bin/ls\0ls\0-l\0"s);
  EXPECT_EQ(questions.block(11), std::nullopt);
  EXPECT_EQ(questions.block(12), std::nullopt);
}

TEST(RecordedProcesses, TheArgumentBlockHasTheSizeThatWasToldForItEvenIfItGrows) {
  RecordedProcesses machine;
  auto made = process(10);
  made.executable = "/bin/ls";
  made.commandLine = "ls\0"s;
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  const std::array<int, 3> name{CTL_KERN, KERN_PROCARGS2, 10};
  std::size_t size = 0;
  ASSERT_EQ(questions.processes.argumentBlock(name.data(), 3, nullptr, &size), 0);
  machine.files.write("proc/10/cmdline", "ls\0a much longer one\0"s);
  std::string bytes(size, '\0');
  ASSERT_EQ(questions.processes.argumentBlock(name.data(), 3, bytes.data(), &size), 0);
  EXPECT_EQ(bytes, "\1\0\0\0/bin/ls\0ls\0"s);
  EXPECT_EQ(size, bytes.size());
  EXPECT_EQ(questions.processes.argumentBlock(name.data(), 3, bytes.data(), &size), -1)
      << "a block that does not fit is not cut";
  EXPECT_EQ(questions.block(10), "\2\0\0\0/bin/ls\0ls\0a much longer one\0"s);
}

TEST(RecordedProcesses, AHugeArgumentBlockTellsItsRealSize) {
  RecordedProcesses machine;
  auto made = process(10);
  made.executable = "/bin/x";
  made.commandLine = std::string(99'999, 'a') + '\0';
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_EQ(questions.block(10)->size(), 4U + 7U + 100'000U);
}

TEST(RecordedProcesses, OtherNamesOfSysctlAreRefused) {
  RecordedProcesses machine;
  machine.put(process(10));
  ProcessQuestions questions(machine.sources());
  std::size_t size = 0;
  const std::array<int, 3> other{CTL_KERN, 48, 10};
  EXPECT_EQ(questions.processes.argumentBlock(other.data(), 3, nullptr, &size), -1);
  const std::array<int, 3> name{CTL_KERN, KERN_PROCARGS2, 10};
  EXPECT_EQ(questions.processes.argumentBlock(name.data(), 2, nullptr, &size), -1);
}

TEST(RecordedProcesses, OtherFlavorsAndSmallBuffersAreRefused) {
  RecordedProcesses machine;
  machine.put(process(10));
  ProcessQuestions questions(machine.sources());
  std::array<char, 4096> buffer{};
  LinuxProcesses& processes = questions.processes;
  EXPECT_LT(processes.processInfo(10, 2, buffer.data(), 4096), 1);
  EXPECT_LT(processes.processInfo(10, PROC_PIDTBSDINFO, buffer.data(), 135), 1);
  EXPECT_EQ(processes.processInfo(10, PROC_PIDTBSDINFO, buffer.data(), 137), 136);
  EXPECT_LT(processes.processInfo(10, PROC_PIDTBSDINFO, buffer.data(), -1), 1);
  EXPECT_EQ(processes.resourceUsage(10, 3, buffer.data()), -1);
  EXPECT_LT(processes.descriptorInfo(10, 0, 1, buffer.data(), 792), 1);
  EXPECT_LT(processes.descriptorInfo(10, 0, PROC_PIDFDSOCKETINFO, buffer.data(), 791), 1);
}

TEST(RecordedProcesses, AProcessThatTookTheNumberIsNotAnsweredForTheOneThatWasPicked) {
  RecordedProcesses machine;
  auto made = process(10);
  made.executable = "/bin/first";
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  ASSERT_TRUE(questions.basic(10));
  machine.remove(10);
  made.startTicks += 1;
  made.executable = "/bin/second";
  made.commandLine = "second\0"s;
  made.folder = "/second";
  machine.put(made);
  EXPECT_FALSE(questions.usage(10));
  EXPECT_FALSE(questions.path(10));
  EXPECT_FALSE(questions.folder(10));
  EXPECT_FALSE(questions.block(10));
  EXPECT_FALSE(questions.basic(10)) << "missing once, so that nobody mixes the two";
  EXPECT_TRUE(questions.basic(10));
  EXPECT_EQ(questions.path(10), "/bin/second");
}

TEST(RecordedProcesses, TheResponsibleProcessIsFoundAndRememberedAfterItsParentsHaveGone) {
  RecordedProcesses machine;
  auto application = process(10);
  application.executable = "/apps/Term.app/Contents/MacOS/term";
  machine.put(application);
  auto shell = process(11);
  shell.parent = 10;
  shell.session = 11;
  machine.put(shell);
  auto server = process(12);
  server.parent = 11;
  server.session = 12;
  machine.put(server);
  ProcessQuestions questions(machine.sources());
  questions.pids();
  EXPECT_EQ(questions.processes.responsiblePid(12), 10);
  EXPECT_EQ(questions.processes.responsiblePid(10), 10);
  EXPECT_EQ(questions.processes.responsiblePid(99), 0);
  machine.remove(11);
  server.parent = 1;
  machine.put(server);
  machine.seconds += 2;
  questions.pids();
  EXPECT_EQ(questions.processes.responsiblePid(12), 10) << "remembered";
  application.startTicks += 7;
  machine.put(application);
  questions.pids();
  EXPECT_EQ(questions.processes.responsiblePid(12), 0) << "another process has the number now";
}

TEST(RecordedProcesses, HugeFiguresDoNoHarm) {
  RecordedProcesses machine;
  auto made = process(10);
  constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
  made.startTicks = largest;
  made.userTicks = largest;
  made.systemTicks = largest;
  made.anonymousKilobytes = largest;
  made.swapKilobytes = largest / 1024;
  made.disk = {largest, largest};
  made.switches = {largest, 1};
  machine.put(made);
  ProcessQuestions questions(machine.sources());
  EXPECT_THAT(questions.pids(), ElementsAre(10));
  EXPECT_TRUE(questions.basic(10));
  const auto usage = questions.usage(10);
  ASSERT_TRUE(usage);
  EXPECT_EQ(usage->ri_phys_footprint, largest / 1024 * 1024) << "memory that does not fit is none";
  EXPECT_EQ(usage->ri_diskio_bytesread, largest);
}

}  // namespace
}  // namespace korvantis
