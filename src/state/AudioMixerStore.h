#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "core/AppGroup.h"

namespace korvantis {

/// What the sound pane will show. For now it knows no devices and lists no applications.
/// Main thread.
class AudioMixerStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")

 public:
  /// A new store has already called `refreshAudioDevices`.
  explicit AudioMixerStore(QObject* parent = nullptr);

  /// Will read the audio devices anew; does nothing yet.
  Q_INVOKABLE void refreshAudioDevices();

  /// Will let the rows follow the running applications; does nothing yet.
  void syncWithRunningApps(const std::vector<AppGroup>& appGroups);
};

}  // namespace korvantis
