#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

#include "support/ChildProcess.h"
#include "support/ListeningPort.h"
#include "support/ProcessQuestions.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::cpuTime;
using test::ListeningPort;
using test::ProcessQuestions;

constexpr uid_t nobody = 65534;

bool becomeNobody() {
  return ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
         ::setresuid(nobody, nobody, nobody) == 0 && ::prctl(PR_SET_DUMPABLE, 1) == 0;
}

class LivePrivilege : public testing::Test {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  }
};

TEST_F(LivePrivilege, WhatIsRefusedOfAnotherUsersProcessDegradesAndTheRestIsReal) {
  const auto other = ChildProcess::program("/bin/sleep", {"/bin/sleep", "1000"});
  const ListeningPort port;
  const std::string answer = ChildProcess::answerOf([&] {
    std::ostringstream text;
    if (!becomeNobody()) return std::string("still privileged");
    ProcessQuestions questions(systemProcessSources());
    const auto pids = questions.pids();
    text << (std::count(pids.begin(), pids.end(), other.pid())) << " ";
    const auto record = questions.basic(other.pid());
    text << (record ? record->pbi_uid : 99) << " ";
    const auto usage = questions.usage(other.pid());
    text << (usage && cpuTime(*usage) > 0 && usage->ri_phys_footprint > 0) << " ";
    text << (usage ? usage->ri_diskio_bytesread + usage->ri_diskio_byteswritten : 99) << " ";
    text << questions.path(other.pid()).value_or("none") << " ";
    text << questions.folder(other.pid()).value_or("none") << " ";
    text << questions.descriptors(other.pid()).size() << " ";
    text << test::blockWords(questions.block(other.pid()).value_or("")).size() << " ";
    text << questions.ports(::getppid()).size() << " ";
    text << questions.processes.kill(other.pid(), SIGKILL) << " " << (errno == EPERM);
    return text.str();
  });
  EXPECT_EQ(answer, "1 0 1 0 /bin/sleep none 0 2 0 -1 1");
  EXPECT_FALSE(other.hasEnded());
}

TEST_F(LivePrivilege, TheUsersOwnProcessesComeFirstInTheList) {
  const std::string answer = ChildProcess::answerOf([] {
    if (!becomeNobody()) return std::string("still privileged");
    const auto child = ChildProcess::prepared();
    ProcessQuestions questions(systemProcessSources());
    const auto pids = questions.pids();
    std::ostringstream text;
    bool isOthersSeen = false;
    for (const int pid : pids) {
      const auto record = questions.basic(pid);
      if (!record) continue;
      if (record->pbi_uid != nobody) isOthersSeen = true;
      if (record->pbi_uid == nobody && isOthersSeen) text << "late " << pid << " ";
    }
    text << (pids.at(0) == child.pid()) << " " << isOthersSeen;
    return text.str();
  });
  EXPECT_EQ(answer, "1 1");
}

TEST_F(LivePrivilege, OwnProcessesAreReadInFull) {
  const std::string answer = ChildProcess::answerOf([] {
    if (!becomeNobody()) return std::string("still privileged");
    const ListeningPort port;
    ProcessQuestions questions(systemProcessSources());
    questions.pids();
    std::ostringstream text;
    text << questions.basic(::getpid())->pbi_uid << " " << questions.path(::getpid()).has_value()
         << " " << questions.folder(::getpid()).has_value() << " "
         << questions.ports(::getpid()).count(port.port());
    return text.str();
  });
  EXPECT_EQ(answer, "65534 1 1 1");
}

TEST_F(LivePrivilege, DiskBytesRefusedOnceAfterTheyWereReadableHoldTheLastValue) {
  const std::string answer = ChildProcess::answerOf([] {
    if (!becomeNobody()) return std::string("still privileged");
    const auto child = ChildProcess::prepared([] {
      std::string name = "/tmp/korvantis-disk-XXXXXX";
      const int file = ::mkstemp(name.data());
      const std::string bytes(1'000'000, 'x');
      if (::write(file, bytes.data(), bytes.size()) > 0) ::fsync(file);
      ::unlink(name.c_str());
      ::signal(SIGUSR1, [](int) { ::prctl(PR_SET_DUMPABLE, 0); });
    });
    ProcessQuestions questions(systemProcessSources());
    const auto before = questions.usage(child.pid());
    ::kill(child.pid(), SIGUSR1);
    const std::string io = "/proc/" + std::to_string(child.pid()) + "/io";
    for (int open = 0; open >= 0;) {
      open = ::open(io.c_str(), O_RDONLY | O_CLOEXEC);
      if (open >= 0) ::close(open);
    }
    questions.pids();
    const auto after = questions.usage(child.pid());
    ProcessQuestions others(systemProcessSources());
    const auto never = others.usage(child.pid());
    std::ostringstream text;
    text << (before->ri_diskio_byteswritten >= 1'000'000) << " "
         << (after->ri_diskio_byteswritten == before->ri_diskio_byteswritten) << " "
         << never->ri_diskio_byteswritten << " " << others.basic(child.pid())->pbi_uid;
    return text.str();
  });
  EXPECT_EQ(answer, "1 1 0 65534");
}

}  // namespace
}  // namespace korvantis
