#include "pictures/SampleApplications.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <map>
#include <string_view>

#include "core/Instant.h"
#include "core/MachineDefaults.h"

namespace korvantis::pictures {
namespace {

constexpr std::uint64_t megabyte = 1U << 20U;
constexpr std::uint64_t installedMemory = 32ULL << 30U;

/// A helper's role, its load and its memory in MB.
struct Helper {
  HelperRole role;
  const char* name;
  double cpu;
  double megabytes;
};

struct Application {
  const char* name;
  /// The name of its bundle; empty for what has none.
  const char* bundle;
  const char* color;
  AppGroupKind kind;
  double cpu;
  double megabytes;
  double gpu;
  double networkKilobytes;
  std::vector<Helper> helpers;
};

const std::vector<Application>& applications() {
  using enum HelperRole;
  static const std::vector<Application> all{
      {"Web Browser",
       "browser",
       "#2B9CF2",
       AppGroupKind::app,
       18.4,
       612,
       6.2,
       840,
       {{renderer, "Web Content", 14.2, 488},
        {renderer, "Web Content", 6.1, 356},
        {renderer, "Web Content", 1.2, 214},
        {gpu, "GPU Process", 7.9, 402},
        {network, "Network Service", 2.2, 96},
        {extensionHost, "Extension", 0.6, 121}}},
      {"Code Editor",
       "editor",
       "#8A63F5",
       AppGroupKind::app,
       11.6,
       540,
       1.4,
       12,
       {{renderer, "Editor Window", 9.3, 467},
        {extensionHost, "Extension Host", 22.8, 731},
        {gpu, "GPU Process", 2.0, 188},
        {other, "Language Server", 34.5, 902}}},
      {"Image Studio",
       "studio",
       "#EC4899",
       AppGroupKind::app,
       4.3,
       1480,
       12.7,
       0,
       {{gpu, "Canvas", 3.2, 640}}},
      {"Team Chat",
       "chat",
       "#17B26A",
       AppGroupKind::app,
       2.9,
       236,
       0.4,
       44,
       {{renderer, "Chat Window", 3.3, 418}, {gpu, "GPU Process", 0.9, 142}}},
      {"Terminal",
       "terminal",
       "#525662",
       AppGroupKind::app,
       1.8,
       94,
       0.1,
       3,
       {{other, "shell", 0.2, 12}}},
      {"Mail", "mail", "#F5A524", AppGroupKind::app, 0.8, 212, 0, 18, {{network, "Sync", 0.3, 64}}},
      {"Music", "music", "#FA3A55", AppGroupKind::app, 3.1, 188, 0.2, 96, {}},
      {"Notes", "notes", "#F5C524", AppGroupKind::app, 0.2, 96, 0, 1, {}},
      {"Calendar", "calendar", "#FF6C37", AppGroupKind::app, 0.1, 84, 0, 2, {}},
      {"Video Call",
       "call",
       "#20808D",
       AppGroupKind::app,
       26.7,
       488,
       9.8,
       2400,
       {{gpu, "Camera", 6.3, 155}}},
      {"node", "", "", AppGroupKind::other, 9.7, 386, 0, 26, {}},
      {"postgres", "", "", AppGroupKind::other, 1.4, 142, 0, 4, {}},
      {"cargo", "", "", AppGroupKind::other, 64.2, 512, 0, 0, {}},
      {"backup-agent", "", "", AppGroupKind::other, 6.5, 118, 0, 310, {}},
      {"WindowServer", "", "", AppGroupKind::system, 8.8, 344, 14.1, 0, {}},
      {"indexer", "", "", AppGroupKind::system, 3.6, 207, 0, 0, {}},
      {"audio-daemon", "", "", AppGroupKind::system, 1.1, 42, 0, 0, {}},
      {"network-manager", "", "", AppGroupKind::system, 0.2, 31, 0, 5, {}}};
  return all;
}

/// Loads go up and down a little, each in its own time.
double swing(double phase, int seed) {
  return 1 + 0.18 * std::sin(phase * 0.31 + seed) + 0.07 * std::sin(phase * 1.3 + 2.0 * seed);
}

ProcessSample process(const std::string& name, std::int32_t pid, double cpu, double megabytes,
                      HelperRole role) {
  ProcessSample sample;
  sample.pid = pid;
  sample.ppid = 1;
  sample.responsiblePID = pid;
  sample.name = name;
  sample.executablePath = "/usr/bin/" + name;
  sample.arguments = name;
  sample.cpuPercent = cpu;
  sample.memoryBytes = static_cast<std::uint64_t>(megabytes * static_cast<double>(megabyte));
  sample.energyWatts = cpu * 0.035;
  sample.startedAt = Instant{Instant::now().secondsSince1970 - 300.0 * pid};
  sample.helperRole = role;
  return sample;
}

void addShares(AppGroup& group) {
  std::map<HelperRole, HelperShare> shares;
  for (const ProcessSample& sample : group.processes) {
    HelperShare& share = shares[sample.helperRole];
    share.role = sample.helperRole;
    ++share.processCount;
    share.cpuPercent += sample.cpuPercent;
    share.memoryBytes += sample.memoryBytes;
    share.gpuPercent += sample.gpuPercent;
  }
  for (const auto& [role, share] : shares) group.helperShares.push_back(share);
}

AppGroup group(const Application& application, int number, const std::string& folder,
               double phase) {
  AppGroup group;
  group.name = application.name;
  group.kind = application.kind;
  group.id = "daemon:" + group.name;
  if (*application.bundle != '\0') {
    group.bundlePath = folder + "/" + application.bundle + ".app";
    group.id = *group.bundlePath;
  }
  std::int32_t pid = 1200 + 40 * number;
  group.processes.push_back(process(application.name, pid, application.cpu * swing(phase, number),
                                    application.megabytes, HelperRole::main));
  for (const Helper& helper : application.helpers) {
    ++pid;
    group.processes.push_back(
        process(helper.name, pid, helper.cpu * swing(phase, pid), helper.megabytes, helper.role));
  }
  for (const ProcessSample& sample : group.processes) {
    group.cpuPercent += sample.cpuPercent;
    group.memoryBytes += sample.memoryBytes;
    group.energyWatts += sample.energyWatts;
  }
  std::stable_sort(group.processes.begin(), group.processes.end(),
                   [](const ProcessSample& first, const ProcessSample& second) {
                     return first.memoryBytes > second.memoryBytes;
                   });
  group.memoryPercent =
      100.0 * static_cast<double>(group.memoryBytes) / static_cast<double>(installedMemory);
  group.gpuPercent = application.gpu * swing(phase, number + 3);
  group.networkInBytesPerSec = application.networkKilobytes * 1024 * swing(phase, number + 5);
  group.networkOutBytesPerSec = group.networkInBytesPerSec * 0.2;
  group.diskWriteBytesPerSec = 9000.0 * number;
  addShares(group);
  return group;
}

std::string iconOf(const Application& application) {
  return std::string("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 96 96'>") +
         "<rect x='4' y='4' width='88' height='88' rx='22' fill='" + application.color + "'/>" +
         "<circle cx='48' cy='48' r='22' fill='none' stroke='#FFFFFF' stroke-width='9'/>" +
         "<circle cx='64' cy='32' r='9' fill='#FFFFFF'/></svg>";
}

}  // namespace

std::vector<AppGroup> sampleApplications(const std::string& folder, double phase) {
  std::vector<AppGroup> groups;
  int number = 0;
  for (const Application& application : applications()) {
    groups.push_back(group(application, number++, folder, phase));
  }
  return groups;
}

void writeSampleBundles(const std::string& folder) {
  for (const Application& application : applications()) {
    if (*application.bundle == '\0') continue;
    const std::string file = folder + "/" + application.bundle;
    std::ofstream(file + ".svg") << iconOf(application);
    std::ofstream(file + ".desktop")
        << "[Desktop Entry]\nType=Application\nName=" << application.name << "\nIcon=" << file
        << ".svg\n";
  }
}

}  // namespace korvantis::pictures
