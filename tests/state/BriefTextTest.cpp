#include <gtest/gtest.h>
#include <string>

#include "state/BriefText.h"
#include "support/CommaLocale.h"

namespace korvantis {
namespace {

constexpr std::uint64_t gigabyte = 1024ULL * 1024 * 1024;

/// A machine under strain, without a battery.
EngineSnapshot strained() {
  EngineSnapshot snapshot;
  SystemSample& system = snapshot.system;
  system.cpuPercent = 84.2;
  system.memoryUsedBytes = 21 * gigabyte + gigabyte * 4 / 10;
  system.memoryTotalBytes = 36 * gigabyte;
  system.memoryPressure = MemoryPressureLevel::warning;
  system.thermal.cpuCelsius = 93.2;
  system.thermal.systemPowerWatts = 41.8;
  system.battery.reset();
  snapshot.activeStrains = {StrainKind::cpu, StrainKind::temperature};
  snapshot.agentSessions.resize(2);
  snapshot.idleServers.resize(1);
  return snapshot;
}

/// One line of the brief, counted from 1.
std::string line(const EngineSnapshot& snapshot, int number) {
  std::string text = formatBrief(snapshot, "Chip", "Instant Brief") + "\n";
  while (--number > 0) text.erase(0, text.find('\n') + 1);
  return text.substr(0, text.find('\n'));
}

TEST(BriefText, IsTheseFiveLinesByteByByte) {
  EXPECT_EQ(formatBrief(strained(), "Apple M3 Pro", "Strain Alert"),
            "\xF0\x9F\x93\x8A Korvantis Brief \xE2\x80\x94 Apple M3 Pro [Strain Alert]\n"
            "\xE2\x80\xA2 Status: \xE2\x9A\xA0\xEF\xB8\x8F Active Strain (cpu, temperature)\n"
            "\xE2\x80\xA2 Load: CPU 84.2% \xC2\xB7 RAM 21.4/36 GB (Warning)\n"
            "\xE2\x80\xA2 Thermal & Power: 93\xC2\xB0"
            "C \xC2\xB7 41.8W \xC2\xB7 Battery AC\n"
            "\xE2\x80\xA2 Active: 2 AI Agent(s) \xC2\xB7 1 Idle Dev Server(s)");
}

TEST(BriefText, WithoutStrainTheSystemIsNominal) {
  EngineSnapshot snapshot = strained();
  snapshot.activeStrains.clear();

  EXPECT_EQ(line(snapshot, 2), "• Status: System Nominal");
}

TEST(BriefText, StrainsStandInListOrderUnderTheirRawNames) {
  EngineSnapshot snapshot = strained();
  snapshot.activeStrains = {StrainKind::battery,      StrainKind::disk, StrainKind::temperature,
                            StrainKind::neuralEngine, StrainKind::gpu,  StrainKind::memory,
                            StrainKind::cpu};

  EXPECT_EQ(
      line(snapshot, 2),
      "• Status: ⚠️ Active Strain (battery, disk, temperature, neuralEngine, gpu, memory, "
      "cpu)");
}

TEST(BriefText, EveryPressureHasItsLabel) {
  EngineSnapshot snapshot = strained();
  snapshot.system.memoryPressure = MemoryPressureLevel::normal;
  EXPECT_EQ(line(snapshot, 3), "• Load: CPU 84.2% · RAM 21.4/36 GB (Normal)");
  snapshot.system.memoryPressure = MemoryPressureLevel::critical;
  EXPECT_EQ(line(snapshot, 3), "• Load: CPU 84.2% · RAM 21.4/36 GB (Critical)");
}

TEST(BriefText, AMemoryTotalOf0CountsAsOneByte) {
  EngineSnapshot snapshot = strained();
  snapshot.system.memoryTotalBytes = 0;

  EXPECT_EQ(line(snapshot, 3), "• Load: CPU 84.2% · RAM 21.4/0 GB (Warning)");
}

TEST(BriefText, WithoutABatteryTheLineEndsInACWhateverThePowerSource) {
  EXPECT_TRUE(line(strained(), 4).ends_with("Battery AC"));
}

TEST(BriefText, ABatteryShowsItsWholePercent) {
  EngineSnapshot snapshot = strained();
  snapshot.system.battery.emplace().percentage = 81.5;

  EXPECT_EQ(line(snapshot, 4), "• Thermal & Power: 93°C · 41.8W · Battery 82%");
}

TEST(BriefText, FiguresRoundAsPrintfDoesWhateverTheLocale) {
  const test::CommaLocale comma;
  EngineSnapshot snapshot = strained();
  snapshot.system.cpuPercent = 0.25;
  snapshot.system.thermal.cpuCelsius = 92.5;
  snapshot.system.thermal.systemPowerWatts = 7;

  EXPECT_EQ(line(snapshot, 3), "• Load: CPU 0.2% · RAM 21.4/36 GB (Warning)");
  EXPECT_EQ(line(snapshot, 4), "• Thermal & Power: 92°C · 7.0W · Battery AC");
}

}  // namespace
}  // namespace korvantis
