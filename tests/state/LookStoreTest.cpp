#include <QMetaProperty>
#include <QSignalSpy>
#include <QVariant>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "state/LookStore.h"
#include "state/ScriptedRunLoop.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr WindowAppearance dark{true, 19, 19, 21};
constexpr WindowAppearance light{false, 243, 244, 248};

/// A `LookStore` over a scripted desktop; what is pushed onto it is written down in `log`.
class LookStoreTest : public ::testing::Test {
 protected:
  LookStoreCalls calls() {
    LookStoreCalls calls;
    calls.userDefaults.stringForKey = [this](const auto& key) -> std::optional<std::string> {
      const auto entry = userDefaults.find(key);
      if (entry == userDefaults.end()) return std::nullopt;
      return entry->second;
    };
    calls.userDefaults.setString = [this](const auto& key, const auto& value) {
      writes.emplace_back(key, value);
      userDefaults[key] = value;
    };
    calls.appearance.detectSystemDarkMode = [this] {
      ++detections;
      return systemIsDark;
    };
    calls.application.setThemeIsDark = [this](bool isDark) {
      log.emplace_back(isDark ? "theme dark" : "theme light");
    };
    calls.application.clearApplicationAppearance = [this] { log.emplace_back("clear"); };
    calls.application.windows = [this] { return windows(); };
    calls.application.observeSystemTheme = [this](std::function<void()> changed) {
      log.emplace_back("observe");
      systemThemeChanged = std::move(changed);
    };
    calls.mainRunLoop = runLoop.calls();
    return calls;
  }

  std::vector<ApplicationWindow> windows() {
    log.emplace_back("windows");
    std::vector<ApplicationWindow> list;
    for (const bool isTitled : titles) {
      list.push_back({isTitled, [this, isTitled](const WindowAppearance& appearance) {
                        log.emplace_back(isTitled ? "titled window" : "bare window");
                        appearances.push_back(appearance);
                      }});
    }
    return list;
  }

  LookStore& store() {
    if (!store_) store_ = std::make_unique<LookStore>(calls());
    return *store_;
  }

  std::map<std::string, std::string> userDefaults;
  std::vector<std::pair<std::string, std::string>> writes;
  bool systemIsDark = false;
  int detections = 0;
  std::vector<std::string> log;
  std::vector<bool> titles{true};
  std::vector<WindowAppearance> appearances;
  std::function<void()> systemThemeChanged;
  test::ScriptedRunLoop runLoop;
  std::unique_ptr<LookStore> store_;
};

TEST_F(LookStoreTest, EveryFieldStartsFromItsTable) {
  systemIsDark = true;

  EXPECT_EQ(store().themeMode(), AppThemeMode::system);
  EXPECT_TRUE(store().systemIsDark());
  EXPECT_TRUE(store().effectiveIsDark());
  EXPECT_EQ(store().palette(), ChartPalette::ocean);
  EXPECT_EQ(store().density(), UIDensity::comfortable);
  EXPECT_EQ(store().temperatureUnit(), TemperatureUnit::celsius);
  EXPECT_FALSE(store().windowFloats());
  EXPECT_EQ(store().retention(), HistoryRetentionOption::days90);
  EXPECT_EQ(store().hotThresholdCelsius(), 82.0);
}

TEST_F(LookStoreTest, StartReadsTheSystemsLook) {
  EXPECT_FALSE(store().systemIsDark());
  EXPECT_FALSE(store().effectiveIsDark());
  EXPECT_FALSE(store().detectSystemDarkMode());
}

TEST_F(LookStoreTest, StartPushesTheLookTwiceAndThenFollowsTheSystem) {
  store();

  EXPECT_THAT(log, ElementsAre("theme light", "clear", "windows", "titled window",  //
                               "theme light", "clear", "windows", "titled window", "observe"));
  EXPECT_EQ(detections, 3);
}

TEST_F(LookStoreTest, StartWritesTheThemeBackOnce) {
  store();

  EXPECT_THAT(writes, ElementsAre(Pair("Korvantis.themeMode", "System")));
}

TEST_F(LookStoreTest, AStoredThemeIsTaken) {
  userDefaults["Korvantis.themeMode"] = "Dark";
  EXPECT_EQ(store().themeMode(), AppThemeMode::dark);
  EXPECT_TRUE(store().effectiveIsDark());
  EXPECT_THAT(writes, ElementsAre(Pair("Korvantis.themeMode", "Dark")));

  store_.reset();
  systemIsDark = true;
  userDefaults["Korvantis.themeMode"] = "Light";
  EXPECT_EQ(store().themeMode(), AppThemeMode::light);
  EXPECT_FALSE(store().effectiveIsDark());
}

TEST_F(LookStoreTest, AStoredThemeThatIsNoKnownOneReadsAsSystem) {
  for (const char* stored : {"System", "dark", "DARK", "Dark ", "", "Sepia"}) {
    userDefaults["Korvantis.themeMode"] = stored;
    store_.reset();
    EXPECT_EQ(store().themeMode(), AppThemeMode::system) << stored;
    EXPECT_EQ(userDefaults["Korvantis.themeMode"], "System") << stored;
  }
}

