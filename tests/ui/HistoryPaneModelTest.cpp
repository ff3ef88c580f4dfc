#include <QSignalSpy>
#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

#include "history/HistoryDatabase.h"
#include "platform/PlatformCalls.h"
#include "support/PrivateFolders.h"
#include "ui/ScriptedStore.h"
#include "ui/panes/HistoryPaneModel.h"
#include "ui/panes/HistoryWords.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {
namespace {

class HistoryPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  HistoryPaneModel model;

  void start() { model.setStore(&scripted.store()); }
  MonitorStore& store() { return scripted.store(); }
  std::size_t loads() const { return scripted.readingLoads.size(); }
};

TEST_F(HistoryPaneModelTest, OffersTheMetricsInOrderEachInItsColour) {
  const QList<HistoryMetricChoice> expected{
      {QStringLiteral("cpu"), QStringLiteral("CPU"), OstrelTheme::cpu()},
      {QStringLiteral("memory"), QStringLiteral("Memory"), OstrelTheme::memory()},
      {QStringLiteral("gpu"), QStringLiteral("GPU"), OstrelTheme::gpu()},
      {QStringLiteral("neuralEngine"), QStringLiteral("Neural Engine"), OstrelTheme::neural()},
      {QStringLiteral("temperature"), QStringLiteral("Temperature"), OstrelTheme::heat()},
      {QStringLiteral("fans"), QStringLiteral("Fans"), OstrelTheme::network()},
      {QStringLiteral("power"), QStringLiteral("System Power"), OstrelTheme::disk()}};
  EXPECT_EQ(model.metrics(), expected);
}

TEST_F(HistoryPaneModelTest, OffersTheRangesInOrder) {
  QString words;
  for (const Choice& range : model.ranges()) words += range.name + u'=' + range.label + u' ';
  EXPECT_EQ(words, QStringLiteral("hour1=1h hour6=6h hour24=24h days7=7d days30=30d days90=90d "
                                  "year1=1y "));
}

TEST_F(HistoryPaneModelTest, ShowsTheRowsThatTheStoreLoadedAtItsStartAndLoadsNothingItself) {
  scripted.readings = makeReadings(4, 900);
  start();
  EXPECT_EQ(loads(), 1U);
  EXPECT_EQ(model.series().count(), 4);
  EXPECT_EQ(model.series().points.last(), (HistoryPoint{900, 4, 14}));
  EXPECT_EQ(model.chartTitle(), QStringLiteral("CPU HISTORY (24H)"));
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 2.5 %"));
  EXPECT_EQ(model.peakText(), QStringLiteral("Peak: 14.0 %"));
}

TEST_F(HistoryPaneModelTest, AnEmptyListShowsAverageAndPeakOf0WithTheirUnit) {
  start();
  EXPECT_EQ(model.series().count(), 0);
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 0.0 %"));
  EXPECT_EQ(model.peakText(), QStringLiteral("Peak: 0.0 %"));
  EXPECT_TRUE(model.ledger().isEmpty());
  store().setSelectedHistoryMetric(HistoryMetricKind::fans);
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 0.0 RPM"));
  EXPECT_EQ(model.peakText(), QStringLiteral("Peak: 0.0 RPM"));
}

TEST_F(HistoryPaneModelTest, SwitchingMetricsChangesTheCardAtOnceWithNoQuery) {
  scripted.readings = makeReadings(2, 900);
  scripted.readings[1].powerWattsAvg = 21;
  scripted.readings[1].powerWattsPeak = 33.25;
  start();
  store().setSelectedHistoryMetric(HistoryMetricKind::power);
  EXPECT_EQ(model.chartTitle(), QStringLiteral("SYSTEM POWER HISTORY (24H)"));
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 10.5 W"));
  EXPECT_EQ(model.peakText(), QStringLiteral("Peak: 33.2 W"));
  EXPECT_EQ(model.color(), OstrelTheme::disk());
  EXPECT_EQ(model.unit(), QStringLiteral("W"));
  EXPECT_EQ(model.series().points.last(), (HistoryPoint{900, 21, 33.25}));
  EXPECT_EQ(loads(), 1U);
}

