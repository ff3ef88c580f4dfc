#include "ui/panes/ProcessesRows.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "core/OstrelFormat.h"
#include "ui/panes/RowWords.h"
#include "ui/views/ModelText.h"

namespace korvantis::ProcessesRows {

namespace {

constexpr std::size_t mostProcesses = 6;

ProcessesRow projectRow(const DevProject& project) {
  ProcessesRow row;
  row.kind = ProcessesRowKind::project;
  row.identity = "project " + project.path;
  row.title = textOf(project.name);
  row.subtitle = textOf(project.path);
  row.ports = RowWords::ports(project.ports);
  row.memoryText = RowWords::bytes(project.memoryBytes);
  row.cpuText = RowWords::percentCPU(project.cpuPercent);
  return row;
}

ProcessesRow projectProcessRow(const DevProject& project, const ProcessSample& process) {
  ProcessesRow row = RowWords::processRow(ProcessesRowKind::projectProcess, project.path, process);
  row.subtitle = textOf(process.arguments);
  return row;
}

ProcessesRow containerRow(const ContainerSample& container) {
  ProcessesRow row;
  row.kind = ProcessesRowKind::container;
  row.identity = "container " + container.id;
  row.title = textOf(container.name);
  row.subtitle = textOf(container.image + " · " + container.engine + " · " + container.status);
  row.ports = RowWords::ports(container.ports);
  row.cpuText = RowWords::percentCPU(container.cpuPercent);
  row.memoryText = RowWords::bytes(container.memoryBytes);
  return row;
}

ProcessesRow portRow(const EngineSnapshot& snapshot, const ListeningPortItem& item) {
  ProcessesRow row;
  row.kind = ProcessesRowKind::port;
  row.pid = item.pid;
  row.startedAt = startOf(snapshot, item.pid);
  row.identity =
      "port " + std::to_string(item.port) + ' ' + RowWords::identity(item.pid, row.startedAt);
  row.ports = RowWords::ports({item.port});
  row.title = textOf(item.processName);
  row.subtitle = textOf(item.projectPath ? *item.projectPath : item.appName);
  if (item.isIdle) row.idleText = QStringLiteral("Idle");
  row.pidText = RowWords::pid(item.pid);
  row.memoryText = RowWords::bytes(item.memoryBytes);
  return row;
}

ProcessesRow idleServerRow(const IdleServer& server) {
  ProcessesRow row;
  row.kind = ProcessesRowKind::idleServer;
  row.identity = "idleServer " + RowWords::identity(server.pid, server.startedAt);
  row.pid = server.pid;
  row.startedAt = server.startedAt;
  row.title = textOf(server.projectName + " — " + server.name);
  row.subtitle = textOf(server.projectPath);
  row.ports = RowWords::ports(server.ports);
  row.idleText = textOf("Idle " + OstrelFormat::duration(server.idleSeconds));
  row.memoryText = RowWords::bytes(server.memoryBytes);
  return row;
}

void appendCard(std::vector<ProcessesRow>& rows, ProcessesRow row) {
  rows.push_back(std::move(row));
  RowWords::closeCard(rows, rows.size() - 1);
}

const ProcessSample* processIn(const std::vector<ProcessSample>& processes, std::int32_t pid) {
  const auto found =
      std::find_if(processes.begin(), processes.end(),
                   [pid](const ProcessSample& process) { return process.pid == pid; });
  return found == processes.end() ? nullptr : &*found;
}

template <typename Owners>
const ProcessSample* processOf(const Owners& owners, std::int32_t pid) {
  for (const auto& owner : owners) {
    if (const ProcessSample* const process = processIn(owner.processes, pid)) return process;
  }
  return nullptr;
}

}  // namespace

std::vector<ProcessesRow> projects(const EngineSnapshot& snapshot) {
  std::vector<ProcessesRow> rows;
  for (const DevProject& project : snapshot.projects) {
    const std::size_t first = rows.size();
    rows.push_back(projectRow(project));
    const std::size_t shown = std::min(project.processes.size(), mostProcesses);
    for (std::size_t index = 0; index < shown; ++index) {
      rows.push_back(projectProcessRow(project, project.processes[index]));
    }
    RowWords::closeCard(rows, first);
  }
  return rows;
}

std::vector<ProcessesRow> containers(const EngineSnapshot& snapshot) {
  std::vector<ProcessesRow> rows;
  for (const ContainerSample& container : snapshot.containers) {
    appendCard(rows, containerRow(container));
  }
  return rows;
}

std::vector<ProcessesRow> ports(const EngineSnapshot& snapshot) {
  std::vector<ProcessesRow> rows;
  for (const ListeningPortItem& item : snapshot.listeningPorts) {
    appendCard(rows, portRow(snapshot, item));
  }
  return rows;
}

std::vector<ProcessesRow> idleServers(const EngineSnapshot& snapshot) {
  std::vector<ProcessesRow> rows;
  for (const IdleServer& server : snapshot.idleServers) appendCard(rows, idleServerRow(server));
  return rows;
}

std::optional<Instant> startOf(const EngineSnapshot& snapshot, std::int32_t pid) {
  const ProcessSample* process = processOf(snapshot.appGroups, pid);
  if (!process) process = processOf(snapshot.projects, pid);
  if (process) return process->startedAt;
  const auto server = std::find_if(snapshot.idleServers.begin(), snapshot.idleServers.end(),
                                   [pid](const IdleServer& each) { return each.pid == pid; });
  if (server == snapshot.idleServers.end()) return std::nullopt;
  return server->startedAt;
}

}  // namespace korvantis::ProcessesRows
