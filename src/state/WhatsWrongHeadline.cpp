#include "state/WhatsWrongHeadline.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"

namespace korvantis {

namespace {

std::string upperCased(std::string_view text) {
  std::string result(text);
  for (char& letter : result) {
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  }
  return result;
}

std::string strainLabels(const std::vector<StrainKind>& strains) {
  std::string labels;
  for (const StrainKind strain : strains) {
    if (!labels.empty()) labels += ", ";
    labels += upperCased(rawValue(strain));
  }
  return labels;
}

std::string strainHeadline(const EngineSnapshot& snapshot) {
  const std::string labels = strainLabels(snapshot.activeStrains);
  if (snapshot.appGroups.empty()) return "Active system strain detected on: " + labels + ".";
  // The first of equals: max_element never moves on for an equal one.
  const AppGroup& busiest = *std::max_element(snapshot.appGroups.begin(), snapshot.appGroups.end(),
                                              [](const AppGroup& left, const AppGroup& right) {
                                                return left.cpuPercent < right.cpuPercent;
                                              });
  return "High system strain (" + labels + ") — " + busiest.name + " is using " +
         fixedDecimals(busiest.cpuPercent, 0) + "% CPU (" +
         OstrelFormat::bytes(busiest.memoryBytes) + " RAM).";
}

std::string idleServersHeadline(const std::vector<IdleServer>& servers) {
  std::uint64_t memoryBytes = 0;
  for (const IdleServer& server : servers) memoryBytes += server.memoryBytes;
  return std::to_string(servers.size()) + " forgotten dev server" +
         (servers.size() == 1 ? "" : "s") + " holding " + OstrelFormat::bytes(memoryBytes) +
         " RAM.";
}

}  // namespace

std::string whatsWrongHeadline(const EngineSnapshot& snapshot, TemperatureUnit unit) {
  if (!snapshot.activeStrains.empty()) return strainHeadline(snapshot);
  if (!snapshot.idleServers.empty()) return idleServersHeadline(snapshot.idleServers);
  return "Your Mac is running smoothly — CPU " + fixedDecimals(snapshot.system.cpuPercent, 0) +
         "%, Memory pressure " + std::string(label(snapshot.system.memoryPressure)) + ", " +
         formatTemp(snapshot.system.thermal.cpuCelsius, unit) + ".";
}

}  // namespace korvantis
