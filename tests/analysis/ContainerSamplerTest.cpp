#include <atomic>
#include <cstring>
#include <gmock/gmock.h>
#include <thread>

#include "analysis/ContainerSampler.h"
#include "support/ScriptedSockets.h"

namespace korvantis {
namespace {

using test::ScriptedSockets;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string header = "HTTP/1.0 200 OK\r\n\r\n";
const std::string orbStack = "/home/ada/.orbstack/run/docker.sock";
const std::string dockerDesktop = "/home/ada/.docker/run/docker.sock";
const std::string colima = "/home/ada/.colima/default/docker.sock";
const std::string docker = "/var/run/docker.sock";

std::string listOf(const std::string& id) {
  return header + "[{\"Id\":\"" + id + "\"}]";
}

/// A sampler over engines that a script answers for.
class ContainerSamplerTest : public testing::Test {
 protected:
  double now = 1000;
  std::string home = "/home/ada";
  /// The socket files that are there, with what is heard when one asks at each of them.
  std::map<std::string, std::deque<std::string>> replies;
  /// Those at which nobody listens.
  std::set<std::string> deaf;
  ScriptedSockets sockets;
  std::vector<std::string> existenceTests;
  int homeQuestions = 0;
  ContainerSampler sampler{calls()};

  PlatformCalls calls() {
    PlatformCalls calls;
    calls.clock.now = [this] { return now; };
    calls.random = systemRandomCalls();
    calls.files.homeDirectoryForCurrentUser = [this] {
      ++homeQuestions;
      return home;
    };
    calls.files.fileExistsAtPath = [this](const std::string& path) {
      existenceTests.push_back(path);
      return replies.contains(path) || deaf.contains(path);
    };
    calls.sockets = sockets.calls();
    calls.sockets.connect = [this, connect = calls.sockets.connect](
                                int descriptor, const DarwinSocketAddress* address,
                                std::uint32_t length) {
      const std::string path = &address->sun_path[0];
      sockets.pieces[descriptor] = replies[path];
      return connect(descriptor, address, length) == 0 && !deaf.contains(path) ? 0 : -1;
    };
    return calls;
  }

