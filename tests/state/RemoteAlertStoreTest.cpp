#include <QMetaMethod>
#include <QMetaProperty>
#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "state/RemoteAlertStore.h"
#include "state/ScriptedDelivery.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Pair;
using Value = test::ScriptedDefaults::Value;

/// A store over scripted settings and a scripted outside.
class RemoteAlertStoreTest : public ::testing::Test {
 protected:
  RemoteAlertStore& store() {
    if (!store_) store_ = std::make_unique<RemoteAlertStore>(defaults.calls(), delivery.calls());
    return *store_;
  }

  /// A store whose briefs go to a webhook.
  RemoteAlertStore& webhookStore() {
    store().setWhatsAppEnabled(true);
    store().setWhatsAppApiKeyOrWebhook("http://127.0.0.1/hook");
    return store();
  }

  static EngineSnapshot calm() { return {}; }
  static EngineSnapshot strained() {
    EngineSnapshot snapshot;
    snapshot.activeStrains = {StrainKind::cpu};
    return snapshot;
  }

  /// One tick after so many seconds; how many briefs it started.
  std::size_t tick(const EngineSnapshot& snapshot, double secondsLater = 0) {
    delivery.now += secondsLater;
    const std::size_t before = delivery.backgroundTasks.size();
    store().evaluateTick(snapshot, "Chip");
    return delivery.backgroundTasks.size() - before;
  }

  /// The trigger named in the first line of the last brief that was sent.
  std::string lastTrigger() {
    delivery.runBackground();
    const std::string body = delivery.requests.back().body.value_or("");
    const auto start = body.find('[') + 1;
    return body.substr(start, body.find(']') - start);
  }

  std::string status() { return store().lastStatusText().toStdString(); }

  test::ScriptedDefaults defaults;
  test::ScriptedDelivery delivery;
  std::unique_ptr<RemoteAlertStore> store_;
};

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

TEST_F(RemoteAlertStoreTest, WithBothChannelsOffNothingIsSentAndNoStampMoves) {
  store().setWhatsAppApiKeyOrWebhook("http://127.0.0.1/hook");
  store().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained()), 0U);
  EXPECT_EQ(tick(strained(), 7200), 0U);

  store().setWhatsAppEnabled(true);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(lastTrigger(), "Strain Alert");
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
}

TEST_F(RemoteAlertStoreTest, TheFirstTickWithStrainAfterALaunchSendsAtOnce) {
  webhookStore();
  EXPECT_EQ(tick(calm()), 0U);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(lastTrigger(), "Strain Alert");
}

TEST_F(RemoteAlertStoreTest, AStrainBriefGoesOutExactlyWhenTheCooldownIsOver) {
  webhookStore().setCooldownMinutes(10);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(tick(strained(), 599.5), 0U);
  EXPECT_EQ(tick(strained(), 0.5), 1U);
  EXPECT_EQ(tick(strained(), 599.5), 0U);
}

TEST_F(RemoteAlertStoreTest, ACooldownOf1BehavesAs5) {
  webhookStore().setCooldownMinutes(1);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(tick(strained(), 299), 0U);
  EXPECT_EQ(tick(strained(), 1), 1U);
  EXPECT_EQ(store().cooldownMinutes(), 1);
}

TEST_F(RemoteAlertStoreTest, ACooldownOf6BehavesAs6) {
  webhookStore().setCooldownMinutes(6);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(tick(strained(), 359), 0U);
  EXPECT_EQ(tick(strained(), 1), 1U);
}

TEST_F(RemoteAlertStoreTest, AStrainOfHoursGivesABriefEvery30MinutesAtTheFirstTickOnEachMark) {
  webhookStore();
  std::vector<int> sentAt;
  for (int second = 0; second <= 2 * 3600; second += 7) {
    if (tick(strained(), second == 0 ? 0 : 7) == 1) sentAt.push_back(second);
  }
  EXPECT_THAT(sentAt, ElementsAre(0, 1806, 3612, 5418));
}

TEST_F(RemoteAlertStoreTest, WithoutNotifyOnStrainStrainChangesOnlyTheTextOfThePeriodicBrief) {
  webhookStore().setNotifyOnStrain(false);
  store().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained()), 0U);
  EXPECT_EQ(tick(strained(), 3600), 1U);
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_THAT(*delivery.requests.back().body, HasSubstr("Active Strain (cpu)"));
}