TEST_F(LookStoreTest, EveryAssignmentOfTheThemeIsWrittenAndPushedAlsoAnEqualOne) {
  store();
  writes.clear();
  log.clear();
  store().setThemeMode(AppThemeMode::light);
  store().setThemeMode(AppThemeMode::light);

  EXPECT_THAT(writes, ElementsAre(Pair("Korvantis.themeMode", "Light"),
                                  Pair("Korvantis.themeMode", "Light")));
  EXPECT_THAT(log, ElementsAre("theme light", "clear", "windows", "titled window",  //
                               "theme light", "clear", "windows", "titled window"));
}

TEST_F(LookStoreTest, SyncAppearanceFollowsTheSystemOnlyInSystemMode) {
  store();
  systemIsDark = true;
  store().syncAppearance();
  EXPECT_TRUE(store().effectiveIsDark());

  store().setThemeMode(AppThemeMode::light);
  EXPECT_FALSE(store().effectiveIsDark());
  EXPECT_TRUE(store().systemIsDark());

  systemIsDark = false;
  store().setThemeMode(AppThemeMode::dark);
  EXPECT_TRUE(store().effectiveIsDark());
  EXPECT_FALSE(store().systemIsDark());
}

TEST_F(LookStoreTest, SyncAppearanceGivesTitledWindowsTheLookAndLeavesTheOthersAlone) {
  titles = {false, true, false, true};
  store().setThemeMode(AppThemeMode::dark);
  log.clear();
  appearances.clear();
  store().syncAppearance();

  EXPECT_THAT(log, ElementsAre("theme dark", "clear", "windows", "titled window", "titled window"));
  EXPECT_THAT(appearances, ElementsAre(dark, dark));

  appearances.clear();
  store().setThemeMode(AppThemeMode::light);
  EXPECT_THAT(appearances, ElementsAre(light, light));
}

TEST_F(LookStoreTest, TheThemeFlagIsSetBeforeTheScreensAreTold) {
  store();
  std::vector<std::string> logWhenTold;
  QObject::connect(&store(), &LookStore::effectiveIsDarkChanged, &store(),
                   [&] { logWhenTold = log; });
  log.clear();
  store().setThemeMode(AppThemeMode::dark);

  EXPECT_THAT(logWhenTold, ElementsAre("theme dark"));
}

