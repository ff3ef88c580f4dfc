#pragma once

#include <memory>
#include <string>

struct sqlite3;

namespace korvantis {

/// Owns one connection to a database file, or none. One thread at a time.
class SQLiteConnection {
 public:
  /// None.
  SQLiteConnection() = default;
  /// Opens the file for reading and writing and makes it where it is missing; none when that
  /// fails. A file that is write-protected opens for reading alone.
  explicit SQLiteConnection(const std::string& path);

  explicit operator bool() const { return connection != nullptr; }

  /// Runs statements that give no rows; a failure is ignored.
  void execute(const std::string& sql) const;

  /// What SQLite's own functions take.
  sqlite3* handle() const { return connection.get(); }

 private:
  struct Closer {
    void operator()(sqlite3* database) const;
  };

  std::unique_ptr<sqlite3, Closer> connection;
};

}  // namespace korvantis
