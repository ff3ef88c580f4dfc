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

constexpr int pid = 10;

/// A machine with one process whose CPU clock the test moves.
class QuietProcesses : public testing::Test {
 protected:
  QuietProcesses() {
    process.pid = pid;
    process.name = "fifteen-letters";
    process.executable = "/opt/fifteen-letters-and-more";
    process.commandLine = std::string("first\0", 6);
    process.anonymousKilobytes = 100;
    process.swapKilobytes = 11;
    process.switches = {40};
    process.disk = {1000, 2000};
    machine.put(process);
    // Two ticks: the first one sees it for the first time.
    tick();
    tick();
  }

  ProcessSources sources() {
    ProcessSources made = machine.sources();
    made.cpuNanoseconds = [this](std::int32_t) { return cpu; };
    return made;
  }

  /// What a tick asks about the process.
  void tick() {
    machine.seconds += 2;
    questions.pids();
    record = questions.basic(pid);
    usage = questions.usage(pid);
    ports = questions.ports(pid);
  }

  /// Everything of it becomes different, as if it had run.
  void changeAll() {
    process.userID = 502;
    process.anonymousKilobytes = 300;
    process.switches = {90};
    process.disk = {5000, 6000};
    process.executable = "/opt/fifteen-letters-and-less";
    process.commandLine = std::string("second\0", 7);
    machine.put(process);
  }

  bool showsFormerFigures() const {
    return record && usage && record->pbi_uid == 501 &&
           std::string(record->pbi_name) == "fifteen-letters-and-more" &&
           usage->ri_phys_footprint == 111 * 1024 && usage->ri_diskio_bytesread == 1000 &&
           usage->ri_diskio_byteswritten == 2000 && usage->ri_pkg_idle_wkups == 40;
  }

  bool showsNewFigures() const {
    return record && usage && record->pbi_uid == 502 &&
           std::string(record->pbi_name) == "fifteen-letters-and-less" &&
           usage->ri_phys_footprint == 311 * 1024 && usage->ri_diskio_bytesread == 5000 &&
           usage->ri_diskio_byteswritten == 6000;
  }

  void replaceInStat(const std::string& before, const std::string& after) {
    std::string text = RecordedProcesses::statText(process);
    const std::size_t at = text.find(before);
    ASSERT_NE(at, std::string::npos);
    machine.files.write("proc/10/stat", text.replace(at, before.size(), after));
  }

  RecordedProcesses machine;
  RecordedProcess process;
  std::optional<std::uint64_t> cpu = 5'000'000;
  ProcessQuestions questions{sources()};
  std::optional<proc_bsdinfo> record;
  std::optional<rusage_info_v4> usage;
  std::set<std::uint16_t> ports;
};

TEST_F(QuietProcesses, AreNotReadAgainUntilTheyHaveRun) {
  changeAll();
  tick();
  EXPECT_TRUE(showsFormerFigures());
  ++*cpu;
  tick();
  EXPECT_TRUE(showsNewFigures());
  EXPECT_EQ(test::cpuTime(*usage), 5'000'001U);
}

TEST_F(QuietProcesses, AreReadInFullOnceInAWhileAllTheSame) {
  changeAll();
  machine.seconds += 2 * 25;
  tick();
  EXPECT_TRUE(showsNewFigures());
}

TEST_F(QuietProcesses, AreNotAskedForTheWakeupsOfTheirThreadsUntilTheyHaveRun) {
  process.switches = {50, 5};
  machine.put(process);
  ++*cpu;
  machine.seconds += 50;
  tick();
  EXPECT_EQ(usage->ri_pkg_idle_wkups, 55U);
  process.switches = {60, 6};
  machine.put(process);
  machine.seconds += 50;
  tick();
  EXPECT_EQ(usage->ri_pkg_idle_wkups, 55U);
  ++*cpu;
  tick();
  EXPECT_EQ(usage->ri_pkg_idle_wkups, 66U);
}

