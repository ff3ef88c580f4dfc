#include "history/HistoryStatements.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "history/HistoryColumns.h"

namespace korvantis::HistoryStatements {
namespace {

using Columns = std::span<const HistoryColumn>;

void appendListed(std::string& text, std::string_view separator, std::string_view item) {
  if (!text.empty()) text += separator;
  text += item;
}

std::string names(Columns columns) {
  std::string text;
  for (const HistoryColumn& column : columns) appendListed(text, ", ", column.name);
  return text;
}

std::string placeholders(std::size_t count) {
  std::string text;
  for (std::size_t index = 0; index < count; ++index) appendListed(text, ", ", "?");
  return text;
}

std::string tableText(std::string_view table, Columns columns, std::string_view key = "") {
  std::string body;
  for (const HistoryColumn& column : columns) {
    appendListed(body, ", ", column.name);
    body.append(" ").append(column.constraint);
  }
  if (!key.empty()) appendListed(body, ", ", key);
  return "CREATE TABLE IF NOT EXISTS " + std::string(table) + " (" + body + ");\n";
}

std::string insertText(const std::string& verb, const std::string& table, Columns columns,
                       const std::string& values) {
  return verb + " INTO " + table + " (" + names(columns) + ") VALUES (" + values + ")";
}

std::string assignment(const std::string& table, const HistoryColumn& column) {
  const std::string name(column.name);
  const std::string stored = table + "." + name;
  const std::string added = "excluded." + name;
  switch (column.merge) {
    case Merge::stays: return "";
    case Merge::adds: return name + " = " + stored + " + " + added;
    case Merge::halves: return name + " = (" + stored + " + " + added + ") * 0.5";
    case Merge::rises: return name + " = MAX(" + stored + ", " + added + ")";
  }
  return "";
}

std::string upsertText(const std::string& table, Columns columns, const std::string& key) {
  std::string assignments;
  for (const HistoryColumn& column : columns) {
    if (column.merge != Merge::stays) appendListed(assignments, ", ", assignment(table, column));
  }
  return insertText("INSERT", table, columns, placeholders(columns.size())) + " ON CONFLICT(" +
         key + ") DO UPDATE SET " + assignments + ";";
}

/// Lives for ever: at exit the thread of the bridge may still be inside a tick that records.
const std::string& kept(std::string text) {
  return *new std::string(std::move(text));
}

}  // namespace

const std::string& schema() {
  const std::string appKey = "PRIMARY KEY (bucket_start, app_id)";
  static const std::string& text =
      kept(tableText("meta", metaColumns) + tableText("readings", readingColumns) +
           tableText("system_five_minutes", systemColumns) +
           tableText("system_hours", systemColumns) + tableText("app_hours", appColumns, appKey) +
           tableText("app_days", appColumns, appKey) + tableText("recent", recentColumns));
  return text;
}

const std::string& insertSeedReading() {
  static const std::string& text = kept(insertText("INSERT OR IGNORE", "readings", readingColumns,
                                                   placeholders(readingColumns.size())) +
                                        ";");
  return text;
}

const std::string& replaceSeedAppHour() {
  static const std::string& text = kept(insertText("INSERT OR REPLACE", "app_hours", appColumns,
                                                   "?, ?, ?, 'app', " + placeholders(10)) +
                                        ";");
  return text;
}

const std::string& upsertReading() {
  static const std::string& text = kept(upsertText("readings", readingColumns, "start"));
  return text;
}

const std::string& upsertAppHour() {
  static const std::string& text =
      kept(upsertText("app_hours", appColumns, "bucket_start, app_id"));
  return text;
}

const std::string& selectReadings() {
  static const std::string& text = kept("SELECT " + names(readingColumns) +
                                        "\nFROM readings\nWHERE start >= ?\nORDER BY start ASC;");
  return text;
}

const std::string& selectAppSummaries() {
  static const std::string& text = kept(
      "SELECT app_id, MAX(name), MAX(kind), MAX(bundle_path), SUM(active_seconds), "
      "SUM(cpu_load_seconds), SUM(memory_byte_seconds), MAX(peak_memory_bytes), "
      "SUM(network_bytes_in), SUM(network_bytes_out), SUM(disk_bytes_read), "
      "SUM(disk_bytes_written), SUM(energy_joules)\n"
      "FROM app_hours\n"
      "WHERE bucket_start >= ?\n"
      "GROUP BY app_id\n"
      "ORDER BY SUM(energy_joules) DESC, MAX(peak_memory_bytes) DESC\n"
      "LIMIT 50;");
  return text;
}

}  // namespace korvantis::HistoryStatements
