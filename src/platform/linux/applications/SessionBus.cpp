#include "platform/linux/applications/SessionBus.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <optional>
#include <systemd/sd-bus.h>
#include <utility>

namespace korvantis {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto limit = std::chrono::milliseconds(200);
constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

struct Unreference {
  void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Bus = std::unique_ptr<sd_bus, Unreference>;
using Message = std::unique_ptr<sd_bus_message, Unreference>;

std::uint64_t microsecondsUntil(Clock::time_point deadline) {
  const auto left =
      std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now()).count();
  // 0 would mean the library's own limit of many seconds.
  return static_cast<std::uint64_t>(std::max<std::int64_t>(left, 1));
}

/// Waits until the bus has greeted us. The library's own calls would do so too, but for its own
/// limit of many seconds, whatever theirs is.
bool isGreeted(sd_bus* bus, Clock::time_point deadline) {
  for (;;) {
    const int ready = sd_bus_is_ready(bus);
    if (ready != 0) return ready > 0;
    const int worked = sd_bus_process(bus, nullptr);
    if (worked < 0) return false;
    if (worked > 0) continue;
    if (Clock::now() >= deadline) return false;
    const int waited = sd_bus_wait(bus, microsecondsUntil(deadline));
    if (waited < 0 && waited != -EINTR) return false;
  }
}

Bus openSessionBus(Clock::time_point deadline) {
  sd_bus* bus = nullptr;
  if (sd_bus_open_user(&bus) < 0) return nullptr;
  Bus opened(bus);
  return isGreeted(bus, deadline) ? std::move(opened) : nullptr;
}

/// Asks the bus itself a question about one name, or without any.
Message ask(sd_bus* bus, const char* question, const std::string* name,
            Clock::time_point deadline) {
  sd_bus_message* call = nullptr;
  if (sd_bus_message_new_method_call(bus, &call, busName, busPath, busName, question) < 0) {
    return nullptr;
  }
  const Message held(call);
  if (name != nullptr && sd_bus_message_append(call, "s", name->c_str()) < 0) return nullptr;
  sd_bus_message* reply = nullptr;
  if (sd_bus_call(bus, call, microsecondsUntil(deadline), nullptr, &reply) < 0) return nullptr;
  return Message(reply);
}

std::vector<std::string> namesOnBus(sd_bus* bus, Clock::time_point deadline) {
  std::vector<std::string> names;
  const Message reply = ask(bus, "ListNames", nullptr, deadline);
  if (!reply || sd_bus_message_enter_container(reply.get(), 'a', "s") < 0) return names;
  const char* name = nullptr;
  while (sd_bus_message_read(reply.get(), "s", &name) > 0) names.emplace_back(name);
  return names;
}

std::optional<std::int32_t> ownerOf(sd_bus* bus, const std::string& name,
                                    Clock::time_point deadline) {
  const Message reply = ask(bus, "GetConnectionUnixProcessID", &name, deadline);
  std::uint32_t pid = 0;
  if (!reply || sd_bus_message_read(reply.get(), "u", &pid) <= 0 || pid == 0) return std::nullopt;
  return static_cast<std::int32_t>(pid);
}

/// Where an application with this id keeps its actions.
std::string objectPathOf(const std::string& id) {
  std::string path = "/" + id;
  std::replace(path.begin(), path.end(), '.', '/');
  std::replace(path.begin(), path.end(), '-', '_');
  return path;
}

bool offersQuit(sd_bus* bus, const std::string& id, const std::string& path) {
  sd_bus_message* call = nullptr;
  if (sd_bus_message_new_method_call(bus, &call, id.c_str(), path.c_str(), "org.gtk.Actions",
                                     "List") < 0) {
    return false;
  }
  const Message held(call);
  sd_bus_message* answer = nullptr;
  // A limit of its own: to deny a slow application the question would be to kill it.
  const std::uint64_t wait = microsecondsUntil(Clock::now() + limit);
  if (sd_bus_call(bus, call, wait, nullptr, &answer) < 0) return false;
  const Message reply(answer);
  if (sd_bus_message_enter_container(answer, 'a', "s") < 0) return false;
  const char* name = nullptr;
  while (sd_bus_message_read(answer, "s", &name) > 0) {
    if (std::string_view(name) == "quit") return true;
  }
  return false;
}

bool activateQuit(sd_bus* bus, const std::string& id, const std::string& path) {
  sd_bus_message* call = nullptr;
  if (sd_bus_message_new_method_call(bus, &call, id.c_str(), path.c_str(),
                                     "org.freedesktop.Application", "ActivateAction") < 0) {
    return false;
  }
  const Message held(call);
  if (sd_bus_message_append(call, "sava{sv}", "quit", 0, 0) < 0) return false;
  sd_bus_error error{};
  sd_bus_message* answer = nullptr;
  const std::uint64_t wait = microsecondsUntil(Clock::now() + limit);
  const int result = sd_bus_call(bus, call, wait, &error, &answer);
  const Message reply(answer);
  // It may be gone before it can answer, or be asking its user.
  const bool isUnderWay = sd_bus_error_has_name(&error, SD_BUS_ERROR_NO_REPLY) != 0 ||
                          sd_bus_error_has_name(&error, SD_BUS_ERROR_TIMEOUT) != 0;
  sd_bus_error_free(&error);
  return result >= 0 || isUnderWay;
}

}  // namespace

std::vector<BusNameHolder> sessionBusNameOwners(
    const std::function<bool(const std::string& name)>& isWanted) {
  std::vector<BusNameHolder> holders;
  const auto deadline = Clock::now() + limit;
  const Bus bus = openSessionBus(deadline);
  if (!bus) return holders;
  for (std::string& name : namesOnBus(bus.get(), deadline)) {
    if (name.starts_with(':') || !isWanted(name)) continue;
    if (const auto pid = ownerOf(bus.get(), name, deadline)) {
      holders.push_back({std::move(name), *pid});
    }
    if (Clock::now() >= deadline) break;
  }
  return holders;
}

bool quitOverSessionBus(const std::string& id, std::int32_t pid) {
  if (sd_bus_service_name_is_valid(id.c_str()) <= 0 || id.starts_with(':')) return false;
  const std::string path = objectPathOf(id);
  if (sd_bus_object_path_is_valid(path.c_str()) <= 0) return false;
  const auto deadline = Clock::now() + limit;
  const Bus bus = openSessionBus(deadline);
  if (!bus || ownerOf(bus.get(), id, deadline) != pid) return false;
  return offersQuit(bus.get(), id, path) && activateQuit(bus.get(), id, path);
}

}  // namespace korvantis