TEST_F(HistoryPaneModelTest, SwitchingRangesQueriesAgain) {
  scripted.now = 1'800'000'000;
  start();
  scripted.readings = makeReadings(3, 900);
  scripted.summaries = makeSummaries(1);
  store().setSelectedHistoryRange(HistoryRangeOption::days7);
  ASSERT_EQ(loads(), 2U);
  EXPECT_EQ(scripted.readingLoads.back().secondsSince1970, 1'800'000'000 - 604'800);
  EXPECT_EQ(model.series().count(), 3);
  EXPECT_EQ(model.ledger().size(), 1);
  EXPECT_EQ(model.chartTitle(), QStringLiteral("CPU HISTORY (7D)"));
  EXPECT_EQ(model.ledgerTitle(), QStringLiteral("HISTORICAL APP RESOURCE LEDGER (7D)"));
  store().setSelectedHistoryRange(HistoryRangeOption::days7);
  EXPECT_EQ(loads(), 2U);
}

TEST_F(HistoryPaneModelTest, TheWindowAndThePanelTogetherQueryOnce) {
  start();
  HistoryPaneModel panel;
  panel.setStore(&store());
  scripted.readings = makeReadings(3, 900);
  store().setSelectedHistoryRange(HistoryRangeOption::year1);
  EXPECT_EQ(loads(), 2U);
  EXPECT_EQ(model.series(), panel.series());
  EXPECT_EQ(panel.chartTitle(), QStringLiteral("CPU HISTORY (1Y)"));
}

TEST_F(HistoryPaneModelTest, TicksReloadAndRecomputeNothing) {
  scripted.readings = makeReadings(3, 900);
  scripted.summaries = makeSummaries(3);
  start();
  QSignalSpy series(&model, &HistoryPaneModel::seriesChanged);
  QSignalSpy ledger(&model, &HistoryPaneModel::ledgerChanged);
  scripted.readings = makeReadings(9, 2700);
  scripted.next.system.cpuPercent = 50;
  scripted.tick();
  scripted.tick();
  EXPECT_EQ(loads(), 1U);
  EXPECT_EQ(series.size(), 0);
  EXPECT_EQ(ledger.size(), 0);
  EXPECT_EQ(model.series().count(), 3);
}

TEST_F(HistoryPaneModelTest, AReloadForAnotherReasonIsShown) {
  start();
  scripted.readings = makeReadings(5, 900);
  store().reloadHistory();
  EXPECT_EQ(model.series().count(), 5);
}

TEST_F(HistoryPaneModelTest, TheTemperatureStaysInCelsiusWhateverTheUnit) {
  scripted.readings = makeReadings(1, 900);
  scripted.readings[0].cpuCelsiusAvg = 40;
  scripted.readings[0].cpuCelsiusPeak = 50;
  scripted.readings[0].hottestCelsiusPeak = 90;
  start();
  store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  store().setSelectedHistoryMetric(HistoryMetricKind::temperature);
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 40.0 °C"));
  EXPECT_EQ(model.peakText(), QStringLiteral("Peak: 50.0 °C"));
}

TEST_F(HistoryPaneModelTest, TheMemoryOfAMachineWithATotalOf0GivesHugePercentages) {
  scripted.readings = makeReadings(1, 900);
  scripted.readings[0].memoryUsedBytesAvg = 1e9;
  scripted.readings[0].memoryUsedBytesPeak = 2e9;
  scripted.hardware.totalMemoryBytes = 0;
  start();
  store().setSelectedHistoryMetric(HistoryMetricKind::memory);
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 100000000000.0 %"));
  EXPECT_EQ(model.peakText(), QStringLiteral("Peak: 200000000000.0 %"));
}

TEST_F(HistoryPaneModelTest, MemoryIsInPercentOfTheMachines) {
  scripted.readings = makeReadings(1, 900);
  scripted.readings[0].memoryUsedBytesAvg = 4e9;
  scripted.readings[0].memoryUsedBytesPeak = 6e9;
  scripted.hardware.totalMemoryBytes = 8'000'000'000;
  start();
  store().setSelectedHistoryMetric(HistoryMetricKind::memory);
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 50.0 %"));
  EXPECT_EQ(model.peakText(), QStringLiteral("Peak: 75.0 %"));
}

TEST_F(HistoryPaneModelTest, TheLedgerShowsAtMost20RowsOfThe50InTheirOrder) {
  scripted.summaries = makeSummaries(50);
  start();
  ASSERT_EQ(store().appSummaries().size(), 50U);
  ASSERT_EQ(model.ledger().size(), 20);
  EXPECT_EQ(model.ledger().first().name, QStringLiteral("Application 1"));
  EXPECT_EQ(model.ledger().last().name, QStringLiteral("Application 20"));
  EXPECT_EQ(model.ledgerTitle(), QStringLiteral("HISTORICAL APP RESOURCE LEDGER (24H)"));
}

