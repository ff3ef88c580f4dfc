#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <limits>
#include <signal.h>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ChildProcess.h"
#include "support/ProcessQuestions.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using namespace std::string_literals;
using test::blockWords;
using test::ChildProcess;
using test::cpuTime;
using test::ProcessQuestions;
using test::TemporaryFolder;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::uint64_t million = 1'000'000;
const std::string sleeper = "/bin/sleep";

std::string fileText(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

std::uint64_t statusNumber(int pid, const std::string& name) {
  const std::string text = fileText("/proc/" + std::to_string(pid) + "/status");
  const std::size_t at = text.find("\n" + name + ":");
  return at == std::string::npos ? 0 : std::stoull(text.substr(at + name.size() + 2));
}

/// Uses up CPU time of the calling process.
void burn(double seconds) {
  const auto spent = [] {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
  };
  const double end = spent() + seconds;
  while (spent() < end) {
  }
}

std::string copyOfSleeper(const TemporaryFolder& folder, const std::string& name) {
  const std::string path = folder.path(name);
  std::filesystem::copy_file(std::filesystem::canonical(sleeper), path);
  return path;
}

TEST(LiveProcesses, ThisProcessIsListedAndDescribed) {
  ProcessQuestions questions(systemProcessSources());
  EXPECT_THAT(questions.pids(), Contains(::getpid()));
  const auto record = questions.basic(::getpid());
  ASSERT_TRUE(record);
  EXPECT_EQ(record->pbi_ppid, static_cast<std::uint32_t>(::getppid()));
  EXPECT_EQ(record->pbi_uid, ::geteuid());
  EXPECT_EQ(questions.path(::getpid()), std::filesystem::canonical("/proc/self/exe").string());
  EXPECT_EQ(questions.folder(::getpid()), std::filesystem::current_path().string());
}

TEST(LiveProcesses, TheNewestProcessIsListedFirstAndGoneWhenItHasEnded) {
  ProcessQuestions questions(systemProcessSources());
  auto child = ChildProcess::prepared();
  const pid_t pid = child.pid();
  const auto pids = questions.pids();
  EXPECT_THAT(pids, Contains(pid));
  EXPECT_LT(std::find(pids.begin(), pids.end(), pid),
            std::find(pids.begin(), pids.end(), ::getpid()));
  child.end();
  EXPECT_THAT(questions.pids(), Not(Contains(pid)));
  EXPECT_FALSE(questions.basic(pid));
  EXPECT_FALSE(questions.usage(pid));
}

TEST(LiveProcesses, KernelThreadsAreNotListed) {
  ProcessQuestions questions(systemProcessSources());
  for (const int pid : questions.pids()) {
    const auto stat = parseProcessStat(fileText("/proc/" + std::to_string(pid) + "/stat"));
    EXPECT_FALSE(stat && stat->isKernelThread) << pid;
  }
}

TEST(LiveProcesses, ANameWithParenthesesBlanksNewlinesAndBadBytesIsReadWhole) {
  const auto child = ChildProcess::prepared([] { ::prctl(PR_SET_NAME, "a) b (c\n\xff"); });
  ProcessQuestions questions(systemProcessSources());
  EXPECT_THAT(questions.pids(), Contains(child.pid()));
  const auto record = questions.basic(child.pid());
  ASSERT_TRUE(record);
  EXPECT_STREQ(record->pbi_comm, "a) b (c\n\xff");
  EXPECT_STREQ(record->pbi_name, "a) b (c\n\xff");
  EXPECT_EQ(record->pbi_ppid, static_cast<std::uint32_t>(::getpid()));
  EXPECT_EQ(questions.usage(child.pid())->ri_phys_footprint % 1024, 0U);
}

TEST(LiveProcesses, AnEmptyNameStaysEmpty) {
  const auto child = ChildProcess::prepared([] { ::prctl(PR_SET_NAME, ""); });
  ProcessQuestions questions(systemProcessSources());
  const auto record = questions.basic(child.pid());
  ASSERT_TRUE(record);
  EXPECT_STREQ(record->pbi_comm, "");
  EXPECT_STREQ(record->pbi_name, "");
}

TEST(LiveProcesses, ACutNameIsMendedFromTheExecutable) {
  const TemporaryFolder folder;
  const std::string path = copyOfSleeper(folder, "a_program_with_a_long_name");
  const auto child = ChildProcess::program(path, {"x", "1000"});
  ProcessQuestions questions(systemProcessSources());
  const auto record = questions.basic(child.pid());
  ASSERT_TRUE(record);
  EXPECT_STREQ(record->pbi_comm, "a_program_with_");
  EXPECT_STREQ(record->pbi_name, "a_program_with_a_long_name");
}

TEST(LiveProcesses, CpuTimeAgreesWithTheTicksAndWithTheClockOfTheProcessItself) {
  ProcessQuestions questions(systemProcessSources());
  burn(0.2);
  timespec before{};
  timespec after{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &before);
  const auto usage = questions.usage(::getpid());
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &after);
  ASSERT_TRUE(usage);
  const auto nanoseconds = [](const timespec& time) {
    return static_cast<std::uint64_t>(time.tv_sec) * 1000 * million +
           static_cast<std::uint64_t>(time.tv_nsec);
  };
  EXPECT_GE(cpuTime(*usage), nanoseconds(before));
  EXPECT_LE(cpuTime(*usage), nanoseconds(after));

  ProcessSources sources = systemProcessSources();
  sources.cpuNanoseconds = nullptr;
  ProcessQuestions byTicks(sources);
  const double difference = static_cast<double>(cpuTime(*byTicks.usage(::getpid()))) -
                            static_cast<double>(cpuTime(*usage));
  EXPECT_LT(std::abs(difference), 100.0 * million);
}