TEST_F(RemoteAlertStoreTest, StrainWithinTheCooldownStillMaySendAPeriodicBrief) {
  webhookStore().setCooldownMinutes(100);
  store().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(lastTrigger(), "Strain Alert");
  EXPECT_EQ(tick(strained(), 3600), 1U);
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_THAT(*delivery.requests.back().body, HasSubstr("• Status: ⚠️ Active Strain (cpu)"));
}

TEST_F(RemoteAlertStoreTest, APeriodicBriefThatIsDueWaitsBehindAStrainBriefForTheNextTick) {
  webhookStore().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained(), 3600), 1U);
  EXPECT_EQ(lastTrigger(), "Strain Alert");
  EXPECT_EQ(tick(strained(), 2), 1U);
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_EQ(tick(strained(), 2), 0U);
}

TEST_F(RemoteAlertStoreTest, TheTwoClocksAreIndependent) {
  webhookStore().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained(), 1800), 1U);
  EXPECT_EQ(tick(calm(), 1800), 1U) << "the strain brief has not moved the periodic one";
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_EQ(tick(strained()), 1U) << "30 minutes after the strain brief, whatever came between";
  EXPECT_EQ(lastTrigger(), "Strain Alert");
}

TEST_F(RemoteAlertStoreTest, EveryIntervalSendsExactlyWhenItIsOver) {
  const std::map<RemoteBriefInterval, double> seconds{{RemoteBriefInterval::every1Hour, 3600},
                                                      {RemoteBriefInterval::every4Hours, 14400},
                                                      {RemoteBriefInterval::every12Hours, 43200},
                                                      {RemoteBriefInterval::daily, 86400}};
  for (const auto& [interval, length] : seconds) {
    EXPECT_EQ(intervalSeconds(interval), length);
    store_.reset();
    webhookStore().setSchedule(interval);
    EXPECT_EQ(tick(calm(), length - 1), 0U);
    EXPECT_EQ(tick(calm(), 1), 1U);
    EXPECT_EQ(lastTrigger(), rawValue(interval));
    EXPECT_EQ(tick(calm(), length - 1), 0U);
    EXPECT_EQ(tick(calm(), 1), 1U);
    delivery.runBackground();
  }
  EXPECT_EQ(intervalSeconds(RemoteBriefInterval::off), std::nullopt);
}

TEST_F(RemoteAlertStoreTest, WithTheScheduleOffNoPeriodicBriefGoesOut) {
  webhookStore();
  EXPECT_EQ(tick(calm(), 1e9), 0U);
}

TEST_F(RemoteAlertStoreTest, TheFirstPeriodicBriefComesAWholeIntervalAfterEveryLaunch) {
  webhookStore().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(calm(), 3600), 1U);
  delivery.runBackground();
  delivery.now += 60;
  store_.reset();
  store();
  EXPECT_EQ(tick(calm(), 3599), 0U);
  EXPECT_EQ(tick(calm(), 1), 1U);
}

TEST_F(RemoteAlertStoreTest, ABriefThatFailsIsNotTriedAgainBeforeTheNextSlot) {
  webhookStore();
  delivery.answer = {.error = "no", .statusCode = {}};
  EXPECT_EQ(tick(strained()), 1U);
  delivery.runBackground();
  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_EQ(tick(strained(), 1799), 0U);
  EXPECT_EQ(tick(strained(), 1), 1U);
}

TEST_F(RemoteAlertStoreTest, AManualBriefTouchesNoStampAndIgnoresEverySetting) {
  store().setWhatsAppApiKeyOrWebhook("http://127.0.0.1/hook");
  store().setNotifyOnStrain(false);
  store().sendManualBrief(strained(), "Chip", false, true);
  EXPECT_EQ(lastTrigger(), "Instant Brief");

  store().setWhatsAppEnabled(true);
  store().setNotifyOnStrain(true);
  EXPECT_EQ(tick(strained()), 1U) << "the first strain of this launch";
}

