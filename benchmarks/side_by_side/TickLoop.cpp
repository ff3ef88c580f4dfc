/// tick_loop SECONDS [INTERVAL]: what the engine costs without a window. It ticks every INTERVAL
/// seconds (2 by default) and prints one line a tick: "plain" or "paced", processes, CPU time in
/// microseconds. A tick is plain when no port scan and next to no slow facts were due in it; a
/// process that has just begun has its slow facts read at once. Each tick stands between two
/// writes to descriptor 3, open or not, so that a tracer can tell ticks apart. The last line is
/// "pss" and the memory in kB.

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <time.h>
#include <unistd.h>

#include "engine/OstrelEngine.h"
#include "platform/PlatformCalls.h"
#include "support/PrivateFolders.h"

namespace {

using korvantis::PlatformCalls;

double cpuMicroseconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// At most one process in so many may have been new for a tick to count as plain.
constexpr std::size_t processesPerNewOne = 50;

/// Counts the calls that only paced work makes.
PlatformCalls countingPacedCalls(PlatformCalls calls, std::atomic<int>& paced) {
  calls.libProc.proc_pidpath = [&paced, next = calls.libProc.proc_pidpath](int pid, void* buffer,
                                                                           std::uint32_t size) {
    ++paced;
    return next(pid, buffer, size);
  };
  calls.libProc.proc_pidinfo = [&paced, next = calls.libProc.proc_pidinfo](int pid, int flavor,
                                                                           std::uint64_t argument,
                                                                           void* buffer, int size) {
    if (flavor == PROC_PIDLISTFDS) ++paced;
    return next(pid, flavor, argument, buffer, size);
  };
  return calls;
}

void mark(const char* text, std::size_t length) {
  // Only a tracer looks at this; a closed descriptor is as good as any.
  [[maybe_unused]] const auto written = write(3, text, length);
}

void printMemory() {
  std::ifstream rollup("/proc/self/smaps_rollup");
  for (std::string word; rollup >> word;) {
    if (word == "Pss:" && rollup >> word) {
      std::printf("pss %s\n", word.c_str());
      return;
    }
  }
}

}  // namespace

int main(int count, char** words) {
  const double seconds = count > 1 ? std::atof(words[1]) : 50;
  const std::chrono::duration<double> interval(count > 2 ? std::atof(words[2]) : 2);
  std::atomic<int> paced{0};
  PlatformCalls platform = korvantis::systemPlatformCalls();
  korvantis::test::usePrivateFolders(platform);
  korvantis::OstrelEngine engine(countingPacedCalls(platform, paced));

  const auto begin = std::chrono::steady_clock::now();
  // The first tick reads everything and is left out of the figures; one tick more than fits in.
  const int ticks = static_cast<int>(seconds / interval.count()) + 1;
  for (int tick = 0; tick < ticks; ++tick) {
    std::this_thread::sleep_until(
        begin + std::chrono::duration_cast<std::chrono::nanoseconds>(interval * tick));
    paced = 0;
    mark("begin", 5);
    const double before = cpuMicroseconds();
    const auto snapshot = engine.sampleTick({}, {});
    const double cost = cpuMicroseconds() - before;
    std::size_t processes = 0;
    for (const auto& group : snapshot.appGroups) processes += group.processes.size();
    const bool plain = static_cast<std::size_t>(paced) * processesPerNewOne <= processes;
    mark(plain ? "plain" : "paced", 5);
    if (tick > 0) std::printf("%s %zu %.0f\n", plain ? "plain" : "paced", processes, cost);
    std::fflush(stdout);
  }
  printMemory();
}
