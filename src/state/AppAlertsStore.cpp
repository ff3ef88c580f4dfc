#include "state/AppAlertsStore.h"

#include <utility>

#include "core/Instant.h"
#include "state/ObservableField.h"

namespace korvantis {

namespace {

constexpr double secondsPerHour = 3600;
constexpr std::int64_t defaultMinutes = 5;

AppLimit newLimit(std::string appID, std::string appName, std::optional<std::string> bundlePath,
                  AppLimitFigure figure, double limit, std::int64_t minutes) {
  return {.id = Uuid::random(),
          .appID = std::move(appID),
          .appName = std::move(appName),
          .bundlePath = std::move(bundlePath),
          .figure = figure,
          .limit = limit,
          .minutes = minutes,
          .isEnabled = true};
}

/// Found by their names, since groups go by other ids than these.
std::vector<AppLimit> defaultLimits() {
  return {newLimit("com.google.Chrome", "Google Chrome", "/Applications/Google Chrome.app",
                   AppLimitFigure::memoryMB, 4096, defaultMinutes),
          newLimit("com.apple.dt.Xcode", "Xcode", "/Applications/Xcode.app",
                   AppLimitFigure::cpuPercent, 250, defaultMinutes)};
}

}  // namespace

AppAlertsStore::AppAlertsStore(Clock clock, QObject* parent)
    : QObject(parent), clock_(std::move(clock)), appLimits_(defaultLimits()) {}

void AppAlertsStore::setAppLimits(std::vector<AppLimit> limits) {
  if (storeField(appLimits_, std::move(limits))) emit appLimitsChanged();
}

void AppAlertsStore::setMutedApps(std::vector<MutedApp> apps) {
  if (storeField(mutedApps_, std::move(apps))) emit mutedAppsChanged();
}

void AppAlertsStore::addLimit(std::string appID, std::string appName,
                              std::optional<std::string> bundlePath, AppLimitFigure figure,
                              double limit, std::int64_t minutes) {
  appLimits_.push_back(newLimit(std::move(appID), std::move(appName), std::move(bundlePath), figure,
                                limit, minutes));
  emit appLimitsChanged();
}

void AppAlertsStore::removeLimit(Uuid id) {
  std::erase_if(appLimits_, [&id](const AppLimit& limit) { return limit.id == id; });
  emit appLimitsChanged();
}

void AppAlertsStore::muteApp(std::string appID, std::string appName,
                             std::optional<std::string> bundlePath,
                             std::optional<std::int64_t> durationHours) {
  MutedApp muted{.appID = std::move(appID),
                 .appName = std::move(appName),
                 .bundlePath = std::move(bundlePath),
                 .until = std::nullopt};
  if (durationHours) {
    muted.until = Instant{clock_.now() + static_cast<double>(*durationHours) * secondsPerHour};
  }
  std::erase_if(mutedApps_, [&muted](const MutedApp& app) { return app.appID == muted.appID; });
  mutedApps_.push_back(std::move(muted));
  emit mutedAppsChanged();
}

void AppAlertsStore::unmuteApp(const std::string& appID) {
  // On a copy, since the id may be that of an entry.
  auto remaining = mutedApps_;
  std::erase_if(remaining, [&appID](const MutedApp& app) { return app.appID == appID; });
  mutedApps_ = std::move(remaining);
  emit mutedAppsChanged();
}

}  // namespace korvantis
