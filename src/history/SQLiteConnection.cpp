#include "history/SQLiteConnection.h"

#include <sqlite3.h>

namespace korvantis {

SQLiteConnection::SQLiteConnection(const std::string& path) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(path.c_str(), &opened);
  connection.reset(opened);
  // A file that can't be opened still leaves a handle to close.
  if (result != SQLITE_OK) connection.reset();
}

void SQLiteConnection::execute(const std::string& sql) const {
  sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr);
}

void SQLiteConnection::Closer::operator()(sqlite3* database) const {
  sqlite3_close(database);
}

}  // namespace korvantis
