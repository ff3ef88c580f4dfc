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

/// What one call of `sampleProcesses` works on: what the last one left, and what it leaves itself.
struct LibProcSampler::Pass {
  double now = 0;
  bool portScanIsDue = false;
  std::uint32_t ownUID = 0;
  const GPUTimeByPID& perPIDGPUTime;
  std::shared_ptr<const Counters> previousCounters;
  std::shared_ptr<const StaticCache> staticCache;
  std::shared_ptr<const PortCache> cachedPortsByPID;
  // Only processes whose counters could be read are in these, so that whatever is gone or became
  // unreadable is forgotten.
  Counters newCounters;
  StaticCache newStaticCache;
  PortCache newPorts;
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
  pass.newStaticCache.reserve(pids->size());
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
          .newCounters = {},
          .newStaticCache = {},
          .newPorts = {}};
}

void LibProcSampler::endPass(Pass&& pass) {
  pass.previousCounters = std::make_shared<const Counters>(std::move(pass.newCounters));
  pass.staticCache = std::make_shared<const StaticCache>(std::move(pass.newStaticCache));
  pass.cachedPortsByPID = std::make_shared<const PortCache>(std::move(pass.newPorts));

  // Swapped, so that the maps of the tick before are freed after the lock.
  const std::lock_guard guard(lock);
  previousCounters.swap(pass.previousCounters);
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

  const auto previous = pass.previousCounters->find(sample.pid);
  if (previous != pass.previousCounters->end()) {
    const ProcessRates rates = processRates(previous->second, counters);
    sample.cpuPercent = rates.cpuPercent;
    sample.gpuPercent = rates.gpuPercent;
    sample.diskReadBytesPerSec = rates.diskReadBytesPerSec;
    sample.diskWriteBytesPerSec = rates.diskWriteBytesPerSec;
  }
  pass.newCounters[sample.pid] = counters;
}

void LibProcSampler::attachSlowFacts(ProcessSample& sample, Pass& pass) const {
  const auto known = pass.staticCache->find(sample.pid);
  auto facts = known == pass.staticCache->end() ? nullptr : known->second;
  if (!facts || pass.now - facts->lastUpdated >= staticCacheLifeSeconds) {
    facts = std::make_shared<const CachedStaticProcInfo>(
        readStaticProcInfo(libProc, sysctl,
                           {.pid = sample.pid,
                            .name = sample.name,
                            .isOwn = sample.uid == pass.ownUID,
                            .now = pass.now}));
  }
  sample.executablePath = facts->executablePath;
  sample.arguments = facts->arguments;
  sample.responsiblePID = facts->responsiblePID;
  sample.workingDirectory = facts->workingDirectory;
  if (pass.newCounters.contains(sample.pid)) {
    pass.newStaticCache.emplace(sample.pid, std::move(facts));
  }
}

void LibProcSampler::attachPorts(ProcessSample& sample, Pass& pass) const {
  const bool isScanned = pass.portScanIsDue && sample.uid == pass.ownUID;
  const auto known = pass.cachedPortsByPID->find(sample.pid);
  const bool isKnown = known != pass.cachedPortsByPID->end();
  if (!isScanned && !isKnown) return;
  sample.listeningPorts = isScanned ? scanListeningPorts(libProc, sample.pid) : known->second;
  if (pass.newCounters.contains(sample.pid)) pass.newPorts[sample.pid] = sample.listeningPorts;
}

std::uint64_t LibProcSampler::cpuTimeNs(const rusage_info_v4& usage) const {
  WideTime time = WideTime{usage.ri_user_time} + usage.ri_system_time;
  if (machTimebaseNumer != machTimebaseDenom) time = time * machTimebaseNumer / machTimebaseDenom;
  constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
  return time > most ? most : static_cast<std::uint64_t>(time);
}

}  // namespace korvantis
