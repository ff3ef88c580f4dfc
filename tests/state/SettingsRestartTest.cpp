#include <QByteArray>
#include <QSettings>
#include <gtest/gtest.h>
#include <memory>

#include "platform/qt/QtUserDefaults.h"
#include "state/ScriptedMonitor.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ScriptedMonitor;
using test::TemporaryFolder;

/// A store over the settings file of a home of its own, as a launch makes it.
class SettingsRestartTest : public ::testing::Test {
 protected:
  void SetUp() override {
    qputenv("HOME", home.path().c_str());
    qunsetenv("XDG_CONFIG_HOME");
  }
  void TearDown() override {
    store_.reset();
    qputenv("HOME", homeBefore);
    if (!configBefore.isNull()) qputenv("XDG_CONFIG_HOME", configBefore);
  }

  MonitorStore& store() {
    if (!store_) {
      MonitorStoreCalls calls = monitor.calls();
      calls.userDefaults = qtUserDefaultsCalls();
      store_ = std::make_unique<MonitorStore>(std::move(calls));
    }
    return *store_;
  }
  void restart() { store_.reset(); }

  QStringList storedKeys() const {
    const QString file = QString::fromStdString(home.path(".config/Korvantis/Korvantis.conf"));
    QStringList keys = QSettings(file, QSettings::IniFormat).allKeys();
    keys.sort();
    return keys;
  }

  void changePhoneSettings() {
    RemoteAlertStore& alerts = *store().remoteAlerts();
    alerts.setIMessageEnabled(true);
    alerts.setIMessageRecipient(" +1 (555) 019-2834, or \"me\" ");
    alerts.setWhatsAppEnabled(true);
    alerts.setWhatsAppPhone("+49 30 ä 🙂");
    alerts.setWhatsAppMode(WhatsAppDeliveryMode::desktopApp);
    alerts.setWhatsAppApiKeyOrWebhook("http://127.0.0.1/hook?a=1;b=2&c=%20");
    alerts.setNotifyOnStrain(false);
    alerts.setSchedule(RemoteBriefInterval::every4Hours);
    alerts.setCooldownMinutes(45);
  }
  void changeLook() {
    LookStore& look = *store().look();
    look.setThemeMode(AppThemeMode::light);
    look.setPalette(ChartPalette::iris);
    look.setDensity(UIDensity::compact);
    look.setTemperatureUnit(TemperatureUnit::fahrenheit);
    look.setWindowFloats(true);
    look.setRetention(HistoryRetentionOption::days365);
    look.setHotThresholdCelsius(60);
  }
  void changeMenuBar() {
    MenuBarSettingsStore& menuBar = *store().menuBarSettings();
    menuBar.setEnabledReadouts({MenuBarReadout::agents});
    menuBar.setDisplayStyle(MenuBarDisplayStyle::graph);
    menuBar.setColorMode(MenuBarColorMode::colour);
    menuBar.setShowStrainDot(false);
  }
  void changeTheRest() {
    store().setRefreshInterval(5);
    store().setSelectedSettingsTab("Remote Alerts");
    store().setShowSettingsModal(true);
    store().alerts()->muteApp("daemon:x", "x", std::nullopt, std::nullopt);
    store().alerts()->setAppLimits({});
    store().audioMixer()->setMasterVolume(0.25);
    store().remoteAlerts()->setLastStatusMessage(QStringLiteral("told"));
    store().remoteAlerts()->setLastStatusIsError(true);
  }

  const QByteArray homeBefore = qgetenv("HOME");
  const QByteArray configBefore = qgetenv("XDG_CONFIG_HOME");
  TemporaryFolder home;
  ScriptedMonitor monitor;
  std::unique_ptr<MonitorStore> store_;
};

