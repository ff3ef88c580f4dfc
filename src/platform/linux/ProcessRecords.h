#pragma once

#include <cstdint>

#include "platform/DarwinTypes.h"
#include "platform/linux/ListeningSockets.h"
#include "platform/linux/ProcessDiskBytes.h"
#include "platform/linux/ProcessStat.h"
#include "platform/linux/ProcessStatus.h"

namespace korvantis {

/// The figures of a process in the structures that the samplers read.
namespace ProcessRecords {

/// Identity, owner, names and start of a process. `longName` is its name of at most 31 bytes.
proc_bsdinfo basicInformation(const ProcessStat& stat, const ProcessStatus& status,
                              const std::string& longName, std::int64_t bootNanoseconds,
                              std::uint64_t ticksPerSecond);

/// A number of clock ticks in nanoseconds; the largest number when it does not fit.
std::uint64_t nanoseconds(std::uint64_t ticks, std::uint64_t ticksPerSecond);

/// CPU time, memory, disk bytes and wakeups of a process. Times are nanoseconds. The precise
/// `cpuNanoseconds` are given as system time up to what the ticks tell of it, the rest as user
/// time: their sum is exact.
rusage_info_v4 resourceUsage(std::uint64_t cpuNanoseconds, std::uint64_t systemNanoseconds,
                             const ProcessStatus& status, const ProcessDiskBytes& disk,
                             std::uint64_t wakeups);

/// A descriptor that is a socket but no listening one.
socket_fdinfo plainSocket();

/// A listening TCP socket.
socket_fdinfo listeningSocket(const ListeningSocket& socket);

}  // namespace ProcessRecords

}  // namespace korvantis
