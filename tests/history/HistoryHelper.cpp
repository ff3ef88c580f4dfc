/// history_helper record FOLDER FIRST COUNT: keeps a history below FOLDER and records COUNT flushes
/// (0: without end), the one with number N at 10 N seconds after a fixed moment; prints each number
/// on a line of its own once its flush is over.
/// history_helper hold FILE STATEMENTS: runs statements on a database, prints "ready" and waits to
/// be killed.
/// history_helper export FOLDER: exports all of the history below FOLDER; prints by how many bytes
/// its memory grew at most meanwhile, and how many the readings and the two texts take.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sqlite3.h>
#include <string>
#include <unistd.h>

#include "history/HistoryFixture.h"

namespace {

using namespace korvantis;

void print(const std::string& line) {
  // One call, so that a kill leaves whole lines.
  if (::write(STDOUT_FILENO, (line + "\n").data(), line.size() + 1) < 0) std::exit(1);
}

int record(const std::string& folder, std::int64_t first, std::int64_t count) {
  const double now = 1'699'999'200;
  HistoryDatabase history(test::historyPlatform(folder, &now));
  const std::vector<AppGroup> groups{test::groupNamed("One"), test::groupNamed("Two")};
  for (std::int64_t number = first; count == 0 || number < first + count; ++number) {
    const double time = 1'800'000'000.0 + 10.0 * static_cast<double>(number);
    history.recordSample(test::sampleAt(time), groups, 10);
    print(std::to_string(number));
  }
  return 0;
}

int hold(const char* file, const char* statements) {
  sqlite3* db = nullptr;
  sqlite3_open(file, &db);
  const int result = sqlite3_exec(db, statements, nullptr, nullptr, nullptr);
  print(result == SQLITE_OK ? "ready" : sqlite3_errmsg(db));
  for (;;) ::pause();
}

/// A figure of /proc/self/status, in bytes.
std::int64_t memoryFigure(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name + ":")) return std::atoll(line.c_str() + name.size() + 1) * 1024;
  }
  return 0;
}

int exportAll(const std::string& folder) {
  const double now = 1'800'000'000;
  HistoryDatabase history(test::historyPlatform(folder, &now));
  history.exportCSVToDownloads(Instant{now});  // what is needed once
  std::ofstream("/proc/self/clear_refs") << "5" << std::flush;
  const std::int64_t before = memoryFigure("VmRSS");
  const ExportedCSVFiles files = history.exportCSVToDownloads(Instant{0});
  const std::int64_t grown = memoryFigure("VmHWM") - before;
  if (!files.readingsURL || !files.appsURL) return 1;
  const auto textBytes =
      std::filesystem::file_size(*files.readingsURL) + std::filesystem::file_size(*files.appsURL);
  const std::size_t readingBytes = history.loadReadings(Instant{0}).size() * sizeof(Reading);
  print(std::to_string(grown) + " " + std::to_string(readingBytes + textBytes));
  return 0;
}

}  // namespace

int main(int count, char** words) {
  const std::string command = count > 1 ? words[1] : "";
  if (command == "record" && count == 5) {
    return record(words[2], std::atoll(words[3]), std::atoll(words[4]));
  }
  if (command == "hold" && count == 4) return hold(words[2], words[3]);
  if (command == "export" && count == 3) return exportAll(words[2]);
  std::cerr << "history_helper record FOLDER FIRST COUNT | hold FILE STATEMENTS | export FOLDER\n";
  return 2;
}
