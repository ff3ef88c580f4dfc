#include "state/AudioMixerStore.h"

namespace korvantis {

AudioMixerStore::AudioMixerStore(QObject* parent) : QObject(parent) {
  refreshAudioDevices();
}

void AudioMixerStore::refreshAudioDevices() {}

void AudioMixerStore::syncWithRunningApps(const std::vector<AppGroup>& /*appGroups*/) {}

}  // namespace korvantis