TEST_F(QuietProcesses, AreReadInFullWhenMemoryWasTakenFromThem) {
  changeAll();
  replaceInStat(" 1000000 250 ", " 1000000 249 ");
  tick();
  EXPECT_TRUE(showsNewFigures());
}

TEST_F(QuietProcesses, ShowANewParentAtOnce) {
  process.parent = 77;
  machine.put(process);
  tick();
  EXPECT_EQ(record->pbi_ppid, 77U);
  EXPECT_TRUE(showsFormerFigures());
}

TEST_F(QuietProcesses, AreReadInFullWhereThereIsNoCpuClock) {
  changeAll();
  cpu.reset();
  tick();
  EXPECT_TRUE(showsNewFigures());
}

TEST_F(QuietProcesses, AreReadAnewForASecondQuestionInTheSameTick) {
  machine.files.write("proc/10/io", "read_bytes: 5000\nwrite_bytes: 6000\n");
  tick();
  EXPECT_TRUE(showsFormerFigures());
  usage = questions.usage(pid);
  ASSERT_TRUE(usage);
  EXPECT_EQ(usage->ri_diskio_bytesread, 5000U);
}

TEST_F(QuietProcesses, AnHeirIsNotTakenForAQuietForerunnerOfTheSameCpuTime) {
  changeAll();
  process.startTicks += 1;
  machine.put(process);
  tick();
  EXPECT_FALSE(record) << "hidden for one tick";
  tick();
  EXPECT_TRUE(showsNewFigures());
}

TEST_F(QuietProcesses, KeepTheirArgumentsUntilTheyHaveRun) {
  ASSERT_THAT(test::blockWords(*questions.block(pid)), ElementsAre("first"));
  changeAll();
  tick();
  EXPECT_THAT(test::blockWords(*questions.block(pid)), ElementsAre("first"));
  ++*cpu;
  tick();
  EXPECT_THAT(test::blockWords(*questions.block(pid)), ElementsAre("second"));
}

TEST_F(QuietProcesses, AreAskedForTheirPathAndFolderEachTime) {
  process.executable = "/moved/program";
  process.folder = "/moved";
  machine.put(process);
  tick();
  EXPECT_EQ(questions.path(pid), "/moved/program");
  EXPECT_EQ(questions.folder(pid), "/moved");
}

TEST_F(QuietProcesses, AreNotWalkedForPortsAgainUntilTheyHaveRun) {
  machine.files.write("proc/net/tcp",
                      "0: 0100007F:1F90 00000000:0000 0A 0:0 0:0 0 501 0 77 1\n"
                      "1: 0100007F:1F91 00000000:0000 0A 0:0 0:0 0 501 0 78 1\n");
  process.descriptors = {{3, "socket:[77]"}};
  machine.put(process);
  ++*cpu;
  tick();
  EXPECT_THAT(ports, ElementsAre(8080));
  process.descriptors = {{3, "socket:[77]"}, {4, "socket:[78]"}};
  machine.put(process);
  tick();
  EXPECT_THAT(ports, ElementsAre(8080));
  ++*cpu;
  tick();
  EXPECT_THAT(ports, ElementsAre(8080, 8081));
}

TEST_F(QuietProcesses, ShowASocketThatBeganOrCeasedToListen) {
  const std::string other = "0: 0100007F:0050 00000000:0000 0A 0:0 0:0 0 501 0 1 1\n";
  const std::string own = "1: 0100007F:1F90 00000000:0000 0A 0:0 0:0 0 501 0 77 1\n";
  machine.files.write("proc/net/tcp", other);
  process.descriptors = {{3, "socket:[77]"}};
  machine.put(process);
  ++*cpu;
  tick();
  EXPECT_THAT(ports, ElementsAre());
  machine.files.write("proc/net/tcp", other + own);
  tick();
  EXPECT_THAT(ports, ElementsAre(8080)) << "another process can make a shared socket listen";
  machine.files.write("proc/net/tcp", other);
  tick();
  EXPECT_THAT(ports, ElementsAre());
}

}  // namespace
}  // namespace korvantis