TEST_F(LookStoreTest, SyncAppearanceIsSafeBeforeTheApplicationObjectExists) {
  LookStoreCalls bare = calls();
  bare.application = {};
  LookStore early(std::move(bare));
  early.setThemeMode(AppThemeMode::dark);

  EXPECT_TRUE(early.effectiveIsDark());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(LookStoreTest, CycleThemeModeGoesFromSystemToDarkToLight) {
  store().cycleThemeMode();
  EXPECT_EQ(store().themeMode(), AppThemeMode::dark);
  store().cycleThemeMode();
  EXPECT_EQ(store().themeMode(), AppThemeMode::light);
}

TEST_F(LookStoreTest, CycleThemeModeFromLightGivesSystem) {
  store().setThemeMode(AppThemeMode::light);
  store().cycleThemeMode();

  EXPECT_EQ(store().themeMode(), AppThemeMode::system);
  EXPECT_EQ(userDefaults["Korvantis.themeMode"], "System");
}

TEST_F(LookStoreTest, ASystemChangeUnderADarkThemeUpdatesTheSystemsLookAndLeavesTheScreensDark) {
  systemIsDark = true;
  store().setThemeMode(AppThemeMode::dark);
  const QSignalSpy effective(&store(), &LookStore::effectiveIsDarkChanged);
  const QSignalSpy system(&store(), &LookStore::systemIsDarkChanged);
  systemIsDark = false;
  systemThemeChanged();
  runLoop.runTasks();

  EXPECT_FALSE(store().systemIsDark());
  EXPECT_TRUE(store().effectiveIsDark());
  EXPECT_EQ(system.count(), 1);
  EXPECT_EQ(effective.count(), 0);
}

TEST_F(LookStoreTest, ASystemChangeReachesTheStoreThroughATaskOnTheMainThread) {
  store();
  systemIsDark = true;
  systemThemeChanged();
  EXPECT_FALSE(store().effectiveIsDark());

  runLoop.runTasks();
  EXPECT_TRUE(store().effectiveIsDark());
  EXPECT_TRUE(store().systemIsDark());
}

TEST_F(LookStoreTest, ASystemChangeAfterTheStoresEndDoesNothing) {
  store();
  systemThemeChanged();
  store_.reset();
  const int before = detections;
  systemThemeChanged();
  runLoop.runTasks();

  EXPECT_EQ(detections, before);
}

TEST_F(LookStoreTest, FormatTempGivesWholeDegreesOfTheChosenUnit) {
  EXPECT_EQ(store().formatTemp(45.4), "45°C");
  EXPECT_EQ(store().formatTemp(44.5), "44°C");
  EXPECT_EQ(store().formatTemp(45.5), "46°C");
  EXPECT_EQ(store().formatTemp(-3.6), "-4°C");
  store().setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_EQ(store().formatTemp(45), "113°F");
  EXPECT_EQ(store().formatTemp(-40), "-40°F");
}

TEST_F(LookStoreTest, FormatTempOf100Gives212InFahrenheit) {
  store().setTemperatureUnit(TemperatureUnit::fahrenheit);

  EXPECT_EQ(store().formatTemp(100), "212°F");
}

TEST_F(LookStoreTest, OnlyTheThemeOutlivesARestart) {
  store().setThemeMode(AppThemeMode::light);
  store().setPalette(ChartPalette::mono);
  store().setDensity(UIDensity::compact);
  store().setTemperatureUnit(TemperatureUnit::fahrenheit);
  store().setWindowFloats(true);
  store().setRetention(HistoryRetentionOption::days365);
  store().setHotThresholdCelsius(70);
  EXPECT_EQ(userDefaults.size(), 1U);
  store_.reset();

  EXPECT_EQ(store().themeMode(), AppThemeMode::light);
  EXPECT_EQ(store().palette(), ChartPalette::ocean);
  EXPECT_EQ(store().density(), UIDensity::comfortable);
  EXPECT_EQ(store().temperatureUnit(), TemperatureUnit::celsius);
  EXPECT_FALSE(store().windowFloats());
  EXPECT_EQ(store().retention(), HistoryRetentionOption::days90);
  EXPECT_EQ(store().hotThresholdCelsius(), 82.0);
}

TEST_F(LookStoreTest, APlainSettingHasNoFurtherEffect) {
  store();
  log.clear();
  writes.clear();
  store().setPalette(ChartPalette::iris);
  store().setDensity(UIDensity::compact);
  store().setWindowFloats(true);
  store().setRetention(HistoryRetentionOption::days30);

  EXPECT_EQ(store().palette(), ChartPalette::iris);
  EXPECT_EQ(store().density(), UIDensity::compact);
  EXPECT_TRUE(store().windowFloats());
  EXPECT_EQ(store().retention(), HistoryRetentionOption::days30);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THAT(writes, IsEmpty());
}

/// One property, how it starts, and another value that it takes.
struct LookProperty {
  const char* name;
  QVariant start;
  QVariant other;
};

class LookStorePropertyTest : public LookStoreTest,
                              public ::testing::WithParamInterface<LookProperty> {};

TEST_P(LookStorePropertyTest, NotifiesExactlyOnARealChange) {
  const QMetaObject& meta = *store().metaObject();
  const QMetaProperty property = meta.property(meta.indexOfProperty(GetParam().name));
  QSignalSpy spy(&store(), property.notifySignal());

  EXPECT_EQ(property.read(&store()), GetParam().start);
  ASSERT_TRUE(property.write(&store(), GetParam().start));
  EXPECT_EQ(spy.count(), 0);
  ASSERT_TRUE(property.write(&store(), GetParam().other));
  EXPECT_EQ(property.read(&store()), GetParam().other);
  EXPECT_EQ(spy.count(), 1);
  ASSERT_TRUE(property.write(&store(), GetParam().other));
  EXPECT_EQ(spy.count(), 1);
  ASSERT_TRUE(property.write(&store(), GetParam().start));
  EXPECT_EQ(spy.count(), 2);
}

INSTANTIATE_TEST_SUITE_P(EveryField, LookStorePropertyTest,
                         ::testing::Values(LookProperty{"themeMode", "system", "dark"},
                                           LookProperty{"palette", "ocean", "forest"},
                                           LookProperty{"density", "comfortable", "compact"},
                                           LookProperty{"temperatureUnit", "celsius", "fahrenheit"},
                                           LookProperty{"windowFloats", false, true},
                                           LookProperty{"retention", "days90", "days365"},
                                           LookProperty{"hotThresholdCelsius", 82.0, 75.5}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(LookStoreTest, TheTwoLooksNotifyExactlyOnARealChange) {
  store();
  const QSignalSpy system(&store(), &LookStore::systemIsDarkChanged);
  const QSignalSpy effective(&store(), &LookStore::effectiveIsDarkChanged);
  store().syncAppearance();
  EXPECT_EQ(system.count(), 0);
  EXPECT_EQ(effective.count(), 0);

  systemIsDark = true;
  store().syncAppearance();
  store().syncAppearance();
  EXPECT_EQ(system.count(), 1);
  EXPECT_EQ(effective.count(), 1);
}

TEST_F(LookStoreTest, ANameThatIsNoCaseChangesNothing) {
  store().setPaletteName("Forest");
  store().setThemeModeName("sepia");
  store().setDensityName("");
  store().setTemperatureUnitName("kelvin");
  store().setRetentionName("90");

  EXPECT_EQ(store().palette(), ChartPalette::ocean);
  EXPECT_EQ(store().themeMode(), AppThemeMode::system);
  EXPECT_EQ(store().density(), UIDensity::comfortable);
  EXPECT_EQ(store().temperatureUnit(), TemperatureUnit::celsius);
  EXPECT_EQ(store().retention(), HistoryRetentionOption::days90);
}

}  // namespace
}  // namespace korvantis
