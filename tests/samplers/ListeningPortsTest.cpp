#include <gtest/gtest.h>
#include <vector>

#include "samplers/ListeningPorts.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

using test::ProcessOperation;
using test::ScriptedDescriptor;
using test::ScriptedProcess;
using test::ScriptedProcesses;
using Ports = std::vector<std::uint16_t>;

/// What a scan of a process with these descriptors finds.
class ListeningPorts : public testing::Test {
 protected:
  Ports scan(std::vector<ScriptedDescriptor> descriptors) {
    processes.add({.pid = 7, .descriptors = std::move(descriptors)});
    return scanListeningPorts(processes.platform().libProc, 7);
  }
  void TearDown() override { EXPECT_EQ(processes.complaints(), std::vector<std::string>{}); }

  ScriptedProcesses processes;
};

TEST_F(ListeningPorts, PortsAreAscendingAndEachStandsOnce) {
  EXPECT_EQ(scan({{.port = 8080}, {.port = 80}, {.port = 3000}, {.port = 80}}),
            (Ports{80, 3000, 8080}));
}

TEST_F(ListeningPorts, TheTwoBytesOfThePortAreSwapped) {
  EXPECT_EQ(scan({{.port = 0x1234}, {.port = 0x00FF}, {.port = 0xFF00}, {.port = 65535}}),
            (Ports{0x00FF, 0x1234, 0xFF00, 65535}));
}

TEST_F(ListeningPorts, OnlyTheLow16BitsOfThePortFieldCount) {
  EXPECT_EQ(scan({{.port = 3000, .portFieldNoise = 0xFFFF}, {.port = 0, .portFieldNoise = 1}}),
            Ports{3000});
}

TEST_F(ListeningPorts, ATCPSocketThatDoesNotListenAddsNoPort) {
  std::vector<ScriptedDescriptor> descriptors;
  for (const int state : {0, 2, 3, 4, 10, -1}) descriptors.push_back({.port = 80, .state = state});
  EXPECT_EQ(scan(descriptors), Ports{});
}

TEST_F(ListeningPorts, AListeningSocketWithLocalPortZeroAddsNone) {
  EXPECT_EQ(scan({{.port = 0}}), Ports{});
}

TEST_F(ListeningPorts, ASocketThatIsNoTCPAddsNoPort) {
  EXPECT_EQ(scan({{.port = 80, .kind = 1}, {.port = 81, .kind = 3}, {.port = 82, .kind = 0}}),
            Ports{});
}

TEST_F(ListeningPorts, DescriptorsThatAreNoSocketsAreNotAskedAbout) {
  EXPECT_EQ(scan({{.type = PROX_FDTYPE_VNODE, .port = 80}, {.type = 0, .port = 81}}), Ports{});
  EXPECT_EQ(processes.count(ProcessOperation::socket), 0);
}

TEST_F(ListeningPorts, AProcessWithMoreDescriptorsIsLookedAtOnlyInItsFirst128) {
  std::vector<ScriptedDescriptor> descriptors(130, {.type = PROX_FDTYPE_VNODE});
  descriptors[127] = {.port = 127};
  descriptors[128] = {.port = 128};
  EXPECT_EQ(scan(descriptors), Ports{127});
}

TEST_F(ListeningPorts, AResultLargerThanTheBufferIsCutTo128Entries) {
  processes.setReply(ProcessOperation::descriptors, [](int, int) { return 1 << 20; });
  EXPECT_EQ(scan(std::vector<ScriptedDescriptor>(130, {.port = 9})), Ports{9});
  EXPECT_EQ(processes.count(ProcessOperation::socket), 128);
}

TEST_F(ListeningPorts, AnUnfinishedEntryIsNotLookedAt) {
  processes.setReply(ProcessOperation::descriptors, [](int, int) { return 15; });
  EXPECT_EQ(scan({{.port = 80}, {.port = 81}}), Ports{80});
}

TEST_F(ListeningPorts, AResultBelowOneGivesNoPorts) {
  for (const int result : {0, -1}) {
    processes.setReply(ProcessOperation::descriptors, [result](int, int) { return result; });
    EXPECT_EQ(scan({{.port = 80}}), Ports{});
  }
  EXPECT_EQ(processes.count(ProcessOperation::socket), 0);
}

TEST_F(ListeningPorts, ASocketReplyOfAnySizeBut792AddsNoPort) {
  for (const int size : {791, 793, 0, -1}) {
    processes.setReply(ProcessOperation::socket, [size](int, int) { return size; });
    EXPECT_EQ(scan({{.port = 80}}), Ports{}) << size;
  }
}

TEST_F(ListeningPorts, OneUnreadableSocketDoesNotHideTheOthers) {
  int asked = 0;
  processes.setReply(ProcessOperation::socket,
                     [&asked](int, int honest) { return ++asked == 1 ? 0 : honest; });
  EXPECT_EQ(scan({{.port = 80}, {.port = 81}}), Ports{81});
}

}  // namespace
}  // namespace korvantis