TEST_F(RemoteAlertStoreTest, ATickTriesTheChannelsThatAreOn) {
  store().setIMessageEnabled(true);
  store().setIMessageRecipient("me@example.org");
  EXPECT_EQ(tick(strained()), 1U);
  delivery.runBackground();

  EXPECT_EQ(delivery.launches.size(), 1U);
  EXPECT_THAT(delivery.requests, IsEmpty());
  EXPECT_EQ(status(), "✓ Sent via iMessage to me@example.org");
}

TEST_F(RemoteAlertStoreTest, ADeliveryShowsThatItIsUnderWayAndThenHowItEnded) {
  webhookStore();
  delivery.holdsMainTasks = true;
  tick(strained());
  EXPECT_TRUE(store().isSending());
  EXPECT_EQ(status(), "Sending Korvantis brief…");
  EXPECT_FALSE(store().lastStatusIsError());

  delivery.runBackground();
  EXPECT_TRUE(store().isSending()) << "the main thread has not heard of it yet";
  delivery.now += 3;
  delivery.runMain();
  EXPECT_FALSE(store().isSending());
  EXPECT_EQ(status(), "✓ Sent via WhatsApp Webhook");
  EXPECT_EQ(store().lastSentDate(), Instant{delivery.now});
}

TEST_F(RemoteAlertStoreTest, ASecondBriefMayStartAndWhicheverEndsLastLeavesItsStatus) {
  webhookStore();
  store().sendManualBrief(calm(), "Chip", false, false);
  store().sendManualBrief(calm(), "Chip", false, true);
  ASSERT_EQ(delivery.backgroundTasks.size(), 2U);
  std::swap(delivery.backgroundTasks[0], delivery.backgroundTasks[1]);
  delivery.runBackground();

  EXPECT_EQ(status(), "Enable iMessage or WhatsApp first.");
  EXPECT_TRUE(store().lastStatusIsError());
}

TEST_F(RemoteAlertStoreTest, ADeliveryWorksOnCopiesAndMayOutliveTheStore) {
  webhookStore();
  tick(strained());
  store().setWhatsAppApiKeyOrWebhook("http://127.0.0.1/other");
  store_.reset();
  delivery.runBackground();

  ASSERT_EQ(delivery.requests.size(), 1U);
  EXPECT_EQ(delivery.requests[0].url, "http://127.0.0.1/hook");
}

TEST_F(RemoteAlertStoreTest, WithNeitherChannelAManualBriefSaysSo) {
  store().sendManualBrief(calm(), "Chip", false, false);
  delivery.runBackground();

  EXPECT_EQ(status(), "Enable iMessage or WhatsApp first.");
  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_EQ(store().lastSentDate(), std::nullopt);
}

TEST_F(RemoteAlertStoreTest, ARecipientOfOnlyBlanksCountsAsEmpty) {
  store().setIMessageRecipient(" \t\n\u00A0");
  store().sendManualBrief(calm(), "Chip", true, false);
  delivery.runBackground();

  EXPECT_EQ(status(), "iMessage: Missing recipient phone/email.");
  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_THAT(delivery.launches, IsEmpty());
}

TEST_F(RemoteAlertStoreTest, TheSettingsAreTrimmedBeforeTheyAreUsed) {
  store().setIMessageRecipient("\n me@example.org ");
  store().setWhatsAppPhone(" +1 ");
  store().setWhatsAppApiKeyOrWebhook(" key\n");
  store().sendManualBrief(calm(), "Chip", true, true);
  delivery.runBackground();

  EXPECT_EQ(status(), "✓ Sent via iMessage to me@example.org  |  ✓ Sent via WhatsApp API to +1");
  EXPECT_TRUE(delivery.requests.at(0).url.ends_with("&apikey=key"));
  EXPECT_EQ(store().iMessageRecipient(), "\n me@example.org ");
}

TEST_F(RemoteAlertStoreTest, WithoutAPhoneAndAWebhookWhatsAppSaysSo) {
  store().setWhatsAppApiKeyOrWebhook("key");
  store().sendManualBrief(calm(), "Chip", false, true);
  delivery.runBackground();

  EXPECT_EQ(status(), "WhatsApp: Missing phone number.");
  EXPECT_TRUE(store().lastStatusIsError());
}

