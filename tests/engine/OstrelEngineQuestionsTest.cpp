#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/QuitCheck.h"
#include "engine/ScriptedEngine.h"
#include "samplers/AppleSMCReader.h"

namespace korvantis {
namespace {

using test::processNamed;
using test::ScriptedEngine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(OstrelEngineQuitSafety, OfAProcessBeforeTheFirstTickIsJudgedAgainstEmptyLists) {
  ScriptedEngine scripted;
  const QuitSafetyResult verdict{.verdict = QuitSafetyVerdictKind::doNot,
                                 .reason = "Because.",
                                 .freedMemoryBytes = 5,
                                 .freedPorts = {80}};
  int calls = 0;
  scripted.collaborators.evaluateQuitOfProcess = [&](std::int32_t pid, const auto& processes,
                                                     const auto& blockers) {
    ++calls;
    EXPECT_EQ(pid, 7);
    EXPECT_THAT(processes, IsEmpty());
    EXPECT_THAT(blockers, IsEmpty());
    return verdict;
  };

  EXPECT_EQ(scripted.engine().checkQuitSafety(7), verdict);
  EXPECT_EQ(calls, 1);
}

TEST(OstrelEngineQuitSafety, OfAnApplicationIsJudgedWithTheLastTicksSleepBlockers) {
  ScriptedEngine scripted;
  std::vector<SleepBlocker> blockers(2);
  blockers[0].pid = 7;
  scripted.collaborators.sampleSleepBlockers = [&] { return blockers; };
  AppGroup group;
  group.name = "Editor";
  const QuitSafetyResult verdict{.verdict = QuitSafetyVerdictKind::safe,
                                 .reason = "Idle.",
                                 .freedMemoryBytes = 9,
                                 .freedPorts = {}};
  std::vector<std::size_t> seen;
  scripted.collaborators.evaluateQuitOfGroup = [&](const auto& seenGroup, const auto& given) {
    EXPECT_EQ(seenGroup, group);
    seen.push_back(given.size());
    return verdict;
  };

  EXPECT_EQ(scripted.engine().checkQuitSafety(group), verdict);
  scripted.engine().sampleTick({}, {});
  scripted.engine().checkQuitSafety(group);
  blockers.pop_back();
  scripted.engine().sampleTick({}, {});
  scripted.engine().checkQuitSafety(group);

  EXPECT_THAT(seen, ElementsAre(0, 2, 1));
}

TEST(OstrelEngineQuitSafety, OfAProcessIsJudgedWithTheLastTicksLists) {
  ScriptedEngine scripted;
  std::vector<ProcessSample> processes{processNamed(7, "node")};
  scripted.collaborators.sampleProcesses = [&](const auto&) { return processes; };
  scripted.collaborators.sampleSleepBlockers = [] { return std::vector<SleepBlocker>(3); };
  std::vector<std::pair<std::vector<ProcessSample>, std::size_t>> seen;
  scripted.collaborators.evaluateQuitOfProcess = [&](auto, const auto& given,
                                                     const auto& blockers) {
    seen.emplace_back(given, blockers.size());
    return QuitSafetyResult{};
  };

  scripted.engine().sampleTick({}, {});
  scripted.engine().checkQuitSafety(7);
  processes = {processNamed(8, "ruby"), processNamed(9, "java")};
  scripted.engine().sampleTick({}, {});
  scripted.engine().checkQuitSafety(7);

  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0], (std::pair{std::vector{processNamed(7, "node")}, std::size_t{3}}));
  EXPECT_EQ(seen[1], (std::pair{processes, std::size_t{3}}));
}

TEST(OstrelEngineQuitSafety, IsJudgedByTheRulesForQuitting) {
  ScriptedEngine scripted;
  OstrelEngine engine(scripted.platform);
  AppGroup group;
  group.name = "Editor";
  group.memoryBytes = 1U << 30U;

  EXPECT_EQ(engine.checkQuitSafety(group), QuitCheck::evaluate(group, {}));
  EXPECT_EQ(engine.checkQuitSafety(group).verdict, QuitSafetyVerdictKind::safe);
  EXPECT_EQ(engine.checkQuitSafety(7), QuitCheck::evaluate(7, {}, {}));
  EXPECT_EQ(engine.checkQuitSafety(7).reason, "Process 7 is no longer running.");
}

TEST(OstrelEngineHistory, QueriesAndExportAreForwardedUnchanged) {
  ScriptedEngine scripted;
  std::vector<double> since;
  std::vector<Reading> readings(2);
  readings[1].start = 600;
  std::vector<HistoricalAppSummary> summaries(1);
  summaries[0].appID = "com.example.editor";
  const ExportedCSVFiles files{.readingsURL = "/tmp/readings.csv", .appsURL = std::nullopt};
  scripted.collaborators.loadReadings = [&](Instant from) {
    since.push_back(from.secondsSince1970);
    return readings;
  };
  scripted.collaborators.loadAppSummaries = [&](Instant from) {
    since.push_back(from.secondsSince1970);
    return summaries;
  };
  scripted.collaborators.exportCSVToDownloads = [&](Instant from) {
    since.push_back(from.secondsSince1970);
    return std::optional(files);
  };

  EXPECT_EQ(scripted.engine().loadReadings(Instant{1.5}), readings);
  EXPECT_EQ(scripted.engine().loadAppSummaries(Instant{2.5}), summaries);
  EXPECT_EQ(scripted.engine().exportCSVToDownloads(Instant{3.5}), files);
  EXPECT_THAT(since, ElementsAre(1.5, 2.5, 3.5));
}

