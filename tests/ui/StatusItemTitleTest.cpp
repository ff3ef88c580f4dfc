#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/StatusItemTitle.h"

namespace korvantis {
namespace {

TEST(StatusItemTitle, IsABlankAndTheChosenFigures) {
  ScriptedStore scripted;
  MonitorStore& store = scripted.store();
  EXPECT_EQ(statusItemTitle(store, store.snapshot()),
            " " + store.menuBarSettings()->formattedSummary(store.snapshot(), false).toStdString());
}

TEST(StatusItemTitle, WithNothingToSayItNamesTheProgram) {
  ScriptedStore scripted;
  MonitorStore& store = scripted.store();
  store.menuBarSettings()->setEnabledReadouts({MenuBarReadout::battery});
  EngineSnapshot snapshot = store.snapshot();
  snapshot.system.battery.reset();
  EXPECT_EQ(statusItemTitle(store, snapshot), " Korvantis");
}

TEST(StatusItemTitle, FollowsTheUnitOfTemperatureWhenItIsMadeAgain) {
  ScriptedStore scripted;
  MonitorStore& store = scripted.store();
  store.menuBarSettings()->setEnabledReadouts({MenuBarReadout::temperature});
  EngineSnapshot snapshot = store.snapshot();
  snapshot.system.thermal.cpuCelsius = 50;
  const std::string celsius = statusItemTitle(store, snapshot);
  store.look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_NE(statusItemTitle(store, snapshot), celsius);
  EXPECT_NE(statusItemTitle(store, snapshot).find("122"), std::string::npos);
}

TEST(StatusItemImages, AreTheSymbolInSeveralSizesInOneColour) {
  const auto images = statusItemImages();
  ASSERT_GE(images.size(), 3U);
  for (const StatusItemImage& image : images) {
    const auto size = static_cast<std::size_t>(image.size);
    ASSERT_EQ(image.pixels.size(), size * size * 4);
    int drawn = 0;
    for (std::size_t at = 0; at < image.pixels.size(); at += 4) {
      if (image.pixels[at] < 0xC0) continue;
      ++drawn;
      EXPECT_NEAR(image.pixels[at + 1], 0x8E, 2);
      EXPECT_NEAR(image.pixels[at + 3], 0xA3, 2);
    }
    EXPECT_GT(drawn, image.size);
  }
}

}  // namespace
}  // namespace korvantis
