#include <atomic>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/linux/DescriptorBudget.h"
#include "platform/linux/NumberedEntries.h"
#include "platform/linux/ProcessFolder.h"
#include "platform/linux/ProcessStat.h"
#include "support/ChildProcess.h"
#include "support/ProcessQuestions.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::ProcessQuestions;

std::size_t openDescriptors() {
  return numberedEntries(AT_FDCWD, "/proc/self/fd").value_or(std::vector<std::int32_t>()).size();
}

std::vector<ChildProcess> children(int count) {
  std::vector<ChildProcess> made;
  for (int index = 0; index < count; ++index) made.push_back(ChildProcess::prepared());
  return made;
}

/// What a tick asks about these processes; says which were missing.
std::string tick(ProcessQuestions& questions, const std::vector<ChildProcess>& processes) {
  std::string missing;
  questions.pids();
  for (const ChildProcess& process : processes) {
    const bool isThere = questions.basic(process.pid()) && questions.usage(process.pid());
    if (!isThere) missing += std::to_string(process.pid()) + " ";
  }
  return missing;
}

ProcessSources sourcesThatKeep(int count) {
  ProcessSources sources = systemProcessSources();
  sources.keptDescriptors = count;
  return sources;
}

TEST(KeptDescriptors, AreAllClosedAfterAThousandBirthsAndDeaths) {
  ProcessQuestions questions(sourcesThatKeep(1000));
  questions.pids();
  const std::size_t before = openDescriptors();
  int most = 0;
  for (int generation = 0; generation < 50; ++generation) {
    const auto born = children(20);
    for (int count = 0; count < 2; ++count) EXPECT_EQ(tick(questions, born), "");
    most = std::max(most, questions.processes.keptDescriptors());
  }
  EXPECT_GE(most, 2 * 20) << "two for each that lives";
  EXPECT_LE(most, 2 * 2 * 20 + 20) << "and no more than those of one generation before";
  // What the last listing knew as living goes with the next ones.
  questions.pids();
  questions.pids();
  EXPECT_EQ(questions.processes.keptDescriptors(), 0);
  EXPECT_EQ(openDescriptors(), before);
}

TEST(KeptDescriptors, BeyondTheirNumberAllIsOpenedAfreshWithTheSameAnswers) {
  const auto living = children(5);
  ProcessQuestions all(sourcesThatKeep(1000));
  ProcessQuestions some(sourcesThatKeep(5));
  ProcessQuestions none(sourcesThatKeep(0));
  for (int count = 0; count < 3; ++count) {
    for (ProcessQuestions* questions : {&all, &some, &none})
      EXPECT_EQ(tick(*questions, living), "");
  }
  EXPECT_GE(all.processes.keptDescriptors(), 10);
  EXPECT_EQ(some.processes.keptDescriptors(), 4) << "a folder takes two";
  EXPECT_EQ(none.processes.keptDescriptors(), 0);
  for (const ChildProcess& process : living) {
    const auto expected = all.basic(process.pid());
    const auto usage = all.usage(process.pid());
    ASSERT_TRUE(expected && usage);
    for (ProcessQuestions* questions : {&some, &none}) {
      const auto record = questions->basic(process.pid());
      ASSERT_TRUE(record);
      EXPECT_EQ(std::memcmp(&*record, &*expected, sizeof *record), 0);
      const auto figures = questions->usage(process.pid());
      ASSERT_TRUE(figures);
      EXPECT_EQ(test::cpuTime(*figures), test::cpuTime(*usage));
      EXPECT_EQ(figures->ri_phys_footprint, usage->ri_phys_footprint);
      EXPECT_EQ(figures->ri_diskio_bytesread, usage->ri_diskio_bytesread);
    }
  }
}

