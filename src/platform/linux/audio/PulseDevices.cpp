#include "platform/linux/audio/PulseDevices.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <system_error>
#include <utility>

#include "platform/linux/audio/PulseConversation.h"

namespace korvantis {

PulseDevices::PulseDevices(std::string server, PulseLimits limits)
    : server_(std::move(server)), limits_(limits) {}

PulseDevices::~PulseDevices() {
  {
    const std::lock_guard guard(lock);
    if (conversation_) conversation_->interrupt();
  }
  if (thread_.joinable()) thread_.join();
}

void PulseDevices::run(const std::shared_ptr<PulseConversation>& conversation, const Work& work) {
  work(*conversation);
  const std::lock_guard guard(lock);
  conversation_.reset();
  isBusy_ = false;
  ended_.notify_all();
}

/// Starts `work` and waits for it up to `callerSeconds`; whether it was done by then.
bool PulseDevices::converse(double callerSeconds, const Work& work) {
  std::unique_lock guard(lock);
  if (isBusy_) return false;
  // The thread of the last conversation has nothing left to do.
  if (thread_.joinable()) thread_.join();
  auto conversation = std::make_shared<PulseConversation>(server_, limits_.conversationSeconds);
  try {
    thread_ = std::thread([this, conversation, work] { run(conversation, work); });
  } catch (const std::system_error&) {
    return false;
  }
  isBusy_ = true;
  conversation_ = std::move(conversation);
  return ended_.wait_for(guard, std::chrono::duration<double>(callerSeconds),
                         [this] { return !isBusy_; });
}

void PulseDevices::keep(std::optional<AudioDevices> devices) {
  const std::lock_guard guard(lock);
  lastSeen_ = std::move(devices);
}

std::optional<AudioDevices> PulseDevices::lastSeen() {
  const std::lock_guard guard(lock);
  return lastSeen_;
}

std::optional<AudioDevices> PulseDevices::refreshed() {
  double spent = 0;
  {
    const std::lock_guard guard(lock);
    spent = std::exchange(spentSeconds_, 0);
  }
  converse(std::max(limits_.callerSeconds - spent, 0.0),
           [this](PulseConversation& conversation) { keep(conversation.readDevices()); });
  return lastSeen();
}

bool PulseDevices::setDefault(std::uint32_t id) {
  const auto seen = lastSeen();
  const AudioDevice* const device = seen ? seen->find(id) : nullptr;
  if (device == nullptr) return false;
  const auto start = std::chrono::steady_clock::now();
  const auto isSet = std::make_shared<std::atomic<bool>>(false);
  const bool isInTime = converse(
      limits_.callerSeconds,
      [isSet, wanted = *device, patience = limits_.settlingSeconds](
          PulseConversation& conversation) { *isSet = conversation.setDefault(wanted, patience); });
  const std::lock_guard guard(lock);
  spentSeconds_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return isInTime && *isSet;
}

}  // namespace korvantis
