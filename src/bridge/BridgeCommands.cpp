#include "bridge/BridgeCommands.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "core/JsonValue.h"

namespace korvantis {

namespace {

using Json = nlohmann::ordered_json;

constexpr double hotCelsius = 82.0;
constexpr std::int64_t usualLimit = 10;

/// One object per element of `list`, made by `objectOf`, under one key.
template <typename List, typename ObjectOf>
Json listUnder(const char* key, const List& list, ObjectOf objectOf) {
  Json objects = Json::array();
  for (const auto& element : list) objects.push_back(objectOf(element));
  Json reply = Json::object();
  reply.emplace(key, std::move(objects));
  return reply;
}

Json systemStatus(const EngineSnapshot& snapshot, const nlohmann::json&) {
  const SystemSample& system = snapshot.system;
  return {{"cpuPercent", system.cpuPercent},
          {"memoryUsedBytes", system.memoryUsedBytes},
          {"memoryTotalBytes", system.memoryTotalBytes},
          {"memoryPressure", label(system.memoryPressure)},
          {"gpuPercent", system.gpuPercent},
          {"neuralEnginePercent", system.neuralEnginePercent},
          {"cpuCelsius", system.thermal.cpuCelsius},
          {"powerWatts", system.thermal.systemPowerWatts},
          {"networkInBytesPerSec", system.networkInBytesPerSec},
          {"networkOutBytesPerSec", system.networkOutBytesPerSec},
          {"activeStrains", toJson(snapshot.activeStrains)}};
}

std::int64_t limitOf(const nlohmann::json& arguments) {
  const auto found = arguments.find("limit");
  if (found == arguments.end()) return usualLimit;
  return integerFromJson<std::int64_t>(*found).value_or(usualLimit);
}

Json topApps(const EngineSnapshot& snapshot, const nlohmann::json& arguments) {
  const auto count = std::min(limitOf(arguments), std::ssize(snapshot.appGroups));
  if (count < 0) std::abort();
  const auto begin = snapshot.appGroups.begin();
  return listUnder("apps", std::ranges::subrange(begin, begin + count), [](const AppGroup& group) {
    return Json{{"id", group.id},
                {"name", group.name},
                {"cpuPercent", group.cpuPercent},
                {"memoryBytes", group.memoryBytes},
                {"energyWatts", group.energyWatts},
                {"processCount", group.processes.size()}};
  });
}

Json ports(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("ports", snapshot.listeningPorts, [](const ListeningPortItem& item) {
    return Json{{"port", item.port},
                {"pid", item.pid},
                {"processName", item.processName},
                {"appName", item.appName},
                {"projectName", item.projectName.value_or("")},
                {"isIdle", item.isIdle}};
  });
}

Json projects(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("projects", snapshot.projects, [](const DevProject& project) {
    return Json{{"name", project.name},
                {"path", project.path},
                {"cpuPercent", project.cpuPercent},
                {"memoryBytes", project.memoryBytes},
                {"ports", project.ports}};
  });
}

Json idleServers(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("idleServers", snapshot.idleServers, [](const IdleServer& server) {
    return Json{{"pid", server.pid},
                {"name", server.name},
                {"projectName", server.projectName},
                {"ports", server.ports},
                {"memoryBytes", server.memoryBytes},
                {"idleSeconds", server.idleSeconds}};
  });
}

Json agents(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("agents", snapshot.agentSessions, [](const AgentSession& session) {
    return Json{{"pid", session.pid},
                {"toolName", session.toolName},
                {"state", rawValue(session.state)},
                {"projectName", session.projectName},
                {"cpuPercent", session.cpuPercent},
                {"memoryBytes", session.memoryBytes}};
  });
}

Json limits(const EngineSnapshot& snapshot, const nlohmann::json&) {
  return listUnder("limits", snapshot.planLimits, [](const PlanLimitStatus& plan) {
    return Json{{"tool", plan.tool},
                {"planName", plan.planName},
                {"fiveHourUsedPercent", plan.fiveHourUsedPercent},
                {"weeklyUsedPercent", plan.weeklyUsedPercent},
                {"paceText", plan.paceText}};
  });
}

Json whatsWrong(const EngineSnapshot& snapshot, const nlohmann::json&) {
  const auto& groups = snapshot.appGroups;
  const auto top = std::ranges::max_element(groups, {}, &AppGroup::cpuPercent);
  return {{"activeStrains", toJson(snapshot.activeStrains)},
          {"idleServerCount", snapshot.idleServers.size()},
          {"topCPUApp", top == groups.end() ? "None" : top->name}};
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
  return {{"ok", true}, {"command", command}};
}

}  // namespace korvantis
