#include "history/HistoryCSV.h"

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <string_view>

#include "core/FixedDecimals.h"
#include "history/WholeNumbers.h"

namespace korvantis::HistoryCSV {
namespace {

/// A line of ordinary figures is shorter. Room for all of them is taken at once, so that the text
/// is not copied while it grows.
constexpr std::size_t lineLength = 128;

constexpr std::string_view readingsHeader =
    "timestamp_epoch,seconds,cpu_avg_pct,cpu_peak_pct,memory_avg_bytes,memory_peak_bytes,"
    "gpu_avg_pct,cpu_celsius_avg,hottest_celsius_peak,power_watts_avg,battery_pct_avg\n";
constexpr std::string_view appsHeader =
    "app_id,name,kind,active_seconds,cpu_load_seconds,avg_memory_bytes,peak_memory_bytes,"
    "network_in_bytes,network_out_bytes,disk_read_bytes,disk_written_bytes,energy_watt_hours\n";

template <std::integral Number>
void appendWhole(std::string& text, Number value, char end = ',') {
  std::array<char, 24> digits;  // NOLINT: filled by to_chars
  const auto last = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  text.append(digits.data(), last);
  text += end;
}

void appendCut(std::string& text, double value) {
  appendWhole(text, cutTowardZero(value));
}

void appendDecimals(std::string& text, double value, int decimals, char end = ',') {
  appendFixedDecimals(text, value, decimals);
  text += end;
}

void appendQuoted(std::string& text, std::string_view value) {
  text += '"';
  for (const char letter : value) {
    if (letter == '"') text += '"';
    text += letter;
  }
  text += "\",";
}

void appendLine(std::string& text, const Reading& reading) {
  appendWhole(text, reading.start);
  appendCut(text, reading.seconds);
  appendDecimals(text, reading.cpuPercentAvg, 2);
  appendDecimals(text, reading.cpuPercentPeak, 2);
  appendCut(text, reading.memoryUsedBytesAvg);
  appendCut(text, reading.memoryUsedBytesPeak);
  appendDecimals(text, reading.gpuPercentAvg, 2);
  appendDecimals(text, reading.cpuCelsiusAvg, 1);
  appendDecimals(text, reading.hottestCelsiusPeak, 1);
  appendDecimals(text, reading.powerWattsAvg, 2);
  appendDecimals(text, reading.batteryPercentAvg, 1, '\n');
}

void appendLine(std::string& text, const HistoricalAppSummary& summary) {
  appendQuoted(text, summary.appID);
  appendQuoted(text, summary.name);
  text.append(summary.kind).append(",");
  appendCut(text, summary.activeSeconds);
  appendDecimals(text, summary.cpuLoadSeconds, 2);
  appendWhole(text, summary.averageMemoryBytes());
  appendWhole(text, summary.peakMemoryBytes);
  appendWhole(text, summary.networkBytesIn);
  appendWhole(text, summary.networkBytesOut);
  appendWhole(text, summary.diskBytesRead);
  appendWhole(text, summary.diskBytesWritten);
  appendDecimals(text, summary.energyWattHours(), 3, '\n');
}

template <typename Record>
std::string textOf(std::string_view header, const std::vector<Record>& records) {
  std::string text;
  text.reserve(header.size() + records.size() * lineLength);
  text += header;
  for (const Record& record : records) appendLine(text, record);
  return text;
}

}  // namespace

std::string readingsText(const std::vector<Reading>& readings) {
  return textOf(readingsHeader, readings);
}

std::string appsText(const std::vector<HistoricalAppSummary>& summaries) {
  return textOf(appsHeader, summaries);
}

}  // namespace korvantis::HistoryCSV