TEST_F(RemoteAlertStoreTest, WithAnEmptyPhoneAndAWebhookWhatsAppIsTried) {
  store().setWhatsAppApiKeyOrWebhook("HTTPS://127.0.0.1/hook");
  store().sendManualBrief(calm(), "Chip", false, true);
  delivery.runBackground();

  EXPECT_EQ(delivery.requests.size(), 1U);
  EXPECT_EQ(status(), "✓ Sent via WhatsApp Webhook");
}

TEST_F(RemoteAlertStoreTest, WhenIMessageFailsAndWhatsAppSucceedsTheBriefHasFailed) {
  store().setIMessageRecipient("me");
  store().setWhatsAppPhone("+1");
  store().setWhatsAppApiKeyOrWebhook("key");
  delivery.terminationStatus = 1;
  delivery.standardError = "no account\n";
  store().sendManualBrief(calm(), "Chip", true, true);
  delivery.runBackground();

  EXPECT_EQ(status(), "iMessage: no account  |  ✓ Sent via WhatsApp API to +1");
  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_EQ(store().lastSentDate(), std::nullopt);
}

TEST_F(RemoteAlertStoreTest, AChannelWithoutItsRecipientFailsAndTheOtherIsStillTried) {
  store().setWhatsAppPhone("+1");
  store().setWhatsAppApiKeyOrWebhook("key");
  store().sendManualBrief(calm(), "Chip", true, true);
  delivery.runBackground();
  EXPECT_EQ(status(), "iMessage: Missing recipient phone/email.  |  ✓ Sent via WhatsApp API to +1");
  EXPECT_TRUE(store().lastStatusIsError());

  store().setIMessageRecipient("me");
  store().setWhatsAppPhone("");
  store().sendManualBrief(calm(), "Chip", true, true);
  delivery.runBackground();
  EXPECT_EQ(status(), "✓ Sent via iMessage to me  |  WhatsApp: Missing phone number.");
  EXPECT_TRUE(store().lastStatusIsError());
}

TEST_F(RemoteAlertStoreTest, ALaterFailureLeavesTheLastDateOfSuccess) {
  webhookStore().sendManualBrief(calm(), "Chip", false, true);
  delivery.runBackground();
  const auto sent = store().lastSentDate();
  delivery.now += 60;
  delivery.answer.statusCode = 500;
  store().sendManualBrief(calm(), "Chip", false, true);
  delivery.runBackground();

  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_EQ(store().lastSentDate(), sent);
}

TEST_F(RemoteAlertStoreTest, TheStatusNotifiesExactlyOnARealChange) {
  webhookStore();
  const QSignalSpy sending(&store(), &RemoteAlertStore::isSendingChanged);
  const QSignalSpy message(&store(), &RemoteAlertStore::lastStatusMessageChanged);
  const QSignalSpy isError(&store(), &RemoteAlertStore::lastStatusIsErrorChanged);
  const QSignalSpy date(&store(), &RemoteAlertStore::lastSentDateChanged);
  store().sendManualBrief(calm(), "Chip", false, true);
  store().sendManualBrief(calm(), "Chip", false, true);
  EXPECT_EQ(sending.count(), 1);
  EXPECT_EQ(message.count(), 1);
  delivery.runBackground();

  EXPECT_EQ(sending.count(), 2);
  EXPECT_EQ(message.count(), 2);
  EXPECT_EQ(isError.count(), 0);
  EXPECT_EQ(date.count(), 1) << "both ended at the same moment";
}

TEST_F(RemoteAlertStoreTest, AKeyOrWebhookNeverShowsInAStatus) {
  store().setWhatsAppPhone("+1");
  for (const char* secret : {"s3cret-key", "http://s3cret.invalid/s3cret", "http://[s3cret"}) {
    store().setWhatsAppApiKeyOrWebhook(secret);
    for (const auto& answer :
         {HTTPAnswer{.error = {}, .statusCode = 200}, HTTPAnswer{.error = {}, .statusCode = 500},
          HTTPAnswer{.error = "The request timed out.", .statusCode = {}}}) {
      delivery.answer = answer;
      store().sendManualBrief(calm(), "Chip", false, true);
      delivery.runBackground();
      EXPECT_THAT(status(), Not(HasSubstr("s3cret")));
    }
  }
}

}  // namespace
}  // namespace korvantis
