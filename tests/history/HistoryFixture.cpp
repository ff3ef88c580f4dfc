#include "history/HistoryFixture.h"

#include <fstream>
#include <iterator>
#include <sqlite3.h>

namespace korvantis::test {

Rows rowsOf(const std::string& databasePath, const std::string& sql) {
  sqlite3* db = nullptr;
  Rows rows;
  const auto collect = [](void* list, int count, char** values, char**) {
    std::vector<std::string>& row = static_cast<Rows*>(list)->emplace_back();
    for (int index = 0; index < count; ++index) {
      row.emplace_back(values[index] == nullptr ? "NULL" : values[index]);
    }
    return 0;
  };
  char* message = nullptr;
  sqlite3_open(databasePath.c_str(), &db);
  if (sqlite3_exec(db, sql.c_str(), collect, &rows, &message) != SQLITE_OK) {
    rows = {{message == nullptr ? "failed" : message}};
  }
  sqlite3_free(message);
  sqlite3_close(db);
  return rows;
}

std::string valueOf(const std::string& databasePath, const std::string& sql) {
  const Rows rows = rowsOf(databasePath, sql);
  if (rows.size() != 1 || rows[0].size() != 1) return "not one value";
  return rows[0][0];
}

std::int64_t numberOf(const std::string& databasePath, const std::string& sql) {
  const std::string text = valueOf(databasePath, sql);
  char* end = nullptr;
  const long long number = std::strtoll(text.c_str(), &end, 10);
  EXPECT_TRUE(end != text.c_str() && *end == '\0') << sql << ": " << text;
  return number;
}

PlatformCalls historyPlatform(const std::string& root, const double* now,
                              std::uint64_t physicalMemory) {
  // Not the whole platform: it looks at the applications on a thread of its own, and tests copy
  // this process.
  PlatformCalls platform;
  platform.files = systemFileManagerCalls();
  platform.clock.now = [now] { return *now; };
  platform.processInfo.physicalMemory = [physicalMemory] { return physicalMemory; };
  platform.files.applicationSupportDirectories = [root] {
    return std::vector<std::string>{root + "/support", root + "/second choice"};
  };
  platform.files.downloadsDirectories = [root] {
    return std::vector<std::string>{root + "/downloads", root + "/second choice"};
  };
  platform.files.temporaryDirectory = [root] { return root + "/temporary"; };
  return platform;
}

SystemSample sampleAt(double timestamp) {
  SystemSample system;
  system.timestamp = Instant{timestamp};
  system.cpuPercent = 10.5;
  system.memoryUsedBytes = 5'000'000'000;
  system.memoryPressurePercent = 31.25;
  system.memoryPressure = MemoryPressureLevel::warning;
  system.swapUsedBytes = 123'456'789;
  system.gpuPercent = 22.5;
  system.neuralEnginePercent = 3.5;
  system.battery = BatterySample{};
  system.battery->percentage = 77.5;
  system.battery->isPluggedIn = false;
  system.thermal.cpuCelsius = 51.5;
  system.thermal.hottestCelsius = 63.25;
  system.thermal.systemPowerWatts = 17.75;
  system.thermal.thermalStateLevel = 1;
  for (const double rpm : {1200.0, 2600.5, 1900.0}) {
    system.thermal.fans.emplace_back().currentRPM = rpm;
  }
  return system;
}

AppGroup groupNamed(const std::string& name) {
  AppGroup group;
  group.id = "/Applications/" + name + ".app";
  group.name = name;
  group.bundlePath = group.id;
  group.cpuPercent = 150;
  group.memoryBytes = 3'000'000'001;
  group.networkInBytesPerSec = 1000.99;
  group.networkOutBytesPerSec = 200.55;
  group.diskReadBytesPerSec = 30.5;
  group.diskWriteBytesPerSec = 4.09;
  group.energyWatts = 2.5;
  return group;
}

HistoryDatabase& HistoryTest::open() {
  database.reset();
  database = std::make_unique<HistoryDatabase>(platform);
  return *database;
}

std::string HistoryTest::bytesOf(const std::string& relative) const {
  std::ifstream stream(folder.path(relative), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace korvantis::test
