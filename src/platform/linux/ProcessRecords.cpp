#include "platform/linux/ProcessRecords.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <limits>
#include <string_view>

namespace korvantis::ProcessRecords {
namespace {

constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;

// Darwin's numbers for the states of a process and for sockets, where Linux has others.
constexpr std::uint32_t stateRunning = 2;
constexpr std::uint32_t stateSleeping = 3;
constexpr std::uint32_t stateStopped = 4;
constexpr std::uint32_t stateZombie = 5;
constexpr std::int32_t familyInternet = 2;
constexpr std::int32_t familyInternet6 = 30;
constexpr std::int32_t streamSocket = 1;
constexpr std::uint8_t internetVersion4 = 1;
constexpr std::uint8_t internetVersion6 = 2;

std::uint32_t stateNumber(char state) {
  switch (state) {
    case 'R': return stateRunning;
    case 'T':
    case 't': return stateStopped;
    case 'Z':
    case 'X': return stateZombie;
    default: return stateSleeping;
  }
}

/// Copies what fits and leaves the last byte zero.
template <std::size_t size>
void copyName(char (&target)[size], std::string_view name) {  // NOLINT: the structure's own array
  std::memcpy(target, name.data(), std::min(name.size(), size - 1));
}

}  // namespace

std::uint64_t nanoseconds(std::uint64_t ticks, std::uint64_t ticksPerSecond) {
  const std::uint64_t seconds = ticks / ticksPerSecond;
  if (seconds >= std::numeric_limits<std::int64_t>::max() / nanosecondsPerSecond) {
    return std::numeric_limits<std::uint64_t>::max();
  }
  return seconds * nanosecondsPerSecond +
         ticks % ticksPerSecond * nanosecondsPerSecond / ticksPerSecond;
}

proc_bsdinfo basicInformation(const ProcessStat& stat, const ProcessStatus& status,
                              const std::string& longName, std::int64_t bootNanoseconds,
                              std::uint64_t ticksPerSecond) {
  proc_bsdinfo record{};
  record.pbi_status = stateNumber(stat.state);
  record.pbi_pid = static_cast<std::uint32_t>(stat.pid);
  record.pbi_ppid = static_cast<std::uint32_t>(stat.parent);
  record.pbi_ruid = status.users[0];
  record.pbi_uid = status.users[1];
  record.pbi_svuid = status.users[2];
  record.pbi_rgid = status.groups[0];
  record.pbi_gid = status.groups[1];
  record.pbi_svgid = status.groups[2];
  record.pbi_pgid = static_cast<std::uint32_t>(stat.group);
  record.pbi_nice = stat.nice;
  copyName(record.pbi_comm, stat.name);
  copyName(record.pbi_name, longName);
  const std::uint64_t start =
      static_cast<std::uint64_t>(bootNanoseconds) + nanoseconds(stat.startTicks, ticksPerSecond);
  record.pbi_start_tvsec = start / nanosecondsPerSecond;
  record.pbi_start_tvusec = start % nanosecondsPerSecond / 1000;
  return record;
}

rusage_info_v4 resourceUsage(std::uint64_t cpuNanoseconds, std::uint64_t systemNanoseconds,
                             const ProcessStatus& status, const ProcessDiskBytes& disk,
                             std::uint64_t wakeups) {
  rusage_info_v4 record{};
  record.ri_system_time = std::min(systemNanoseconds, cpuNanoseconds);
  record.ri_user_time = cpuNanoseconds - record.ri_system_time;
  record.ri_pkg_idle_wkups = wakeups;
  record.ri_phys_footprint = status.anonymousBytes + status.swapBytes;
  record.ri_diskio_bytesread = disk.read;
  record.ri_diskio_byteswritten = disk.written;
  return record;
}

socket_fdinfo plainSocket() {
  return socket_fdinfo{};
}

socket_fdinfo listeningSocket(const ListeningSocket& socket) {
  socket_fdinfo record{};
  record.psi.soi_type = streamSocket;
  record.psi.soi_protocol = IPPROTO_TCP;
  record.psi.soi_family = socket.isVersion6 ? familyInternet6 : familyInternet;
  record.psi.soi_kind = SOCKINFO_TCP;
  tcp_sockinfo& tcp = record.psi.soi_proto.pri_tcp;
  tcp.tcpsi_state = TSI_S_LISTEN;
  tcp.tcpsi_ini.insi_lport = htons(socket.port);
  tcp.tcpsi_ini.insi_vflag = socket.isVersion6 ? internetVersion6 : internetVersion4;
  return record;
}

}  // namespace korvantis::ProcessRecords
