#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/settings/SettingsChoices.h"
#include "ui/theme/SymbolCatalogue.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> labelsOf(const QList<Choice>& choices) {
  std::vector<std::string> labels;
  for (const Choice& choice : choices) labels.push_back(choice.label.toStdString());
  return labels;
}

TEST(SettingsChoices, TheFourTabsStandInTheirOrder) {
  EXPECT_EQ(SettingsChoices::tabs(),
            QStringList({"Menu Bar", "Appearance", "Remote Alerts", "Integrations & MCP"}));
}

TEST(SettingsChoices, OffersTheThreeIntervals) {
  const QList<Choice> intervals = SettingsChoices::intervals();
  EXPECT_THAT(labelsOf(intervals), ElementsAre("1 second", "2 seconds", "5 seconds"));
  EXPECT_DOUBLE_EQ(intervals[0].value, 1);
  EXPECT_DOUBLE_EQ(intervals[1].value, 2);
  EXPECT_DOUBLE_EQ(intervals[2].value, 5);
}

TEST(SettingsChoices, TheReadoutsStandInTheirOrderWithSymbolsThatAreThere) {
  EXPECT_THAT(labelsOf(SettingsChoices::readouts()),
              ElementsAre("CPU", "Memory", "GPU", "Neural Engine", "Network", "Disk", "Temperature",
                          "Fans", "Battery", "Power", "Agents"));
  for (const Choice& readout : SettingsChoices::readouts())
    EXPECT_FALSE(SymbolCatalogue::glyphPath(readout.iconName).isEmpty())
        << readout.iconName.toStdString();
  EXPECT_EQ(SettingsChoices::readouts()[3].name, QStringLiteral("neuralEngine"));
}

TEST(SettingsChoices, EveryPickerOffersItsCasesInTheirWords) {
  EXPECT_THAT(labelsOf(SettingsChoices::displayStyles()),
              ElementsAre("Value only", "Sparkline", "Icon + Value"));
  EXPECT_THAT(labelsOf(SettingsChoices::colorModes()),
              ElementsAre("Monochrome", "Colour on strain", "Full colour"));
  EXPECT_THAT(labelsOf(SettingsChoices::palettes()),
              ElementsAre("Forest", "Ember", "Ocean", "Iris", "Mono"));
  EXPECT_THAT(labelsOf(SettingsChoices::temperatureUnits()),
              ElementsAre("Celsius (°C)", "Fahrenheit (°F)"));
  EXPECT_THAT(labelsOf(SettingsChoices::retentions()), ElementsAre("30 days", "90 days", "1 year"));
  EXPECT_THAT(labelsOf(SettingsChoices::densities()), ElementsAre("Compact", "Comfortable"));
  EXPECT_THAT(labelsOf(SettingsChoices::themeModes()),
              ElementsAre("System (Auto)", "Dark Mode", "Light Mode"));
  EXPECT_THAT(labelsOf(SettingsChoices::deliveryModes()),
              ElementsAre("Background API / Webhook (CallMeBot / Custom)",
                          "Local WhatsApp App Deep-Link (whatsapp://)"));
  EXPECT_THAT(labelsOf(SettingsChoices::schedules()),
              ElementsAre("Only on Strain Alerts", "Every 1 Hour", "Every 4 Hours",
                          "Every 12 Hours", "Once Daily (24h)"));
}

}  // namespace
}  // namespace korvantis
