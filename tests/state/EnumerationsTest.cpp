#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "state/AppThemeMode.h"
#include "state/ChartPalette.h"
#include "state/HistoryMetricKind.h"
#include "state/HistoryRangeOption.h"
#include "state/HistoryRetentionOption.h"
#include "state/MenuBarColorMode.h"
#include "state/MenuBarDisplayStyle.h"
#include "state/MenuBarReadout.h"
#include "state/OstrelPane.h"
#include "state/ProcessSortField.h"
#include "state/ProcessesSubTab.h"
#include "state/TemperatureUnit.h"
#include "state/UIDensity.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using Texts = std::vector<std::string_view>;

/// One word about every case, in the order of the cases.
template <typename Enumeration, typename Word>
Texts wordsOfAll(Word word) {
  Texts words;
  for (const Enumeration value : allCases<Enumeration>()) words.push_back(word(value));
  return words;
}

template <typename Enumeration>
Texts namesOfAll() {
  return wordsOfAll<Enumeration>([](Enumeration value) { return caseName(value); });
}

template <typename Enumeration>
Texts rawValuesOfAll() {
  return wordsOfAll<Enumeration>([](Enumeration value) { return rawValue(value); });
}

TEST(StateEnumerations, PanesStandInTheOrderOfTheirTabsWithTitleSymbolAndKey) {
  EXPECT_THAT(namesOfAll<OstrelPane>(),
              ElementsAre("overview", "processes", "insights", "history", "agents", "sound"));
  EXPECT_THAT(wordsOfAll<OstrelPane>([](auto pane) { return title(pane); }),
              ElementsAre("Overview", "Processes", "Insights", "History", "Agents", "Sound"));
  EXPECT_THAT(wordsOfAll<OstrelPane>([](auto pane) { return iconName(pane); }),
              ElementsAre("square.grid.2x2.fill", "list.bullet.below.rectangle", "bolt.heart.fill",
                          "chart.xyaxis.line", "sparkles.rectangle.stack.fill",
                          "slider.horizontal.below.waveform"));
  std::string keys;
  for (const OstrelPane pane : allCases<OstrelPane>()) keys += shortcutKey(pane);
  EXPECT_EQ(keys, "123456");
}

TEST(StateEnumerations, ListsOfTheProcessesPane) {
  EXPECT_THAT(namesOfAll<ProcessesSubTab>(),
              ElementsAre("apps", "projects", "containers", "ports", "idleServers"));
  EXPECT_THAT(rawValuesOfAll<ProcessesSubTab>(),
              ElementsAre("Apps", "Projects", "Containers", "Ports", "Idle Servers"));
}

TEST(StateEnumerations, SortFields) {
  EXPECT_THAT(namesOfAll<ProcessSortField>(),
              ElementsAre("memory", "cpu", "energy", "network", "disk", "gpu"));
  EXPECT_THAT(rawValuesOfAll<ProcessSortField>(),
              ElementsAre("Memory", "CPU", "Energy", "Network", "Disk", "GPU"));
}

TEST(StateEnumerations, HistoryRangesLookBackFromAnHourToAYear) {
  EXPECT_THAT(namesOfAll<HistoryRangeOption>(),
              ElementsAre("hour1", "hour6", "hour24", "days7", "days30", "days90", "year1"));
  EXPECT_THAT(rawValuesOfAll<HistoryRangeOption>(),
              ElementsAre("1h", "6h", "24h", "7d", "30d", "90d", "1y"));
  std::vector<double> seconds;
  for (const auto range : allCases<HistoryRangeOption>()) seconds.push_back(lookBackSeconds(range));
  EXPECT_THAT(seconds, ElementsAre(3600, 21600, 86400, 604800, 2592000, 7776000, 31536000));
}

TEST(StateEnumerations, HistoryMetricsWithLabelAndUnit) {
  EXPECT_THAT(namesOfAll<HistoryMetricKind>(),
              ElementsAre("cpu", "memory", "gpu", "neuralEngine", "temperature", "fans", "power"));
  EXPECT_THAT(
      rawValuesOfAll<HistoryMetricKind>(),
      ElementsAre("CPU", "Memory", "GPU", "Neural Engine", "Temperature", "Fans", "System Power"));
  EXPECT_THAT(wordsOfAll<HistoryMetricKind>([](auto metric) { return unit(metric); }),
              ElementsAre("%", "%", "%", "%", "°C", "RPM", "W"));
}

