#include <cstring>
#include <gmock/gmock.h>

#include "analysis/ContainerReply.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* header = "HTTP/1.0 200 OK\r\nContent-Type: application/json\r\n\r\n";

/// Chance that fills every byte alike, each time with another one.
RandomCalls countingRandom() {
  return {
      [next = 0xA0](void* buffer, std::size_t size) mutable { std::memset(buffer, next++, size); }};
}

std::optional<std::vector<ContainerSample>> containersIn(const std::string& reply) {
  return containersFromReply(reply, "Docker", countingRandom());
}

/// The one container that a body of this one object gives.
ContainerSample containerIn(const std::string& object) {
  const auto containers = containersIn(std::string(header) + "[" + object + "]");
  if (!containers || containers->size() != 1) {
    ADD_FAILURE() << "no container in " << object;
    return {};
  }
  return containers->front();
}

std::vector<std::uint16_t> portsIn(const std::string& ports) {
  return containerIn("{\"Ports\":" + ports + "}").ports;
}

TEST(ContainerReply, AWholeContainerHasEveryFieldOfItsTable) {
  const auto containers = containersFromReply(
      std::string(header) +
          R"([{"Id":"0123456789abcdef0123","Names":["/shop-web-1","/other"],"Image":"nginx:1.25",)"
          R"("Status":"Up 3 hours","Labels":{"com.docker.compose.project":"shop",)"
          R"("com.docker.compose.service":"web",)"
          R"("com.docker.compose.project.working_dir":"/home/ada/shop","other":"x"},)"
          R"("Ports":[{"IP":"0.0.0.0","PrivatePort":80,"PublicPort":8080,"Type":"tcp"}],)"
          R"("State":"running"}])",
      "OrbStack", countingRandom());
  ContainerSample expected;
  expected.id = "0123456789ab";
  expected.name = "shop-web-1";
  expected.image = "nginx:1.25";
  expected.engine = "OrbStack";
  expected.status = "Up 3 hours";
  expected.composeProject = "shop";
  expected.composeService = "web";
  expected.workingDirectory = "/home/ada/shop";
  expected.ports = {8080};
  expected.cpuPercent = 0.4;
  expected.memoryBytes = 67'108'864;
  ASSERT_TRUE(containers);
  EXPECT_THAT(*containers, ElementsAre(expected));
}

TEST(ContainerReply, AContainerWithNothingInItHasItsDefaults) {
  ContainerSample expected;
  expected.id = "A0A0A0A0-A0A";
  expected.name = "A0A0A0A0-A0A";
  expected.image = "container";
  expected.status = "Up";
  expected.cpuPercent = 0.4;
  expected.memoryBytes = 67'108'864;
  EXPECT_EQ(containerIn("{}"), expected);
}

TEST(ContainerReply, EveryContainerShowsTheSameLoadWhateverTheEngineSays) {
  const ContainerSample container =
      containerIn(R"({"cpuPercent":99,"memoryBytes":1,"networkRxBytesPerSec":5})");
  EXPECT_EQ(container.cpuPercent, 0.4);
  EXPECT_EQ(container.memoryBytes, 67'108'864U);
  EXPECT_EQ(container.networkRxBytesPerSec, 0);
  EXPECT_EQ(container.networkTxBytesPerSec, 0);
  EXPECT_EQ(container.blockReadBytesPerSec, 0);
  EXPECT_EQ(container.blockWriteBytesPerSec, 0);
}

TEST(ContainerReply, TheEnginesOrderIsKept) {
  const auto containers = containersIn(std::string(header) + R"([{"Id":"b"},{"Id":"a"}])");
  ASSERT_THAT(*containers, SizeIs(2));
  EXPECT_EQ(containers->at(0).id, "b");
  EXPECT_EQ(containers->at(1).id, "a");
}

TEST(ContainerReply, AnEmptyListIsAnEngineWithoutContainers) {
  const auto containers = containersIn(std::string(header) + "[]");
  ASSERT_TRUE(containers);
  EXPECT_THAT(*containers, IsEmpty());
}

