#include <csignal>
#include <gmock/gmock.h>
#include <limits>
#include <sys/resource.h>

#include "bridge/BridgeCommands.h"
#include "bridge/BridgeMessage.h"
#include "bridge/BridgeSnapshot.h"

namespace korvantis {
namespace {

using test::bridgeSnapshot;
using testing::HasSubstr;
using Json = nlohmann::json;

/// The text of the reply out of a snapshot in which every figure is another one.
std::string replyTo(const std::string& command, const Json& arguments = Json::object(),
                    const EngineSnapshot& snapshot = bridgeSnapshot()) {
  return BridgeCommands::reply(command, arguments, snapshot).text().value_or("no JSON form");
}

/// How many applications "top" tells of out of `count`.
std::size_t shownWith(const Json& arguments, std::size_t count) {
  EngineSnapshot snapshot;
  snapshot.appGroups.resize(count);
  return Json::parse(replyTo("top", arguments, snapshot)).at("apps").size();
}

/// How many applications "top" tells of `count` when it is asked with this value of "limit".
std::size_t shownOf(std::size_t count, const std::string& limit) {
  return shownWith(Json::parse("{\"command\":\"top\",\"limit\":" + limit + "}"), count);
}

TEST(BridgeCommands, SystemStatusTellsElevenFigures) {
  EXPECT_EQ(replyTo("system_status"),
            R"({"cpuPercent":12.5,"memoryUsedBytes":8000000001,"memoryTotalBytes":17179869184,)"
            R"("memoryPressure":"Warning","gpuPercent":3.25,"neuralEnginePercent":1.75,)"
            R"("cpuCelsius":61.5,"powerWatts":9.5,"networkInBytesPerSec":1024.5,)"
            R"("networkOutBytesPerSec":512.25,"activeStrains":["memory","neuralEngine"]})");
}

TEST(BridgeCommands, EachMemoryPressureHasItsLabel) {
  EngineSnapshot snapshot;
  EXPECT_THAT(replyTo("status", {}, snapshot), HasSubstr(R"("memoryPressure":"Normal")"));
  snapshot.system.memoryPressure = MemoryPressureLevel::critical;
  EXPECT_THAT(replyTo("status", {}, snapshot), HasSubstr(R"("memoryPressure":"Critical")"));
  EXPECT_THAT(replyTo("status", {}, snapshot), HasSubstr(R"("activeStrains":[]})"));
}

TEST(BridgeCommands, TopAppsTellsTheGroupsInTheirOwnOrder) {
  EXPECT_EQ(replyTo("top_apps"),
            R"({"apps":[{"id":"/Applications/Editor.app","name":"Editor","cpuPercent":5.5,)"
            R"("memoryBytes":300000000,"energyWatts":0.5,"processCount":3},)"
            R"({"id":"daemon:node","name":"node","cpuPercent":80.5,"memoryBytes":200000000,)"
            R"("energyWatts":2.5,"processCount":1}]})");
}

TEST(BridgeCommands, PortsTellsEachListeningPortAndEmptyTextForNoProject) {
  EXPECT_EQ(replyTo("ports"),
            R"({"ports":[{"port":3000,"pid":41,"processName":"node","appName":"Editor",)"
            R"("projectName":"shop","isIdle":true},{"port":5432,"pid":42,)"
            R"("processName":"postgres","appName":"Db","projectName":"","isIdle":false}]})");
}

TEST(BridgeCommands, ProjectsTellsEachProject) {
  EXPECT_EQ(replyTo("projects"),
            R"({"projects":[{"name":"shop","path":"/home/ada/shop","cpuPercent":7.5,)"
            R"("memoryBytes":123456,"ports":[3000,3001]}]})");
}

TEST(BridgeCommands, IdleServersTellsEachServer) {
  EXPECT_EQ(replyTo("idle_servers"),
            R"({"idleServers":[{"pid":43,"name":"vite","projectName":"site","ports":[5173],)"
            R"("memoryBytes":654321,"idleSeconds":1800.5}]})");
}

TEST(BridgeCommands, AgentsTellsEachSession) {
  EXPECT_EQ(replyTo("agents"),
            R"({"agents":[{"pid":44,"toolName":"Claude Code","state":"Waiting for approval",)"
            R"("projectName":"shop","cpuPercent":2.5,"memoryBytes":777}]})");
}

TEST(BridgeCommands, LimitsTellsEachPlan) {
  EXPECT_EQ(replyTo("limits"),
            R"({"limits":[{"tool":"Tool","planName":"Plan","fiveHourUsedPercent":40.5,)"
            R"("weeklyUsedPercent":20.5,"paceText":"Ahead"}]})");
}

TEST(BridgeCommands, WhatsWrongTellsStrainsIdleServersAndTheBusiestApplication) {
  EXPECT_EQ(
      replyTo("whats_wrong"),
      R"({"activeStrains":["memory","neuralEngine"],"idleServerCount":1,"topCPUApp":"node"})");
}

TEST(BridgeCommands, WhatsWrongWithNoGroupsNamesNone) {
  EXPECT_EQ(replyTo("whats-wrong", {}, {}),
            R"({"activeStrains":[],"idleServerCount":0,"topCPUApp":"None"})");
}

TEST(BridgeCommands, OfApplicationsThatAreEquallyBusyTheEarliestIsTold) {
  EngineSnapshot snapshot;
  snapshot.appGroups = {test::groupNamed("first", 1), test::groupNamed("second", 9),
                        test::groupNamed("third", 9)};
  EXPECT_THAT(replyTo("whats_wrong", {}, snapshot), HasSubstr(R"("topCPUApp":"second")"));
}

TEST(BridgeCommands, AliasesGiveIdenticalReplies) {
  EXPECT_EQ(replyTo("status"), replyTo("system_status"));
  EXPECT_EQ(replyTo("top"), replyTo("top_apps"));
  EXPECT_EQ(replyTo("whats-wrong"), replyTo("whats_wrong"));
}

TEST(BridgeCommands, ListsWithNothingInThemAreEmptyLists) {
  EXPECT_EQ(replyTo("top", {}, {}), R"({"apps":[]})");
  EXPECT_EQ(replyTo("ports", {}, {}), R"({"ports":[]})");
  EXPECT_EQ(replyTo("projects", {}, {}), R"({"projects":[]})");
  EXPECT_EQ(replyTo("idle_servers", {}, {}), R"({"idleServers":[]})");
  EXPECT_EQ(replyTo("agents", {}, {}), R"({"agents":[]})");
  EXPECT_EQ(replyTo("limits", {}, {}), R"({"limits":[]})");
}

TEST(BridgeCommands, AnUnknownCommandIsOkAndTellsItsName) {
  EXPECT_EQ(replyTo("hello"), R"({"ok":true,"command":"hello"})");
  EXPECT_EQ(replyTo(""), R"({"ok":true,"command":""})");
  EXPECT_EQ(replyTo("idle-servers"), R"({"ok":true,"command":"idle-servers"})") << "no alias";
}

TEST(BridgeCommands, StatusWithACapitalLetterIsUnknown) {
  EXPECT_EQ(replyTo("Status"), R"({"ok":true,"command":"Status"})");
}

TEST(BridgeCommands, TopWithALimitAboveTheListTellsAll) {
  EXPECT_EQ(shownOf(2, "3"), 2U);
  EXPECT_EQ(shownOf(2, "9223372036854775807"), 2U);
}

TEST(BridgeCommands, TopWithNoLimitTellsTen) {
  EXPECT_EQ(shownWith(Json::object(), 25), 10U);
  EXPECT_EQ(shownWith(Json::object(), 4), 4U);
}

TEST(BridgeCommands, TopWithALimitTellsAsMany) {
  EXPECT_EQ(shownOf(25, "12"), 12U);
  EXPECT_EQ(shownOf(25, "1"), 1U);
  EXPECT_EQ(shownOf(25, "0"), 0U);
  EXPECT_EQ(shownOf(25, "3.0"), 3U) << "a whole number, however it is written";
}

TEST(BridgeCommands, TopWithALimitOfTwoAndAHalfCountsAsNoLimit) {
  EXPECT_EQ(shownOf(25, "2.5"), 10U);
}

TEST(BridgeCommands, TopWithALimitOfAnotherTypeCountsAsNoLimit) {
  for (const char* limit : {"true", "false", "\"3\"", "null", "[3]", "{\"n\":3}",
                            "9223372036854775808", "-9223372036854775809", "1e300", "-2.5"}) {
    EXPECT_EQ(shownOf(25, limit), 10U) << limit;
  }
}

TEST(BridgeCommands, OtherCommandsTakeNoLimit) {
  EXPECT_EQ(replyTo("ports", {{"limit", 1}}), replyTo("ports"));
  EXPECT_EQ(replyTo("ports", {{"limit", -1}}), replyTo("ports"));
}

TEST(BridgeCommandsDeathTest, ANegativeLimitEndsTheProcess) {
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_CORE, &none);
  for (const char* limit : {"-1", "-1.0", "-9223372036854775808"}) {
    EXPECT_EXIT(shownOf(25, limit), testing::KilledBySignal(SIGABRT), "") << limit;
    EXPECT_EXIT(shownOf(0, limit), testing::KilledBySignal(SIGABRT), "") << limit;
  }
}

TEST(BridgeCommands, EveryRequestTakesOneTickWithoutLimitsAndMutesAt82Degrees) {
  int ticks = 0;
  const BridgeCommands commands([&](const std::vector<AppLimit>& limits,
                                    const std::vector<MutedApp>& mutes, double hotCelsius) {
    ++ticks;
    EXPECT_TRUE(limits.empty());
    EXPECT_TRUE(mutes.empty());
    EXPECT_EQ(hotCelsius, 82.0);
    return bridgeSnapshot();
  });
  int expected = 0;
  for (const char* command :
       {"system_status", "status", "top_apps", "top", "ports", "projects", "idle_servers", "agents",
        "limits", "whats_wrong", "whats-wrong", "unknown", ""}) {
    EXPECT_EQ(commands(command, Json::object()).text(), replyTo(command)) << command;
    EXPECT_EQ(ticks, ++expected) << command;
  }
}

TEST(BridgeCommandsDeathTest, TheTickIsDoneBeforeANegativeLimitIsLookedAt) {
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_CORE, &none);
  const BridgeCommands commands(
      [](const std::vector<AppLimit>&, const std::vector<MutedApp>&, double) {
        static_cast<void>(std::fputs("ticked", stderr));
        return EngineSnapshot();
      });
  EXPECT_EXIT(commands("top", Json{{"limit", -1}}), testing::KilledBySignal(SIGABRT), "ticked");
}

