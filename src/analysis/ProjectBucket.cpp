#include "analysis/ProjectBucket.h"

#include <algorithm>
#include <cstdint>
#include <set>

#include "analysis/PathNames.h"

namespace korvantis {

namespace {

template <typename Record, typename Value>
Value sumOf(const std::vector<const Record*>& records, Value Record::*figure) {
  Value sum = 0;
  for (const Record* record : records) sum += record->*figure;
  return sum;
}

/// Each port once, ascending. Those of a container are published on purpose, so they all count.
std::vector<std::uint16_t> portsOf(const ProjectBucket& bucket) {
  std::set<std::uint16_t> ports;
  for (const ProcessSample* process : bucket.processes) {
    for (const std::uint16_t port : process->servicePorts()) ports.insert(port);
  }
  for (const ContainerSample* container : bucket.containers) {
    ports.insert(container->ports.begin(), container->ports.end());
  }
  return {ports.begin(), ports.end()};
}

/// The records, largest memory first, equals as they stood.
std::vector<ProcessSample> byMemory(std::vector<const ProcessSample*> processes) {
  std::stable_sort(processes.begin(), processes.end(),
                   [](const ProcessSample* first, const ProcessSample* second) {
                     return first->memoryBytes > second->memoryBytes;
                   });
  std::vector<ProcessSample> records;
  records.reserve(processes.size());
  for (const ProcessSample* process : processes) records.push_back(*process);
  return records;
}

}  // namespace

DevProject ProjectBucket::folded(double installedMemory) const {
  using Process = ProcessSample;
  using Container = ContainerSample;
  const auto sum = [&](auto ofProcess, auto ofContainer) {
    return sumOf(processes, ofProcess) + sumOf(containers, ofContainer);
  };
  DevProject project;
  project.name = lastPathComponent(path);
  project.path = path;
  project.cpuPercent = sum(&Process::cpuPercent, &Container::cpuPercent);
  project.gpuPercent = sumOf(processes, &Process::gpuPercent);
  project.memoryBytes = sum(&Process::memoryBytes, &Container::memoryBytes);
  const double share = static_cast<double>(project.memoryBytes) / installedMemory * 100.0;
  project.memoryPercent = std::min(share, 100.0);
  project.networkInBytesPerSec =
      sum(&Process::networkInBytesPerSec, &Container::networkRxBytesPerSec);
  project.networkOutBytesPerSec =
      sum(&Process::networkOutBytesPerSec, &Container::networkTxBytesPerSec);
  project.diskReadBytesPerSec =
      sum(&Process::diskReadBytesPerSec, &Container::blockReadBytesPerSec);
  project.diskWriteBytesPerSec =
      sum(&Process::diskWriteBytesPerSec, &Container::blockWriteBytesPerSec);
  project.energyWatts = sumOf(processes, &Process::energyWatts);
  project.ports = portsOf(*this);
  project.processes = byMemory(processes);
  project.containers.reserve(containers.size());
  for (const ContainerSample* container : containers) project.containers.push_back(*container);
  return project;
}

}  // namespace korvantis
