#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "state/BriefServices.h"
#include "state/RemoteAlertStore.h"
#include "state/ScriptedDelivery.h"
#include "state/URLQueryText.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

/// The two routines over a scripted outside.
class BriefDeliveryTest : public ::testing::Test {
 protected:
  BriefDelivery iMessage(const std::string& recipient = "me", const std::string& message = "text") {
    return RemoteAlertStore::sendIMessageViaOSAScript(outside.calls(), recipient, message);
  }

  BriefDelivery whatsApp(const std::string& phone, WhatsAppDeliveryMode mode,
                         const std::string& keyOrWebhook, const std::string& message = "text") {
    return RemoteAlertStore::sendWhatsAppMessage(outside.calls(), phone, mode, keyOrWebhook,
                                                 message);
  }

  /// The AppleScript of the last launch.
  std::string script() { return outside.launches.back().second.at(1); }

  static constexpr auto cloud = WhatsAppDeliveryMode::cloudWebhook;
  static constexpr auto desktop = WhatsAppDeliveryMode::desktopApp;
  test::ScriptedDelivery outside;
};

TEST(BriefDeliveryLabels, EveryModeAndIntervalHasItsLabel) {
  EXPECT_EQ(rawValue(WhatsAppDeliveryMode::cloudWebhook),
            "Background API / Webhook (CallMeBot / Custom)");
  EXPECT_EQ(rawValue(WhatsAppDeliveryMode::desktopApp),
            "Local WhatsApp App Deep-Link (whatsapp://)");
  EXPECT_EQ(rawValue(RemoteBriefInterval::off), "Only on Strain Alerts");
  EXPECT_EQ(rawValue(RemoteBriefInterval::every1Hour), "Every 1 Hour");
  EXPECT_EQ(rawValue(RemoteBriefInterval::every4Hours), "Every 4 Hours");
  EXPECT_EQ(rawValue(RemoteBriefInterval::every12Hours), "Every 12 Hours");
  EXPECT_EQ(rawValue(RemoteBriefInterval::daily), "Once Daily (24h)");
}

TEST(URLQueryEncoding, KeepsItsSetAndEncodesEverythingElseByBytes) {
  const std::string kept =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789!$&'()*+,;=:@/?-._~";
  EXPECT_EQ(urlQueryEncoded(kept), kept);
  EXPECT_EQ(urlQueryEncoded(" \n%\"#[]<>\\^`{|}"), "%20%0A%25%22%23%5B%5D%3C%3E%5C%5E%60%7B%7C%7D");
  EXPECT_EQ(urlQueryEncoded("é📊"), "%C3%A9%F0%9F%93%8A");
  EXPECT_EQ(urlQueryEncoded("Thermal & Power"), "Thermal%20&%20Power");
  EXPECT_EQ(urlQueryEncoded(""), "");
}

TEST_F(BriefDeliveryTest, TheScriptIsTheseFivePieces) {
  EXPECT_EQ(iMessage("me@example.org", "line 1\nline 2"),
            (BriefDelivery{true, "✓ Sent via iMessage to me@example.org"}));
  EXPECT_THAT(
      outside.launches,
      ElementsAre(Pair("/usr/bin/osascript",
                       ElementsAre("-e",
                                   "tell application \"Messages\"\n"
                                   "    set targetService to 1st account whose service type = "
                                   "iMessage\n"
                                   "    set targetBuddy to participant \"me@example.org\" of "
                                   "targetService\n"
                                   "    send \"line 1\nline 2\" to targetBuddy\n"
                                   "end tell"))));
}

TEST_F(BriefDeliveryTest, AQuoteInARecipientIsEscapedInTheScriptAndNotInTheStatus) {
  EXPECT_EQ(iMessage("a\"b").status, "✓ Sent via iMessage to a\"b");
  EXPECT_THAT(script(), ::testing::HasSubstr("participant \"a\\\"b\" of"));
}

