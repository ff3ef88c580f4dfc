#pragma once

#include <array>
#include <string_view>

namespace korvantis {

/// What a flush does to a column whose row is there already.
enum class Merge {
  /// The first value stays.
  stays,
  /// The new value is added.
  adds,
  /// Half of both: it leans on the latest flushes, on purpose.
  halves,
  /// The larger of both.
  rises
};

/// One column of a table of the history.
struct HistoryColumn {
  std::string_view name;
  /// Type and constraint.
  std::string_view constraint;
  Merge merge = Merge::stays;
};

/// Columns of "readings": the machine's figures, one row for each 5 minutes.
inline constexpr std::array readingColumns{
    HistoryColumn{"start", "INTEGER PRIMARY KEY"},
    HistoryColumn{"seconds", "REAL NOT NULL", Merge::adds},
    HistoryColumn{"cpu_percent_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"cpu_percent_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"memory_used_bytes_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"memory_used_bytes_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"memory_pressure_percent_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"memory_pressure_percent_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"memory_pressure_level_peak", "INTEGER NOT NULL", Merge::rises},
    HistoryColumn{"swap_used_bytes_peak", "INTEGER NOT NULL", Merge::rises},
    HistoryColumn{"gpu_percent_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"gpu_percent_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"neural_engine_percent_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"neural_engine_percent_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"cpu_celsius_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"cpu_celsius_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"hottest_celsius_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"hottest_celsius_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"fan_rpm_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"fan_rpm_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"power_watts_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"power_watts_peak", "REAL NOT NULL", Merge::rises},
    HistoryColumn{"thermal_state_peak", "INTEGER NOT NULL", Merge::rises},
    HistoryColumn{"battery_percent_avg", "REAL NOT NULL", Merge::halves},
    HistoryColumn{"plugged_in_seconds", "REAL NOT NULL", Merge::adds}};

/// Columns of "app_hours" and "app_days": what each application used in an hour or a day.
inline constexpr std::array appColumns{
    HistoryColumn{"bucket_start", "INTEGER NOT NULL"},
    HistoryColumn{"app_id", "TEXT NOT NULL"},
    HistoryColumn{"name", "TEXT NOT NULL"},
    HistoryColumn{"kind", "TEXT NOT NULL"},
    HistoryColumn{"bundle_path", "TEXT"},
    HistoryColumn{"active_seconds", "REAL NOT NULL", Merge::adds},
    HistoryColumn{"cpu_load_seconds", "REAL NOT NULL", Merge::adds},
    HistoryColumn{"memory_byte_seconds", "REAL NOT NULL", Merge::adds},
    HistoryColumn{"peak_memory_bytes", "INTEGER NOT NULL", Merge::rises},
    HistoryColumn{"network_bytes_in", "INTEGER NOT NULL", Merge::adds},
    HistoryColumn{"network_bytes_out", "INTEGER NOT NULL", Merge::adds},
    HistoryColumn{"disk_bytes_read", "INTEGER NOT NULL", Merge::adds},
    HistoryColumn{"disk_bytes_written", "INTEGER NOT NULL", Merge::adds},
    HistoryColumn{"energy_joules", "REAL NOT NULL", Merge::adds}};

/// Columns of "system_five_minutes" and "system_hours".
inline constexpr std::array systemColumns{HistoryColumn{"bucket_start", "INTEGER PRIMARY KEY"},
                                          HistoryColumn{"seconds", "REAL NOT NULL"},
                                          HistoryColumn{"cpu_percent_avg", "REAL NOT NULL"},
                                          HistoryColumn{"memory_used_bytes_avg", "REAL NOT NULL"},
                                          HistoryColumn{"gpu_percent_avg", "REAL NOT NULL"},
                                          HistoryColumn{"power_watts_avg", "REAL NOT NULL"}};

/// Columns of "meta".
inline constexpr std::array metaColumns{HistoryColumn{"key", "TEXT PRIMARY KEY"},
                                        HistoryColumn{"value", "TEXT NOT NULL"}};

/// Columns of "recent".
inline constexpr std::array recentColumns{
    HistoryColumn{"app_id", "TEXT PRIMARY KEY"}, HistoryColumn{"name", "TEXT NOT NULL"},
    HistoryColumn{"bundle_path", "TEXT"}, HistoryColumn{"last_seen", "INTEGER NOT NULL"},
    HistoryColumn{"peak_memory_bytes", "INTEGER NOT NULL"}};

}  // namespace korvantis