TEST(LiveProcesses, CpuTimeOfEndedThreadsCounts) {
  auto child = ChildProcess::prepared([] { burn(0.3); });
  ProcessQuestions questions(systemProcessSources());
  EXPECT_GE(cpuTime(*questions.usage(child.pid())), 300 * million);
  EXPECT_LT(cpuTime(*questions.usage(child.pid())), 60'000 * million);
}

TEST(LiveProcesses, MemoryIsWhatTheProcessItselfHolds) {
  const auto child = ChildProcess::prepared([] {
    static std::string held;
    held.assign(64 * million, 'x');
  });
  ProcessQuestions questions(systemProcessSources());
  questions.basic(child.pid());
  const auto usage = questions.usage(child.pid());
  ASSERT_TRUE(usage);
  EXPECT_EQ(usage->ri_phys_footprint,
            (statusNumber(child.pid(), "RssAnon") + statusNumber(child.pid(), "VmSwap")) * 1024);
  EXPECT_GE(usage->ri_phys_footprint, 64 * million);
}

TEST(LiveProcesses, DiskAndWakeupFiguresAreThoseOfTheKernel) {
  const TemporaryFolder folder;
  const auto child = ChildProcess::prepared([&folder] {
    const int file = ::open(folder.path("data").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    const std::string bytes(4 * million, 'x');
    if (::write(file, bytes.data(), bytes.size()) > 0) ::fsync(file);
    for (int count = 0; count < 20; ++count) ::usleep(100);
  });
  ProcessQuestions questions(systemProcessSources());
  // Whether it has fallen asleep for good is seen in its state.
  while (questions.basic(child.pid())->pbi_status != 3) {
  }
  const auto usage = questions.usage(child.pid());
  ASSERT_TRUE(usage);
  const std::string io = fileText("/proc/" + std::to_string(child.pid()) + "/io");
  const auto disk = parseProcessDiskBytes(io);
  ASSERT_TRUE(disk);
  EXPECT_EQ(usage->ri_diskio_bytesread, disk->read);
  EXPECT_EQ(usage->ri_diskio_byteswritten, disk->written);
  EXPECT_GE(usage->ri_pkg_idle_wkups, 20U);
}

TEST(LiveProcesses, TheStartIsTheMomentInWholeSeconds) {
  timespec before{};
  ::clock_gettime(CLOCK_REALTIME, &before);
  const auto child = ChildProcess::prepared();
  timespec after{};
  ::clock_gettime(CLOCK_REALTIME, &after);
  ProcessQuestions questions(systemProcessSources());
  const auto record = questions.basic(child.pid());
  ASSERT_TRUE(record);
  EXPECT_GE(record->pbi_start_tvsec, static_cast<std::uint64_t>(before.tv_sec) - 1);
  EXPECT_LE(record->pbi_start_tvsec, static_cast<std::uint64_t>(after.tv_sec));
  EXPECT_LT(record->pbi_start_tvusec, million);
  ProcessQuestions others(systemProcessSources());
  EXPECT_EQ(others.basic(child.pid())->pbi_start_tvusec, record->pbi_start_tvusec)
      << "it never moves";
}

/// A shell with these further words that waits for a line which never comes.
ChildProcess waitingShell(std::vector<std::string> words) {
  words.insert(words.begin(), {"my shell", "-c", "read x; exit"});
  return ChildProcess::program("/bin/sh", std::move(words), [] {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) == 0) ::dup2(ends[0], 0);
  });
}

