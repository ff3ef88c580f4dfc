#include "samplers/LibProcSampler.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include "platform/DarwinTypes.h"
#include "samplers/FixedText.h"
#include "samplers/ListeningPorts.h"
#include "samplers/ProcessEstimates.h"
#include "samplers/ProcessRates.h"
#include "samplers/StaticProcInfo.h"

namespace korvantis {

namespace {

constexpr std::size_t pidSlots = 4096;
constexpr std::size_t examinedSlotsLimit = pidSlots / sizeof(std::int32_t);
constexpr double staticCacheLifeSeconds = 25;
constexpr double portScanIntervalSeconds = 3.5;

/// Wide enough for the sum of two 64-bit times and its product with the time base.
__extension__ using WideTime = unsigned __int128;

/// The pids that the system lists; absent when it fails.
std::optional<std::vector<std::int32_t>> listedPIDs(const LibProcCalls& libProc) {
  std::vector<std::int32_t> pids(pidSlots);
  const int filled =
      libProc.proc_listallpids(pids.data(), static_cast<int>(pidSlots * sizeof(std::int32_t)));
  if (filled < 1) return std::nullopt;
  // The answer counts as bytes even where a system means entries, so that a quarter of the slots
  // is the most that is ever examined.
  pids.resize(std::min(static_cast<std::size_t>(filled) >> 2, examinedSlotsLimit));
  return pids;
}

std::string shortName(const proc_bsdinfo& info, std::int32_t pid) {
  if (info.pbi_name[0] != '\0') return fixedText({&info.pbi_name[0], sizeof(info.pbi_name)});
  if (info.pbi_comm[0] != '\0') return fixedText({&info.pbi_comm[0], sizeof(info.pbi_comm)});
  return "pid-" + std::to_string(pid);
}

}  // namespace

/// What one call of `sampleProcesses` works on: copies of the caches, and what it has found.
struct LibProcSampler::Pass {
  double now = 0;
  bool portScanIsDue = false;
  std::uint32_t ownUID = 0;
  const GPUTimeByPID& perPIDGPUTime;
  decltype(LibProcSampler::previousCounters) previousCounters;
  decltype(LibProcSampler::staticCache) staticCache;
  decltype(LibProcSampler::cachedPortsByPID) cachedPortsByPID;
  decltype(LibProcSampler::previousCounters) newCounters;
};

LibProcSampler::LibProcSampler(const PlatformCalls& platform)
    : clock(platform.clock),
      libProc(platform.libProc),
      sysctl(platform.sysctl),
      posix(platform.posix) {
  mach_timebase_info_data_t timebase{};
  platform.machHost.mach_timebase_info(&timebase);
  machTimebaseNumer = std::max<std::uint64_t>(timebase.numer, 1);
  machTimebaseDenom = std::max<std::uint64_t>(timebase.denom, 1);
}

std::vector<ProcessSample> LibProcSampler::sampleProcesses(const GPUTimeByPID& perPIDGPUTime) {
  const double now = clock.now();
  const auto pids = listedPIDs(libProc);
  if (!pids) return {};

  Pass pass = beginPass(now, perPIDGPUTime);
  std::vector<ProcessSample> samples;
  samples.reserve(pids->size());
  pass.newCounters.reserve(pids->size());
  for (const std::int32_t pid : *pids) {
    if (pid < 1) continue;
    if (auto sample = sampleProcess(pid, pass)) samples.push_back(std::move(*sample));
  }
  endPass(std::move(pass));
  return samples;
}

LibProcSampler::Pass LibProcSampler::beginPass(double now, const GPUTimeByPID& perPIDGPUTime) {
  const std::uint32_t ownUID = posix.getuid();
  const std::lock_guard guard(lock);
  const bool portScanIsDue = now - lastPortScanTimestamp >= portScanIntervalSeconds;
  if (portScanIsDue) lastPortScanTimestamp = now;
  return {.now = now,
          .portScanIsDue = portScanIsDue,
          .ownUID = ownUID,
          .perPIDGPUTime = perPIDGPUTime,
          .previousCounters = previousCounters,
          .staticCache = staticCache,
          .cachedPortsByPID = cachedPortsByPID,
          .newCounters = {}};
}

void LibProcSampler::endPass(Pass pass) {
  // Whatever is gone or became unreadable is forgotten here, so the caches can't outgrow the
  // process list.
  const auto hasNoCounters = [&](const auto& entry) {
    return !pass.newCounters.contains(entry.first);
  };
  std::erase_if(pass.staticCache, hasNoCounters);
  std::erase_if(pass.cachedPortsByPID, hasNoCounters);

  const std::lock_guard guard(lock);
  previousCounters.swap(pass.newCounters);
  staticCache.swap(pass.staticCache);
  cachedPortsByPID.swap(pass.cachedPortsByPID);
}

std::optional<ProcessSample> LibProcSampler::sampleProcess(std::int32_t pid, Pass& pass) const {
  proc_bsdinfo info{};
  constexpr int size = sizeof(info);
  if (libProc.proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &info, size) != size) return std::nullopt;

