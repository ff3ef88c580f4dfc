#include "history/TracedStatements.h"

#include <utility>

namespace korvantis::test {
namespace {

TracedStatements* current = nullptr;

}  // namespace

using EntryPoint = void (*)();

TracedStatements::TracedStatements() {
  current = this;
  // SQLite's own way of passing an extension's entry point.
  sqlite3_auto_extension(reinterpret_cast<EntryPoint>(&TracedStatements::listen));
}

TracedStatements::~TracedStatements() {
  sqlite3_cancel_auto_extension(reinterpret_cast<EntryPoint>(&TracedStatements::listen));
  current = nullptr;
}

std::vector<std::string> TracedStatements::take() {
  return std::exchange(texts, {});
}

int TracedStatements::preparedCount() const {
  int count = 0;
  for (sqlite3_stmt* next = sqlite3_next_stmt(latest, nullptr); next != nullptr;
       next = sqlite3_next_stmt(latest, next)) {
    ++count;
  }
  return count;
}

int TracedStatements::listen(sqlite3* db, const char**, const sqlite3_api_routines*) {
  current->latest = db;
  return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, &TracedStatements::note, current);
}

int TracedStatements::note(unsigned, void* self, void*, void* text) {
  static_cast<TracedStatements*>(self)->texts.emplace_back(static_cast<const char*>(text));
  return 0;
}

}  // namespace korvantis::test
