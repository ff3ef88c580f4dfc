#include <QMetaProperty>
#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "state/RemoteAlertStoreFixture.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;
using Value = test::ScriptedDefaults::Value;

class RemoteAlertStoreTest : public test::RemoteAlertStoreFixture {};

TEST_F(RemoteAlertStoreTest, EveryFieldStartsFromItsTable) {
  EXPECT_FALSE(store().iMessageEnabled());
  EXPECT_EQ(store().iMessageRecipient(), "");
  EXPECT_FALSE(store().whatsAppEnabled());
  EXPECT_EQ(store().whatsAppPhone(), "");
  EXPECT_EQ(store().whatsAppMode(), WhatsAppDeliveryMode::cloudWebhook);
  EXPECT_EQ(store().whatsAppApiKeyOrWebhook(), "");
  EXPECT_TRUE(store().notifyOnStrain());
  EXPECT_EQ(store().schedule(), RemoteBriefInterval::off);
  EXPECT_EQ(store().cooldownMinutes(), 30);
  EXPECT_FALSE(store().isSending());
  EXPECT_EQ(store().lastStatusMessage(), std::nullopt);
  EXPECT_FALSE(store().lastStatusIsError());
  EXPECT_EQ(store().lastSentDate(), std::nullopt);
}

TEST_F(RemoteAlertStoreTest, EveryChangeIsWrittenUnderItsKeyInItsEncoding) {
  store();
  defaults.writes.clear();
  store().setIMessageEnabled(true);
  store().setIMessageRecipient("me@example.org");
  store().setWhatsAppEnabled(true);
  store().setWhatsAppPhone("+1 (555) 123-4567");
  store().setWhatsAppMode(WhatsAppDeliveryMode::desktopApp);
  store().setWhatsAppApiKeyOrWebhook("key 1");
  store().setNotifyOnStrain(false);
  store().setSchedule(RemoteBriefInterval::daily);
  store().setCooldownMinutes(7);

  EXPECT_THAT(defaults.writes,
              ElementsAre(Pair("Korvantis.iMessageEnabled", Value(true)),
                          Pair("Korvantis.iMessageRecipient", Value(std::string("me@example.org"))),
                          Pair("Korvantis.whatsAppEnabled", Value(true)),
                          Pair("Korvantis.whatsAppPhone", Value(std::string("+1 (555) 123-4567"))),
                          Pair("Korvantis.whatsAppMode",
                               Value(std::string("Local WhatsApp App Deep-Link (whatsapp://)"))),
                          Pair("Korvantis.whatsAppApiKeyOrWebhook", Value(std::string("key 1"))),
                          Pair("Korvantis.notifyOnStrain", Value(false)),
                          Pair("Korvantis.remoteSchedule", Value(std::string("Once Daily (24h)"))),
                          Pair("Korvantis.remoteCooldownMinutes", Value(std::int64_t{7}))));
}

TEST_F(RemoteAlertStoreTest, AllNineSettingsOutliveARestartAndAreWrittenAgainUnchanged) {
  store().setIMessageEnabled(true);
  store().setIMessageRecipient("me@example.org");
  store().setWhatsAppEnabled(true);
  store().setWhatsAppPhone("+49 1");
  store().setWhatsAppMode(WhatsAppDeliveryMode::desktopApp);
  store().setWhatsAppApiKeyOrWebhook(" a b ");
  store().setNotifyOnStrain(false);
  store().setSchedule(RemoteBriefInterval::every12Hours);
  store().setCooldownMinutes(1);
  const auto before = defaults.values;
  defaults.writes.clear();
  store_.reset();

  EXPECT_TRUE(store().iMessageEnabled());
  EXPECT_EQ(store().iMessageRecipient(), "me@example.org");
  EXPECT_TRUE(store().whatsAppEnabled());
  EXPECT_EQ(store().whatsAppPhone(), "+49 1");
  EXPECT_EQ(store().whatsAppMode(), WhatsAppDeliveryMode::desktopApp);
  EXPECT_EQ(store().whatsAppApiKeyOrWebhook(), " a b ");
  EXPECT_FALSE(store().notifyOnStrain());
  EXPECT_EQ(store().schedule(), RemoteBriefInterval::every12Hours);
  EXPECT_EQ(store().cooldownMinutes(), 1);
  EXPECT_EQ(defaults.writes.size(), 9U);
  EXPECT_EQ(defaults.values, before);
}

TEST_F(RemoteAlertStoreTest, AStoredTextThatIsNoKnownLabelLeavesTheDefault) {
  defaults.values["Korvantis.whatsAppMode"] = std::string("desktopApp");
  defaults.values["Korvantis.remoteSchedule"] = std::string("Every 2 Hours");

  EXPECT_EQ(store().whatsAppMode(), WhatsAppDeliveryMode::cloudWebhook);
  EXPECT_EQ(store().schedule(), RemoteBriefInterval::off);
}

TEST_F(RemoteAlertStoreTest, EveryLabelOfTheScheduleLoads) {
  for (const RemoteBriefInterval each : allCases<RemoteBriefInterval>()) {
    defaults.values["Korvantis.remoteSchedule"] = std::string(rawValue(each));
    store_.reset();
    EXPECT_EQ(store().schedule(), each);
  }
}

TEST_F(RemoteAlertStoreTest, AStoredCooldownOf0LoadsAs30) {
  for (const std::int64_t stored : {std::int64_t{0}, std::int64_t{-4}}) {
    defaults.values["Korvantis.remoteCooldownMinutes"] = stored;
    store_.reset();
    EXPECT_EQ(store().cooldownMinutes(), 30);
  }
}

TEST_F(RemoteAlertStoreTest, NotifyOnStrainStaysTrueUntilAKeyIsThere) {
  EXPECT_TRUE(store().notifyOnStrain());
  defaults.values["Korvantis.notifyOnStrain"] = false;
  store_.reset();
  EXPECT_FALSE(store().notifyOnStrain());
}

TEST_F(RemoteAlertStoreTest, EverySettingNotifiesExactlyOnARealChange) {
  const std::map<std::string, QVariant> others{
      {"iMessageEnabled", true},  {"iMessageRecipient", "a"},       {"whatsAppEnabled", true},
      {"whatsAppPhone", "1"},     {"whatsAppMode", "desktopApp"},   {"notifyOnStrain", false},
      {"schedule", "every1Hour"}, {"whatsAppApiKeyOrWebhook", "k"}, {"cooldownMinutes", 5},
  };
  const QMetaObject& meta = *store().metaObject();
  for (const auto& [name, other] : others) {
    const QMetaProperty property = meta.property(meta.indexOfProperty(name.c_str()));
    const QVariant start = property.read(&store());
    const QSignalSpy spy(&store(), property.notifySignal());
    ASSERT_TRUE(property.write(&store(), start)) << name;
    EXPECT_EQ(spy.count(), 0) << name;
    ASSERT_TRUE(property.write(&store(), other)) << name;
    ASSERT_TRUE(property.write(&store(), other)) << name;
    EXPECT_EQ(spy.count(), 1) << name;
  }
}

TEST_F(RemoteAlertStoreTest, ANameThatIsNoCaseChangesNothing) {
  store().setWhatsAppModeName("Desktop");
  store().setScheduleName("daily ");

  EXPECT_EQ(store().whatsAppMode(), WhatsAppDeliveryMode::cloudWebhook);
  EXPECT_EQ(store().schedule(), RemoteBriefInterval::off);
}

}  // namespace
}  // namespace korvantis
