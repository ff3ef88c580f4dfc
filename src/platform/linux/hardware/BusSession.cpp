#include "platform/linux/hardware/BusSession.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

namespace korvantis {
namespace {

using Steady = std::chrono::steady_clock;

constexpr auto limit = std::chrono::milliseconds(200);
constexpr double retryPace = 5.0;
/// Beyond our own limit: the library's must not come first, since an answer made up by it would
/// look like the bus's own.
constexpr std::uint64_t libraryLimit = 60'000'000;

struct ReleaseSlot {
  void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};

int keepAnswer(sd_bus_message* message, void* place, sd_bus_error*) {
  auto& answer = *static_cast<BusAnswer*>(place);
  answer.came = true;
  if (sd_bus_message_is_method_error(message, nullptr) == 0) {
    answer.message.reset(sd_bus_message_ref(message));
  }
  return 0;
}

}  // namespace

/// The questions under way; an answer that comes after it has gone finds nobody.
struct BusSession::Conversation {
  std::vector<std::unique_ptr<sd_bus_slot, ReleaseSlot>> slots;
};

BusSession::BusSession(std::string busAddress, std::function<double()> seconds)
    : address(std::move(busAddress)), monotonicSeconds(std::move(seconds)) {}

bool BusSession::open() {
  if (bus) return true;
  if (address.empty()) return false;
  if (gaveUpAt && monotonicSeconds() - *gaveUpAt < retryPace) return false;
  sd_bus* fresh = nullptr;
  if (sd_bus_new(&fresh) < 0) return false;
  bus.reset(fresh);
  if (sd_bus_set_address(fresh, address.c_str()) >= 0 && sd_bus_set_bus_client(fresh, 1) >= 0 &&
      sd_bus_start(fresh) >= 0) {
    return true;
  }
  giveUp();
  return false;
}

void BusSession::giveUp() {
  bus.reset();
  gaveUpAt = monotonicSeconds();
}

bool BusSession::send(const BusQuestion& question, BusAnswer& answer, Conversation& conversation) {
  sd_bus_message* call = nullptr;
  if (sd_bus_message_new_method_call(bus.get(), &call, question.service.c_str(),
                                     question.path.c_str(), question.interface.c_str(),
                                     question.member.c_str()) < 0) {
    return false;
  }
  const std::unique_ptr<sd_bus_message, BusAnswer::Release> owned(call);
  sd_bus_message_set_auto_start(call, 0);
  sd_bus_slot* slot = nullptr;
  if (sd_bus_call_async(bus.get(), &slot, call, keepAnswer, &answer, libraryLimit) < 0)
    return false;
  conversation.slots.emplace_back(slot);
  return true;
}

bool BusSession::listen(const std::vector<BusAnswer>& answers) {
  const auto end = Steady::now() + limit;
  const auto isOpen = [](const BusAnswer& answer) { return !answer.came; };
  while (std::any_of(answers.begin(), answers.end(), isOpen)) {
    const int worked = sd_bus_process(bus.get(), nullptr);
    if (worked < 0) return false;
    if (worked > 0) continue;
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Steady::now());
    if (left.count() <= 0) break;
    const int waited = sd_bus_wait(bus.get(), static_cast<std::uint64_t>(left.count()));
    if (waited < 0 && waited != -EINTR) return false;
  }
  return !std::all_of(answers.begin(), answers.end(), isOpen);
}

std::vector<BusAnswer> BusSession::ask(const std::vector<BusQuestion>& questions) {
  std::vector<BusAnswer> answers(questions.size());
  if (questions.empty() || !open()) return answers;
  Conversation conversation;
  bool talking = true;
  for (std::size_t index = 0; talking && index < questions.size(); ++index) {
    talking = send(questions[index], answers[index], conversation);
  }
  talking = talking && listen(answers);
  conversation.slots.clear();
  if (sd_bus_is_open(bus.get()) <= 0) {
    // The library itself refuses what was open when the connection broke.
    for (BusAnswer& answer : answers) answer.came = answer.came && answer.message;
    talking = false;
  }
  if (!talking) giveUp();
  return answers;
}

}  // namespace korvantis
