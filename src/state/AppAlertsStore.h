#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/AppLimit.h"
#include "core/AppLimitFigure.h"
#include "core/MutedApp.h"
#include "core/Uuid.h"
#include "platform/Clock.h"

namespace korvantis {

/// The user's own rules: limits on applications, and applications whose findings are silenced.
/// Nothing here outlives the program: each launch begins with two limits and no mutes. Setting a
/// list to what it is notifies nobody; each of the operations below notifies once of its list,
/// also when it finds nothing to change. Main thread.
class AppAlertsStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")
  Q_PROPERTY(std::vector<korvantis::AppLimit> appLimits READ appLimits WRITE setAppLimits NOTIFY
                 appLimitsChanged FINAL)
  Q_PROPERTY(std::vector<korvantis::MutedApp> mutedApps READ mutedApps WRITE setMutedApps NOTIFY
                 mutedAppsChanged FINAL)

 public:
  /// A store with the two default limits, each under a new id. `clock` says when a mute begins.
  explicit AppAlertsStore(Clock clock, QObject* parent = nullptr);

  /// The limits, in the order in which they were added.
  const std::vector<AppLimit>& appLimits() const { return appLimits_; }
  void setAppLimits(std::vector<AppLimit> limits);

  /// The mutes, latest last; a mute that has ended stays in the list.
  const std::vector<MutedApp>& mutedApps() const { return mutedApps_; }
  void setMutedApps(std::vector<MutedApp> apps);

  /// Adds a limit at the end, enabled and under a new id. Nothing is checked: a second one like it
  /// is a second row, and 0 is a limit too. `limit` is in the unit of the figure.
  void addLimit(std::string appID, std::string appName, std::optional<std::string> bundlePath,
                AppLimitFigure figure, double limit, std::int64_t minutes);

  /// Removes every limit with this id.
  void removeLimit(Uuid id);

  /// Silences an application for so many hours, or for the rest of the run. Takes the place of
  /// any mute that it has, at the end of the list.
  void muteApp(std::string appID, std::string appName, std::optional<std::string> bundlePath,
               std::optional<std::int64_t> durationHours);

  /// Ends every mute of an application. No screen offers it yet.
  void unmuteApp(const std::string& appID);

 signals:
  void appLimitsChanged();
  void mutedAppsChanged();

 private:
  Clock clock_;
  std::vector<AppLimit> appLimits_;
  std::vector<MutedApp> mutedApps_;
};

}  // namespace korvantis
