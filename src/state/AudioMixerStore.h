#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/AppAudioStream.h"
#include "core/AppGroup.h"
#include "core/AudioDeviceItem.h"
#include "platform/AudioObjectCalls.h"

namespace korvantis {

/// What the sound pane shows. Only the devices and the choice of the default ones are real;
/// volumes and mutes are kept here, change no sound and are gone at the next start. Setters store
/// even an equal value; only a real change notifies. Main thread.
class AudioMixerStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")
  Q_PROPERTY(std::vector<korvantis::AudioDeviceItem> outputDevices READ outputDevices NOTIFY
                 outputDevicesChanged FINAL)
  Q_PROPERTY(std::vector<korvantis::AudioDeviceItem> inputDevices READ inputDevices NOTIFY
                 inputDevicesChanged FINAL)
  Q_PROPERTY(quint32 selectedOutputDeviceID READ selectedOutputDeviceID NOTIFY
                 selectedOutputDeviceIDChanged FINAL)
  Q_PROPERTY(quint32 selectedInputDeviceID READ selectedInputDeviceID NOTIFY
                 selectedInputDeviceIDChanged FINAL)
  Q_PROPERTY(
      double masterVolume READ masterVolume WRITE setMasterVolume NOTIFY masterVolumeChanged FINAL)
  Q_PROPERTY(bool isMasterMuted READ isMasterMuted WRITE setIsMasterMuted NOTIFY
                 isMasterMutedChanged FINAL)
  Q_PROPERTY(std::vector<korvantis::AppAudioStream> appStreams READ appStreams NOTIFY
                 appStreamsChanged FINAL)

 public:
  /// A new store has already called `refreshAudioDevices`.
  explicit AudioMixerStore(AudioObjectCalls calls, QObject* parent = nullptr);

  /// Devices with output channels, in the system's order; never empty, one is made up at need.
  const std::vector<AudioDeviceItem>& outputDevices() const { return outputDevices_; }
  /// The same with input channels.
  const std::vector<AudioDeviceItem>& inputDevices() const { return inputDevices_; }
  /// The system's default output when it was last asked, or what the user has just chosen.
  std::uint32_t selectedOutputDeviceID() const { return selectedOutputDeviceID_; }
  /// The same for inputs.
  std::uint32_t selectedInputDeviceID() const { return selectedInputDeviceID_; }

  /// 0.0 to 1.0.
  double masterVolume() const { return masterVolume_; }
  void setMasterVolume(double volume);

  bool isMasterMuted() const { return isMasterMuted_; }
  void setIsMasterMuted(bool isMuted);

  /// The rows of the mixer, in the order of the applications.
  const std::vector<AppAudioStream>& appStreams() const { return appStreams_; }

  /// Reads the devices and the default ones anew. Holds the thread up to 300 ms.
  Q_INVOKABLE void refreshAudioDevices();

  /// Lists the applications that may sound: by name, by load, or because the user has set them.
  void syncWithRunningApps(const std::vector<AppGroup>& appGroups);

  /// Sets one application's volume, held to 0.0 to 1.0.
  Q_INVOKABLE void setAppVolume(const QString& appID, double volume);

  /// Mutes one application, or lifts that.
  Q_INVOKABLE void toggleAppMute(const QString& appID);

  /// Makes a device the system's default output. What the system then says is shown.
  Q_INVOKABLE void selectOutputDevice(quint32 id);

  /// The same for inputs.
  Q_INVOKABLE void selectInputDevice(quint32 id);

 signals:
  void outputDevicesChanged();
  void inputDevicesChanged();
  void selectedOutputDeviceIDChanged();
  void selectedInputDeviceIDChanged();
  void masterVolumeChanged();
  void isMasterMutedChanged();
  void appStreamsChanged();

 private:
  struct CustomVolume {
    double volume = 1.0;
    bool muted = false;
  };

  void ensureFallbackDevices();
  void setOutputDevices(std::vector<AudioDeviceItem> devices);
  void setInputDevices(std::vector<AudioDeviceItem> devices);
  void setSelectedOutputDeviceID(std::uint32_t id);
  void setSelectedInputDeviceID(std::uint32_t id);
  void setAppStreams(std::vector<AppAudioStream> streams);
  bool mayStream(const AppGroup& group, const std::vector<QString>& loweredKeywords) const;
  AppAudioStream streamOf(const AppGroup& group) const;
  void keepCustomVolume(const std::string& appID, CustomVolume custom);

  AudioObjectCalls calls_;
  std::vector<AudioDeviceItem> outputDevices_;
  std::vector<AudioDeviceItem> inputDevices_;
  std::uint32_t selectedOutputDeviceID_ = 0;
  std::uint32_t selectedInputDeviceID_ = 0;
  double masterVolume_ = 0.75;
  bool isMasterMuted_ = false;
  std::vector<AppAudioStream> appStreams_;
  /// What the user has set, by application.
  std::map<std::string, CustomVolume> customVolumes_;
};

}  // namespace korvantis
