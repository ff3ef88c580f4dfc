#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "state/RemoteAlertStoreFixture.h"

namespace korvantis {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class RemoteAlertStatus : public test::RemoteAlertStoreFixture {};

TEST_F(RemoteAlertStatus, ADeliveryShowsThatItIsUnderWayAndThenHowItEnded) {
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

TEST_F(RemoteAlertStatus, ASecondBriefMayStartAndWhicheverEndsLastLeavesItsStatus) {
  webhookStore();
  store().sendManualBrief(calm(), "Chip", false, false);
  store().sendManualBrief(calm(), "Chip", false, true);
  ASSERT_EQ(delivery.backgroundTasks.size(), 2U);
  std::swap(delivery.backgroundTasks[0], delivery.backgroundTasks[1]);
  delivery.runBackground();

  EXPECT_EQ(status(), "Enable iMessage or WhatsApp first.");
  EXPECT_TRUE(store().lastStatusIsError());
}

TEST_F(RemoteAlertStatus, ADeliveryWorksOnCopiesAndMayOutliveTheStore) {
  webhookStore();
  tick(strained());
  store().setWhatsAppApiKeyOrWebhook("http://127.0.0.1/other");
  store_.reset();
  delivery.runBackground();

  ASSERT_EQ(delivery.requests.size(), 1U);
  EXPECT_EQ(delivery.requests[0].url, "http://127.0.0.1/hook");
}

TEST_F(RemoteAlertStatus, WithNeitherChannelAManualBriefSaysSo) {
  store().sendManualBrief(calm(), "Chip", false, false);
  delivery.runBackground();

  EXPECT_EQ(status(), "Enable iMessage or WhatsApp first.");
  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_EQ(store().lastSentDate(), std::nullopt);
}

TEST_F(RemoteAlertStatus, ARecipientOfOnlyBlanksCountsAsEmpty) {
  store().setIMessageRecipient(" \t\n\u00A0");
  store().sendManualBrief(calm(), "Chip", true, false);
  delivery.runBackground();

  EXPECT_EQ(status(), "iMessage: Missing recipient phone/email.");
  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_THAT(delivery.launches, IsEmpty());
}

TEST_F(RemoteAlertStatus, TheSettingsAreTrimmedBeforeTheyAreUsed) {
  store().setIMessageRecipient("\n me@example.org ");
  store().setWhatsAppPhone(" +1 ");
  store().setWhatsAppApiKeyOrWebhook(" key\n");
  store().sendManualBrief(calm(), "Chip", true, true);
  delivery.runBackground();

  EXPECT_EQ(status(), "✓ Sent via iMessage to me@example.org  |  ✓ Sent via WhatsApp API to +1");
  EXPECT_TRUE(delivery.requests.at(0).url.ends_with("&apikey=key"));
  EXPECT_EQ(store().iMessageRecipient(), "\n me@example.org ");
}

TEST_F(RemoteAlertStatus, WithoutAPhoneAndAWebhookWhatsAppSaysSo) {
  store().setWhatsAppApiKeyOrWebhook("key");
  store().sendManualBrief(calm(), "Chip", false, true);
  delivery.runBackground();

  EXPECT_EQ(status(), "WhatsApp: Missing phone number.");
  EXPECT_TRUE(store().lastStatusIsError());
}

TEST_F(RemoteAlertStatus, WithAnEmptyPhoneAndAWebhookWhatsAppIsTried) {
  store().setWhatsAppApiKeyOrWebhook("HTTPS://127.0.0.1/hook");
  store().sendManualBrief(calm(), "Chip", false, true);
  delivery.runBackground();

  EXPECT_EQ(delivery.requests.size(), 1U);
  EXPECT_EQ(status(), "✓ Sent via WhatsApp Webhook");
}

TEST_F(RemoteAlertStatus, WhenIMessageFailsAndWhatsAppSucceedsTheBriefHasFailed) {
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

TEST_F(RemoteAlertStatus, AChannelWithoutItsRecipientFailsAndTheOtherIsStillTried) {
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

TEST_F(RemoteAlertStatus, ALaterFailureLeavesTheLastDateOfSuccess) {
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

TEST_F(RemoteAlertStatus, TheStatusNotifiesExactlyOnARealChange) {
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

TEST_F(RemoteAlertStatus, AKeyOrWebhookNeverShowsInAStatus) {
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
