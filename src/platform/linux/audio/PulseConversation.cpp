#include "platform/linux/audio/PulseConversation.h"

#include <thread>

namespace korvantis {

namespace {

using SteadyClock = std::chrono::steady_clock;

std::string textOf(const char* text) {
  return text != nullptr ? text : "";
}

bool hasID(std::uint32_t index) {
  return index < (UINT32_MAX - 17) / 2;
}

void takeSink(pa_context*, const pa_sink_info* sink, int, void* userData) {
  if (sink == nullptr || !hasID(sink->index)) return;
  static_cast<AudioDevices*>(userData)->devices.push_back({.id = audioDeviceID(sink->index, false),
                                                           .serverName = textOf(sink->name),
                                                           .description = textOf(sink->description),
                                                           .isInput = false,
                                                           .channels = sink->channel_map.channels});
}

void takeSource(pa_context*, const pa_source_info* source, int, void* userData) {
  if (source == nullptr || !hasID(source->index)) return;
  // A monitor hears what a sink plays; it is no microphone.
  if (source->monitor_of_sink != PA_INVALID_INDEX) return;
  static_cast<AudioDevices*>(userData)->devices.push_back(
      {.id = audioDeviceID(source->index, true),
       .serverName = textOf(source->name),
       .description = textOf(source->description),
       .isInput = true,
       .channels = source->channel_map.channels});
}

void takeServer(pa_context*, const pa_server_info* server, void* userData) {
  if (server == nullptr) return;
  auto& devices = *static_cast<AudioDevices*>(userData);
  devices.defaultSink = textOf(server->default_sink_name);
  devices.defaultSource = textOf(server->default_source_name);
}

void takeSuccess(pa_context*, int success, void* userData) {
  *static_cast<bool*>(userData) = success != 0;
}

}  // namespace

PulseConversation::PulseConversation(const std::string& server, double seconds)
    : server_(server),
      end_(SteadyClock::now() + std::chrono::duration_cast<SteadyClock::duration>(
                                    std::chrono::duration<double>(seconds))),
      loop_(pa_mainloop_new()) {}

PulseConversation::~PulseConversation() {
  if (context_ != nullptr) {
    pa_context_disconnect(context_);
    pa_context_unref(context_);
  }
  if (loop_ != nullptr) pa_mainloop_free(loop_);
}

void PulseConversation::interrupt() {
  isInterrupted_ = true;
  if (loop_ != nullptr) pa_mainloop_wakeup(loop_);
}

bool PulseConversation::isOver() const {
  return isInterrupted_ || SteadyClock::now() >= end_;
}

bool PulseConversation::iterateUntil(const std::function<bool()>& isDone) {
  while (!isDone()) {
    if (isOver()) return false;
    // Below zero would mean for ever.
    const auto left = std::chrono::ceil<std::chrono::microseconds>(end_ - SteadyClock::now());
    if (pa_mainloop_prepare(loop_, static_cast<int>(std::max<std::int64_t>(left.count(), 0))) < 0)
      return false;
    if (pa_mainloop_poll(loop_) < 0 || pa_mainloop_dispatch(loop_) < 0) return false;
  }
  return true;
}

bool PulseConversation::isReady() const {
  return pa_context_get_state(context_) == PA_CONTEXT_READY;
}

bool PulseConversation::connect() {
  if (loop_ == nullptr) return false;
  if (context_ != nullptr) return isReady();
  // Only here, since it reads files.
  context_ = pa_context_new(pa_mainloop_get_api(loop_), "Korvantis");
  if (context_ == nullptr) return false;
  const char* const server = server_.empty() ? nullptr : server_.c_str();
  if (pa_context_connect(context_, server, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) return false;
  iterateUntil([this] { return isReady() || !PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)); });
  return isReady();
}

bool PulseConversation::finish(pa_operation* operation) {
  if (operation == nullptr) return false;
  iterateUntil([operation] { return pa_operation_get_state(operation) != PA_OPERATION_RUNNING; });
  const bool isDone = pa_operation_get_state(operation) == PA_OPERATION_DONE;
  // Its callback writes into what our caller holds.
  if (!isDone) pa_operation_cancel(operation);
  pa_operation_unref(operation);
  return isDone;
}

bool PulseConversation::readServer(AudioDevices& devices) {
  return finish(pa_context_get_server_info(context_, takeServer, &devices));
}

std::optional<AudioDevices> PulseConversation::readDevices() {
  AudioDevices devices;
  if (!connect() || !readServer(devices)) return std::nullopt;
  if (!finish(pa_context_get_sink_info_list(context_, takeSink, &devices))) return std::nullopt;
  if (!finish(pa_context_get_source_info_list(context_, takeSource, &devices))) return std::nullopt;
  return devices;
}

bool PulseConversation::setDefault(const AudioDevice& device, double patienceSeconds) {
  const auto start = SteadyClock::now();
  const auto isPatient = [&] {
    return std::chrono::duration<double>(SteadyClock::now() - start).count() < patienceSeconds;
  };
  if (!connect()) return false;
  bool isAccepted = false;
  const char* const name = device.serverName.c_str();
  if (!finish(device.isInput
                  ? pa_context_set_default_source(context_, name, takeSuccess, &isAccepted)
                  : pa_context_set_default_sink(context_, name, takeSuccess, &isAccepted)))
    return false;
  // One of the servers says yes first and changes its mind on the default a moment later.
  AudioDevices present;
  while (isAccepted && isPatient() && readServer(present)) {
    if ((device.isInput ? present.defaultSource : present.defaultSink) == device.serverName)
      return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return false;
}

}  // namespace korvantis
