#include "ui/panes/RowWords.h"

#include <bit>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "ui/views/ModelText.h"

namespace korvantis::RowWords {

QString percent(double cpuPercent) {
  return textOf(fixedDecimals(cpuPercent, 1)) + u'%';
}

QString percentCPU(double cpuPercent) {
  return percent(cpuPercent) + QStringLiteral(" CPU");
}

QString bytes(std::uint64_t count) {
  return textOf(OstrelFormat::bytes(count));
}

QString rate(double bytesPerSecond) {
  return textOf(OstrelFormat::rate(bytesPerSecond));
}

QString pid(std::int32_t pid) {
  return QStringLiteral("PID ") + QString::number(pid);
}

QStringList ports(const std::vector<std::uint16_t>& ports) {
  QStringList texts;
  texts.reserve(static_cast<qsizetype>(ports.size()));
  for (const std::uint16_t port : ports) texts.append(u':' + QString::number(port));
  return texts;
}

std::string identity(std::int32_t pid, std::optional<Instant> startedAt) {
  // To the last bit: a rounded start could make two processes one.
  const auto start = std::bit_cast<std::uint64_t>(startedAt.value_or(Instant{}).secondsSince1970);
  return std::to_string(pid) + '@' + std::to_string(start);
}

ProcessesRow processRow(ProcessesRowKind kind, std::string_view owner,
                        const ProcessSample& process) {
  ProcessesRow row;
  row.kind = kind;
  row.identity = std::string(rawValue(kind)) + ' ' + identity(process.pid, process.startedAt) +
                 ' ' + std::string(owner);
  row.pid = process.pid;
  row.startedAt = process.startedAt;
  row.pidText = pid(process.pid);
  row.title = textOf(process.name);
  row.memoryText = bytes(process.memoryBytes);
  return row;
}

void closeCard(std::vector<ProcessesRow>& rows, std::size_t first) {
  rows.at(first).isFirstOfCard = true;
  rows.back().isLastOfCard = true;
}

}  // namespace korvantis::RowWords