TEST(OstrelEngineHistory, BeginsWithTheEngine) {
  ScriptedEngine scripted;
  const OstrelEngine engine(scripted.platform);
  const std::string folder = scripted.platform.files.applicationSupportDirectories().front();

  EXPECT_TRUE(std::filesystem::exists(folder + "/Korvantis/history.sqlite"));
}

TEST(OstrelEngineHistory, ATickIsRecordedReadBackAndExported) {
  ScriptedEngine scripted;
  OstrelEngine engine(scripted.platform);
  engine.sampleTick({}, {});

  const std::vector<Reading> readings = engine.loadReadings(Instant{900});
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_EQ(readings[0].start, 900);
  EXPECT_EQ(readings[0].seconds, 2);
  EXPECT_THAT(engine.loadAppSummaries(Instant{0}), SizeIs(5)) << "those of the invented week";

  const auto files = engine.exportCSVToDownloads(Instant{900});
  const std::string downloads = scripted.platform.files.downloadsDirectories().front();
  EXPECT_EQ(files, (ExportedCSVFiles{downloads + "/ostrel-system-readings.csv",
                                     downloads + "/ostrel-app-usage.csv"}));
}

TEST(OstrelEngineHardware, IsForwardedUnchanged) {
  ScriptedEngine scripted;
  HardwareInfo info;
  info.chipName = "A chip";
  scripted.collaborators.readHardwareInfo = [&] { return info; };

  EXPECT_EQ(scripted.engine().readHardwareInfo(), info);
}

TEST(OstrelEngineHardware, HasTheMemoryThatTheSystemStates) {
  ScriptedEngine scripted;
  scripted.physicalMemory = 24ULL << 30U;
  OstrelEngine engine(scripted.platform);

  EXPECT_EQ(engine.readHardwareInfo().totalMemoryBytes, 24ULL << 30U);
}

TEST(OstrelEngineFans, ForwardsFanAndSpeedAndGivesTheAnswer) {
  for (const bool answer : {true, false}) {
    ScriptedEngine scripted;
    std::vector<std::pair<std::int64_t, std::optional<double>>> seen;
    scripted.collaborators.setFanTarget = [&](std::int64_t fanID, std::optional<double> rpm) {
      seen.emplace_back(fanID, rpm);
      return answer;
    };

    EXPECT_EQ(scripted.engine().setFanTarget(1, 2400.0), answer);
    EXPECT_EQ(scripted.engine().setFanTarget(0, std::nullopt), answer);

    EXPECT_THAT(seen, ElementsAre(std::pair{std::int64_t{1}, std::optional{2400.0}},
                                  std::pair{std::int64_t{0}, std::optional<double>{}}));
  }
}

TEST(OstrelEngineFans, AnswersAsTheSharedReaderDoes) {
  ScriptedEngine scripted;
  OstrelEngine engine(scripted.platform);
  constexpr std::int64_t noSuchFan = 99;

  EXPECT_EQ(engine.setFanTarget(noSuchFan, 3000.0),
            AppleSMCReader::shared().setFanTarget(noSuchFan, 3000.0));
  EXPECT_EQ(engine.setFanTarget(noSuchFan, std::nullopt),
            AppleSMCReader::shared().setFanTarget(noSuchFan, std::nullopt));
}

/// A provider that keeps `token` alive for as long as somebody keeps the provider.
BridgeProvider providerHolding(std::shared_ptr<int> token) {
  return [token = std::move(token)](const std::string&, const nlohmann::json&) {
    return nlohmann::ordered_json{{"token", *token}};
  };
}

TEST(OstrelEngineBridge, ASecondStartLeavesTheFirstListenerAndItsProviderInPlace) {
  ScriptedEngine scripted;
  auto first = std::make_shared<int>(1);
  auto second = std::make_shared<int>(2);
  const std::weak_ptr<int> firstProvider = first;
  const std::weak_ptr<int> secondProvider = second;

  scripted.engine().startBridgeListener(providerHolding(std::move(first)));
  EXPECT_FALSE(firstProvider.expired());
  scripted.engine().startBridgeListener(providerHolding(std::move(second)));

  EXPECT_FALSE(firstProvider.expired()) << "the first provider is still the one that answers";
  EXPECT_TRUE(secondProvider.expired()) << "the second provider is dropped";
}

TEST(OstrelEngineShared, IsOneEngine) {
  EXPECT_EQ(&OstrelEngine::shared(), &OstrelEngine::shared());
}

}  // namespace
}  // namespace korvantis
