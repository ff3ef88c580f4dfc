#include "platform/linux/ProcessSources.h"

#include <algorithm>
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include "platform/linux/DescriptorBudget.h"
#include "platform/linux/FileText.h"
#include "platform/linux/SocketDiagnostics.h"

namespace korvantis {
namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t clockNanoseconds(clockid_t clock) {
  timespec time{};
  if (::clock_gettime(clock, &time) != 0) return 0;
  return std::int64_t{time.tv_sec} * nanosecondsPerSecond + time.tv_nsec;
}

/// Computed once: two clocks read one after the other never give the same difference twice, and
/// the start times of all processes would move with it.
std::int64_t bootNanoseconds() {
  static const std::int64_t boot =
      clockNanoseconds(CLOCK_REALTIME) - clockNanoseconds(CLOCK_BOOTTIME);
  return boot;
}

/// The kernel's own numbering of the CPU clocks of whole processes.
std::optional<std::uint64_t> cpuNanoseconds(std::int32_t pid) {
  const auto clock = static_cast<clockid_t>((~static_cast<std::uint32_t>(pid) << 3U) | 2U);
  timespec time{};
  if (::clock_gettime(clock, &time) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(time.tv_sec) * nanosecondsPerSecond +
         static_cast<std::uint64_t>(time.tv_nsec);
}

/// Whether `/proc` counts processes as our system calls do. In a container that was given the
/// `/proc` of its host it does not: the numbers there are those of other processes here.
bool numbersAreOurs() {
  return readLinkText(AT_FDCWD, "/proc/self") == std::to_string(::getpid());
}

}  // namespace

ProcessSources systemProcessSources() {
  ProcessSources sources;
  // The other half is for all else that the program opens.
  sources.keptDescriptors = raiseDescriptorLimit() / 2;
  sources.userID = ::getuid();
  sources.bootNanoseconds = bootNanoseconds();
  sources.clockTicksPerSecond = static_cast<std::uint64_t>(std::max(1L, ::sysconf(_SC_CLK_TCK)));
  sources.steadySeconds = [] {
    return static_cast<double>(clockNanoseconds(CLOCK_BOOTTIME)) / nanosecondsPerSecond;
  };
  sources.listeningSockets = dumpListeningSockets;
  if (!numbersAreOurs()) return sources;
  sources.cpuNanoseconds = cpuNanoseconds;
  sources.pidfdOpen = [](std::int32_t pid) {
    return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
  };
  sources.pidfdSendSignal = [](int descriptor, int signal) {
    return static_cast<int>(::syscall(SYS_pidfd_send_signal, descriptor, signal, nullptr, 0));
  };
  sources.kill = [](std::int32_t pid, int signal) { return ::kill(pid, signal); };
  return sources;
}

}  // namespace korvantis
