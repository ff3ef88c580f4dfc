#include "state/AudioMixerStore.h"

#include <QLocale>
#include <algorithm>
#include <array>
#include <utility>

#include "state/AudioDeviceSurvey.h"
#include "state/ObservableField.h"

namespace korvantis {

namespace {

/// Names of applications that are known to sound.
constexpr std::array audioKeywords{"Music",    "Spotify", "Chrome",    "Safari", "Arc",
                                   "Firefox",  "VLC",     "QuickTime", "Zoom",   "Slack",
                                   "Discord",  "Teams",   "Brave",     "Wave",   "Youtube",
                                   "Podcasts", "TV",      "Simulator", "Xcode"};
constexpr double listedCPUPercent = 0.3;
constexpr double activeCPUPercent = 0.1;
constexpr std::size_t streamsWithoutAMatch = 6;

/// The keywords as the user's language lowers them.
std::vector<QString> loweredAudioKeywords() {
  std::vector<QString> lowered;
  for (const char* keyword : audioKeywords)
    lowered.push_back(QLocale().toLower(QLatin1String(keyword)));
  return lowered;
}

/// The default device, else the first one.
std::uint32_t selectedAmong(const std::vector<AudioDeviceItem>& devices) {
  const auto chosen = std::find_if(devices.begin(), devices.end(),
                                   [](const AudioDeviceItem& device) { return device.isDefault; });
  return chosen != devices.end() ? chosen->id : devices.front().id;
}

void setDefaultDevice(const AudioObjectCalls& calls, std::uint32_t selector, std::uint32_t id) {
  const AudioObjectPropertyAddress address{selector, kAudioObjectPropertyScopeGlobal, 0};
  // Whether it was accepted shows when the devices are read again.
  static_cast<void>(
      calls.AudioObjectSetPropertyData(kAudioObjectSystemObject, address, sizeof id, &id));
}

}  // namespace

AudioMixerStore::AudioMixerStore(AudioObjectCalls calls, QObject* parent)
    : QObject(parent), calls_(std::move(calls)) {
  refreshAudioDevices();
}

void AudioMixerStore::refreshAudioDevices() {
  auto survey = AudioDeviceSurvey::read(calls_);
  if (!survey) {
    ensureFallbackDevices();
    return;
  }
  const std::uint32_t output = selectedAmong(survey->outputs);
  const std::uint32_t input = selectedAmong(survey->inputs);
  setOutputDevices(std::move(survey->outputs));
  setInputDevices(std::move(survey->inputs));
  setSelectedOutputDeviceID(output);
  setSelectedInputDeviceID(input);
}

void AudioMixerStore::ensureFallbackDevices() {
  if (outputDevices_.empty()) {
    setOutputDevices({AudioDeviceSurvey::madeUpOutput()});
    setSelectedOutputDeviceID(AudioDeviceSurvey::madeUpOutput().id);
  }
  if (inputDevices_.empty()) {
    setInputDevices({AudioDeviceSurvey::madeUpInput()});
    setSelectedInputDeviceID(AudioDeviceSurvey::madeUpInput().id);
  }
}

bool AudioMixerStore::mayStream(const AppGroup& group,
                                const std::vector<QString>& loweredKeywords) const {
  if (group.cpuPercent > listedCPUPercent || customVolumes_.contains(group.id)) return true;
  const QString name = QLocale().toLower(QString::fromStdString(group.name));
  return std::any_of(loweredKeywords.begin(), loweredKeywords.end(),
                     [&](const QString& keyword) { return name.contains(keyword); });
}

AppAudioStream AudioMixerStore::streamOf(const AppGroup& group) const {
  const auto custom = customVolumes_.find(group.id);
  const CustomVolume volume = custom != customVolumes_.end() ? custom->second : CustomVolume{};
  return {.appID = group.id,
          .appName = group.name,
          .pid = group.processes.empty() ? 0 : group.processes.front().pid,
          .bundlePath = group.bundlePath,
          .volume = volume.volume,
          .isMuted = volume.muted,
          .isActive = group.cpuPercent > activeCPUPercent};
}

void AudioMixerStore::syncWithRunningApps(const std::vector<AppGroup>& appGroups) {
  const std::vector<QString> keywords = loweredAudioKeywords();
  std::vector<AppAudioStream> streams;
  for (const AppGroup& group : appGroups) {
    if (group.kind == AppGroupKind::app && mayStream(group, keywords))
      streams.push_back(streamOf(group));
  }
  if (streams.empty()) {
    for (const AppGroup& group : appGroups) {
      if (streams.size() == streamsWithoutAMatch) break;
      if (group.kind != AppGroupKind::app) continue;
      streams.push_back(streamOf(group));
      streams.back().isActive = true;
    }
  }
  setAppStreams(std::move(streams));
}

void AudioMixerStore::keepCustomVolume(const std::string& appID, CustomVolume custom) {
  customVolumes_[appID] = custom;
  auto streams = appStreams_;
  const auto row = std::find_if(streams.begin(), streams.end(), [&](const AppAudioStream& stream) {
    return stream.appID == appID;
  });
  if (row == streams.end()) return;
  row->volume = custom.volume;
  row->isMuted = custom.muted;
  setAppStreams(std::move(streams));
}

void AudioMixerStore::setAppVolume(const QString& appID, double volume) {
  const std::string id = appID.toStdString();
  const auto stored = customVolumes_.find(id);
  const bool muted = stored != customVolumes_.end() && stored->second.muted;
  // Written so that what is no number becomes 0.
  const double held = volume > 0 ? std::min(volume, 1.0) : 0.0;
  keepCustomVolume(id, {held, muted});
}

void AudioMixerStore::toggleAppMute(const QString& appID) {
  const std::string id = appID.toStdString();
  const auto stored = customVolumes_.find(id);
  CustomVolume custom = stored != customVolumes_.end() ? stored->second : CustomVolume{};
  custom.muted = !custom.muted;
  keepCustomVolume(id, custom);
}

void AudioMixerStore::selectOutputDevice(quint32 id) {
  setSelectedOutputDeviceID(id);
  setDefaultDevice(calls_, kAudioHardwarePropertyDefaultOutputDevice, id);
  refreshAudioDevices();
}

void AudioMixerStore::selectInputDevice(quint32 id) {
  setSelectedInputDeviceID(id);
  setDefaultDevice(calls_, kAudioHardwarePropertyDefaultInputDevice, id);
  refreshAudioDevices();
}

void AudioMixerStore::setOutputDevices(std::vector<AudioDeviceItem> devices) {
  if (storeField(outputDevices_, std::move(devices))) emit outputDevicesChanged();
}

void AudioMixerStore::setInputDevices(std::vector<AudioDeviceItem> devices) {
  if (storeField(inputDevices_, std::move(devices))) emit inputDevicesChanged();
}

void AudioMixerStore::setSelectedOutputDeviceID(std::uint32_t id) {
  if (storeField(selectedOutputDeviceID_, id)) emit selectedOutputDeviceIDChanged();
}

void AudioMixerStore::setSelectedInputDeviceID(std::uint32_t id) {
  if (storeField(selectedInputDeviceID_, id)) emit selectedInputDeviceIDChanged();
}

void AudioMixerStore::setMasterVolume(double volume) {
  if (storeField(masterVolume_, volume)) emit masterVolumeChanged();
}

void AudioMixerStore::setIsMasterMuted(bool isMuted) {
  if (storeField(isMasterMuted_, isMuted)) emit isMasterMutedChanged();
}

void AudioMixerStore::setAppStreams(std::vector<AppAudioStream> streams) {
  if (storeField(appStreams_, std::move(streams))) emit appStreamsChanged();
}

}  // namespace korvantis
