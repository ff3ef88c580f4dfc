#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/if_link.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <string>

#include "platform/linux/LinkDump.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <typename Structure>
std::string bytesOf(const Structure& value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string padded(std::string bytes) {
  bytes.resize((bytes.size() + 3) / 4 * 4);
  return bytes;
}

std::string attribute(unsigned short type, const std::string& value) {
  rtattr header{};
  header.rta_len = static_cast<unsigned short>(sizeof header + value.size());
  header.rta_type = type;
  return padded(bytesOf(header) + value);
}

std::string counters(std::uint64_t received, std::uint64_t sent, std::size_t size) {
  rtnl_link_stats64 statistics{};
  statistics.rx_bytes = received;
  statistics.tx_bytes = sent;
  return attribute(IFLA_STATS64, bytesOf(statistics).substr(0, size));
}

std::string message(unsigned short type, unsigned sequence, const std::string& body) {
  nlmsghdr header{};
  header.nlmsg_len = static_cast<unsigned>(sizeof header + body.size());
  header.nlmsg_type = type;
  header.nlmsg_seq = sequence;
  return padded(bytesOf(header) + body);
}

std::string link(const std::string& attributes, unsigned sequence = 7) {
  ifinfomsg header{};
  header.ifi_index = 3;
  header.ifi_flags = 0x1003;
  return message(RTM_NEWLINK, sequence, bytesOf(header) + attributes);
}

std::string wholeLink() {
  return link(attribute(IFLA_IFNAME, std::string("eth0\0", 5)) + attribute(IFLA_ADDRESS, "abcdef") +
              counters(1000, 2000, 192));
}

const LinkCounters expected{"eth0", 3, 0x1003, 1000, 2000};

TEST(MachineLinkDump, ReadsNameFlagsAndCounters) {
  const LinkDumpPart part = parseLinkDump(wholeLink() + wholeLink(), 7);
  EXPECT_THAT(part.links, ElementsAre(expected, expected));
  EXPECT_FALSE(part.isLast);
  EXPECT_FALSE(part.hasFailed);
}

TEST(MachineLinkDump, EndsAtTheDoneMessage) {
  const LinkDumpPart part = parseLinkDump(wholeLink() + message(NLMSG_DONE, 7, "\0\0\0\0"), 7);
  EXPECT_TRUE(part.isLast);
  EXPECT_FALSE(part.hasFailed);
  EXPECT_THAT(part.links, ElementsAre(expected));
}

TEST(MachineLinkDump, FailsOnAnErrorMessage) {
  EXPECT_TRUE(parseLinkDump(message(NLMSG_ERROR, 7, "abcdefgh"), 7).hasFailed);
}

TEST(MachineLinkDump, PassesOverAnswersToOtherRequests) {
  const std::string others = link(attribute(IFLA_IFNAME, "eth0"), 6) + message(NLMSG_DONE, 6, "") +
                             message(NLMSG_ERROR, 6, "");
  const LinkDumpPart part = parseLinkDump(others, 7);
  EXPECT_THAT(part.links, IsEmpty());
  EXPECT_FALSE(part.isLast);
  EXPECT_FALSE(part.hasFailed);
}

TEST(MachineLinkDump, LeavesOutLinksWithoutANameOrCounters) {
  EXPECT_THAT(parseLinkDump(link(counters(1, 1, 192)), 7).links, IsEmpty());
  EXPECT_THAT(parseLinkDump(link(attribute(IFLA_IFNAME, "eth0")), 7).links, IsEmpty());
}

TEST(MachineLinkDump, ShorterCountersOfOlderKernelsDoUpToTheSentBytes) {
  const std::string name = attribute(IFLA_IFNAME, "eth0");
  EXPECT_THAT(parseLinkDump(link(name + counters(1000, 2000, 32)), 7).links, ElementsAre(expected));
  EXPECT_THAT(parseLinkDump(link(name + counters(1000, 2000, 31)), 7).links, IsEmpty());
}

TEST(MachineLinkDump, DamagedAttributesLeaveTheLinkOut) {
  rtattr tooShort{};
  tooShort.rta_len = 3;
  EXPECT_THAT(parseLinkDump(link(bytesOf(tooShort)), 7).links, IsEmpty());
  rtattr tooLong{};
  tooLong.rta_len = 400;
  EXPECT_THAT(parseLinkDump(link(bytesOf(tooLong)), 7).links, IsEmpty());
}

TEST(MachineLinkDump, EveryCutOfAnAnswerIsSafeAndFailsInTheMiddleOfAMessage) {
  const std::string whole = wholeLink();
  for (std::size_t size = 1; size < whole.size(); ++size) {
    // A copy of its own, so that reading beyond it is noticed.
    const std::string cut = whole.substr(0, size);
    EXPECT_TRUE(parseLinkDump(cut, 7).hasFailed) << size;
  }
  EXPECT_FALSE(parseLinkDump("", 7).hasFailed);
}

TEST(MachineLinkDump, MessagesWithImpossibleLengthsFail) {
  nlmsghdr header{};
  header.nlmsg_len = 0;
  EXPECT_TRUE(parseLinkDump(bytesOf(header), 7).hasFailed);
  header.nlmsg_len = 15;
  EXPECT_TRUE(parseLinkDump(bytesOf(header), 7).hasFailed);
  header.nlmsg_len = 0xFFFFFFFF;
  EXPECT_TRUE(parseLinkDump(bytesOf(header), 7).hasFailed);
}

TEST(MachineLinkDump, TheRunningKernelTellsItsLoopback) {
  LinkDump dump;
  for (int round = 0; round < 3; ++round) {
    const auto links = dump.dump();
    ASSERT_TRUE(links.has_value());
    bool hasLoopback = false;
    for (const LinkCounters& one : *links) hasLoopback = hasLoopback || one.name == "lo";
    EXPECT_TRUE(hasLoopback);
  }
}

}  // namespace
}  // namespace korvantis
