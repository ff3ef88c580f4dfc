#pragma once

#include <sqlite3.h>
#include <string>
#include <vector>

namespace korvantis::test {

/// Listens to every connection that is opened while it lives: the texts of all statements in the
/// order in which they begin. One at a time, one thread.
class TracedStatements {
 public:
  TracedStatements();
  ~TracedStatements();
  TracedStatements(const TracedStatements&) = delete;
  TracedStatements& operator=(const TracedStatements&) = delete;

  /// What ran since the last call.
  std::vector<std::string> take();

  /// How many prepared statements the connection opened last holds.
  int preparedCount() const;

 private:
  static int listen(sqlite3* db, const char** message, const sqlite3_api_routines* routines);
  static int note(unsigned kind, void* self, void* statement, void* text);

  std::vector<std::string> texts;
  sqlite3* latest = nullptr;
};

}  // namespace korvantis::test
