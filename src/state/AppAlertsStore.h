#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "core/AppLimit.h"
#include "core/MutedApp.h"

namespace korvantis {

/// The user's own rules: limits on applications, and applications whose findings are silenced.
/// Both lists are empty for now and nothing adds to them. Main thread.
class AppAlertsStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")
  Q_PROPERTY(
      std::vector<korvantis::AppLimit> appLimits READ appLimits NOTIFY appLimitsChanged FINAL)
  Q_PROPERTY(
      std::vector<korvantis::MutedApp> mutedApps READ mutedApps NOTIFY mutedAppsChanged FINAL)

 public:
  explicit AppAlertsStore(QObject* parent = nullptr);

  /// The limits, in the order in which they were added.
  const std::vector<AppLimit>& appLimits() const { return appLimits_; }
  /// The mutes, latest last; a mute that has ended stays in the list.
  const std::vector<MutedApp>& mutedApps() const { return mutedApps_; }

 signals:
  void appLimitsChanged();
  void mutedAppsChanged();

 private:
  std::vector<AppLimit> appLimits_;
  std::vector<MutedApp> mutedApps_;
};

}  // namespace korvantis
