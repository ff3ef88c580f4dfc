#include <gmock/gmock.h>
#include <string>

#include "support/ProcessQuestions.h"
#include "support/RecordedProcesses.h"

namespace korvantis {
namespace {

using test::ProcessQuestions;
using test::RecordedProcess;
using test::RecordedProcesses;
using testing::ElementsAre;
using testing::IsEmpty;

std::string socketLine(const std::string& port, const std::string& state, int user, int inode) {
  return "0: 0100007F:" + port + " 00000000:0000 " + state + " 0:0 0:0 0 " + std::to_string(user) +
         " 0 " + std::to_string(inode) + " 1\n";
}

RecordedProcess server() {
  RecordedProcess process;
  process.pid = 10;
  process.descriptors = {{0, "/dev/null"},
                         {3, "socket:[77]"},
                         {4, "socket:[78]"},
                         {5, "pipe:[79]"},
                         {6, "socket:[80]"}};
  return process;
}

TEST(RecordedPorts, ListeningSocketsOfBothVersionsAreReadFromTheFilesWhenNothingElseAnswers) {
  RecordedProcesses machine;
  machine.put(server());
  machine.files.write("proc/net/tcp", "header\n" + socketLine("1F90", "0A", 501, 77) +
                                          socketLine("1F91", "01", 501, 78));
  machine.files.write("proc/net/tcp6", "header\n" + socketLine("0050", "0A", 501, 80));
  for (const bool isAsked : {false, true}) {
    ProcessSources sources = machine.sources();
    if (isAsked) sources.listeningSockets = [] { return std::nullopt; };
    ProcessQuestions questions(sources);
    questions.pids();
    EXPECT_THAT(questions.ports(10), ElementsAre(80, 8080));
    EXPECT_EQ(questions.port(10, 4), 0) << "connected, not listening";
    EXPECT_EQ(questions.port(10, 5), 0) << "a pipe";
    EXPECT_EQ(questions.port(10, 7), 0) << "closed";
  }
}

TEST(RecordedPorts, DescriptorsAreListedWithTheirTypes) {
  RecordedProcesses machine;
  machine.put(server());
  machine.files.write("proc/net/tcp", socketLine("1F90", "0A", 501, 77));
  ProcessQuestions questions(machine.sources());
  const auto listed = questions.descriptors(10);
  ASSERT_EQ(listed.size(), 5U);
  EXPECT_EQ(listed[0].proc_fdtype, 1U);
  EXPECT_EQ(listed[1].proc_fd, 3);
  EXPECT_EQ(listed[1].proc_fdtype, 2U);
  EXPECT_EQ(listed[3].proc_fdtype, 1U);
  EXPECT_EQ(questions.descriptors(10, 16).size(), 2U);
  EXPECT_EQ(questions.descriptors(10, 7).size(), 0U);
}

TEST(RecordedPorts, WithoutASocketOfTheUserNoDescriptorIsWalked) {
  RecordedProcesses machine;
  machine.put(server());
  machine.files.write("proc/net/tcp", socketLine("1F90", "0A", 0, 77));
  ProcessQuestions questions(machine.sources());
  EXPECT_THAT(questions.descriptors(10), IsEmpty());
}

TEST(RecordedPorts, WithoutAnySourceThereAreNoPorts) {
  RecordedProcesses machine;
  machine.put(server());
  ProcessQuestions questions(machine.sources());
  EXPECT_THAT(questions.ports(10), IsEmpty());
}

TEST(RecordedPorts, TheKernelIsAskedOnceForAllProcessesOfAPass) {
  RecordedProcesses machine;
  machine.put(server());
  RecordedProcess other = server();
  other.pid = 11;
  machine.put(other);
  int asked = 0;
  std::uint16_t port = 80;
  ProcessSources sources = machine.sources();
  sources.listeningSockets = [&] {
    ++asked;
    return std::optional(std::vector<ListeningSocket>{{77, port, 501, false}});
  };
  ProcessQuestions questions(sources);
  questions.pids();
  EXPECT_EQ(asked, 0) << "a pass without a scan asks nothing";
  EXPECT_THAT(questions.ports(10), ElementsAre(80));
  EXPECT_THAT(questions.ports(11), ElementsAre(80));
  EXPECT_EQ(asked, 1);
  port = 81;
  questions.pids();
  EXPECT_THAT(questions.ports(10), ElementsAre(81));
  EXPECT_EQ(asked, 2);
}

TEST(RecordedPorts, ADescriptorClosedOrReusedAfterTheListGivesNoWrongPort) {
  RecordedProcesses machine;
  machine.put(server());
  ProcessSources sources = machine.sources();
  sources.listeningSockets = [] {
    return std::optional(std::vector<ListeningSocket>{
        {77, 80, 501, false}, {78, 81, 501, false}, {80, 82, 501, false}});
  };
  ProcessQuestions questions(sources);
  questions.pids();
  ASSERT_EQ(questions.descriptors(10).size(), 5U);
  machine.files.remove("proc/10/fd/3");
  machine.files.link("proc/10/fd/4", "socket:[999]");
  machine.files.link("proc/10/fd/6", "/etc/hosts");
  for (const int descriptor : {3, 4, 6}) EXPECT_EQ(questions.port(10, descriptor), 0);
}

TEST(RecordedPorts, OnlyTheFirst128DescriptorsAreListed) {
  RecordedProcesses machine;
  RecordedProcess process = server();
  for (int descriptor = 0; descriptor < 300; ++descriptor) {
    process.descriptors[descriptor] = "socket:[77]";
  }
  machine.put(process);
  machine.files.write("proc/net/tcp", socketLine("1F90", "0A", 501, 77));
  ProcessQuestions questions(machine.sources());
  EXPECT_EQ(questions.descriptors(10).size(), 128U);
  EXPECT_EQ(questions.descriptors(10, 65536).size(), 128U);
}

}  // namespace
}  // namespace korvantis
