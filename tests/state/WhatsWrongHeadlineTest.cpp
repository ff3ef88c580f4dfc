#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "state/ScriptedMonitor.h"
#include "state/WhatsWrongHeadline.h"

namespace korvantis {
namespace {

using test::appGroup;

constexpr std::uint64_t gigabyte = 1024ULL * 1024 * 1024;
constexpr std::uint64_t megabyte = 1024ULL * 1024;

std::string headline(const EngineSnapshot& snapshot) {
  return whatsWrongHeadline(snapshot, TemperatureUnit::celsius);
}

IdleServer idleServer(std::uint64_t memoryBytes) {
  IdleServer server;
  server.memoryBytes = memoryBytes;
  return server;
}

TEST(WhatsWrongHeadline, StrainsWithoutAppGroupsGiveTheShortForm) {
  EngineSnapshot snapshot;
  snapshot.activeStrains = {StrainKind::cpu, StrainKind::neuralEngine};

  EXPECT_EQ(headline(snapshot), "Active system strain detected on: CPU, NEURALENGINE.");
}

TEST(WhatsWrongHeadline, EveryStrainIsUpperCasedInListOrder) {
  EngineSnapshot snapshot;
  snapshot.activeStrains = {StrainKind::battery,      StrainKind::disk, StrainKind::temperature,
                            StrainKind::neuralEngine, StrainKind::gpu,  StrainKind::memory,
                            StrainKind::cpu};

  EXPECT_EQ(headline(snapshot),
            "Active system strain detected on: BATTERY, DISK, TEMPERATURE, NEURALENGINE, GPU, "
            "MEMORY, CPU.");
}

TEST(WhatsWrongHeadline, AStrainNamesTheBusiestApplication) {
  EngineSnapshot snapshot;
  snapshot.activeStrains = {StrainKind::memory};
  snapshot.appGroups = {appGroup("Mail", 3, megabyte), appGroup("Browser", 182.5, 3 * gigabyte),
                        appGroup("Editor", 20, megabyte)};

  EXPECT_EQ(headline(snapshot),
            "High system strain (MEMORY) — Browser is using 182% CPU (3.0 GB RAM).");
}

TEST(WhatsWrongHeadline, OfEquallyBusyApplicationsTheFirstIsNamed) {
  EngineSnapshot snapshot;
  snapshot.activeStrains = {StrainKind::cpu, StrainKind::gpu};
  snapshot.appGroups = {appGroup("Mail", 3, megabyte), appGroup("Browser", 50, gigabyte),
                        appGroup("Editor", 50, megabyte)};

  EXPECT_EQ(headline(snapshot),
            "High system strain (CPU, GPU) — Browser is using 50% CPU (1.0 GB RAM).");
}

TEST(WhatsWrongHeadline, StrainGoesBeforeIdleServers) {
  EngineSnapshot snapshot;
  snapshot.activeStrains = {StrainKind::disk};
  snapshot.idleServers = {idleServer(gigabyte)};

  EXPECT_EQ(headline(snapshot), "Active system strain detected on: DISK.");
}

TEST(WhatsWrongHeadline, OneIdleServerGivesTheSingular) {
  EngineSnapshot snapshot;
  snapshot.idleServers = {idleServer(2 * gigabyte)};

  EXPECT_EQ(headline(snapshot), "1 forgotten dev server holding 2.0 GB RAM.");
}

TEST(WhatsWrongHeadline, SeveralIdleServersGiveThePluralAndTheSumOfTheirMemory) {
  EngineSnapshot snapshot;
  snapshot.idleServers = {idleServer(gigabyte), idleServer(gigabyte / 2), idleServer(0)};

  EXPECT_EQ(headline(snapshot), "3 forgotten dev servers holding 1.5 GB RAM.");
}

TEST(WhatsWrongHeadline, OtherwiseAllRunsSmoothly) {
  EngineSnapshot snapshot;
  snapshot.system.cpuPercent = 12.5;
  snapshot.system.thermal.cpuCelsius = 51.6;

  EXPECT_EQ(headline(snapshot),
            "Your Mac is running smoothly — CPU 12%, Memory pressure Normal, 52°C.");
}

TEST(WhatsWrongHeadline, SmoothlyNamesTheMemoryPressureAndTheChosenUnit) {
  EngineSnapshot snapshot;
  snapshot.system.cpuPercent = 99.6;
  snapshot.system.thermal.cpuCelsius = 100;
  snapshot.system.memoryPressure = MemoryPressureLevel::warning;
  EXPECT_EQ(whatsWrongHeadline(snapshot, TemperatureUnit::fahrenheit),
            "Your Mac is running smoothly — CPU 100%, Memory pressure Warning, 212°F.");

  snapshot.system.memoryPressure = MemoryPressureLevel::critical;
  EXPECT_EQ(headline(snapshot),
            "Your Mac is running smoothly — CPU 100%, Memory pressure Critical, 100°C.");
}

}  // namespace
}  // namespace korvantis
