#pragma once

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "state/RemoteAlertStore.h"
#include "state/ScriptedDelivery.h"

namespace korvantis::test {

/// A store over scripted settings and a scripted outside.
class RemoteAlertStoreFixture : public ::testing::Test {
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

  ScriptedDefaults defaults;
  ScriptedDelivery delivery;
  std::unique_ptr<RemoteAlertStore> store_;
};

}  // namespace korvantis::test
