#include "bridge/BridgeCommands.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>

#include "core/JsonValue.h"

namespace korvantis {

namespace {

using Json = nlohmann::ordered_json;

constexpr double hotCelsius = 82.0;
constexpr std::int64_t usualLimit = 10;

/// One key of a reply with its value.
struct Entry {
  const char* key;
  Json value;
};

/// The object of these entries. The library's own way from a list in braces makes three values out
/// of each entry first, which a reply of many rows feels.
template <std::size_t count>
Json objectOf(Entry (&&entries)[count]) {
  Json object = Json::object();
  auto& map = object.get_ref<Json::object_t&>();
  map.reserve(count);
  for (Entry& entry : entries) map.emplace_back(entry.key, std::move(entry.value));
  return object;
}

/// One object per element of `list`, made by `elementObject`, under one key.
template <typename List, typename ElementObject>
Json listUnder(const char* key, const List& list, ElementObject elementObject) {
  Json objects = Json::array();
  objects.get_ref<Json::array_t&>().reserve(list.size());
  for (const auto& element : list) objects.push_back(elementObject(element));
  return objectOf({{key, std::move(objects)}});
}

Json systemStatus(const EngineSnapshot& snapshot, const nlohmann::json&) {
  const SystemSample& system = snapshot.system;
  return objectOf({{"cpuPercent", system.cpuPercent},
                   {"memoryUsedBytes", system.memoryUsedBytes},
                   {"memoryTotalBytes", system.memoryTotalBytes},
                   {"memoryPressure", label(system.memoryPressure)},
                   {"gpuPercent", system.gpuPercent},
                   {"neuralEnginePercent", system.neuralEnginePercent},
                   {"cpuCelsius", system.thermal.cpuCelsius},
                   {"powerWatts", system.thermal.systemPowerWatts},
                   {"networkInBytesPerSec", system.networkInBytesPerSec},
                   {"networkOutBytesPerSec", system.networkOutBytesPerSec},
                   {"activeStrains", toJson(snapshot.activeStrains)}});
}

std::int64_t limitOf(const nlohmann::json& arguments) {
  const auto found = arguments.find("limit");
  if (found == arguments.end()) return usualLimit;
  return integerFromJson<std::int64_t>(*found).value_or(usualLimit);
}

Json topApps(const EngineSnapshot& snapshot, const nlohmann::json& arguments) {
  const auto count = std::min<std::int64_t>(limitOf(arguments), std::ssize(snapshot.appGroups));
  if (count < 0) std::abort();
  const std::span shown(snapshot.appGroups.data(), static_cast<std::size_t>(count));
  return listUnder("apps", shown, [](const AppGroup& group) {
    return objectOf({{"id", group.id},
                     {"name", group.name},
                     {"cpuPercent", group.cpuPercent},
                     {"memoryBytes", group.memoryBytes},
                     {"energyWatts", group.energyWatts},
                     {"processCount", group.processes.size()}});
  });
}

Json ports(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("ports", snapshot.listeningPorts, [](const ListeningPortItem& item) {
    return objectOf({{"port", item.port},
                     {"pid", item.pid},
                     {"processName", item.processName},
                     {"appName", item.appName},
                     {"projectName", item.projectName.value_or("")},
                     {"isIdle", item.isIdle}});
  });
}

Json projects(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("projects", snapshot.projects, [](const DevProject& project) {
    return objectOf({{"name", project.name},
                     {"path", project.path},
                     {"cpuPercent", project.cpuPercent},
                     {"memoryBytes", project.memoryBytes},
                     {"ports", project.ports}});
  });
}

Json idleServers(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("idleServers", snapshot.idleServers, [](const IdleServer& server) {
    return objectOf({{"pid", server.pid},
                     {"name", server.name},
                     {"projectName", server.projectName},
                     {"ports", server.ports},
                     {"memoryBytes", server.memoryBytes},
                     {"idleSeconds", server.idleSeconds}});
  });
}

Json agents(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("agents", snapshot.agentSessions, [](const AgentSession& session) {
    return objectOf({{"pid", session.pid},
                     {"toolName", session.toolName},
                     {"state", rawValue(session.state)},
                     {"projectName", session.projectName},
                     {"cpuPercent", session.cpuPercent},
                     {"memoryBytes", session.memoryBytes}});
  });
}

Json limits(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("limits", snapshot.planLimits, [](const PlanLimitStatus& plan) {
    return objectOf({{"tool", plan.tool},
                     {"planName", plan.planName},
                     {"fiveHourUsedPercent", plan.fiveHourUsedPercent},
                     {"weeklyUsedPercent", plan.weeklyUsedPercent},
                     {"paceText", plan.paceText}});
  });
}

Json whatsWrong(const EngineSnapshot& snapshot, const nlohmann::json&) {
  const auto& groups = snapshot.appGroups;
  const auto top = std::ranges::max_element(groups, {}, &AppGroup::cpuPercent);
  return objectOf({{"activeStrains", toJson(snapshot.activeStrains)},
                   {"idleServerCount", snapshot.idleServers.size()},
                   {"topCPUApp", top == groups.end() ? "None" : top->name}});
}

struct Command {
  std::string_view name;
  Json (*reply)(const EngineSnapshot& snapshot, const nlohmann::json& arguments);
};

constexpr std::array<Command, 11> commands{{{"system_status", systemStatus},
                                            {"status", systemStatus},
                                            {"top_apps", topApps},
                                            {"top", topApps},
                                            {"ports", ports},
                                            {"projects", projects},
                                            {"idle_servers", idleServers},
                                            {"agents", agents},
                                            {"limits", limits},
                                            {"whats_wrong", whatsWrong},
                                            {"whats-wrong", whatsWrong}}};

}  // namespace

BridgeCommands::BridgeCommands(SampleTick sampleTick) : tick(std::move(sampleTick)) {}

nlohmann::ordered_json BridgeCommands::operator()(const std::string& command,
                                                  const nlohmann::json& arguments) const {
  const EngineSnapshot snapshot = tick({}, {}, hotCelsius);
  return reply(command, arguments, snapshot);
}

nlohmann::ordered_json BridgeCommands::reply(const std::string& command,
                                             const nlohmann::json& arguments,
                                             const EngineSnapshot& snapshot) {
  const auto found = std::ranges::find(commands, command, &Command::name);
  if (found != commands.end()) return found->reply(snapshot, arguments);
  return objectOf({{"ok", true}, {"command", command}});
}

}  // namespace korvantis