  std::vector<std::string> ids() {
    std::vector<std::string> ids;
    for (const ContainerSample& container : sampler.sampleContainers()) ids.push_back(container.id);
    return ids;
  }
};

TEST_F(ContainerSamplerTest, AsksAnEngineInTheseSteps) {
  replies[docker] = {listOf("a")};
  EXPECT_THAT(ids(), ElementsAre("a"));
  // 65535 is the level, 4102 and 4101 the time limits to receive and to send.
  EXPECT_THAT(sockets.log,
              ElementsAre("socket 1 1 0", "setsockopt 3 65535 4102 0 350000",
                          "setsockopt 3 65535 4101 0 350000", "connect 3 " + docker + " 106",
                          "write 3", "read 3", "read 3", "close 3"));
  EXPECT_EQ(sockets.written[3],
            "GET /containers/json HTTP/1.0\r\nHost: localhost\r\nConnection: close\r\n\r\n");
  EXPECT_EQ(sockets.written[3].size(), 69U);
  EXPECT_THAT(sockets.readSizes, ElementsAre(8192U));
  EXPECT_THAT(sockets.complaints, IsEmpty());
}

TEST_F(ContainerSamplerTest, ProbesTheFourPlacesInTheirOrder) {
  EXPECT_THAT(ids(), IsEmpty());
  EXPECT_THAT(existenceTests, ElementsAre(orbStack, dockerDesktop, colima, docker));
  EXPECT_THAT(sockets.log, IsEmpty()) << "no socket for what is not there";
}

TEST_F(ContainerSamplerTest, EachPlaceHasItsEngine) {
  for (const auto& [path, engine] :
       std::map<std::string, std::string>{{orbStack, "OrbStack"},
                                          {dockerDesktop, "Docker Desktop"},
                                          {colima, "Colima"},
                                          {docker, "Docker"}}) {
    replies = {{path, {listOf("a")}}};
    now += 5;
    const auto containers = sampler.sampleContainers();
    ASSERT_THAT(containers, SizeIs(1)) << path;
    EXPECT_EQ(containers[0].engine, engine);
  }
}

TEST_F(ContainerSamplerTest, TheFirstEngineWithContainersIsTheOneShown) {
  replies = {{dockerDesktop, {listOf("first")}}, {docker, {listOf("second")}}};
  EXPECT_THAT(ids(), ElementsAre("first"));
  EXPECT_THAT(existenceTests, ElementsAre(orbStack, dockerDesktop)) << "probing stops there";
}

TEST_F(ContainerSamplerTest, AnEngineWithoutContainersGivesWayToTheNext) {
  replies = {{orbStack, {header + "[]"}}, {colima, {listOf("second")}}};
  EXPECT_THAT(ids(), ElementsAre("second"));
}

TEST_F(ContainerSamplerTest, AnEngineThatCanNotBeReadGivesWayToTheNext) {
  for (const std::string& broken : {header + "{}", std::string("[]"), std::string(),
                                    header + "[{\"Id\":\"\xFF\"}]", header + "[1]"}) {
    replies = {{orbStack, {broken}}, {docker, {listOf("next")}}};
    if (broken.empty()) replies[orbStack].clear();
    now += 5;
    EXPECT_THAT(ids(), ElementsAre("next")) << broken;
  }
  EXPECT_EQ(std::ranges::count(sockets.log, "close 3"), std::ranges::count(sockets.log, "write 3"))
      << "every socket is closed";
}

TEST_F(ContainerSamplerTest, APathAtWhichNobodyListensGivesWayToTheNext) {
  deaf = {orbStack};
  replies = {{dockerDesktop, {listOf("next")}}};
  EXPECT_THAT(ids(), ElementsAre("next"));
  EXPECT_EQ(std::ranges::count(sockets.log, "close 3"), 2);
}

TEST_F(ContainerSamplerTest, EveryFailedStepIsAnEngineThatCanNotBeRead) {
  replies = {{orbStack, {listOf("a")}}};
  for (const char* step : {"socket", "connect", "write", "read"}) {
    sockets.failing = {step};
    sockets.log.clear();
    now += 5;
    EXPECT_THAT(ids(), IsEmpty()) << step;
    EXPECT_EQ(sockets.log.back(), step == std::string("socket") ? "socket 1 1 0" : "close 3");
  }
  sockets.failing = {"setsockopt"};
  now += 5;
  EXPECT_THAT(ids(), ElementsAre("a")) << "but time limits are not needed";
}

TEST_F(ContainerSamplerTest, AWriteOfNoByteFailsAndAShortOneIsNotContinued) {
  replies = {{orbStack, {listOf("a")}}};
  sockets.writeResult = 0;
  EXPECT_THAT(ids(), IsEmpty());
  sockets.writeResult = 1;
  sockets.log.clear();
  now += 5;
  EXPECT_THAT(ids(), ElementsAre("a"));
  EXPECT_EQ(std::ranges::count(sockets.log, "write 3"), 1);
}

TEST_F(ContainerSamplerTest, ASocketPathOf104BytesIsNotConnectedTo) {
  home = "/" + std::string(103 - std::strlen("/.orbstack/run/docker.sock") - 1, 'h');
  replies = {{home + "/.orbstack/run/docker.sock", {listOf("fits")}}};
  ASSERT_EQ(replies.begin()->first.size(), 103U);
  EXPECT_THAT(ids(), ElementsAre("fits"));
  home += "h";
  replies = {{home + "/.orbstack/run/docker.sock", {listOf("too long")}},
             {docker, {listOf("next")}}};
  sockets.log.clear();
  now += 5;
  EXPECT_THAT(ids(), ElementsAre("next"));
  EXPECT_EQ(sockets.log[3], "close 3");
}

TEST_F(ContainerSamplerTest, TwoCallsWithinFiveSecondsTouchNothing) {
  replies = {{docker, {listOf("a")}}};
  EXPECT_THAT(ids(), ElementsAre("a"));
  sockets.log.clear();
  existenceTests.clear();
  homeQuestions = 0;
  replies = {{docker, {listOf("b")}}};
  for (const double later : {1000.0, 1002.0, 1004.999}) {
    now = later;
    EXPECT_THAT(ids(), ElementsAre("a"));
  }
  EXPECT_THAT(sockets.log, IsEmpty());
  EXPECT_THAT(existenceTests, IsEmpty());
  EXPECT_EQ(homeQuestions, 0);
}

TEST_F(ContainerSamplerTest, ACallAtExactlyFiveSecondsPolls) {
  replies = {{docker, {listOf("a")}}};
  EXPECT_THAT(ids(), ElementsAre("a"));
  replies = {{docker, {listOf("b")}}};
  now = 1005;
  EXPECT_THAT(ids(), ElementsAre("b"));
}

TEST_F(ContainerSamplerTest, AClockBelowFiveSecondsDoesNotPoll) {
  replies = {{docker, {listOf("a")}}};
  now = 4.9;
  EXPECT_THAT(ids(), IsEmpty());
  now = 5;
  EXPECT_THAT(ids(), ElementsAre("a"));
}

TEST_F(ContainerSamplerTest, AFailedPollReplacesAGoodListAndIsNotRepeatedWithinFiveSeconds) {
  replies = {{docker, {listOf("a")}}};
  EXPECT_THAT(ids(), ElementsAre("a"));
  replies = {{docker, {"no header"}}};
  now = 1005;
  EXPECT_THAT(ids(), IsEmpty());
  replies = {{docker, {listOf("a")}}};
  now = 1009.9;
  EXPECT_THAT(ids(), IsEmpty());
  now = 1010;
  EXPECT_THAT(ids(), ElementsAre("a"));
}

TEST_F(ContainerSamplerTest, TheHomeFolderIsAskedForAtEachPoll) {
  EXPECT_THAT(ids(), IsEmpty());
  home = "/home/bob";
  replies = {{"/home/bob/.docker/run/docker.sock", {listOf("b")}}};
  now += 5;
  EXPECT_THAT(ids(), ElementsAre("b"));
  EXPECT_EQ(homeQuestions, 2);
}

TEST_F(ContainerSamplerTest, AReplyInPiecesIsPutTogether) {
  replies = {{docker, {"HTTP/1.0 200", " OK\r\n\r", "\n[{\"Id\":\"a\xC3", "\xA9\"}", "]\n"}}};
  EXPECT_THAT(ids(), ElementsAre("aé"));
}

TEST_F(ContainerSamplerTest, AReplyOfOver512KiBIsCutAndFails) {
  const std::string padding(600'000, ' ');
  replies = {{orbStack, {header + "[{\"Id\":\"a\"}" + padding + "]"}}, {docker, {listOf("next")}}};
  EXPECT_THAT(ids(), ElementsAre("next"));
  // 64 reads give 524288 bytes, which is not past the limit yet.
  EXPECT_EQ(std::ranges::count(sockets.log, "read 3"), 65 + 2);
}

TEST_F(ContainerSamplerTest, AReplyOf512KiBIsReadWhole) {
  std::string reply = header + "[{\"Id\":\"a\"}";
  reply.append(524'288 - reply.size() - 1, ' ').append("]");
  replies = {{docker, {reply}}};
  EXPECT_THAT(ids(), ElementsAre("a"));
}

TEST_F(ContainerSamplerTest, AContainerWithNoIdGetsANewOneInEveryPoll) {
  replies = {{docker, {header + "[{}]"}}};
  const auto first = ids();
  now += 5;
  const auto second = ids();
  ASSERT_THAT(first, SizeIs(1));
  EXPECT_EQ(first[0].size(), 12U);
  EXPECT_NE(first, second);
  now += 4;
  EXPECT_EQ(ids(), second) << "between two polls it stays";
}

TEST(ContainerSamplerConcurrent, ASecondCallerDuringAPollGetsTheOldListAtOnce) {
  std::atomic<double> now = 1000;
  std::atomic<bool> isPolling = false;
  std::atomic<bool> isReleased = false;
  std::atomic<int> polls = 0;
  PlatformCalls calls;
  calls.clock.now = [&] { return now.load(); };
  calls.files.homeDirectoryForCurrentUser = [] { return std::string("/home/ada"); };
  calls.files.fileExistsAtPath = [&](const std::string& path) {
    if (path != orbStack) return false;
    ++polls;
    isPolling = true;
    isPolling.notify_all();
    isReleased.wait(false);
    return false;
  };
  ContainerSampler sampler(calls);
  std::thread poller([&] { sampler.sampleContainers(); });
  isPolling.wait(false);
  // The other poll hangs; it would hang this one too if a lock were held.
  EXPECT_THAT(sampler.sampleContainers(), IsEmpty());
  now = 1004;
  EXPECT_THAT(sampler.sampleContainers(), IsEmpty());
  EXPECT_EQ(polls, 1);
  isReleased = true;
  isReleased.notify_all();
  poller.join();
}

}  // namespace
}  // namespace korvantis
