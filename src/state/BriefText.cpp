#include "state/BriefText.h"

#include <algorithm>
#include <cstdint>

#include "core/FixedDecimals.h"

namespace korvantis {

namespace {

double gigabytes(std::uint64_t bytes) {
  return static_cast<double>(bytes) / (1024.0 * 1024.0 * 1024.0);
}

std::string statusPiece(const std::vector<StrainKind>& strains) {
  if (strains.empty()) return "System Nominal";
  std::string names;
  for (const StrainKind strain : strains) {
    if (!names.empty()) names += ", ";
    names += rawValue(strain);
  }
  return "⚠️ Active Strain (" + names + ")";
}

std::string loadLine(const SystemSample& system) {
  const std::uint64_t totalBytes = std::max<std::uint64_t>(system.memoryTotalBytes, 1);
  return "• Load: CPU " + fixedDecimals(system.cpuPercent, 1) + "% · RAM " +
         fixedDecimals(gigabytes(system.memoryUsedBytes), 1) + "/" +
         fixedDecimals(gigabytes(totalBytes), 0) + " GB (" +
         std::string(label(system.memoryPressure)) + ")";
}

std::string powerLine(const SystemSample& system) {
  const std::string battery =
      system.battery ? fixedDecimals(system.battery->percentage, 0) + "%" : "AC";
  return "• Thermal & Power: " + fixedDecimals(system.thermal.cpuCelsius, 0) + "°C · " +
         fixedDecimals(system.thermal.systemPowerWatts, 1) + "W · Battery " + battery;
}

}  // namespace

std::string formatBrief(const EngineSnapshot& snapshot, const std::string& chipName,
                        const std::string& trigger) {
  return "📊 Korvantis Brief — " + chipName + " [" + trigger + "]\n" +  //
         "• Status: " + statusPiece(snapshot.activeStrains) + "\n" +   //
         loadLine(snapshot.system) + "\n" +                            //
         powerLine(snapshot.system) + "\n" +                           //
         "• Active: " + std::to_string(snapshot.agentSessions.size()) + " AI Agent(s) · " +
         std::to_string(snapshot.idleServers.size()) + " Idle Dev Server(s)";
}

}  // namespace korvantis
