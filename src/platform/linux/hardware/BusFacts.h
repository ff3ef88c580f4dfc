#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/PropertyValue.h"
#include "platform/linux/hardware/BusSession.h"
#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/PacedWork.h"
#include "platform/linux/hardware/SleepInhibitors.h"

namespace korvantis {

/// What services on the message buses tell: who keeps the machine awake, and the batteries of
/// Bluetooth devices. Each tick asks for the next answers and gets the last ones; nobody waits for
/// the bus. Any thread.
class BusFacts {
 public:
  explicit BusFacts(const HardwareSources& sources);

  /// Power assertions by process; empty before the first answer and when none came for 10 seconds.
  /// Those of GNOME's session manager, which does not tell whose they are, stand under 0.
  AssertionsByProcess assertions();

  /// Properties of the Bluetooth devices that tell their battery; empty as above.
  std::vector<PropertyMap> bluetoothDevices();

 private:
  template <typename Value>
  struct Kept {
    Value value;
    std::optional<double> answeredAt;
  };

  template <typename Value>
  Value fresh(const Kept<Value>& kept);
  void fetch();
  void fetchFromSystem();
  void fetchFromSession();

  const std::function<double()> monotonicSeconds;
  /// Only the thread of `work` uses it; held by `fetching` where that is the one who asks.
  BusSession system;
  BusSession session;
  std::optional<double> refusedAt;
  std::mutex fetching;

  std::mutex lock;
  Kept<AssertionsByProcess> inhibitors;
  Kept<std::vector<PropertyMap>> sessionInhibitors;
  Kept<std::vector<PropertyMap>> bluetooth;

  /// The last member: its thread ends before what it uses goes.
  PacedWork work;
};

}  // namespace korvantis