TEST_F(HistoryPaneModelTest, AFreshDatabaseShowsTheSeededWeekAndAnHourCanBeEmpty) {
  PlatformCalls platform = systemPlatformCalls();
  test::usePrivateFolders(platform);
  scripted.now = 1'800'000'123;
  platform.clock.now = [this] { return scripted.now; };
  const auto history = std::make_shared<HistoryDatabase>(platform);
  scripted.loadReadings = [history](Instant since) { return history->loadReadings(since); };
  scripted.loadAppSummaries = [history](Instant since) { return history->loadAppSummaries(since); };
  start();
  store().setSelectedHistoryRange(HistoryRangeOption::days7);
  // Of the 672 rows the first began a little more than a week before now.
  EXPECT_EQ(model.series().count(), 671);
  ASSERT_EQ(model.ledger().size(), 5);
  EXPECT_EQ(model.ledger().first().name, QStringLiteral("Xcode"));
  store().setSelectedHistoryRange(HistoryRangeOption::hour1);
  EXPECT_EQ(model.series().count(), 3);
  for (const HistoryPoint& point : model.series().points)
    EXPECT_GE(point.date, scripted.now - 3600);
  scripted.now += 7200;
  store().reloadHistory();
  EXPECT_EQ(model.series().count(), 0);
  EXPECT_EQ(model.averageText(), QStringLiteral("Average: 0.0 %"));
}

TEST_F(HistoryPaneModelTest, AnotherStoreIsShownInPlaceOfTheFirst) {
  start();
  ScriptedStore other;
  other.readings = makeReadings(7, 900);
  model.setStore(&other.store());
  EXPECT_EQ(model.series().count(), 7);
  store().setSelectedHistoryMetric(HistoryMetricKind::gpu);
  EXPECT_EQ(model.chartTitle(), QStringLiteral("CPU HISTORY (24H)"));
  model.setStore(nullptr);
}

TEST(HistoryWords, ALedgerRowTellsSixFigures) {
  const HistoryLedgerRow row = HistoryWords::ledgerRow(makeFullSummary());
  EXPECT_EQ(row.id, QStringLiteral("/Applications/Xcode.app"));
  EXPECT_EQ(row.name, QStringLiteral("Xcode"));
  EXPECT_EQ(row.bundlePath, QStringLiteral("/Applications/Xcode.app"));
  EXPECT_EQ(row.cpuTime, QStringLiteral("2h 45m"));
  EXPECT_EQ(row.averageMemory, QStringLiteral("300 MB"));
  EXPECT_EQ(row.peakMemory, QStringLiteral("3.0 GB"));
  EXPECT_EQ(row.energy, QStringLiteral("5.11 Wh"));
  EXPECT_EQ(row.network, QStringLiteral("540 MB"));
  EXPECT_EQ(row.disk, QStringLiteral("1.5 GB"));
  EXPECT_EQ(row.description,
            QStringLiteral("Xcode: CPU time 2h 45m, average RAM 300 MB, peak RAM 3.0 GB, energy "
                           "5.11 Wh, network 540 MB, disk 1.5 GB"));
}

TEST(HistoryWords, APercentSignInANameStaysAsItIs) {
  HistoricalAppSummary summary;
  summary.name = "100%2 %7";
  EXPECT_TRUE(HistoryWords::ledgerRow(summary).description.startsWith(
      QStringLiteral("100%2 %7: CPU time 0s,")));
}

TEST(HistoryWords, ADurationThatIsNoneDoesNotEndTheProgram) {
  HistoricalAppSummary summary;
  for (const double seconds :
       {std::numeric_limits<double>::quiet_NaN(), -5.0, -std::numeric_limits<double>::infinity()}) {
    summary.cpuLoadSeconds = seconds;
    EXPECT_EQ(HistoryWords::ledgerRow(summary).cpuTime, QStringLiteral("0s"));
  }
  summary.cpuLoadSeconds = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(HistoryWords::ledgerRow(summary).cpuTime.endsWith(u'h'));
}

TEST(HistoryWords, FiguresAreRoundedAsPrintfDoes) {
  EXPECT_EQ(HistoryWords::average(0.25, QStringLiteral("W")), QStringLiteral("Average: 0.2 W"));
  EXPECT_EQ(HistoryWords::peak(0.35, QStringLiteral("W")), QStringLiteral("Peak: 0.3 W"));
  EXPECT_EQ(HistoryWords::chartTitle(HistoryMetricKind::neuralEngine, HistoryRangeOption::days90),
            QStringLiteral("NEURAL ENGINE HISTORY (90D)"));
}

}  // namespace
}  // namespace korvantis