TEST_F(BriefDeliveryTest, ABackslashIsDoubledBeforeQuotesAreTreated) {
  iMessage("me", "a\\b \"c\" \\\"");
  EXPECT_THAT(script(), ::testing::HasSubstr(R"(send "a\\b \"c\" \\\"" to)"));
}

TEST_F(BriefDeliveryTest, AProgramThatCanNotBeStartedGivesTheSystemsWords) {
  outside.launchError = "No such file";
  EXPECT_EQ(iMessage(), (BriefDelivery{false, "iMessage Error: No such file"}));
}

TEST_F(BriefDeliveryTest, TheProgramIsPolledEvery50MillisecondsUpTo5Seconds) {
  outside.runsSeconds = 4.98;
  EXPECT_TRUE(iMessage().delivered);
  EXPECT_EQ(outside.sleeps, 100);

  outside.runsSeconds = 1000;
  outside.sleeps = 0;
  EXPECT_EQ(
      iMessage(),
      (BriefDelivery{false, "iMessage timed out (ensure Messages.app is signed into iMessage)."}));
  EXPECT_GE(outside.sleeps, 100);
  EXPECT_LE(outside.sleeps, 101) << "sums of 0.05 may fall short of 5 by a rounding";
  EXPECT_EQ(outside.terminations, 1);
}

TEST_F(BriefDeliveryTest, AProgramThatHasEndedAtOnceIsNotWaitedFor) {
  outside.runsSeconds = 0;
  EXPECT_TRUE(iMessage().delivered);
  EXPECT_EQ(outside.sleeps, 0);
  EXPECT_EQ(outside.terminations, 0);
}

TEST_F(BriefDeliveryTest, AnotherExitStatusGivesTheTrimmedErrorOutput) {
  outside.terminationStatus = 2;
  outside.standardError = " \n execution error: no \n\n";
  EXPECT_EQ(iMessage(), (BriefDelivery{false, "iMessage: execution error: no"}));
}

TEST_F(BriefDeliveryTest, AnEmptyErrorOutputLeavesNothingBehindTheColon) {
  outside.terminationStatus = 1;
  EXPECT_EQ(iMessage(), (BriefDelivery{false, "iMessage: "}));
}

TEST_F(BriefDeliveryTest, AnErrorOutputThatIsNoTextIsUnknown) {
  outside.terminationStatus = 1;
  outside.standardError = "\xFF\xFE";
  EXPECT_EQ(iMessage(), (BriefDelivery{false, "iMessage: Unknown AppleScript error"}));
}

TEST_F(BriefDeliveryTest, EveryModeAndKeyTakesItsRoute) {
  whatsApp("+1", desktop, "http://127.0.0.1/hook");
  whatsApp("+1", desktop, "");
  EXPECT_THAT(outside.opened,
              ElementsAre("whatsapp://send?phone=1&text=text", "whatsapp://send?phone=1&text=text"))
      << "the deep link ignores the key altogether";
  EXPECT_THAT(outside.requests, IsEmpty());

  outside.opened.clear();
  whatsApp("+1", cloud, "");
  EXPECT_THAT(outside.opened, ElementsAre("https://wa.me/1?text=text"));
  EXPECT_THAT(outside.requests, IsEmpty());

  whatsApp("+1", cloud, "http://127.0.0.1/hook");
  whatsApp("+1", cloud, "key");
  EXPECT_EQ(outside.opened.size(), 1U);
  ASSERT_EQ(outside.requests.size(), 2U);
  EXPECT_EQ(outside.requests[0].method, "POST");
  EXPECT_EQ(outside.requests[1].method, "GET");
}

TEST_F(BriefDeliveryTest, APhoneIsCleanedForTheRoutesAndShownAsTyped) {
  const std::string typed = "+1 (555) 123-4567";
  EXPECT_EQ(whatsApp(typed, desktop, "").status,
            "✓ Opened WhatsApp with pre-filled brief for +1 (555) 123-4567");
  EXPECT_EQ(outside.opened.back(), "whatsapp://send?phone=15551234567&text=text");
  EXPECT_EQ(whatsApp(typed, cloud, "").status, "✓ Opened WhatsApp Web/App for +1 (555) 123-4567");
  EXPECT_EQ(outside.opened.back(), "https://wa.me/15551234567?text=text");
  EXPECT_EQ(whatsApp(typed, cloud, "key").status, "✓ Sent via WhatsApp API to +1 (555) 123-4567");
  EXPECT_EQ(outside.requests.back().url,
            "https://api.callmebot.com/whatsapp.php?phone=+15551234567&text=text&apikey=key");
}

TEST_F(BriefDeliveryTest, NumbersOfEveryScriptStayInAPhone) {
  whatsApp("٣+a½五-x ", cloud, "http://127.0.0.1/hook");
  EXPECT_EQ(nlohmann::json::parse(*outside.requests.back().body).at("phone"), "٣+½五");
}

TEST_F(BriefDeliveryTest, ADeepLinkThatDoesNotOpenFallsBackToTheWebLink) {
  outside.opens = {false, true};
  EXPECT_EQ(whatsApp("+1 2", desktop, "", "a b"),
            (BriefDelivery{true, "✓ Opened wa.me WhatsApp brief for +1 2"}));
  EXPECT_THAT(outside.opened,
              ElementsAre("whatsapp://send?phone=12&text=a%20b", "https://wa.me/12?text=a%20b"));

  outside.opens = {false, false};
  EXPECT_TRUE(whatsApp("+1 2", desktop, "").delivered) << "the second result is not looked at";
}

TEST_F(BriefDeliveryTest, AWebLinkCountsAsOpenedWhateverTheDesktopSays) {
  outside.opens = {false};
  EXPECT_EQ(whatsApp("+1", cloud, ""), (BriefDelivery{true, "✓ Opened WhatsApp Web/App for +1"}));
}

TEST_F(BriefDeliveryTest, WithoutAMainThreadNothingOpens) {
  BriefDeliveryCalls calls = outside.calls();
  calls.mainRunLoop.async = [](const std::function<void()>&) {};
  EXPECT_EQ(RemoteAlertStore::sendWhatsAppMessage(calls, "+1", desktop, "", "text").status,
            "✓ Opened wa.me WhatsApp brief for +1");
  EXPECT_THAT(outside.opened, IsEmpty());
}

TEST_F(BriefDeliveryTest, AWebhookGetsThreeMembersAsJSON) {
  EXPECT_EQ(whatsApp("+1 2", cloud, "http://127.0.0.1/hook", "a & b\n\"c\" é"),
            (BriefDelivery{true, "✓ Sent via WhatsApp Webhook"}));
  ASSERT_EQ(outside.requests.size(), 1U);
  const HTTPRequest& request = outside.requests[0];
  EXPECT_EQ(request.url, "http://127.0.0.1/hook");
  EXPECT_EQ(request.timeoutSeconds, 5);
  EXPECT_THAT(request.headers, ElementsAre(Pair("Content-Type", "application/json")));
  const auto body = nlohmann::json::parse(*request.body);
  EXPECT_EQ(body,
            (nlohmann::json{
                {"phone", "+12"}, {"text", "a & b\n\"c\" é"}, {"content", "a & b\n\"c\" é"}}));
}

TEST_F(BriefDeliveryTest, AKeyThatBeginsWithHTTPInCapitalsIsAWebhookAsTyped) {
  whatsApp("", cloud, "HTTPS://Example.org/Hook");
  EXPECT_EQ(outside.requests.at(0).url, "HTTPS://Example.org/Hook");
  EXPECT_EQ(outside.requests.at(0).method, "POST");
}

TEST_F(BriefDeliveryTest, AKeyThatMerelyBeginsWithTheLettersIsStillAWebhook) {
  EXPECT_EQ(whatsApp("+1", cloud, "httpkey").status, "✓ Sent via WhatsApp Webhook");
  EXPECT_EQ(outside.requests.at(0).url, "httpkey");
}

TEST_F(BriefDeliveryTest, AWebhookThatIsNoURLIsRefused) {
  EXPECT_EQ(whatsApp("+1", cloud, "http://[broken"),
            (BriefDelivery{false, "WhatsApp: Invalid custom webhook URL."}));
  EXPECT_THAT(outside.requests, IsEmpty());
}

TEST_F(BriefDeliveryTest, CallMeBotGetsItsThreeKeysInOrderEachEncoded) {
  EXPECT_EQ(whatsApp("+1", cloud, "k &é", "a & b=c+d\n%"),
            (BriefDelivery{true, "✓ Sent via WhatsApp API to +1"}));
  const HTTPRequest& request = outside.requests.at(0);
  EXPECT_EQ(request.url,
            "https://api.callmebot.com/whatsapp.php?phone=+1&text=a%20&%20b=c+d%0A%25&apikey="
            "k%20&%C3%A9");
  EXPECT_EQ(request.timeoutSeconds, 5);
  EXPECT_THAT(request.headers, IsEmpty());
  EXPECT_EQ(request.body, std::nullopt);
}

TEST_F(BriefDeliveryTest, StatusesFrom200To299AreSuccessAndNoOthers) {
  for (const int code : {200, 204, 299}) {
    outside.answer.statusCode = code;
    EXPECT_TRUE(whatsApp("+1", cloud, "http://127.0.0.1/").delivered) << code;
    EXPECT_TRUE(whatsApp("+1", cloud, "key").delivered) << code;
  }
  for (const int code : {100, 199, 300, 301, 404, 500}) {
    outside.answer.statusCode = code;
    EXPECT_EQ(whatsApp("+1", cloud, "http://127.0.0.1/"),
              (BriefDelivery{false, "WhatsApp Webhook returned non-200 status."}))
        << code;
    EXPECT_EQ(whatsApp("+1", cloud, "key"),
              (BriefDelivery{false, "WhatsApp API returned non-200 status."}))
        << code;
  }
}

TEST_F(BriefDeliveryTest, AnAnswerThatIsNoHTTPIsNoSuccess) {
  outside.answer.statusCode.reset();
  EXPECT_EQ(whatsApp("+1", cloud, "http://127.0.0.1/").status,
            "WhatsApp Webhook returned non-200 status.");
  EXPECT_EQ(whatsApp("+1", cloud, "key").status, "WhatsApp API returned non-200 status.");
}

TEST_F(BriefDeliveryTest, ARequestThatFailsGivesItsDescription) {
  outside.answer = {.error = "gone", .statusCode = {}};
  EXPECT_EQ(whatsApp("+1", cloud, "http://127.0.0.1/"),
            (BriefDelivery{false, "WhatsApp Webhook Error: gone"}));
  EXPECT_EQ(whatsApp("+1", cloud, "key"), (BriefDelivery{false, "WhatsApp API Error: gone"}));
}

}  // namespace
}  // namespace korvantis
