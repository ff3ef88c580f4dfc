#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <vector>

#include "state/RemoteAlertStoreFixture.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Value = test::ScriptedDefaults::Value;

class RemoteAlertTicks : public test::RemoteAlertStoreFixture {};

TEST_F(RemoteAlertTicks, WithBothChannelsOffNothingIsSentAndNoStampMoves) {
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

TEST_F(RemoteAlertTicks, TheFirstTickWithStrainAfterALaunchSendsAtOnce) {
  webhookStore();
  EXPECT_EQ(tick(calm()), 0U);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(lastTrigger(), "Strain Alert");
}

TEST_F(RemoteAlertTicks, AStrainBriefGoesOutExactlyWhenTheCooldownIsOver) {
  webhookStore().setCooldownMinutes(10);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(tick(strained(), 599.5), 0U);
  EXPECT_EQ(tick(strained(), 0.5), 1U);
  EXPECT_EQ(tick(strained(), 599.5), 0U);
}

TEST_F(RemoteAlertTicks, ACooldownOf1BehavesAs5) {
  webhookStore().setCooldownMinutes(1);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(tick(strained(), 299), 0U);
  EXPECT_EQ(tick(strained(), 1), 1U);
  EXPECT_EQ(store().cooldownMinutes(), 1);
}

TEST_F(RemoteAlertTicks, ACooldownOf6BehavesAs6) {
  webhookStore().setCooldownMinutes(6);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(tick(strained(), 359), 0U);
  EXPECT_EQ(tick(strained(), 1), 1U);
}

TEST_F(RemoteAlertTicks, AStrainOfHoursGivesABriefEvery30MinutesAtTheFirstTickOnEachMark) {
  webhookStore();
  std::vector<int> sentAt;
  for (int second = 0; second <= 2 * 3600; second += 7) {
    if (tick(strained(), second == 0 ? 0 : 7) == 1) sentAt.push_back(second);
  }
  EXPECT_THAT(sentAt, ElementsAre(0, 1806, 3612, 5418));
}

TEST_F(RemoteAlertTicks, WithoutNotifyOnStrainStrainChangesOnlyTheTextOfThePeriodicBrief) {
  webhookStore().setNotifyOnStrain(false);
  store().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained()), 0U);
  EXPECT_EQ(tick(strained(), 3600), 1U);
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_THAT(*delivery.requests.back().body, HasSubstr("Active Strain (cpu)"));
}

TEST_F(RemoteAlertTicks, StrainWithinTheCooldownStillMaySendAPeriodicBrief) {
  webhookStore().setCooldownMinutes(100);
  store().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained()), 1U);
  EXPECT_EQ(lastTrigger(), "Strain Alert");
  EXPECT_EQ(tick(strained(), 3600), 1U);
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_THAT(*delivery.requests.back().body, HasSubstr("• Status: ⚠️ Active Strain (cpu)"));
}

TEST_F(RemoteAlertTicks, APeriodicBriefThatIsDueWaitsBehindAStrainBriefForTheNextTick) {
  webhookStore().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained(), 3600), 1U);
  EXPECT_EQ(lastTrigger(), "Strain Alert");
  EXPECT_EQ(tick(strained(), 2), 1U);
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_EQ(tick(strained(), 2), 0U);
}

TEST_F(RemoteAlertTicks, TheTwoClocksAreIndependent) {
  webhookStore().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(strained(), 1800), 1U);
  EXPECT_EQ(tick(calm(), 1800), 1U) << "the strain brief has not moved the periodic one";
  EXPECT_EQ(lastTrigger(), "Every 1 Hour");
  EXPECT_EQ(tick(strained()), 1U) << "30 minutes after the strain brief, whatever came between";
  EXPECT_EQ(lastTrigger(), "Strain Alert");
}

TEST_F(RemoteAlertTicks, EveryIntervalSendsExactlyWhenItIsOver) {
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

TEST_F(RemoteAlertTicks, WithTheScheduleOffNoPeriodicBriefGoesOut) {
  webhookStore();
  EXPECT_EQ(tick(calm(), 1e9), 0U);
}

TEST_F(RemoteAlertTicks, TheFirstPeriodicBriefComesAWholeIntervalAfterEveryLaunch) {
  webhookStore().setSchedule(RemoteBriefInterval::every1Hour);
  EXPECT_EQ(tick(calm(), 3600), 1U);
  delivery.runBackground();
  delivery.now += 60;
  store_.reset();
  store();
  EXPECT_EQ(tick(calm(), 3599), 0U);
  EXPECT_EQ(tick(calm(), 1), 1U);
}

TEST_F(RemoteAlertTicks, ABriefThatFailsIsNotTriedAgainBeforeTheNextSlot) {
  webhookStore();
  delivery.answer = {.error = "no", .statusCode = {}};
  EXPECT_EQ(tick(strained()), 1U);
  delivery.runBackground();
  EXPECT_TRUE(store().lastStatusIsError());
  EXPECT_EQ(tick(strained(), 1799), 0U);
  EXPECT_EQ(tick(strained(), 1), 1U);
}

TEST_F(RemoteAlertTicks, AManualBriefTouchesNoStampAndIgnoresEverySetting) {
  store().setWhatsAppApiKeyOrWebhook("http://127.0.0.1/hook");
  store().setNotifyOnStrain(false);
  store().sendManualBrief(strained(), "Chip", false, true);
  EXPECT_EQ(lastTrigger(), "Instant Brief");

  store().setWhatsAppEnabled(true);
  store().setNotifyOnStrain(true);
  EXPECT_EQ(tick(strained()), 1U) << "the first strain of this launch";
}

TEST_F(RemoteAlertTicks, ATickTriesTheChannelsThatAreOn) {
  store().setIMessageEnabled(true);
  store().setIMessageRecipient("me@example.org");
  EXPECT_EQ(tick(strained()), 1U);
  delivery.runBackground();

  EXPECT_EQ(delivery.launches.size(), 1U);
  EXPECT_THAT(delivery.requests, IsEmpty());
  EXPECT_EQ(status(), "✓ Sent via iMessage to me@example.org");
}

}  // namespace
}  // namespace korvantis
