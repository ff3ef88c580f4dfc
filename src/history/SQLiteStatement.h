#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <sqlite3.h>
#include <string>

#include "history/SQLiteConnection.h"

namespace korvantis {

/// Makes SQLite copy every text that is bound, so that none has to outlive its statement.
// NOLINTNEXTLINE(performance-no-int-to-ptr): SQLite's own constant, the number -1
inline const sqlite3_destructor_type SQLITE_TRANSIENT_DESTRUCTOR = SQLITE_TRANSIENT;

/// Owns one prepared statement and finalises it. Inline, since a long read steps through a hundred
/// thousand rows. One thread at a time.
class SQLiteStatement {
 public:
  /// Prepares the text on a connection that is there.
  SQLiteStatement(const SQLiteConnection& connection, const std::string& sql) {
    sqlite3_prepare_v2(connection.handle(), sql.c_str(), -1, &statement, nullptr);
  }
  SQLiteStatement(const SQLiteStatement&) = delete;
  SQLiteStatement& operator=(const SQLiteStatement&) = delete;
  ~SQLiteStatement() { sqlite3_finalize(statement); }

  /// Whether it could be prepared. Nothing else may be asked of one that could not.
  explicit operator bool() const { return statement != nullptr; }

  /// Binds the values to the parameters from the first on.
  template <typename... Values>
  void bindAll(const Values&... values) {
    int index = 0;
    (bind(++index, values), ...);
  }

  /// Goes on by one step; true when a row came back.
  bool step() { return sqlite3_step(statement) == SQLITE_ROW; }

  /// Makes it ready for the next values.
  void reset() { sqlite3_reset(statement); }

  std::int64_t wholeNumber(int column) const { return sqlite3_column_int64(statement, column); }
  int smallNumber(int column) const { return sqlite3_column_int(statement, column); }
  double number(int column) const { return sqlite3_column_double(statement, column); }
  /// Absent when the column is null.
  std::optional<std::string> text(int column) const {
    const unsigned char* bytes = sqlite3_column_text(statement, column);
    if (bytes == nullptr) return std::nullopt;
    const int length = sqlite3_column_bytes(statement, column);
    return std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
  }

 private:
  template <std::integral Number>
  void bind(int index, Number value) {
    sqlite3_bind_int64(statement, index, static_cast<sqlite3_int64>(value));
  }
  void bind(int index, double value) { sqlite3_bind_double(statement, index, value); }
  void bind(int index, const std::string& value) {
    sqlite3_bind_text64(statement, index, value.data(), value.size(), SQLITE_TRANSIENT_DESTRUCTOR,
                        SQLITE_UTF8);
  }
  void bind(int index, const std::optional<std::string>& value) {
    if (value)
      bind(index, *value);
    else
      sqlite3_bind_null(statement, index);
  }

  sqlite3_stmt* statement = nullptr;
};

}  // namespace korvantis
