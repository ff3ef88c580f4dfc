#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <string>

#include "core/EngineSnapshot.h"

namespace korvantis {

/// The phone briefs. For now it has no settings and sends nothing. Main thread.
class RemoteAlertStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")

 public:
  explicit RemoteAlertStore(QObject* parent = nullptr);

  /// Will decide after each tick whether a brief is due; does nothing yet.
  void evaluateTick(const EngineSnapshot& snapshot, const std::string& chipName);
};

}  // namespace korvantis