TEST(StateEnumerations, ThemesWithLabelsAndSymbols) {
  EXPECT_THAT(namesOfAll<AppThemeMode>(), ElementsAre("system", "dark", "light"));
  EXPECT_THAT(rawValuesOfAll<AppThemeMode>(), ElementsAre("System", "Dark", "Light"));
  EXPECT_THAT(wordsOfAll<AppThemeMode>([](auto mode) { return label(mode); }),
              ElementsAre("System (Auto)", "Dark Mode", "Light Mode"));
  EXPECT_THAT(wordsOfAll<AppThemeMode>([](auto mode) { return shortLabel(mode); }),
              ElementsAre("Auto", "Dark", "Light"));
  EXPECT_THAT(wordsOfAll<AppThemeMode>([](auto mode) { return iconName(mode); }),
              ElementsAre("circle.lefthalf.filled", "moon.stars.fill", "sun.max.fill"));
}

TEST(StateEnumerations, MenuBarReadoutsWithLabelsAndSymbols) {
  EXPECT_THAT(namesOfAll<MenuBarReadout>(),
              ElementsAre("cpu", "memory", "gpu", "neuralEngine", "network", "disk", "temperature",
                          "fans", "battery", "power", "agents"));
  EXPECT_THAT(rawValuesOfAll<MenuBarReadout>(),
              ElementsAre("CPU", "Memory", "GPU", "Neural Engine", "Network", "Disk", "Temperature",
                          "Fans", "Battery", "Power", "Agents"));
  EXPECT_THAT(
      wordsOfAll<MenuBarReadout>([](auto readout) { return shortLabel(readout); }),
      ElementsAre("CPU", "MEM", "GPU", "ANE", "NET", "DSK", "TMP", "FAN", "BAT", "PWR", "AI"));
  EXPECT_THAT(
      wordsOfAll<MenuBarReadout>([](auto readout) { return iconName(readout); }),
      ElementsAre("cpu", "memorychip", "display", "brain", "arrow.up.arrow.down", "internaldrive",
                  "thermometer.medium", "fanblade", "battery.100", "bolt.fill", "sparkles"));
}

TEST(StateEnumerations, MenuBarStylesAndColourModes) {
  EXPECT_THAT(namesOfAll<MenuBarDisplayStyle>(), ElementsAre("value", "graph", "both"));
  EXPECT_THAT(rawValuesOfAll<MenuBarDisplayStyle>(),
              ElementsAre("Value only", "Sparkline", "Icon + Value"));
  EXPECT_THAT(namesOfAll<MenuBarColorMode>(), ElementsAre("monochrome", "strainOnly", "colour"));
  EXPECT_THAT(rawValuesOfAll<MenuBarColorMode>(),
              ElementsAre("Monochrome", "Colour on strain", "Full colour"));
}

TEST(StateEnumerations, PalettesDensitiesAndUnits) {
  EXPECT_THAT(namesOfAll<ChartPalette>(), ElementsAre("forest", "ember", "ocean", "iris", "mono"));
  EXPECT_THAT(rawValuesOfAll<ChartPalette>(),
              ElementsAre("Forest", "Ember", "Ocean", "Iris", "Mono"));
  EXPECT_THAT(namesOfAll<UIDensity>(), ElementsAre("compact", "comfortable"));
  EXPECT_THAT(rawValuesOfAll<UIDensity>(), ElementsAre("Compact", "Comfortable"));
  EXPECT_THAT(namesOfAll<TemperatureUnit>(), ElementsAre("celsius", "fahrenheit"));
  EXPECT_THAT(rawValuesOfAll<TemperatureUnit>(), ElementsAre("Celsius (°C)", "Fahrenheit (°F)"));
}

TEST(StateEnumerations, RetentionIsANumberOfDaysWithALabel) {
  EXPECT_THAT(namesOfAll<HistoryRetentionOption>(), ElementsAre("days30", "days90", "days365"));
  EXPECT_EQ(rawValue(HistoryRetentionOption::days30), 30);
  EXPECT_EQ(rawValue(HistoryRetentionOption::days90), 90);
  EXPECT_EQ(rawValue(HistoryRetentionOption::days365), 365);
  EXPECT_THAT(wordsOfAll<HistoryRetentionOption>([](auto option) { return label(option); }),
              ElementsAre("30 days", "90 days", "1 year"));
}

TEST(StateEnumerations, ACaseIsFoundByItsExactNameOnly) {
  EXPECT_EQ(fromCaseName<ProcessesSubTab>("idleServers"), ProcessesSubTab::idleServers);
  EXPECT_EQ(fromCaseName<ProcessesSubTab>("IdleServers"), std::nullopt);
  EXPECT_EQ(fromCaseName<ProcessesSubTab>(""), std::nullopt);
  EXPECT_EQ(fromCaseName<HistoryRetentionOption>("days365"), HistoryRetentionOption::days365);
}

}  // namespace
}  // namespace korvantis
