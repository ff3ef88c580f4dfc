#include <algorithm>
#include <atomic>
#include <barrier>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <thread>

#include "history/HistoryFixture.h"

namespace korvantis {
namespace {

using test::groupNamed;
using test::HistoryTest;
using test::sampleAt;

constexpr double begin = 1'800'000'000;

class HistoryConcurrent : public HistoryTest {};

TEST_F(HistoryConcurrent, TheTimerAndTheBridgePassOneGate) {
  open();
  std::barrier together(2);
  const auto tick = [&] {
    for (int flush = 0; flush < 50; ++flush) {
      together.arrive_and_wait();
      history().recordSample(sampleAt(begin + 10 * flush), {groupNamed("Editor")}, 10);
    }
  };
  std::thread timer(tick);
  std::thread bridge(tick);
  timer.join();
  bridge.join();

  EXPECT_EQ(value("SELECT active_seconds FROM app_hours WHERE name = 'Editor'"), "500.0")
      << "each moment is recorded once";
  EXPECT_EQ(value("SELECT TOTAL(seconds) FROM readings WHERE start >= 1800000000"), "500.0");
}

TEST_F(HistoryConcurrent, FlushesQueriesAndExportsAtOnceEachSeeWholeFlushes) {
  folder.folderAt("downloads");
  open();
  std::barrier together(3);
  std::thread timer([&] {
    together.arrive_and_wait();
    for (int flush = 0; flush < 60; ++flush) {
      history().recordSample(sampleAt(begin + 300 * flush), {groupNamed("Editor")}, 300);
    }
  });
  std::thread screen([&] {
    together.arrive_and_wait();
    std::size_t last = 672;
    for (int look = 0; look < 60; ++look) {
      const auto readings = history().loadReadings(Instant{0});
      EXPECT_GE(readings.size(), last);
      last = readings.size();
      EXPECT_GE(history().loadAppSummaries(Instant{0}).size(), 5U);
    }
  });
  together.arrive_and_wait();
  for (int look = 0; look < 10; ++look) {
    const auto files = history().exportCSVToDownloads(Instant{0});
    EXPECT_TRUE(files.readingsURL && files.appsURL);
  }
  timer.join();
  screen.join();

  EXPECT_EQ(history().loadReadings(Instant{0}).size(), 732U);
}

TEST_F(HistoryConcurrent, TwoExportsAtOnceLeaveTwoWholeFilesAndNothingElse) {
  folder.folderAt("downloads");
  open();
  std::barrier together(2);
  const auto exportTimes = [&] {
    together.arrive_and_wait();
    for (int time = 0; time < 10; ++time) history().exportCSVToDownloads(Instant{0});
  };
  std::thread first(exportTimes);
  std::thread second(exportTimes);
  first.join();
  second.join();

  EXPECT_EQ(std::ranges::count(bytesOf("downloads/ostrel-system-readings.csv"), '\n'), 673);
  EXPECT_EQ(std::ranges::count(bytesOf("downloads/ostrel-app-usage.csv"), '\n'), 6);
  const auto entries = std::filesystem::directory_iterator(folder.path("downloads"));
  EXPECT_EQ(std::distance(entries, std::filesystem::directory_iterator()), 2);
}

}  // namespace
}  // namespace korvantis
