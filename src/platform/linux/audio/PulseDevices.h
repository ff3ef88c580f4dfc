#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/linux/audio/AudioDevices.h"

namespace korvantis {

class PulseConversation;

/// How long the sound server may take.
struct PulseLimits {
  /// A caller waits no longer than this, and no longer for a setting and the look that follows it
  /// together.
  double callerSeconds = 0.25;
  /// A conversation that nobody waits for any more is broken off after this.
  double conversationSeconds = 2;
  /// So long is waited for a default that was set to show.
  double settlingSeconds = 0.2;
};

/// The sound server's devices. Every question goes over a connection of its own on a thread of its
/// own, so that the caller comes back in time whatever the server does. While the server still
/// owes the answer to an earlier question, nothing new is asked. Any thread.
class PulseDevices {
 public:
  /// `server` is an address as in `PULSE_SERVER`; empty for the usual one.
  explicit PulseDevices(std::string server = {}, PulseLimits limits = {});
  PulseDevices(const PulseDevices&) = delete;
  PulseDevices& operator=(const PulseDevices&) = delete;
  ~PulseDevices();

  /// What the server has now; what it had before when it does not answer in time; absent when
  /// there is no server or it never answered.
  std::optional<AudioDevices> refreshed();

  /// What `refreshed` or `setDefault` last saw.
  std::optional<AudioDevices> lastSeen();

  /// Makes that device the default of its direction; whether it is now.
  bool setDefault(std::uint32_t id);

 private:
  using Work = std::function<void(PulseConversation&)>;

  bool converse(double callerSeconds, const Work& work);
  void run(const std::shared_ptr<PulseConversation>& conversation, const Work& work);
  void keep(std::optional<AudioDevices> devices);

  const std::string server_;
  const PulseLimits limits_;
  /// Guards what follows; never held while the server is spoken to.
  std::mutex lock;
  std::condition_variable ended_;
  bool isBusy_ = false;
  std::shared_ptr<PulseConversation> conversation_;
  std::optional<AudioDevices> lastSeen_;
  /// What the last setting took of the time of the look that follows it.
  double spentSeconds_ = 0;
  std::thread thread_;
};

}  // namespace korvantis