TEST(ContainerReply, TheIdIsCutToTwelveCharactersNotBytes) {
  EXPECT_EQ(containerIn(R"({"Id":"short"})").id, "short");
  EXPECT_EQ(containerIn(R"({"Id":""})").id, "");
  EXPECT_EQ(containerIn(R"({"Id":"éééééééééééééé"})").id, "éééééééééééé");
}

TEST(ContainerReply, AnIdThatIsNoTextIsReplacedByARandomOneEachTime) {
  const auto containers =
      containersIn(std::string(header) + R"([{"Id":7},{"Id":null},{"Id":["a"]},{}])");
  ASSERT_THAT(*containers, SizeIs(4));
  EXPECT_EQ(containers->at(0).id, "A0A0A0A0-A0A");
  EXPECT_EQ(containers->at(1).id, "A1A1A1A1-A1A");
  EXPECT_EQ(containers->at(2).id, "A2A2A2A2-A2A");
  EXPECT_EQ(containers->at(3).id, "A3A3A3A3-A3A");
}

TEST(ContainerReply, ANameWithALeadingSlashIsGivenWithoutIt) {
  EXPECT_EQ(containerIn(R"({"Names":["/web"]})").name, "web");
  EXPECT_EQ(containerIn(R"({"Names":["//web"]})").name, "/web") << "one slash goes";
  EXPECT_EQ(containerIn(R"({"Names":["web"]})").name, "web");
  EXPECT_EQ(containerIn(R"({"Names":[""]})").name, "");
}

TEST(ContainerReply, AContainerWithNoNamesHasItsIdAsName) {
  for (const char* names : {"[]", "null", "\"web\"", "[1]", "[\"web\",1]", "{\"0\":\"web\"}"}) {
    EXPECT_EQ(containerIn(std::string(R"({"Id":"0123456789abcdef","Names":)") + names + "}").name,
              "0123456789ab")
        << names;
  }
  EXPECT_EQ(containerIn(R"({"Id":"/slashed"})").name, "slashed") << "the id is treated the same";
  EXPECT_EQ(containerIn(R"({"Id":"/slashed"})").id, "/slashed");
}

TEST(ContainerReply, ImageAndStatusThatAreNoTextsHaveTheirStandIns) {
  for (const char* value : {"null", "7", "[]", "{}", "true"}) {
    const ContainerSample container =
        containerIn(std::string("{\"Image\":") + value + ",\"Status\":" + value + "}");
    EXPECT_EQ(container.image, "container") << value;
    EXPECT_EQ(container.status, "Up") << value;
  }
  EXPECT_EQ(containerIn(R"({"Image":"","Status":""})").image, "");
}

TEST(ContainerReply, OneLabelThatIsNoTextRemovesAllLabels) {
  const std::string project = R"("com.docker.compose.project":"shop")";
  EXPECT_EQ(containerIn("{\"Labels\":{" + project + "}}").composeProject, "shop");
  for (const std::string& labels :
       {"{" + project + ",\"n\":1}", "{" + project + ",\"n\":null}", std::string("[\"shop\"]"),
        std::string("null"), std::string("\"shop\"")}) {
    const ContainerSample container = containerIn("{\"Labels\":" + labels + "}");
    EXPECT_FALSE(container.composeProject) << labels;
    EXPECT_FALSE(container.composeService) << labels;
    EXPECT_FALSE(container.workingDirectory) << labels;
  }
}

TEST(ContainerReply, APortPublishedForBothIPv4AndIPv6IsThereOnce) {
  EXPECT_THAT(portsIn(R"([{"IP":"0.0.0.0","PrivatePort":80,"PublicPort":8080,"Type":"tcp"},)"
                      R"({"IP":"::","PrivatePort":80,"PublicPort":8080,"Type":"tcp"}])"),
              ElementsAre(8080));
}

TEST(ContainerReply, APortEntryWithNoPublicPortAddsNothing) {
  EXPECT_THAT(portsIn(R"([{"PrivatePort":5432,"Type":"tcp"},{"PublicPort":1}])"), ElementsAre(1));
}

TEST(ContainerReply, PortsAreSortedAscending) {
  EXPECT_THAT(portsIn(R"([{"PublicPort":9000},{"PublicPort":80},{"PublicPort":443},)"
                      R"({"PublicPort":80}])"),
              ElementsAre(80, 443, 9000));
}

TEST(ContainerReply, PortsOutOfRangeOrOfAnotherTypeArePassedOver) {
  EXPECT_THAT(portsIn(R"([{"PublicPort":0},{"PublicPort":-1},{"PublicPort":65536},)"
                      R"({"PublicPort":65535},{"PublicPort":70000000000},{"PublicPort":1},)"
                      R"({"PublicPort":18446744073709551615},{"PublicPort":1e30}])"),
              ElementsAre(1, 65535));
  EXPECT_THAT(portsIn(R"([{"PublicPort":"80"},{"PublicPort":80.5},{"PublicPort":true},)"
                      R"({"PublicPort":null},{"PublicPort":[80]},{"PublicPort":81.0}])"),
              ElementsAre(81));
}

TEST(ContainerReply, OneEntryOfPortsThatIsNoMapMakesTheListAbsent) {
  EXPECT_THAT(portsIn(R"([{"PublicPort":80},80])"), IsEmpty());
  EXPECT_THAT(portsIn(R"([{"PublicPort":80},null])"), IsEmpty());
  EXPECT_THAT(portsIn(R"({"PublicPort":80})"), IsEmpty());
  EXPECT_THAT(portsIn("null"), IsEmpty());
}

TEST(ContainerReply, AReplyWithoutAHeaderEndYieldsNoListEvenIfItHoldsJSON) {
  EXPECT_FALSE(containersIn("[]"));
  EXPECT_FALSE(containersIn("HTTP/1.0 200 OK\n\n[]"));
  EXPECT_FALSE(containersIn("HTTP/1.0 200 OK\r\n[]"));
  EXPECT_FALSE(containersIn(""));
}

TEST(ContainerReply, StatusLineAndHeadersAreNotLookedAt) {
  EXPECT_TRUE(containersIn("HTTP/1.1 500 Internal Server Error\r\nX: y\r\n\r\n[{}]"));
  EXPECT_TRUE(containersIn("\r\n\r\n[{}]"));
}

TEST(ContainerReply, TheBodyBeginsAtTheFirstHeaderEnd) {
  EXPECT_TRUE(containersIn("A: b\r\n\r\n\r\n\r\n[]")) << "blanks around the body are trimmed";
  EXPECT_FALSE(containersIn("A: b\r\n\r\nC: d\r\n\r\n[]"));
}

TEST(ContainerReply, AChunkedReplyFailsAtTheParser) {
  EXPECT_FALSE(
      containersIn("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                   "2\r\n[]\r\n0\r\n\r\n"));
}

TEST(ContainerReply, AReplyThatIsNoUTF8YieldsNoList) {
  EXPECT_FALSE(containersIn(std::string(header) + "[{\"Id\":\"\xFF\"}]"));
  EXPECT_FALSE(containersIn("HTTP/1.0 200 \xC3\r\n\r\n[]")) << "the header counts too";
}

TEST(ContainerReply, ABodyThatIsNoListOfMapsYieldsNoList) {
  for (const char* body : {"", "   ", "{}", "null", "7", "\"[]\"", "[1]", "[{},1]", "[{},null]",
                           "[[]]", "[{]", "[] []", "[{}", "{\"message\":\"no\"}"}) {
    EXPECT_FALSE(containersIn(std::string(header) + body)) << body;
  }
}

TEST(ContainerReply, BlanksOfAnyScriptAroundTheBodyAreTrimmed) {
  EXPECT_TRUE(containersIn(std::string(header) + " \t\r\n\v\f\u0085\u00A0\u2003\u3000[]\u2028 \n"));
  EXPECT_FALSE(containersIn(std::string(header) + "[\u00A0]"));
}

TEST(ContainerReply, AListThatIsNestedDeeplyIsNoListOfMaps) {
  EXPECT_FALSE(containersIn(header + std::string(200'000, '[') + std::string(200'000, ']')));
  EXPECT_TRUE(containersIn(std::string(header) + "[{\"Ports\":" + std::string(200'000, '[') +
                           std::string(200'000, ']') + "}]"));
}

}  // namespace
}  // namespace korvantis
