#include "platform/linux/hardware/BusFacts.h"

#include <array>

#include "platform/linux/hardware/BluetoothDevices.h"

namespace korvantis {
namespace {

/// Both facts of a tick come from one fetch, and no tick has to do without a new one.
constexpr double fetchPace = 0.9;
constexpr double longestAge = 10.0;

const std::vector<BusQuestion>& questions() {
  static const auto& list = *new std::vector<BusQuestion>{
      {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
       "ListInhibitors"},
      {"org.bluez", "/", "org.freedesktop.DBus.ObjectManager", "GetManagedObjects"}};
  return list;
}

}  // namespace

BusFacts::BusFacts(const HardwareSources& sources)
    : monotonicSeconds(sources.monotonicSeconds),
      session(sources.systemBus, sources.monotonicSeconds),
      work(sources.inBackground, sources.monotonicSeconds, fetchPace, [this] { fetch(); }) {}

void BusFacts::fetch() {
  const std::scoped_lock one(fetching);
  const std::vector<BusAnswer> answers = session.ask(questions());
  const double now = monotonicSeconds();
  AssertionsByProcess assertions;
  std::vector<PropertyMap> devices;
  if (answers[0].message) assertions = readInhibitors(answers[0].message.get());
  if (answers[1].message) devices = readBluetoothDevices(answers[1].message.get());
  const std::scoped_lock guard(lock);
  if (answers[0].came) inhibitors = {std::move(assertions), now};
  if (answers[1].came) bluetooth = {std::move(devices), now};
}

template <typename Value>
Value BusFacts::fresh(const Kept<Value>& kept) {
  work.ask();
  const double now = monotonicSeconds();
  const std::scoped_lock guard(lock);
  if (!kept.answeredAt || now - *kept.answeredAt > longestAge) return {};
  return kept.value;
}

AssertionsByProcess BusFacts::assertions() {
  return fresh(inhibitors);
}

std::vector<PropertyMap> BusFacts::bluetoothDevices() {
  return fresh(bluetooth);
}

}  // namespace korvantis
