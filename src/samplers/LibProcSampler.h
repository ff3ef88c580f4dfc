#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <vector>

#include "core/ProcessSample.h"
#include "platform/PlatformCalls.h"
#include "samplers/CachedStaticProcInfo.h"
#include "samplers/GPUTimeByPID.h"
#include "samplers/PreviousProcCounters.h"

namespace korvantis {

/// Turns the kernel's per-process counters into one record per process and tick. It remembers
/// the counters of its last tick, so that it can state rates, and the facts that are too slow
/// to read on every tick.
class LibProcSampler {
 public:
  /// Keeps copies of the operations that it needs and asks for the time base, once.
  explicit LibProcSampler(const PlatformCalls& platform);

  /// One record per readable process, in the order of the system's own list. Rates are measured
  /// since the last call that saw the process, over at least 0.15 s; a process seen for the
  /// first time has rates of 0. `perPIDGPUTime` holds the GPU time used so far. Never fails: a
  /// figure that can't be read is 0, empty or absent, and with no process list the answer is
  /// empty. Any thread; calls may overlap, and the one that ends last leaves its counters.
  std::vector<ProcessSample> sampleProcesses(const GPUTimeByPID& perPIDGPUTime);

 private:
  struct Pass;

  Pass beginPass(double now, const GPUTimeByPID& perPIDGPUTime);
  void endPass(Pass&& pass);
  std::optional<ProcessSample> sampleProcess(std::int32_t pid, Pass& pass) const;
  void measureUsage(ProcessSample& sample, Pass& pass) const;
  void attachSlowFacts(ProcessSample& sample, Pass& pass) const;
  void attachPorts(ProcessSample& sample, Pass& pass) const;
  std::uint64_t cpuTimeNs(const rusage_info_v4& usage) const;

  Clock clock;
  LibProcCalls libProc;
  SysctlCalls sysctl;
  PosixCalls posix;

  using Counters = std::unordered_map<std::int32_t, PreviousProcCounters>;
  using StaticCache = std::unordered_map<std::int32_t, std::shared_ptr<const CachedStaticProcInfo>>;
  using PortCache = std::unordered_map<std::int32_t, std::vector<std::uint16_t>>;

  std::mutex lock;
  // A finished tick's maps are never written again, so that the next tick can share them.
  std::shared_ptr<const Counters> previousCounters = std::make_shared<Counters>();
  std::shared_ptr<const StaticCache> staticCache = std::make_shared<StaticCache>();
  std::shared_ptr<const PortCache> cachedPortsByPID = std::make_shared<PortCache>();
  double lastPortScanTimestamp = 0;
  std::uint64_t machTimebaseNumer = 1;
  std::uint64_t machTimebaseDenom = 1;
};

}  // namespace korvantis
