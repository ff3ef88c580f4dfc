#include "ui/panes/AppGroupRows.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "core/FixedDecimals.h"
#include "ui/panes/RowWords.h"
#include "ui/views/ModelText.h"

namespace korvantis::AppGroupRows {

namespace {

/// Above this, in percent of one core, an application is shown as busy.
constexpr double hotCPUPercent = 50;
constexpr std::size_t mostProcesses = 15;

ProcessesRow headerRow(const AppGroup& group, const QuitSafetyResult& safety, bool isExpanded) {
  ProcessesRow row;
  row.kind = ProcessesRowKind::appGroup;
  row.identity = "appGroup " + group.id;
  row.groupID = textOf(group.id);
  row.bundlePath = textOf(group.bundlePath.value_or(""));
  row.isExpanded = isExpanded;
  row.title = textOf(group.name);
  row.subtitle = textOf(safety.reason);
  const std::size_t count = group.processes.size();
  if (count >= 2) row.countText = QString::number(count) + QStringLiteral(" helpers");
  row.verdict = textOf(rawValue(safety.verdict));
  row.cpuText = RowWords::percent(group.cpuPercent);
  row.isHot = group.cpuPercent > hotCPUPercent;
  row.memoryText = RowWords::bytes(group.memoryBytes);
  row.energyText = textOf(fixedDecimals(group.energyWatts, 1)) + QStringLiteral(" W");
  row.networkText = RowWords::rate(group.networkInBytesPerSec + group.networkOutBytesPerSec);
  return row;
}

ProcessesRow captionRow(const AppGroup& group, const std::string& name, const QString& title) {
  ProcessesRow row;
  row.kind = ProcessesRowKind::caption;
  row.identity = "caption " + name + ' ' + group.id;
  row.groupID = textOf(group.id);
  row.title = title;
  return row;
}

ProcessesRow shareRow(const AppGroup& group, const HelperShare& share) {
  ProcessesRow row;
  row.kind = ProcessesRowKind::helperShare;
  row.identity = "helperShare " + std::string(share.identity()) + ' ' + group.id;
  row.groupID = textOf(group.id);
  row.title = textOf(rawValue(share.role));
  row.countText = QString::number(share.processCount) + u'p';
  row.memoryText = RowWords::bytes(share.memoryBytes);
  row.cpuText = RowWords::percentCPU(share.cpuPercent);
  return row;
}

ProcessesRow processRow(const AppGroup& group, const ProcessSample& process) {
  ProcessesRow row = RowWords::processRow(ProcessesRowKind::process, group.id, process);
  row.groupID = textOf(group.id);
  row.roleText = textOf(rawValue(process.helperRole));
  row.ports = RowWords::ports(process.servicePorts());
  row.cpuText = RowWords::percent(process.cpuPercent);
  return row;
}

void appendDetails(std::vector<ProcessesRow>& rows, const AppGroup& group) {
  if (!group.helperShares.empty()) {
    rows.push_back(captionRow(group, "roles", QStringLiteral("HELPER BREAKDOWN BY ROLE")));
    for (const HelperShare& share : group.helperShares) rows.push_back(shareRow(group, share));
  }
  const QString count = QString::number(group.processes.size());
  rows.push_back(
      captionRow(group, "tree", QStringLiteral("PROCESS TREE (") + count + QStringLiteral(")")));
  const std::size_t shown = std::min(group.processes.size(), mostProcesses);
  for (std::size_t index = 0; index < shown; ++index) {
    rows.push_back(processRow(group, group.processes[index]));
  }
}

}  // namespace

void append(std::vector<ProcessesRow>& rows, const AppGroup& group, const QuitSafetyResult& safety,
            bool isExpanded) {
  const std::size_t first = rows.size();
  rows.push_back(headerRow(group, safety, isExpanded));
  if (isExpanded) appendDetails(rows, group);
  RowWords::closeCard(rows, first);
}

}  // namespace korvantis::AppGroupRows
