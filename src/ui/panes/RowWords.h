#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ProcessSample.h"
#include "ui/panes/ProcessesRow.h"

/// The figures of the rows of the processes pane, and what all of its cards have in common. Any
/// thread.
namespace korvantis::RowWords {

/// Such as "12.3%", of one core.
QString percent(double cpuPercent);
/// Such as "12.3% CPU".
QString percentCPU(double cpuPercent);
/// Such as "3.0 GB".
QString bytes(std::uint64_t count);
/// Such as "3 KB/s".
QString rate(double bytesPerSecond);
/// Such as "PID 812".
QString pid(std::int32_t pid);
/// Such as ":3000", each.
QStringList ports(const std::vector<std::uint16_t>& ports);

/// What tells the process with that pid and start from all others, also from a later one with the
/// same pid.
std::string identity(std::int32_t pid, std::optional<Instant> startedAt);

/// A row of `kind` for `process`, known by `owner` as well: one process can stand in two cards.
ProcessesRow processRow(ProcessesRowKind kind, std::string_view owner,
                        const ProcessSample& process);

/// Makes a card of the rows from `first` on; there must be one.
void closeCard(std::vector<ProcessesRow>& rows, std::size_t first);

}  // namespace korvantis::RowWords
