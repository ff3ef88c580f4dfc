#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <pulse/pulseaudio.h>
#include <string>

#include "platform/linux/audio/AudioDevices.h"

namespace korvantis {

/// One connection to the sound server, from greeting to farewell. It ends when its time is up,
/// whatever the server does. One thread, but for `interrupt`.
class PulseConversation {
 public:
  /// `server` is an address as in `PULSE_SERVER`; empty for the usual one. No server is started.
  PulseConversation(const std::string& server, double seconds);
  PulseConversation(const PulseConversation&) = delete;
  PulseConversation& operator=(const PulseConversation&) = delete;
  ~PulseConversation();

  /// The devices and defaults; absent when the server gives no answer.
  std::optional<AudioDevices> readDevices();

  /// Makes a device the default one of its direction and waits until the server says so too, for
  /// about so long; false when it refuses or doesn't.
  bool setDefault(const AudioDevice& device, double patienceSeconds);

  /// Ends the conversation at once: whatever is being waited for fails. Any thread.
  void interrupt();

 private:
  bool connect();
  bool isReady() const;
  bool isOver() const;
  bool iterateUntil(const std::function<bool()>& isDone);
  bool finish(pa_operation* operation);
  bool readServer(AudioDevices& devices);

  std::string server_;
  std::chrono::steady_clock::time_point end_;
  std::atomic<bool> isInterrupted_ = false;
  pa_mainloop* loop_ = nullptr;
  pa_context* context_ = nullptr;
};

}  // namespace korvantis
