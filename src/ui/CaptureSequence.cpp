#include "ui/CaptureSequence.h"

#include <array>
#include <utility>

namespace korvantis {

namespace {

/// A pause after the screen was set up, then a picture of it.
struct Step {
  void (*setUp)(MonitorStore& store, const CaptureCalls& calls);
  double pauseSeconds;
  const char* fileName;
};

void setUpOverview(MonitorStore& store, const CaptureCalls&) {
  store.look()->setThemeMode(AppThemeMode::dark);
  store.look()->syncAppearance();
  store.refreshTick();
}

void setUpProcesses(MonitorStore& store, const CaptureCalls&) {
  store.setSelectedPane(OstrelPane::processes);
}

void setUpAgents(MonitorStore& store, const CaptureCalls&) {
  store.setSelectedPane(OstrelPane::agents);
}

void setUpRemoteAlerts(MonitorStore& store, const CaptureCalls&) {
  store.setSelectedPane(OstrelPane::insights);
  RemoteAlertStore& alerts = *store.remoteAlerts();
  alerts.setIMessageEnabled(true);
  alerts.setWhatsAppEnabled(true);
  alerts.setLastStatusIsError(false);
  alerts.setLastStatusMessage(
      QStringLiteral("✓ Connected — Ready to dispatch 4-line Mac health briefs via iMessage & "
                     "WhatsApp"));
}

void setUpSettings(MonitorStore& store, const CaptureCalls& calls) {
  const QString recipient = QStringLiteral("+1 (555) 019-2834");
  calls.showSettingsComposition(true);
  store.setSelectedSettingsTab(QStringLiteral("Remote Alerts"));
  store.remoteAlerts()->setIMessageRecipient(recipient);
  store.remoteAlerts()->setWhatsAppPhone(recipient);
}

constexpr std::array steps{Step{setUpOverview, 1.2, "/showcase_overview.png"},
                           Step{setUpProcesses, 0.7, "/showcase_processes.png"},
                           Step{setUpAgents, 0.7, "/showcase_agents_audio.png"},
                           Step{setUpRemoteAlerts, 0.7, "/showcase_remote_alerts.png"},
                           Step{setUpSettings, 0.8, "/showcase_imessage_whatsapp.png"}};

struct Capture {
  MonitorStore* store;
  CaptureCalls calls;
  std::string folder;
};

void runStep(const std::shared_ptr<Capture>& capture, std::size_t index) {
  if (index == steps.size()) {
    capture->calls.showSettingsComposition(false);
    capture->calls.terminate();
    return;
  }
  const Step& step = steps.at(index);
  step.setUp(*capture->store, capture->calls);
  capture->calls.asyncAfter(step.pauseSeconds, [capture, index] {
    capture->calls.writePicture(capture->folder + steps.at(index).fileName);
    runStep(capture, index + 1);
  });
}

}  // namespace

void captureRealProductScreenshots(MonitorStore& store, CaptureCalls calls,
                                   const std::string& folder) {
  runStep(std::make_shared<Capture>(Capture{&store, std::move(calls), folder}), 0);
}

}  // namespace korvantis