TEST(KeptDescriptors, AreGivenBackWhenTheProgramIsShortOfThem) {
  const auto living = children(10);
  const auto late = ChildProcess::prepared();
  const std::string answer = ChildProcess::answerOf([&] {
    ProcessQuestions questions(sourcesThatKeep(1000));
    tick(questions, living);
    const int before = questions.processes.keptDescriptors();
    // Every number below the limit is taken from here on.
    int highest = 0;
    const auto open = numberedEntries(AT_FDCWD, "/proc/self/fd");
    for (const std::int32_t number : *open) highest = std::max(highest, number);
    const rlimit limit{static_cast<rlim_t>(highest) + 1, static_cast<rlim_t>(highest) + 1};
    if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) return std::string("no limit");
    std::vector<int> taken;
    for (int number = 0; (number = ::dup(0)) >= 0;) taken.push_back(number);
    if (!questions.basic(late.pid())) return std::string("missing");
    const int after = questions.processes.keptDescriptors();
    if (before < 20 || after > before / 2) return std::string("kept ") + std::to_string(after);
    return tick(questions, living) + "all there";
  });
  EXPECT_EQ(answer, "all there");
}

TEST(KeptDescriptors, OfAProcessThatHasEndedAnswerNothing) {
  auto child = ChildProcess::prepared();
  const auto folder = ProcessFolder::open("", child.pid());
  ASSERT_TRUE(folder);
  ASSERT_TRUE(folder->keepOpen(std::make_shared<DescriptorBudget>(10)));
  EXPECT_TRUE(parseProcessStat(folder->read(ProcessFolder::File::stat)));
  child.end();
  EXPECT_EQ(folder->read(ProcessFolder::File::stat), "");
  EXPECT_EQ(errno, ESRCH);
  EXPECT_EQ(folder->read(ProcessFolder::File::io, true), "");
}

TEST(KeptDescriptors, CountFilesOnlyWhereTheyAreReadOften) {
  const auto budget = std::make_shared<DescriptorBudget>(4);
  {
    const auto folder = ProcessFolder::open("", ::getpid());
    ASSERT_TRUE(folder);
    ASSERT_TRUE(folder->keepOpen(budget));
    EXPECT_NE(folder->read(ProcessFolder::File::status), "");
    EXPECT_EQ(budget->inUse(), 2);
    EXPECT_NE(folder->read(ProcessFolder::File::status, true), "");
    EXPECT_NE(folder->read(ProcessFolder::File::status, true), "");
    EXPECT_EQ(budget->inUse(), 3);
    EXPECT_NE(folder->read(ProcessFolder::File::io, true), "");
    EXPECT_EQ(budget->inUse(), 4);
    const auto another = ProcessFolder::open("", ::getpid());
    ASSERT_TRUE(another);
    EXPECT_FALSE(another->keepOpen(budget));
    EXPECT_NE(another->read(ProcessFolder::File::stat, true), "");
  }
  EXPECT_EQ(budget->inUse(), 0);
}

TEST(KeptDescriptors, TheLimitOfTheProgramIsRaisedAsFarAsTheSystemLetsIt) {
  const auto limitAfter = [](rlim_t soft, rlim_t hard) {
    return ChildProcess::answerOf([&] {
      const rlimit limit{soft, hard};
      if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) return std::string("no limit");
      const int told = raiseDescriptorLimit();
      rlimit now{};
      ::getrlimit(RLIMIT_NOFILE, &now);
      return std::to_string(told) + " " + std::to_string(now.rlim_cur);
    });
  };
  EXPECT_EQ(limitAfter(100, 300), "300 300");
  EXPECT_EQ(limitAfter(100, 8192), "8192 8192");
  EXPECT_EQ(limitAfter(8500, 9000), "8192 8500") << "a higher one is left alone";
}

TEST(ConcurrentKeptDescriptors, GiveWholeTextsToAllThreads) {
  const auto child = ChildProcess::prepared();
  const auto budget = std::make_shared<DescriptorBudget>(4);
  auto folder = ProcessFolder::open("", child.pid());
  ASSERT_TRUE(folder);
  ASSERT_TRUE(folder->keepOpen(budget));
  std::atomic<int> faults{0};
  std::vector<std::thread> threads;
  for (int index = 0; index < 4; ++index) {
    threads.emplace_back([&] {
      for (int count = 0; count < 500; ++count) {
        const auto stat = parseProcessStat(folder->read(ProcessFolder::File::stat));
        if (!stat || stat->pid != child.pid()) ++faults;
        if (!folder->read(ProcessFolder::File::status, true).ends_with('\n')) ++faults;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(faults, 0);
  EXPECT_EQ(budget->inUse(), 3);
  folder.reset();
  EXPECT_EQ(budget->inUse(), 0);
}

}  // namespace
}  // namespace korvantis