TEST_F(SettingsRestartTest, TheThemeAndTheNinePhoneSettingsOutliveARestart) {
  changePhoneSettings();
  changeLook();
  restart();

  EXPECT_EQ(store().look()->themeMode(), AppThemeMode::light);
  const RemoteAlertStore& alerts = *store().remoteAlerts();
  EXPECT_TRUE(alerts.iMessageEnabled());
  EXPECT_EQ(alerts.iMessageRecipient(), " +1 (555) 019-2834, or \"me\" ");
  EXPECT_TRUE(alerts.whatsAppEnabled());
  EXPECT_EQ(alerts.whatsAppPhone(), "+49 30 ä 🙂");
  EXPECT_EQ(alerts.whatsAppMode(), WhatsAppDeliveryMode::desktopApp);
  EXPECT_EQ(alerts.whatsAppApiKeyOrWebhook(), "http://127.0.0.1/hook?a=1;b=2&c=%20");
  EXPECT_FALSE(alerts.notifyOnStrain());
  EXPECT_EQ(alerts.schedule(), RemoteBriefInterval::every4Hours);
  EXPECT_EQ(alerts.cooldownMinutes(), 45);
}

TEST_F(SettingsRestartTest, AllElseGoesBackToItsDefaultAtTheNextLaunch) {
  const std::size_t limits = store().alerts()->appLimits().size();
  const double volume = store().audioMixer()->masterVolume();
  changeLook();
  changeMenuBar();
  changeTheRest();
  restart();

  const LookStore& look = *store().look();
  EXPECT_EQ(look.palette(), ChartPalette::ocean);
  EXPECT_EQ(look.density(), UIDensity::comfortable);
  EXPECT_EQ(look.temperatureUnit(), TemperatureUnit::celsius);
  EXPECT_FALSE(look.windowFloats());
  EXPECT_EQ(look.retention(), HistoryRetentionOption::days90);
  EXPECT_EQ(look.hotThresholdCelsius(), 82.0);
  const MenuBarSettingsStore& menuBar = *store().menuBarSettings();
  EXPECT_EQ(menuBar.enabledReadouts(),
            (std::set{MenuBarReadout::cpu, MenuBarReadout::memory, MenuBarReadout::temperature,
                      MenuBarReadout::power}));
  EXPECT_EQ(menuBar.displayStyle(), MenuBarDisplayStyle::both);
  EXPECT_EQ(menuBar.colorMode(), MenuBarColorMode::strainOnly);
  EXPECT_TRUE(menuBar.showStrainDot());
  EXPECT_EQ(store().refreshIntervalSeconds(), 2.0);
  EXPECT_EQ(store().selectedSettingsTab(), "Menu Bar");
  EXPECT_FALSE(store().showSettingsModal());
  EXPECT_EQ(store().alerts()->appLimits().size(), limits);
  EXPECT_TRUE(store().alerts()->mutedApps().empty());
  EXPECT_EQ(store().audioMixer()->masterVolume(), volume);
  EXPECT_EQ(store().remoteAlerts()->lastStatusMessage(), std::nullopt);
  EXPECT_FALSE(store().remoteAlerts()->lastStatusIsError());
}

TEST_F(SettingsRestartTest, TheFileHoldsTheTenKeysAndNoOther) {
  changePhoneSettings();
  changeLook();
  changeMenuBar();
  changeTheRest();
  EXPECT_EQ(storedKeys(),
            QStringList({"Korvantis.iMessageEnabled", "Korvantis.iMessageRecipient",
                         "Korvantis.notifyOnStrain", "Korvantis.remoteCooldownMinutes",
                         "Korvantis.remoteSchedule", "Korvantis.themeMode",
                         "Korvantis.whatsAppApiKeyOrWebhook", "Korvantis.whatsAppEnabled",
                         "Korvantis.whatsAppMode", "Korvantis.whatsAppPhone"}));
}

TEST_F(SettingsRestartTest, ClosingAndReopeningKeepsTheSelectedTab) {
  store().setShowSettingsModal(true);
  store().setSelectedSettingsTab("Appearance");
  store().setShowSettingsModal(false);
  store().setShowSettingsModal(true);
  EXPECT_EQ(store().selectedSettingsTab(), "Appearance");
}

TEST_F(SettingsRestartTest, WithAnIntervalOf5TheNextTickIs5SecondsAfterTheClick) {
  store();
  monitor.runLoop.advance(1);
  const int ticks = monitor.ticks;
  store().setRefreshInterval(5);
  monitor.runLoop.advance(4.9);
  EXPECT_EQ(monitor.ticks, ticks);
  monitor.runLoop.advance(0.2);
  EXPECT_EQ(monitor.ticks, ticks + 1);
}

}  // namespace
}  // namespace korvantis