  ProcessSample sample;
  sample.pid = pid;
  sample.ppid = static_cast<std::int32_t>(info.pbi_ppid);
  sample.uid = info.pbi_uid;
  sample.startedAt.secondsSince1970 =
      info.pbi_start_tvsec == 0 ? pass.now : static_cast<double>(info.pbi_start_tvsec);
  sample.name = shortName(info, pid);
  measureUsage(sample, pass);
  attachSlowFacts(sample, pass);
  attachPorts(sample, pass);
  addEstimates(sample);
  return sample;
}

void LibProcSampler::measureUsage(ProcessSample& sample, Pass& pass) const {
  rusage_info_v4 usage{};
  if (libProc.proc_pid_rusage(sample.pid, RUSAGE_INFO_V4, &usage) != 0) return;
  const auto gpuTime = pass.perPIDGPUTime.find(sample.pid);
  const PreviousProcCounters counters{
      .cpuTimeNs = cpuTimeNs(usage),
      .gpuTimeNs = gpuTime == pass.perPIDGPUTime.end() ? 0 : gpuTime->second,
      .diskReadBytes = usage.ri_diskio_bytesread,
      .diskWriteBytes = usage.ri_diskio_byteswritten,
      .timestamp = pass.now};
  sample.memoryBytes = usage.ri_phys_footprint;
  sample.idleWakeups = usage.ri_pkg_idle_wkups;

  const auto previous = pass.previousCounters.find(sample.pid);
  if (previous != pass.previousCounters.end()) {
    const ProcessRates rates = processRates(previous->second, counters);
    sample.cpuPercent = rates.cpuPercent;
    sample.gpuPercent = rates.gpuPercent;
    sample.diskReadBytesPerSec = rates.diskReadBytesPerSec;
    sample.diskWriteBytesPerSec = rates.diskWriteBytesPerSec;
  }
  pass.newCounters[sample.pid] = counters;
}

void LibProcSampler::attachSlowFacts(ProcessSample& sample, Pass& pass) const {
  auto facts = pass.staticCache.find(sample.pid);
  if (facts == pass.staticCache.end() ||
      pass.now - facts->second.lastUpdated >= staticCacheLifeSeconds) {
    facts =
        pass.staticCache
            .insert_or_assign(sample.pid, readStaticProcInfo(libProc, sysctl,
                                                             {.pid = sample.pid,
                                                              .name = sample.name,
                                                              .isOwn = sample.uid == pass.ownUID,
                                                              .now = pass.now}))
            .first;
  }
  sample.executablePath = facts->second.executablePath;
  sample.arguments = facts->second.arguments;
  sample.responsiblePID = facts->second.responsiblePID;
  sample.workingDirectory = facts->second.workingDirectory;
}

void LibProcSampler::attachPorts(ProcessSample& sample, Pass& pass) const {
  if (pass.portScanIsDue && sample.uid == pass.ownUID) {
    pass.cachedPortsByPID[sample.pid] = scanListeningPorts(libProc, sample.pid);
  }
  const auto ports = pass.cachedPortsByPID.find(sample.pid);
  if (ports != pass.cachedPortsByPID.end()) sample.listeningPorts = ports->second;
}

std::uint64_t LibProcSampler::cpuTimeNs(const rusage_info_v4& usage) const {
  WideTime time = WideTime{usage.ri_user_time} + usage.ri_system_time;
  if (machTimebaseNumer != machTimebaseDenom) time = time * machTimebaseNumer / machTimebaseDenom;
  constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
  return time > most ? most : static_cast<std::uint64_t>(time);
}

}  // namespace korvantis
