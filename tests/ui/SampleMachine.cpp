#include "ui/SampleMachine.h"

#include <string>
#include <utility>
#include <vector>

#include "ui/ScriptedStore.h"

namespace korvantis {

namespace {

ProcessSample withFigures(ProcessSample process, HelperRole role, double cpu,
                          std::uint64_t megabytes) {
  process.helperRole = role;
  process.cpuPercent = cpu;
  process.memoryBytes = megabytes << 20;
  return process;
}

ProcessSample withPorts(ProcessSample process, std::vector<std::uint16_t> ports) {
  process.listeningPorts = std::move(ports);
  return process;
}

AppGroup ofKind(AppGroup group, AppGroupKind kind) {
  group.kind = kind;
  return group;
}

/// 20 processes, most of them tabs.
AppGroup makeBrowser() {
  std::vector<ProcessSample> processes{
      withFigures(makeProcess(2000, "browser"), HelperRole::main, 12.4, 410),
      withFigures(makeProcess(2001, "browser-gpu"), HelperRole::gpu, 31.2, 350)};
  for (int pid = 2002; pid < 2020; ++pid) {
    processes.push_back(withFigures(makeProcess(pid, "browser-tab"), HelperRole::renderer, 1.5,
                                    static_cast<std::uint64_t>(2200 - pid)));
  }
  AppGroup group = ofKind(makeGroup("Web Browser", std::move(processes)), AppGroupKind::app);
  group.helperShares = {{HelperRole::main, 1, 12.4, 410 << 20, 0},
                        {HelperRole::renderer, 18, 27.0, 3420ULL << 20, 0},
                        {HelperRole::gpu, 1, 31.2, 350 << 20, 0}};
  group.energyWatts = 4.2;
  group.networkInBytesPerSec = 1.6e6;
  return group;
}

/// 7 processes, one of which listens.
AppGroup makeEditor() {
  std::vector<ProcessSample> processes{
      withFigures(makeProcess(3000, "editor"), HelperRole::main, 3.1, 280),
      withPorts(
          withFigures(makeProcess(3001, "extension-host"), HelperRole::extensionHost, 6.0, 520),
          {3000, 9229, 50123})};
  for (int pid = 3002; pid < 3007; ++pid) {
    processes.push_back(withFigures(makeProcess(pid, "editor-helper"), HelperRole::other, 0, 60));
  }
  AppGroup group = ofKind(makeGroup("Code Editor", std::move(processes)), AppGroupKind::app);
  group.helperShares = {{HelperRole::main, 1, 3.1, 280 << 20, 0},
                        {HelperRole::extensionHost, 1, 6.0, 520 << 20, 0},
                        {HelperRole::other, 5, 0, 300 << 20, 0}};
  group.energyWatts = 0.8;
  return group;
}

DevProject makeShop() {
  DevProject project;
  project.name = "shop";
  project.path = "/home/dev/projects/shop";
  project.ports = {3000, 5173};
  project.cpuPercent = 8.5;
  project.memoryBytes = 640 << 20;
  for (int pid = 4000; pid < 4008; ++pid) {
    ProcessSample process = withFigures(makeProcess(pid, "node"), HelperRole::main, 1, 80);
    process.arguments = "node /home/dev/projects/shop/node_modules/.bin/vite --port 5173 --host";
    project.processes.push_back(process);
  }
  return project;
}

DevProject makeBlog() {
  DevProject project;
  project.name = "blog";
  project.path = "/home/dev/projects/blog";
  project.memoryBytes = 96 << 20;
  project.processes = {withFigures(makeProcess(4100, "ruby"), HelperRole::main, 0, 96)};
  project.processes[0].arguments = "ruby bin/serve";
  return project;
}

ContainerSample makeDatabase() {
  ContainerSample container;
  container.id = "c1";
  container.name = "shop-db";
  container.image = "postgres:16";
  container.status = "Up 3 hours";
  container.ports = {5432};
  container.cpuPercent = 1.5;
  container.memoryBytes = 128 << 20;
  return container;
}

ContainerSample makeCache() {
  ContainerSample container;
  container.id = "c2";
  container.name = "cache";
  container.image = "redis:7";
  container.engine = "Podman";
  return container;
}

ListeningPortItem makePort(std::uint16_t port, std::int32_t pid, const std::string& processName,
                           const std::string& appName) {
  ListeningPortItem item;
  item.port = port;
  item.pid = pid;
  item.processName = processName;
  item.appName = appName;
  item.memoryBytes = 520 << 20;
  return item;
}

/// The port of a forgotten server of that project.
ListeningPortItem ofProject(ListeningPortItem item, const std::string& name) {
  item.projectName = name;
  item.projectPath = "/home/dev/projects/" + name;
  item.isIdle = true;
  return item;
}

IdleServer makeIdleServer(std::int32_t pid, const std::string& name, const std::string& projectName,
                          std::uint16_t port, double idleSeconds) {
  IdleServer server;
  server.pid = pid;
  server.name = name;
  server.projectName = projectName;
  server.projectPath = "/home/dev/projects/" + projectName;
  server.ports = {port};
  server.memoryBytes = 80 << 20;
  server.startedAt = Instant{static_cast<double>(pid)};
  server.idleSeconds = idleSeconds;
  return server;
}

}  // namespace

EngineSnapshot makeLargeMachine(int round) {
  EngineSnapshot snapshot;
  int pid = 1000;
  for (int number = 0; number < 300; ++number) {
    std::vector<ProcessSample> processes;
    // 4 for each of the first hundred and 3 for all others.
    for (int count = number < 100 ? 4 : 3; count > 0; --count, ++pid) {
      processes.push_back(withFigures(makeProcess(pid, "process" + std::to_string(pid)),
                                      HelperRole::main, (pid * 7 + round * 13) % 90 / 10.0,
                                      static_cast<std::uint64_t>(50 + (pid + round) % 7)));
    }
    AppGroup group = makeGroup("application" + std::to_string(number), std::move(processes));
    snapshot.appGroups.push_back(ofKind(std::move(group), AppGroupKind::app));
  }
  return snapshot;
}

SystemSample makeSampleSystem() {
  constexpr std::uint64_t gigabyte = 1ULL << 30;
  SystemSample system;
  system.cpuPercent = 37.1;
  system.cpuUserPercent = 27;
  system.cpuSystemPercent = 10;
  system.perCoreCPUPercent = {0, 100, 50};
  system.loadAverage1m = 4.82;
  system.memoryTotalBytes = 32 * gigabyte;
  system.memoryUsedBytes = 20 * gigabyte;
  system.memoryAppBytes = 16 * gigabyte;
  system.memoryWiredBytes = 8 * gigabyte;
  system.memoryCompressedBytes = 4 * gigabyte;
  system.memoryPressure = MemoryPressureLevel::warning;
  system.gpuPercent = 21;
  system.gpuMemoryBytes = gigabyte;
  system.neuralEnginePercent = 14;
  system.neuralEngineWatts = 0.6;
  system.neuralEngineHolder = "Video Call";
  system.thermal.hottestCelsius = 90;
  system.thermal.fans = {{0, "Left Fan", 2078, 1000, 5000, true, 2100.0}};
  system.battery.emplace().percentage = 82;
  return system;
}

EngineSnapshot makeSampleMachine() {
  EngineSnapshot snapshot;
  snapshot.system = makeSampleSystem();
  snapshot.volumes = {{"Main", "/", 1000, 400, true, false},
                      {"Backup", "/backup", 1000, 350, false, true}};
  snapshot.sleepBlockers = {{1560, "Video Call", "type", "reason", true}};
  snapshot.bluetoothDevices = {{"Mouse", "pointing", 41, {}, {}, {}}};
  const auto player = [] {
    return makeGroup("Music Player",
                     {withFigures(makeProcess(3500, "player"), HelperRole::main, 0.4, 120)});
  };
  snapshot.appGroups = {
      makeBrowser(), makeEditor(), ofKind(player(), AppGroupKind::app),
      ofKind(makeGroup("ripgrep", {makeProcess(5000, "rg")}), AppGroupKind::other),
      ofKind(makeGroup("logd", {makeProcess(100, "logd")}), AppGroupKind::system)};
  snapshot.projects = {makeShop(), makeBlog()};
  snapshot.containers = {makeDatabase(), makeCache()};
  snapshot.listeningPorts = {
      makePort(3000, 3001, "extension-host", "Code Editor"),
      ofProject(makePort(5173, 4000, "node", "Terminal"), "shop"),
      makePort(50123, 3001, "extension-host", "Code Editor"),
  };
  snapshot.idleServers = {makeIdleServer(4000, "node", "shop", 5173, 2 * 3600 + 900),
                          makeIdleServer(4100, "ruby", "blog", 4000, 3600)};
  return snapshot;
}

}  // namespace korvantis
