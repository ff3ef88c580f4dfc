#include "ui/panes/ApplicationRows.h"

#include <QStringList>
#include <algorithm>
#include <utility>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "core/ProcessSample.h"

namespace korvantis {

std::string ApplicationRow::identity() const {
  if (isGroup) return "g" + groupID;
  return "p" + std::to_string(pid) + "@" + std::to_string(startedAt.secondsSince1970) + groupID;
}

namespace ApplicationRows {

namespace {

/// From here on, in percent of one core, an application is shown as busy.
constexpr double hotCPUPercent = 50;

QString percentText(double percent) {
  return QString::fromStdString(fixedDecimals(percent, 1)) + u'%';
}
QString bytesText(std::uint64_t bytes) {
  return QString::fromStdString(OstrelFormat::bytes(bytes));
}
QString rateText(double rate) {
  return QString::fromStdString(OstrelFormat::rate(rate));
}

bool portMatches(const ProcessSample& process, const QString& query) {
  return std::any_of(process.listeningPorts.begin(), process.listeningPorts.end(),
                     [&query](std::uint16_t port) {
                       // The port alone is a part of this text too.
                       return (u':' + QString::number(port)).contains(query);
                     });
}

bool pidOrNameMatches(const ProcessSample& process, const QString& query) {
  return QString::number(process.pid).contains(query) ||
         QString::fromStdString(process.name).toLower().contains(query);
}

bool matchesQuery(const AppGroup& group, const QString& query) {
  if (query.isEmpty()) return true;
  if (QString::fromStdString(group.name).toLower().contains(query)) return true;
  return std::any_of(group.processes.begin(), group.processes.end(),
                     [&query](const ProcessSample& process) {
                       return pidOrNameMatches(process, query) || portMatches(process, query);
                     });
}

QString queryOf(const QString& filter) {
  return filter.trimmed().toLower();
}

double sortKey(const AppGroup& group, ProcessSortField field) {
  switch (field) {
    case ProcessSortField::memory: return static_cast<double>(group.memoryBytes);
    case ProcessSortField::cpu: return group.cpuPercent;
    case ProcessSortField::energy: return group.energyWatts;
    case ProcessSortField::network: return group.networkInBytesPerSec + group.networkOutBytesPerSec;
    case ProcessSortField::disk: return group.diskReadBytesPerSec + group.diskWriteBytesPerSec;
    case ProcessSortField::gpu: return group.gpuPercent;
  }
  return 0;
}

QString kindIconName(AppGroupKind kind) {
  switch (kind) {
    case AppGroupKind::app: return QStringLiteral("macwindow");
    case AppGroupKind::system: return QStringLiteral("gearshape.2.fill");
    case AppGroupKind::other: return QStringLiteral("terminal.fill");
  }
  return {};
}

QString countText(std::size_t count) {
  return QString::number(count) +
         (count == 1 ? QStringLiteral(" process") : QStringLiteral(" processes"));
}

QString portsText(const ProcessSample& process) {
  QStringList ports;
  for (const std::uint16_t port : process.servicePorts())
    ports.append(u':' + QString::number(port));
  return ports.join(u' ');
}

/// The figures that applications and processes have in common.
template <typename Sample>
void wordFigures(const Sample& sample, ApplicationRow& row) {
  row.cpuText = percentText(sample.cpuPercent);
  row.memoryText = bytesText(sample.memoryBytes);
  row.diskText = rateText(sample.diskReadBytesPerSec + sample.diskWriteBytesPerSec);
  row.readText = rateText(sample.diskReadBytesPerSec);
  row.writeText = rateText(sample.diskWriteBytesPerSec);
  row.isHot = sample.cpuPercent > hotCPUPercent;
}

ApplicationRow groupRow(const AppGroup& group, bool isExpanded) {
  ApplicationRow row;
  row.groupID = group.id;
  row.name = QString::fromStdString(group.name);
  row.iconName = kindIconName(group.kind);
  row.countText = countText(group.processes.size());
  row.isExpanded = isExpanded;
  wordFigures(group, row);
  return row;
}

ApplicationRow processRow(const AppGroup& group, const ProcessSample& process) {
  ApplicationRow row;
  row.isGroup = false;
  row.groupID = group.id;
  row.pid = process.pid;
  row.startedAt = process.startedAt;
  row.name = QString::fromStdString(process.name);
  row.pidText = QStringLiteral("PID ") + QString::number(process.pid);
  const auto role = rawValue(process.helperRole);
  row.roleText = QString::fromUtf8(role.data(), static_cast<qsizetype>(role.size()));
  row.portsText = portsText(process);
  wordFigures(process, row);
  return row;
}

}  // namespace

Groups all(const std::vector<AppGroup>& groups) {
  Groups pointers;
  pointers.reserve(groups.size());
  for (const AppGroup& group : groups) pointers.push_back(&group);
  return pointers;
}

bool matches(const AppGroup& group, const QString& filter) {
  return matchesQuery(group, queryOf(filter));
}

Groups filtered(const std::vector<AppGroup>& groups, const QString& filter) {
  Groups kept = all(groups);
  const QString query = queryOf(filter);
  kept.erase(
      std::remove_if(kept.begin(), kept.end(),
                     [&query](const AppGroup* group) { return !matchesQuery(*group, query); }),
      kept.end());
  return kept;
}

Groups sorted(Groups groups, ProcessSortField field) {
  std::stable_sort(groups.begin(), groups.end(),
                   [field](const AppGroup* one, const AppGroup* other) {
                     return sortKey(*one, field) > sortKey(*other, field);
                   });
  return groups;
}

std::vector<ApplicationRow> rows(const Groups& groups, const std::set<std::string>& expandedIDs) {
  std::vector<ApplicationRow> rows;
  rows.reserve(groups.size());
  for (const AppGroup* group : groups) {
    const bool isExpanded = expandedIDs.contains(group->id);
    rows.push_back(groupRow(*group, isExpanded));
    if (!isExpanded) continue;
    for (const ProcessSample& process : group->processes) {
      rows.push_back(processRow(*group, process));
    }
  }
  return rows;
}

}  // namespace ApplicationRows

}  // namespace korvantis
