#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "core/AgentState.h"
#include "core/AppGroupKind.h"
#include "core/AppLimitFigure.h"
#include "core/HelperRole.h"
#include "core/InsightKind.h"
#include "core/MemoryPressureLevel.h"
#include "core/QuitSafetyVerdictKind.h"
#include "core/StrainKind.h"

namespace korvantis {
namespace {

using testing::ElementsAre;

/// That a case has a raw value, and that the raw value leads back to the case.
template <typename Enumeration, typename Raw>
void expectRow(Enumeration value, Raw raw) {
  EXPECT_EQ(rawValue(value), raw);
  EXPECT_EQ(fromRawValue<Enumeration>(raw), value);
}

TEST(MemoryPressureLevel, RawValuesAreOneTwoAndFour) {
  expectRow(MemoryPressureLevel::normal, 1);
  expectRow(MemoryPressureLevel::warning, 2);
  expectRow(MemoryPressureLevel::critical, 4);
}

TEST(MemoryPressureLevel, RawFourGivesCriticalAndRawThreeNothing) {
  EXPECT_EQ(fromRawValue<MemoryPressureLevel>(4), MemoryPressureLevel::critical);
  for (const int raw : {0, 3, 5, 6, 7, 8, -1, 1000}) {
    EXPECT_FALSE(fromRawValue<MemoryPressureLevel>(raw)) << raw;
  }
}

TEST(MemoryPressureLevel, LabelsAreWords) {
  EXPECT_EQ(label(MemoryPressureLevel::normal), "Normal");
  EXPECT_EQ(label(MemoryPressureLevel::warning), "Warning");
  EXPECT_EQ(label(MemoryPressureLevel::critical), "Critical");
}

TEST(MemoryPressureLevel, CasesAreListedInTableOrder) {
  EXPECT_THAT(allCases<MemoryPressureLevel>(),
              ElementsAre(MemoryPressureLevel::normal, MemoryPressureLevel::warning,
                          MemoryPressureLevel::critical));
}

TEST(HelperRole, RawValuesAreTheLabels) {
  expectRow(HelperRole::main, "Main app");
  expectRow(HelperRole::renderer, "Tabs & windows");
  expectRow(HelperRole::extensionHost, "Extensions");
  expectRow(HelperRole::gpu, "Graphics");
  expectRow(HelperRole::network, "Network");
  expectRow(HelperRole::other, "Other helpers");
  EXPECT_FALSE(fromRawValue<HelperRole>(std::string("main")));
}

TEST(HelperRole, CasesAreListedInTableOrder) {
  EXPECT_THAT(allCases<HelperRole>(),
              ElementsAre(HelperRole::main, HelperRole::renderer, HelperRole::extensionHost,
                          HelperRole::gpu, HelperRole::network, HelperRole::other));
}

TEST(AppGroupKind, RawValuesAreTheCaseNames) {
  expectRow(AppGroupKind::app, "app");
  expectRow(AppGroupKind::system, "system");
  expectRow(AppGroupKind::other, "other");
  EXPECT_FALSE(fromRawValue<AppGroupKind>("App"));
  EXPECT_EQ(allCases<AppGroupKind>().size(), 3U);
}

void expectInsightRow(InsightKind kind, std::string_view raw, std::string_view words,
                      std::string_view icon) {
  expectRow(kind, raw);
  EXPECT_EQ(title(kind), words);
  EXPECT_EQ(iconName(kind), icon);
}

TEST(InsightKind, EachCaseHasItsNameTitleAndIcon) {
  expectInsightRow(InsightKind::sustainedCPU, "sustainedCPU", "Sustained High CPU", "cpu.fill");
  expectInsightRow(InsightKind::memoryGrowth, "memoryGrowth", "Memory Growth", "memorychip.fill");
  expectInsightRow(InsightKind::memoryPressure, "memoryPressure", "Memory Pressure",
                   "gauge.with.dots.needle.100percent");
  expectInsightRow(InsightKind::diskBurst, "diskBurst", "Heavy Disk Write", "internaldrive.fill");
  expectInsightRow(InsightKind::networkBurst, "networkBurst", "Network Spike", "network");
  expectInsightRow(InsightKind::idleServers, "idleServers", "Forgotten Dev Servers", "server.rack");
  expectInsightRow(InsightKind::runningHot, "runningHot", "Running Hot", "flame.fill");
  expectInsightRow(InsightKind::neuralEngineBusy, "neuralEngineBusy", "Neural Engine Active",
                   "brain.head.profile");
  expectInsightRow(InsightKind::appLimit, "appLimit", "App Limit Reached", "bell.badge.fill");
}

TEST(InsightKind, CasesAreListedInTableOrder) {
  EXPECT_THAT(
      allCases<InsightKind>(),
      ElementsAre(InsightKind::sustainedCPU, InsightKind::memoryGrowth, InsightKind::memoryPressure,
                  InsightKind::diskBurst, InsightKind::networkBurst, InsightKind::idleServers,
                  InsightKind::runningHot, InsightKind::neuralEngineBusy, InsightKind::appLimit));
}

TEST(AppLimitFigure, RawValuesAreTheLabels) {
  expectRow(AppLimitFigure::cpuPercent, "CPU %");
  expectRow(AppLimitFigure::memoryMB, "Memory (MB)");
  expectRow(AppLimitFigure::gpuPercent, "GPU %");
  expectRow(AppLimitFigure::energyWatts, "Energy (W)");
}

TEST(AppLimitFigure, CasesAreListedInTableOrder) {
  EXPECT_THAT(allCases<AppLimitFigure>(),
              ElementsAre(AppLimitFigure::cpuPercent, AppLimitFigure::memoryMB,
                          AppLimitFigure::gpuPercent, AppLimitFigure::energyWatts));
}

TEST(StrainKind, RawValuesAreTheCaseNames) {
  expectRow(StrainKind::cpu, "cpu");
  expectRow(StrainKind::memory, "memory");
  expectRow(StrainKind::gpu, "gpu");
  expectRow(StrainKind::neuralEngine, "neuralEngine");
  expectRow(StrainKind::temperature, "temperature");
  expectRow(StrainKind::disk, "disk");
  expectRow(StrainKind::battery, "battery");
}

TEST(StrainKind, CasesAreListedInTableOrder) {
  EXPECT_THAT(
      allCases<StrainKind>(),
      ElementsAre(StrainKind::cpu, StrainKind::memory, StrainKind::gpu, StrainKind::neuralEngine,
                  StrainKind::temperature, StrainKind::disk, StrainKind::battery));
}

TEST(QuitSafetyVerdictKind, EachCaseHasItsRawValueAndBadge) {
  expectRow(QuitSafetyVerdictKind::safe, "safe");
  expectRow(QuitSafetyVerdictKind::askFirst, "ask_first");
  expectRow(QuitSafetyVerdictKind::doNot, "do_not");
  EXPECT_EQ(badgeText(QuitSafetyVerdictKind::safe), "Safe to quit");
  EXPECT_EQ(badgeText(QuitSafetyVerdictKind::askFirst), "Ask first");
  EXPECT_EQ(badgeText(QuitSafetyVerdictKind::doNot), "Don't quit");
  EXPECT_EQ(allCases<QuitSafetyVerdictKind>().size(), 3U);
}

TEST(AgentState, RawValuesAreTheLabels) {
  expectRow(AgentState::working, "Working");
  expectRow(AgentState::waitingForApproval, "Waiting for approval");
  expectRow(AgentState::idle, "Idle");
  EXPECT_EQ(allCases<AgentState>().size(), 3U);
}

}  // namespace
}  // namespace korvantis