TEST(BridgeCommands, AnInfiniteFigureMakesAReplyThatCanNotBeSent) {
  EngineSnapshot snapshot = bridgeSnapshot();
  snapshot.appGroups[1].energyWatts = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(BridgeCommands::reply("top", Json::object(), snapshot).message());
  EXPECT_TRUE(BridgeCommands::reply("status", Json::object(), snapshot).message());
  snapshot.system.gpuPercent = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(BridgeCommands::reply("status", Json::object(), snapshot).message());
}

TEST(BridgeCommands, NamesThatAreNoUTF8AreRepaired) {
  EngineSnapshot snapshot = bridgeSnapshot();
  snapshot.listeningPorts.resize(1);
  snapshot.listeningPorts[0].processName = "half\xC3";
  EXPECT_THAT(replyTo("ports", {}, snapshot), HasSubstr("\"processName\":\"half\xEF\xBF\xBD\""));
}

TEST(BridgeCommands, EveryReplyIsWhatTheLibraryWouldWriteOfItsValues) {
  EngineSnapshot snapshot = bridgeSnapshot();
  snapshot.system.cpuPercent = 1.0 / 3.0;
  snapshot.system.thermal.systemPowerWatts = 1e21;
  snapshot.system.memoryTotalBytes = std::numeric_limits<std::uint64_t>::max();
  snapshot.appGroups[0].name = "\"quoted\" \\ \n\x01\x7F ünï \xFF\xE2\x82";
  snapshot.listeningPorts[0].processName = std::string("zero\0inside", 11);
  snapshot.listeningPorts[1].pid = -7;
  snapshot.projects[0].ports.clear();
  snapshot.idleServers[0].idleSeconds = 0;
  for (const char* command : {"status", "top", "ports", "projects", "idle_servers", "agents",
                              "limits", "whats_wrong", "say \"hello\"\n"}) {
    const std::string text = replyTo(command, {}, snapshot);
    const auto values = nlohmann::ordered_json::parse(text, nullptr, false);
    ASSERT_TRUE(values.is_object()) << text;
    EXPECT_EQ(values.dump(), text);
  }
}

}  // namespace
}  // namespace korvantis
