#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <algorithm>
#include <gtest/gtest.h>

#include "platform/qt/QtMainRunLoop.h"
#include "state/ScriptedMonitor.h"
#include "support/HTTPServer.h"

namespace korvantis {
namespace {

/// Ticks of a store whose briefs are really sent: the longest one while a delivery is under way,
/// and how long that delivery took.
struct TicksDuringDelivery {
  double longestTickMilliseconds = 0;
  double deliverySeconds = 0;
  int ticks = 0;
};

TicksDuringDelivery tickUntilDelivered(MonitorStore& store) {
  TicksDuringDelivery seen;
  QElapsedTimer whole;
  whole.start();
  while (store.remoteAlerts()->isSending()) {
    QElapsedTimer tick;
    tick.start();
    store.refreshTick();
    seen.longestTickMilliseconds =
        std::max(seen.longestTickMilliseconds, static_cast<double>(tick.nsecsElapsed()) / 1e6);
    ++seen.ticks;
    QElapsedTimer pause;
    for (pause.start(); pause.elapsed() < 50;)
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  }
  seen.deliverySeconds = static_cast<double>(whole.nsecsElapsed()) / 1e9;
  return seen;
}

TEST(BriefTicks, ADeliveryThatHangsForItsWhole5SecondsHoldsUpNoTick) {
  test::HTTPServer server = test::HTTPServer::hanging();
  test::ScriptedMonitor monitor;
  MonitorStoreCalls calls = monitor.calls();
  calls.mainRunLoop = qtMainRunLoopCalls();
  calls.background = systemBackgroundCalls();
  calls.http = systemHTTPCalls();
  monitor.userDefaults["Korvantis.whatsAppEnabled"] = "true";
  monitor.userDefaults["Korvantis.whatsAppApiKeyOrWebhook"] = server.address() + "/hook";
  monitor.nextSnapshot.activeStrains = {StrainKind::cpu};
  MonitorStore store(calls);
  ASSERT_TRUE(store.remoteAlerts()->isSending()) << "sent by the first tick, inside the start";

  const TicksDuringDelivery seen = tickUntilDelivered(store);
  EXPECT_EQ(store.remoteAlerts()->lastStatusText(),
            "WhatsApp Webhook Error: The request timed out.");
  EXPECT_GE(seen.deliverySeconds, 4.5) << "counted from the end of the start";
  EXPECT_GT(seen.ticks, 20);
  EXPECT_LT(seen.longestTickMilliseconds, 1000);
  RecordProperty("longest_tick_microseconds",
                 static_cast<int>(seen.longestTickMilliseconds * 1000));
}

}  // namespace
}  // namespace korvantis
