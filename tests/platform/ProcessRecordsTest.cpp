#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "platform/linux/ProcessRecords.h"

namespace korvantis {
namespace {

constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

TEST(ProcessRecords, TicksBecomeNanosecondsExactly) {
  EXPECT_EQ(ProcessRecords::nanoseconds(0, 100), 0U);
  EXPECT_EQ(ProcessRecords::nanoseconds(1, 100), 10'000'000U);
  EXPECT_EQ(ProcessRecords::nanoseconds(123, 100), 1'230'000'000U);
  EXPECT_EQ(ProcessRecords::nanoseconds(3, 1024), 2'929'687U);
  EXPECT_EQ(ProcessRecords::nanoseconds(largest, 100), largest);
}

TEST(ProcessRecords, TheStartIsTheBootPlusTheTicks) {
  ProcessStat stat;
  stat.startTicks = 180;
  const auto record = ProcessRecords::basicInformation(stat, {}, "", 1'000'000'250'000'000, 100);
  EXPECT_EQ(record.pbi_start_tvsec, 1'000'002U);
  EXPECT_EQ(record.pbi_start_tvusec, 50'000U);
}

TEST(ProcessRecords, OwnersNamesAndParentsStandInTheirPlaces) {
  ProcessStat stat;
  stat.pid = 42;
  stat.parent = 7;
  stat.group = 40;
  stat.name = "comm";
  stat.nice = -5;
  ProcessStatus status;
  status.users = {1, 2, 3, 4};
  status.groups = {5, 6, 7, 8};
  const auto record = ProcessRecords::basicInformation(stat, status, "long name", 0, 100);
  EXPECT_EQ(record.pbi_pid, 42U);
  EXPECT_EQ(record.pbi_ppid, 7U);
  EXPECT_EQ(record.pbi_pgid, 40U);
  EXPECT_EQ(record.pbi_ruid, 1U);
  EXPECT_EQ(record.pbi_uid, 2U);
  EXPECT_EQ(record.pbi_svuid, 3U);
  EXPECT_EQ(record.pbi_gid, 6U);
  EXPECT_EQ(record.pbi_nice, -5);
  EXPECT_STREQ(record.pbi_comm, "comm");
  EXPECT_STREQ(record.pbi_name, "long name");
}

TEST(ProcessRecords, NamesThatAreTooLongKeepTheirZeroByte) {
  ProcessStat stat;
  stat.name = std::string(64, 'k');
  const auto record = ProcessRecords::basicInformation(stat, {}, std::string(64, 'n'), 0, 100);
  EXPECT_EQ(std::string(record.pbi_comm), std::string(15, 'k'));
  EXPECT_EQ(std::string(record.pbi_name), std::string(31, 'n'));
}

TEST(ProcessRecords, StatesHaveTheirNumbers) {
  const auto number = [](char state) {
    ProcessStat stat;
    stat.state = state;
    return ProcessRecords::basicInformation(stat, {}, "", 0, 100).pbi_status;
  };
  EXPECT_EQ(number('R'), 2U);
  for (const char state : {'S', 'D', 'I'}) EXPECT_EQ(number(state), 3U) << state;
  for (const char state : {'T', 't'}) EXPECT_EQ(number(state), 4U) << state;
  for (const char state : {'Z', 'X'}) EXPECT_EQ(number(state), 5U) << state;
}

TEST(ProcessRecords, CpuTimesSumUpToTheWholeWhateverTheTicksSay) {
  const auto split = ProcessRecords::resourceUsage(1'000, 400, {}, {}, 0);
  EXPECT_EQ(split.ri_user_time, 600U);
  EXPECT_EQ(split.ri_system_time, 400U);
  const auto capped = ProcessRecords::resourceUsage(1'000, 5'000, {}, {}, 0);
  EXPECT_EQ(capped.ri_user_time, 0U);
  EXPECT_EQ(capped.ri_system_time, 1'000U);
}

TEST(ProcessRecords, TheFootprintIsOwnMemoryInRamAndInSwap) {
  ProcessStatus status;
  status.anonymousBytes = 4096;
  status.swapBytes = 1024;
  const auto record = ProcessRecords::resourceUsage(0, 0, status, {11, 22}, 33);
  EXPECT_EQ(record.ri_phys_footprint, 5120U);
  EXPECT_EQ(record.ri_diskio_bytesread, 11U);
  EXPECT_EQ(record.ri_diskio_byteswritten, 22U);
  EXPECT_EQ(record.ri_pkg_idle_wkups, 33U);
}

TEST(ProcessRecords, AListeningSocketHasItsPortInNetworkOrder) {
  const auto record = ProcessRecords::listeningSocket({5, 0x1234, 0, true});
  EXPECT_EQ(record.psi.soi_kind, SOCKINFO_TCP);
  EXPECT_EQ(record.psi.soi_proto.pri_tcp.tcpsi_state, TSI_S_LISTEN);
  EXPECT_EQ(record.psi.soi_proto.pri_tcp.tcpsi_ini.insi_lport, 0x3412);
  EXPECT_EQ(record.psi.soi_proto.pri_tcp.tcpsi_ini.insi_vflag, 2);
  EXPECT_NE(ProcessRecords::plainSocket().psi.soi_kind, SOCKINFO_TCP);
}

}  // namespace
}  // namespace korvantis