TEST(LiveProcesses, TheArgumentBlockHoldsEveryWord) {
  const auto child = waitingShell({"", "caf\xc3\xa9"});
  ProcessQuestions questions(systemProcessSources());
  const auto block = questions.block(child.pid());
  ASSERT_TRUE(block);
  EXPECT_EQ(block->substr(0, 4), "\5\0\0\0"s);
  EXPECT_EQ(block->substr(4, block->find('\0', 4) - 4), questions.path(child.pid()));
  EXPECT_THAT(blockWords(*block), ElementsAre("my shell", "-c", "read x; exit", "", "caf\xc3\xa9"));
}

TEST(LiveProcesses, ACommandLineOf100000BytesTellsItsRealSize) {
  const std::string word(100'000, 'w');
  const auto child = waitingShell({word});
  ProcessQuestions questions(systemProcessSources());
  const auto block = questions.block(child.pid());
  ASSERT_TRUE(block);
  EXPECT_GT(block->size(), 100'000U);
  EXPECT_THAT(blockWords(*block), ElementsAre("my shell", "-c", "read x; exit", word));
}

TEST(LiveProcesses, AZombieIsShownNoMoreAndHasNoPathArgumentsOrFolder) {
  const auto child = ChildProcess::prepared();
  child.kill();
  ProcessQuestions questions(systemProcessSources());
  EXPECT_THAT(questions.pids(), Contains(child.pid()));
  EXPECT_FALSE(questions.basic(child.pid()));
  const auto usage = questions.usage(child.pid());
  ASSERT_TRUE(usage);
  EXPECT_EQ(usage->ri_phys_footprint, 0U);
  EXPECT_FALSE(questions.path(child.pid()));
  EXPECT_FALSE(questions.block(child.pid()));
  EXPECT_FALSE(questions.folder(child.pid()));
  EXPECT_TRUE(questions.descriptors(child.pid()).empty());
}

TEST(LiveProcesses, AnExecutableThatWasRemovedKeepsItsPath) {
  const TemporaryFolder folder;
  const std::string path = copyOfSleeper(folder, "removed");
  const auto child = ChildProcess::program(path, {"removed", "1000"});
  folder.remove("removed");
  ProcessQuestions questions(systemProcessSources());
  EXPECT_EQ(questions.path(child.pid()), path);
}

TEST(LiveProcesses, AWorkingDirectoryThatWasRemovedIsAbsent) {
  const TemporaryFolder folder;
  const std::string inside = folder.folderAt("inside");
  const auto child = ChildProcess::prepared([&inside] { std::filesystem::current_path(inside); });
  ProcessQuestions questions(systemProcessSources());
  EXPECT_EQ(questions.folder(child.pid()), inside);
  folder.remove("inside");
  EXPECT_EQ(questions.folder(child.pid()), std::nullopt);
}

TEST(LiveProcesses, AWorkingDirectoryLongerThan1023BytesIsAbsentRatherThanCut) {
  const TemporaryFolder folder;
  const auto child = ChildProcess::prepared([&folder] {
    std::filesystem::current_path(folder.path());
    for (int depth = 0; depth < 6; ++depth) {
      const std::string name(200, 'd');
      std::filesystem::create_directory(name);
      std::filesystem::current_path(name);
    }
  });
  ProcessQuestions questions(systemProcessSources());
  EXPECT_EQ(questions.folder(child.pid()), std::nullopt);
  EXPECT_TRUE(questions.basic(child.pid()));
}

TEST(LiveProcesses, AProcessThatEndsBetweenTwoQuestionsFailsTheSecond) {
  ProcessQuestions questions(systemProcessSources());
  auto child = ChildProcess::prepared();
  const pid_t pid = child.pid();
  ASSERT_TRUE(questions.basic(pid));
  child.end();
  EXPECT_FALSE(questions.usage(pid));
  EXPECT_FALSE(questions.path(pid));
  EXPECT_FALSE(questions.folder(pid));
  EXPECT_FALSE(questions.block(pid));
  EXPECT_TRUE(questions.descriptors(pid).empty());
  EXPECT_EQ(questions.processes.responsiblePid(pid), 0);
}

TEST(LiveProcesses, AThreadsNumberIsNoProcess) {
  const auto child = ChildProcess::prepared([] {
    // A thread that outlives the setup; its number follows in the task folder.
    static pthread_t thread;
    ::pthread_create(
        &thread, nullptr,
        [](void*) -> void* {
          for (;;) ::pause();
        },
        nullptr);
  });
  ProcessQuestions questions(systemProcessSources());
  int threads = 0;
  const std::string tasks = "/proc/" + std::to_string(child.pid()) + "/task";
  for (const auto& entry : std::filesystem::directory_iterator(tasks)) {
    const int number = std::stoi(entry.path().filename().string());
    if (number == child.pid()) continue;
    ++threads;
    EXPECT_FALSE(questions.basic(number));
    EXPECT_FALSE(questions.usage(number));
    EXPECT_THAT(questions.pids(), Not(Contains(number)));
  }
  EXPECT_EQ(threads, 1);
}

TEST(LiveProcesses, WakeupsOfAllThreadsAreSummed) {
  const auto child = ChildProcess::prepared([] {
    static pthread_t thread;
    ::pthread_create(
        &thread, nullptr,
        [](void*) -> void* {
          for (int count = 0; count < 200; ++count) ::usleep(10);
          for (;;) ::pause();
        },
        nullptr);
  });
  const auto sum = [&child] {
    std::uint64_t switches = 0;
    const std::string tasks = "/proc/" + std::to_string(child.pid()) + "/task";
    for (const auto& entry : std::filesystem::directory_iterator(tasks)) {
      const auto status = parseProcessStatus(fileText(entry.path().string() + "/status"));
      if (status) switches += status->voluntarySwitches;
    }
    return switches;
  };
  // Over once both threads rest: 200 short sleeps, the last rest, and what the start took.
  std::uint64_t expected = 0;
  while (expected < 201 || expected != sum()) expected = sum();
  ProcessQuestions questions(systemProcessSources());
  EXPECT_GE(questions.usage(child.pid())->ri_pkg_idle_wkups, expected);
  EXPECT_LT(statusNumber(child.pid(), "voluntary_ctxt_switches"), 200U);
}

}  // namespace
}  // namespace korvantis
