#include "ui/panes/SoundPaneModel.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

/// Cut, not rounded. A volume beyond all sense stays showable.
QString percentText(double volume) {
  constexpr double beyond = 1e15;
  const double percent = volume * 100;
  const bool isShowable = percent > -beyond && percent < beyond;
  return QString::number(isShowable ? static_cast<qint64>(percent) : 0) + u'%';
}

QList<Choice> choices(const std::vector<AudioDeviceItem>& devices) {
  QList<Choice> choices;
  for (const AudioDeviceItem& device : devices) {
    choices.append({.name = QString::number(device.id), .label = textOf(device.name)});
  }
  return choices;
}

int indexOf(const std::vector<AudioDeviceItem>& devices, std::uint32_t id) {
  for (std::size_t index = 0; index < devices.size(); ++index) {
    if (devices[index].id == id) return static_cast<int>(index);
  }
  return -1;
}

AudioStreamRow rowOf(const AppAudioStream& stream, int place) {
  AudioStreamRow row;
  row.place = place;
  row.appID = textOf(stream.appID);
  row.appName = textOf(stream.appName);
  if (stream.bundlePath) row.bundlePath = textOf(*stream.bundlePath);
  row.statusText = (stream.isActive ? QStringLiteral("Active CoreAudio Stream · PID ")
                                    : QStringLiteral("Ready · PID ")) +
                   QString::number(stream.pid);
  row.isMuted = stream.isMuted;
  row.volume = stream.volume;
  row.volumeText = stream.isMuted ? QStringLiteral("Muted") : percentText(stream.volume);
  return row;
}

}  // namespace

SoundPaneModel::SoundPaneModel(QObject* parent) : QObject(parent), streams_(this) {}

void SoundPaneModel::setStore(MonitorStore* store) {
  using Self = SoundPaneModel;
  if (store_ == store) return;
  if (store_) store_->audioMixer()->disconnect(this);
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  const AudioMixerStore* const mixer = store_->audioMixer();
  connect(mixer, &AudioMixerStore::outputDevicesChanged, this, &Self::updateOutputs);
  connect(mixer, &AudioMixerStore::selectedOutputDeviceIDChanged, this, &Self::updateOutputs);
  connect(mixer, &AudioMixerStore::inputDevicesChanged, this, &Self::updateInputs);
  connect(mixer, &AudioMixerStore::selectedInputDeviceIDChanged, this, &Self::updateInputs);
  connect(mixer, &AudioMixerStore::masterVolumeChanged, this, &Self::updateMaster);
  connect(mixer, &AudioMixerStore::appStreamsChanged, this, &Self::updateStreams);
  updateOutputs();
  updateInputs();
  updateMaster();
  updateStreams();
}

void SoundPaneModel::updateOutputs() {
  using Self = SoundPaneModel;
  const AudioMixerStore& mixer = *store_->audioMixer();
  updateField(this, outputs_, choices(mixer.outputDevices()), &Self::outputsChanged);
  updateField(this, outputIndex_, indexOf(mixer.outputDevices(), mixer.selectedOutputDeviceID()),
              &Self::outputIndexChanged);
}

void SoundPaneModel::updateInputs() {
  using Self = SoundPaneModel;
  const AudioMixerStore& mixer = *store_->audioMixer();
  updateField(this, inputs_, choices(mixer.inputDevices()), &Self::inputsChanged);
  updateField(this, inputIndex_, indexOf(mixer.inputDevices(), mixer.selectedInputDeviceID()),
              &Self::inputIndexChanged);
}

void SoundPaneModel::updateMaster() {
  updateField(this, masterText_, percentText(store_->audioMixer()->masterVolume()),
              &SoundPaneModel::masterTextChanged);
}

void SoundPaneModel::setFirstStream(int place) {
  if (firstStream_ == place) return;
  updateField(this, firstStream_, place, &SoundPaneModel::streamRangeChanged);
  updateStreams();
}

void SoundPaneModel::setLastStream(int place) {
  if (lastStream_ == place) return;
  updateField(this, lastStream_, place, &SoundPaneModel::streamRangeChanged);
  updateStreams();
}

void SoundPaneModel::setKeptStream(const QString& appID) {
  if (keptStream_ == appID) return;
  updateField(this, keptStream_, appID, &SoundPaneModel::keptStreamChanged);
  updateStreams();
}

void SoundPaneModel::updateStreams() {
  if (!store_) return;
  const std::vector<AppAudioStream>& streams = store_->audioMixer()->appStreams();
  const std::string kept = keptStream_.toStdString();
  std::vector<AudioStreamRow> rows;
  int place = 0;
  for (const AppAudioStream& stream : streams) {
    const bool isInRange = place >= firstStream_ && place <= lastStream_;
    if (isInRange || stream.appID == kept) rows.push_back(rowOf(stream, place));
    ++place;
  }
  streams_.show(std::move(rows), keptStream_);
  updateField(this, streamCount_, place, &SoundPaneModel::streamCountChanged);
}

}  // namespace korvantis
