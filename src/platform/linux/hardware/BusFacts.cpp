#include "platform/linux/hardware/BusFacts.h"

#include <algorithm>
#include <array>

#include "platform/linux/hardware/BluetoothDevices.h"

namespace korvantis {
namespace {

/// Both facts of a tick come from one fetch, and no tick has to do without a new one.
constexpr double fetchPace = 0.9;
constexpr double longestAge = 10.0;
/// A session without GNOME's manager seldom gets one.
constexpr double refusedPace = 30.0;

const std::vector<BusQuestion>& questions() {
  static const auto& list = *new std::vector<BusQuestion>{
      {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
       "ListInhibitors"},
      {"org.bluez", "/", "org.freedesktop.DBus.ObjectManager", "GetManagedObjects"}};
  return list;
}

BusQuestion sessionQuestion(const std::string& path, const char* interface, const char* member) {
  return {"org.gnome.SessionManager", path, interface, member};
}

std::vector<BusQuestion> inhibitorQuestions(const std::vector<std::string>& paths) {
  const char* const interface = "org.gnome.SessionManager.Inhibitor";
  std::vector<BusQuestion> questions;
  for (const std::string& path : paths) {
    for (const char* const member : {"GetAppId", "GetReason", "GetFlags"}) {
      questions.push_back(sessionQuestion(path, interface, member));
    }
  }
  return questions;
}

}  // namespace

BusFacts::BusFacts(const HardwareSources& sources)
    : monotonicSeconds(sources.monotonicSeconds),
      system(sources.systemBus, sources.monotonicSeconds),
      session(sources.sessionBus, sources.monotonicSeconds),
      work(sources.inBackground, sources.monotonicSeconds, fetchPace, [this] { fetch(); }) {}

void BusFacts::fetch() {
  const std::scoped_lock one(fetching);
  fetchFromSystem();
  fetchFromSession();
}

void BusFacts::fetchFromSystem() {
  const std::vector<BusAnswer> answers = system.ask(questions());
  const double now = monotonicSeconds();
  AssertionsByProcess assertions;
  std::vector<PropertyMap> devices;
  if (answers[0].message) assertions = readInhibitors(answers[0].message.get());
  if (answers[1].message) devices = readBluetoothDevices(answers[1].message.get());
  const std::scoped_lock guard(lock);
  if (answers[0].came) inhibitors = {std::move(assertions), now};
  if (answers[1].came) bluetooth = {std::move(devices), now};
}

void BusFacts::fetchFromSession() {
  const double now = monotonicSeconds();
  if (refusedAt && now - *refusedAt < refusedPace) return;
  const auto list = session.ask(
      {sessionQuestion("/org/gnome/SessionManager", "org.gnome.SessionManager", "GetInhibitors")});
  if (!list[0].came) return;
  refusedAt = list[0].message ? std::nullopt : std::optional(now);
  std::vector<PropertyMap> assertions;
  if (list[0].message) {
    const auto answers = session.ask(inhibitorQuestions(readInhibitorPaths(list[0].message.get())));
    // Half an answer is none: what was known stands for as long as it may.
    const auto came = [](const BusAnswer& answer) { return answer.came; };
    if (!std::all_of(answers.begin(), answers.end(), came)) return;
    for (std::size_t first = 0; first + 2 < answers.size(); first += 3) {
      for (PropertyMap& assertion :
           readSessionInhibitor(answers[first].message.get(), answers[first + 1].message.get(),
                                answers[first + 2].message.get())) {
        assertions.push_back(std::move(assertion));
      }
    }
  }
  const std::scoped_lock guard(lock);
  sessionInhibitors = {std::move(assertions), now};
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
  AssertionsByProcess all = fresh(inhibitors);
  std::vector<PropertyMap> others = fresh(sessionInhibitors);
  if (!others.empty()) all[0] = std::move(others);
  return all;
}

std::vector<PropertyMap> BusFacts::bluetoothDevices() {
  return fresh(bluetooth);
}

}  // namespace korvantis
