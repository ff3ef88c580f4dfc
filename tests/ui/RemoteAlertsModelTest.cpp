#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "ui/ScriptedStore.h"
#include "ui/settings/RemoteAlertsModel.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RemoteAlertsModelTest : public ::testing::Test {
 protected:
  RemoteAlertsModel& model() {
    model_.setStore(&scripted.store());
    return model_;
  }
  RemoteAlertStore& alerts() { return *scripted.store().remoteAlerts(); }
  std::string line(int number) {
    return model().previewText().split(u'\n').at(number - 1).toStdString();
  }

  ScriptedStore scripted;

 private:
  RemoteAlertsModel model_;
};

TEST_F(RemoteAlertsModelTest, ThePreviewShowsTheTriggerPreviewInItsFirstLineAndTheLiveFigures) {
  scripted.hardware.chipName = "Apple M3 Pro";
  scripted.next.system.cpuPercent = 84.2;
  scripted.next.system.thermal.cpuCelsius = 93;
  EXPECT_EQ(line(1), "📊 Korvantis Brief — Apple M3 Pro [Preview]");
  EXPECT_THAT(line(3), ::testing::StartsWith("• Load: CPU 84.2% · RAM "));
  EXPECT_THAT(line(4), ::testing::StartsWith("• Thermal & Power: 93°C · "));
  EXPECT_EQ(model().previewText().count(u'\n'), 4);
}

TEST_F(RemoteAlertsModelTest, ThePreviewChangesWithEachTickAndNotifiesRealChangesOnly) {
  model();
  QSignalSpy changed(&model(), &RemoteAlertsModel::previewTextChanged);
  scripted.tick();
  EXPECT_EQ(changed.size(), 0);
  scripted.next.system.cpuPercent = 12.5;
  scripted.tick();
  EXPECT_EQ(changed.size(), 1);
  EXPECT_THAT(line(3), ::testing::StartsWith("• Load: CPU 12.5%"));
  EXPECT_EQ(line(2), "• Status: System Nominal");
  scripted.next.activeStrains = {StrainKind::cpu, StrainKind::temperature};
  scripted.tick();
  EXPECT_EQ(line(2), "• Status: ⚠️ Active Strain (cpu, temperature)");
}

TEST_F(RemoteAlertsModelTest, ThePreviewIsInCelsiusWhateverTheWindowShows) {
  scripted.next.system.thermal.cpuCelsius = 50;
  scripted.store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_THAT(line(4), ::testing::StartsWith("• Thermal & Power: 50°C"));
}

TEST_F(RemoteAlertsModelTest, TheCooldownIsAsItIsStoredAlsoBelowItsFloor) {
  EXPECT_EQ(model().cooldownText(), QStringLiteral("Cooldown: 30 min"));
  EXPECT_EQ(model().cooldownMinutes(), 30);
  alerts().setCooldownMinutes(1);
  EXPECT_EQ(model().cooldownText(), QStringLiteral("Cooldown: 1 min"));
  alerts().setCooldownMinutes(std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(model().cooldownText(), QStringLiteral("Cooldown: 9223372036854775807 min"));
  EXPECT_EQ(model().cooldownMinutes(), std::numeric_limits<int>::max());
}

TEST_F(RemoteAlertsModelTest, TestIMessageWithAnEmptyRecipientTellsSoAndSendsNothing) {
  EXPECT_EQ(model().statusText(), QString());
  model().testIMessage();
  scripted.runBackground();
  EXPECT_EQ(model().statusText(), QStringLiteral("iMessage: Missing recipient phone/email."));
  EXPECT_TRUE(alerts().lastStatusIsError());
  EXPECT_THAT(scripted.sent, IsEmpty());
}

TEST_F(RemoteAlertsModelTest, ATestTriesItsOwnChannelOnlyWhateverIsOn) {
  alerts().setIMessageRecipient("me@example.org");
  alerts().setWhatsAppApiKeyOrWebhook("http://127.0.0.1/hook");
  model().testIMessage();
  scripted.runBackground();
  EXPECT_THAT(scripted.sent, ElementsAre("program"));
  model().testWhatsApp();
  scripted.runBackground();
  EXPECT_THAT(scripted.sent, ElementsAre("program", "request"));
}

TEST_F(RemoteAlertsModelTest, WhileABriefIsOnItsWayThePressedButtonSaysSoInPlaceOfTheStatus) {
  alerts().setLastStatusMessage(QStringLiteral("earlier"));
  EXPECT_EQ(model().statusText(), QStringLiteral("earlier"));
  model().testIMessage();
  EXPECT_EQ(model().testIMessageText(), QStringLiteral("Sending…"));
  EXPECT_EQ(model().testWhatsAppText(), QStringLiteral("Test WhatsApp"));
  EXPECT_EQ(model().statusText(), QString());
  model().testWhatsApp();
  EXPECT_EQ(model().testWhatsAppText(), QStringLiteral("Sending…"));
  scripted.runBackground();
  EXPECT_EQ(model().testIMessageText(), QStringLiteral("Test iMessage"));
  EXPECT_EQ(model().testWhatsAppText(), QStringLiteral("Test WhatsApp"));
  EXPECT_EQ(model().statusText(), QStringLiteral("WhatsApp: Missing phone number."));
}

TEST_F(RemoteAlertsModelTest, ABriefFromElsewhereShowsOnBothButtons) {
  model();
  scripted.store().remoteAlerts()->sendManualBrief({}, "", true, true);
  EXPECT_EQ(model().testIMessageText(), QStringLiteral("Sending…"));
  EXPECT_EQ(model().testWhatsAppText(), QStringLiteral("Sending…"));
  scripted.runBackground();
  EXPECT_EQ(model().testWhatsAppText(), QStringLiteral("Test WhatsApp"));
}

TEST(RemoteAlertsModel, WithoutAStoreItSaysNothing) {
  RemoteAlertsModel model;
  model.testIMessage();
  EXPECT_EQ(model.previewText(), QString());
  EXPECT_EQ(model.cooldownMinutes(), 0);
  EXPECT_EQ(model.testIMessageText(), QStringLiteral("Test iMessage"));
}

}  // namespace
}  // namespace korvantis
