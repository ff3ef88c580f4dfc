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

constexpr double hotCelsius = 82.0;
constexpr std::int64_t usualLimit = 10;

/// An object with one key, under which there is a list: one object per element of `list`, whose
/// members `writeMembers` writes.
template <typename List, typename WriteMembers>
void writeList(JsonWriter& json, const char* key, const List& list, WriteMembers writeMembers) {
  json.beginObject();
  json.key(key);
  json.beginList();
  for (const auto& element : list) {
    json.beginObject();
    writeMembers(element);
    json.endObject();
  }
  json.endList();
  json.endObject();
}

void systemStatus(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json&) {
  const SystemSample& system = snapshot.system;
  json.beginObject();
  json.member("cpuPercent", system.cpuPercent);
  json.member("memoryUsedBytes", system.memoryUsedBytes);
  json.member("memoryTotalBytes", system.memoryTotalBytes);
  json.member("memoryPressure", label(system.memoryPressure));
  json.member("gpuPercent", system.gpuPercent);
  json.member("neuralEnginePercent", system.neuralEnginePercent);
  json.member("cpuCelsius", system.thermal.cpuCelsius);
  json.member("powerWatts", system.thermal.systemPowerWatts);
  json.member("networkInBytesPerSec", system.networkInBytesPerSec);
  json.member("networkOutBytesPerSec", system.networkOutBytesPerSec);
  json.member("activeStrains", snapshot.activeStrains);
  json.endObject();
}

std::int64_t limitOf(const nlohmann::json& arguments) {
  const auto found = arguments.find("limit");
  if (found == arguments.end()) return usualLimit;
  return integerFromJson<std::int64_t>(*found).value_or(usualLimit);
}

void topApps(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json& arguments) {
  const auto count = std::min<std::int64_t>(limitOf(arguments), std::ssize(snapshot.appGroups));
  if (count < 0) std::abort();
  const std::span shown(snapshot.appGroups.data(), static_cast<std::size_t>(count));
  writeList(json, "apps", shown, [&json](const AppGroup& group) {
    json.member("id", group.id);
    json.member("name", group.name);
    json.member("cpuPercent", group.cpuPercent);
    json.member("memoryBytes", group.memoryBytes);
    json.member("energyWatts", group.energyWatts);
    json.member("processCount", group.processes.size());
  });
}

void ports(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json&) {
  writeList(json, "ports", snapshot.listeningPorts, [&json](const ListeningPortItem& item) {
    json.member("port", item.port);
    json.member("pid", item.pid);
    json.member("processName", item.processName);
    json.member("appName", item.appName);
    json.member("projectName", item.projectName ? std::string_view(*item.projectName) : "");
    json.member("isIdle", item.isIdle);
  });
}

void projects(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json&) {
  writeList(json, "projects", snapshot.projects, [&json](const DevProject& project) {
    json.member("name", project.name);
    json.member("path", project.path);
    json.member("cpuPercent", project.cpuPercent);
    json.member("memoryBytes", project.memoryBytes);
    json.member("ports", project.ports);
  });
}

void idleServers(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json&) {
  writeList(json, "idleServers", snapshot.idleServers, [&json](const IdleServer& server) {
    json.member("pid", server.pid);
    json.member("name", server.name);
    json.member("projectName", server.projectName);
    json.member("ports", server.ports);
    json.member("memoryBytes", server.memoryBytes);
    json.member("idleSeconds", server.idleSeconds);
  });
}

void agents(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json&) {
  writeList(json, "agents", snapshot.agentSessions, [&json](const AgentSession& session) {
    json.member("pid", session.pid);
    json.member("toolName", session.toolName);
    json.member("state", session.state);
    json.member("projectName", session.projectName);
    json.member("cpuPercent", session.cpuPercent);
    json.member("memoryBytes", session.memoryBytes);
  });
}

void limits(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json&) {
  writeList(json, "limits", snapshot.planLimits, [&json](const PlanLimitStatus& plan) {
    json.member("tool", plan.tool);
    json.member("planName", plan.planName);
    json.member("fiveHourUsedPercent", plan.fiveHourUsedPercent);
    json.member("weeklyUsedPercent", plan.weeklyUsedPercent);
    json.member("paceText", plan.paceText);
  });
}

void whatsWrong(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json&) {
  const auto& groups = snapshot.appGroups;
  const auto top = std::ranges::max_element(groups, {}, &AppGroup::cpuPercent);
  json.beginObject();
  json.member("activeStrains", snapshot.activeStrains);
  json.member("idleServerCount", snapshot.idleServers.size());
  json.member("topCPUApp", top == groups.end() ? std::string_view("None") : top->name);
  json.endObject();
}

void unknown(JsonWriter& json, const std::string& command) {
  json.beginObject();
  json.member("ok", true);
  json.member("command", command);
  json.endObject();
}

struct Command {
  std::string_view name;
  void (*write)(JsonWriter& json, const EngineSnapshot& snapshot, const nlohmann::json& arguments);
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

BridgeReply BridgeCommands::operator()(const std::string& command,
                                       const nlohmann::json& arguments) const {
  const EngineSnapshot snapshot = tick({}, {}, hotCelsius);
  return reply(command, arguments, snapshot);
}

BridgeReply BridgeCommands::reply(const std::string& command, const nlohmann::json& arguments,
                                  const EngineSnapshot& snapshot) {
  JsonWriter json;
  const auto found = std::ranges::find(commands, command, &Command::name);
  if (found != commands.end()) {
    found->write(json, snapshot, arguments);
  } else {
    unknown(json, command);
  }
  return BridgeReply(std::move(json));
}

}  // namespace korvantis
