#include "platform/linux/hardware/SleepInhibitors.h"

#include <string>
#include <string_view>

namespace korvantis {
namespace {

bool hasWord(std::string_view list, std::string_view word) {
  while (!list.empty()) {
    const std::size_t colon = list.find(':');
    if (list.substr(0, colon) == word) return true;
    list.remove_prefix(colon == std::string_view::npos ? list.size() : colon + 1);
  }
  return false;
}

PropertyMap assertion(const char* type, const char* who, const char* why) {
  PropertyMap map;
  map["AssertType"] = PropertyValue{std::string(type)};
  // Where nothing was said, whoever reads this has words of its own.
  if (*why != '\0') map["AssertName"] = PropertyValue{std::string(why)};
  if (*who != '\0') map["Process Name"] = PropertyValue{std::string(who)};
  return map;
}

}  // namespace

AssertionsByProcess readInhibitors(sd_bus_message* answer) {
  AssertionsByProcess assertions;
  if (sd_bus_message_enter_container(answer, 'a', "(ssssuu)") <= 0) return assertions;
  for (;;) {
    const char* what = nullptr;
    const char* who = nullptr;
    const char* why = nullptr;
    const char* mode = nullptr;
    std::uint32_t user = 0;
    std::uint32_t pid = 0;
    if (sd_bus_message_read(answer, "(ssssuu)", &what, &who, &why, &mode, &user, &pid) <= 0) break;
    if (std::string_view(mode) != "block") continue;
    const auto process = static_cast<std::int32_t>(pid);
    if (hasWord(what, "idle")) {
      assertions[process].push_back(assertion("PreventUserIdleDisplaySleep", who, why));
    }
    if (hasWord(what, "sleep")) {
      assertions[process].push_back(assertion("PreventSystemSleep", who, why));
    }
  }
  return assertions;
}

std::vector<std::string> readInhibitorPaths(sd_bus_message* answer) {
  constexpr std::size_t most = 16;
  std::vector<std::string> paths;
  if (sd_bus_message_enter_container(answer, 'a', "o") <= 0) return paths;
  const char* path = nullptr;
  while (paths.size() < most && sd_bus_message_read(answer, "o", &path) > 0) {
    paths.emplace_back(path);
  }
  return paths;
}

std::vector<PropertyMap> readSessionInhibitor(sd_bus_message* application, sd_bus_message* reason,
                                              sd_bus_message* flags) {
  constexpr std::uint32_t suspend = 4;
  constexpr std::uint32_t idle = 8;
  const char* who = "";
  const char* why = "";
  std::uint32_t what = 0;
  if (flags == nullptr || sd_bus_message_read(flags, "u", &what) <= 0) return {};
  if (application != nullptr) sd_bus_message_read(application, "s", &who);
  if (reason != nullptr) sd_bus_message_read(reason, "s", &why);
  std::vector<PropertyMap> assertions;
  if ((what & idle) != 0) {
    assertions.push_back(assertion("PreventUserIdleDisplaySleep", who, why));
  }
  if ((what & suspend) != 0) assertions.push_back(assertion("PreventSystemSleep", who, why));
  return assertions;
}

}  // namespace korvantis
