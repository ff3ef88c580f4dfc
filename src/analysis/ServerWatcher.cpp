#include "analysis/ServerWatcher.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "analysis/PathNames.h"

namespace korvantis {

namespace {

/// From this on a process is at work, in percent of a core.
constexpr double busyPercent = 1.0;

using QuietSince = std::unordered_map<std::int32_t, Instant>;
using NamesByPID = std::unordered_map<std::int32_t, const std::string*>;

/// A process that holds service ports.
struct Server {
  const ProcessSample* process;
  std::vector<std::uint16_t> ports;
};

std::vector<Server> serversAmong(const std::vector<ProcessSample>& processes) {
  std::vector<Server> servers;
  for (const ProcessSample& process : processes) {
    std::vector<std::uint16_t> ports = process.servicePorts();
    if (!ports.empty()) servers.push_back({&process, std::move(ports)});
  }
  return servers;
}

/// The application's name of each server, where it has one; refers to the groups.
NamesByPID namesOfApplications(const std::vector<Server>& servers,
                               const std::vector<AppGroup>& appGroups) {
  NamesByPID names;
  for (const Server& server : servers) names.try_emplace(server.process->pid, nullptr);
  for (const AppGroup& group : appGroups) {
    for (const ProcessSample& process : group.processes) {
      const auto name = names.find(process.pid);
      if (name != names.end()) name->second = &group.name;
    }
  }
  return names;
}

/// How long the server has been quiet, and the note of it in `quietSince`; absent while it works.
std::optional<double> secondsQuiet(const ProcessSample& process, Instant now,
                                   QuietSince& quietSince) {
  if (process.cpuPercent >= busyPercent) {
    quietSince[process.pid] = now;
    return std::nullopt;
  }
  const Instant since = quietSince.try_emplace(process.pid, process.startedAt).first->second;
  return secondsBetween(since, now);
}

IdleServer idleServer(const ProcessSample& process, const std::string& projectName,
                      const std::vector<std::uint16_t>& ports, double idleSeconds) {
  return {.pid = process.pid,
          .name = process.name,
          .projectName = projectName,
          .projectPath = *process.projectPath,
          .ports = ports,
          .memoryBytes = process.memoryBytes,
          .cpuPercent = process.cpuPercent,
          .startedAt = process.startedAt,
          .idleSeconds = idleSeconds};
}

/// What stands in the row of each of the process's ports.
ListeningPortItem portRow(const ProcessSample& process, const NamesByPID& appNames) {
  ListeningPortItem row;
  row.pid = process.pid;
  row.processName = process.name;
  const std::string* const appName = appNames.at(process.pid);
  row.appName = appName == nullptr ? process.name : *appName;
  if (process.projectPath) row.projectName = lastPathComponent(*process.projectPath);
  row.projectPath = process.projectPath;
  row.memoryBytes = process.memoryBytes;
  return row;
}

void sort(ServerWatcher::Evaluation& evaluation) {
  auto& [idleServers, listeningPorts] = evaluation;
  std::stable_sort(listeningPorts.begin(), listeningPorts.end(),
                   [](const ListeningPortItem& first, const ListeningPortItem& second) {
                     return first.port < second.port;
                   });
  std::stable_sort(idleServers.begin(), idleServers.end(),
                   [](const IdleServer& first, const IdleServer& second) {
                     return first.memoryBytes > second.memoryBytes;
                   });
}

}  // namespace

ServerWatcher::ServerWatcher(Clock clockCalls) : clock(std::move(clockCalls)) {}

ServerWatcher::Evaluation ServerWatcher::evaluate(const std::vector<ProcessSample>& processes,
                                                  const std::vector<AppGroup>& appGroups) {
  const Instant now{clock.now()};
  const std::vector<Server> servers = serversAmong(processes);
  const NamesByPID appNames = namesOfApplications(servers, appGroups);
  std::unique_lock guard(lock);
  QuietSince quietSince = quietSinceByPID;
  guard.unlock();

  Evaluation evaluation;
  for (const auto& [server, ports] : servers) {
    const ProcessSample& process = *server;
    ListeningPortItem row = portRow(process, appNames);
    if (process.projectPath) {
      const std::optional<double> quiet = secondsQuiet(process, now, quietSince);
      row.isIdle = quiet && *quiet >= idleThresholdSeconds;
      if (row.isIdle) {
        evaluation.idleServers.push_back(idleServer(process, *row.projectName, ports, *quiet));
      }
    }
    for (const std::uint16_t port : ports) {
      row.port = port;
      evaluation.listeningPorts.push_back(row);
    }
  }

  std::erase_if(quietSince, [&](const auto& entry) { return !appNames.contains(entry.first); });
  guard.lock();
  quietSinceByPID.swap(quietSince);
  guard.unlock();
  sort(evaluation);
  return evaluation;
}

}  // namespace korvantis
