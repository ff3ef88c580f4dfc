#include <gtest/gtest.h>
#include <vector>

#include "samplers/InterfaceCounters.h"
#include "samplers/MachineScript.h"

namespace korvantis {
namespace {

using test::interfaceList;
using test::interfaceMessage;
using Counters = InterfaceCounters;

constexpr int up = 0x1;
constexpr int loopback = 0x8;

Counters sumOf(const std::vector<if_msghdr2>& messages) {
  return sumInterfaceCounters(interfaceList(messages));
}

/// The list of one interface, cut to `size` bytes or continued with zeros.
std::vector<std::byte> resized(std::size_t size) {
  std::vector<std::byte> bytes = interfaceList({interfaceMessage(up, 7, 9)});
  bytes.resize(size);
  return bytes;
}

TEST(MachineInterfaceCounters, SumsAllInterfacesThatAreUp) {
  EXPECT_EQ(sumOf({interfaceMessage(up, 100, 10), interfaceMessage(up, 200, 20)}),
            (Counters{300, 30}));
}

TEST(MachineInterfaceCounters, LeavesOutLoopbackAndInterfacesThatAreDown) {
  EXPECT_EQ(sumOf({interfaceMessage(up | loopback, 1, 1), interfaceMessage(loopback, 2, 2),
                   interfaceMessage(0, 4, 4), interfaceMessage(up, 8, 16)}),
            (Counters{8, 16}));
}

TEST(MachineInterfaceCounters, LooksAtNoOtherFlags) {
  EXPECT_EQ(sumOf({interfaceMessage(~loopback, 8, 16)}), (Counters{8, 16}));
  EXPECT_EQ(sumOf({interfaceMessage(~up, 8, 16)}), Counters{});
}

TEST(MachineInterfaceCounters, CountersLieWhereTheMessageHasThem) {
  std::vector<std::byte> bytes(160);
  bytes[0] = std::byte{160};
  bytes[3] = std::byte{18};
  bytes[8] = std::byte{1};
  bytes[96 + 4] = std::byte{1};
  bytes[104 + 7] = std::byte{2};
  EXPECT_EQ(sumInterfaceCounters(bytes),
            (Counters{std::uint64_t{1} << 32, std::uint64_t{2} << 56}));
}

TEST(MachineInterfaceCounters, PassesOverMessagesOfAnotherType) {
  if_msghdr2 address = interfaceMessage(up, 1000, 1000);
  address.ifm_type = 12;
  EXPECT_EQ(sumOf({address, interfaceMessage(up, 1, 2)}), (Counters{1, 2}));
}

TEST(MachineInterfaceCounters, StopsAtAMessageWithoutALength) {
  if_msghdr2 endless = interfaceMessage(up, 1000, 1000);
  endless.ifm_msglen = 0;
  EXPECT_EQ(sumOf({interfaceMessage(up, 1, 2), endless, interfaceMessage(up, 4, 4)}),
            (Counters{1, 2}));
}

TEST(MachineInterfaceCounters, AdvancesByTheLengthOfEachMessage) {
  // A shorter message of another type between two interfaces.
  std::vector<std::byte> bytes = interfaceList({interfaceMessage(up, 1, 2)});
  std::vector<std::byte> shorter(112);
  shorter[0] = std::byte{112};
  shorter[3] = std::byte{14};
  bytes.insert(bytes.end(), shorter.begin(), shorter.end());
  const auto last = interfaceList({interfaceMessage(up, 4, 8)});
  bytes.insert(bytes.end(), last.begin(), last.end());
  EXPECT_EQ(sumInterfaceCounters(bytes), (Counters{5, 10}));
}

TEST(MachineInterfaceCounters, StopsWhenFewerThan112BytesRemain) {
  EXPECT_EQ(sumInterfaceCounters(resized(111)), Counters{});
  EXPECT_EQ(sumInterfaceCounters({}), Counters{});
  // 112 remain: the message is walked over, and being too short it adds nothing.
  EXPECT_EQ(sumInterfaceCounters(resized(112)), Counters{});
}

TEST(MachineInterfaceCounters, WalksOnOverAShortHeaderOf112Bytes) {
  // The first message claims 112 bytes and is of the right type: all 160 are there, so it counts,
  // and the next begins inside it.
  std::vector<std::byte> bytes = resized(160);
  bytes[0] = std::byte{112};
  EXPECT_EQ(sumInterfaceCounters(bytes), (Counters{7, 9}));
}

TEST(MachineInterfaceCounters, PassesOverAMessageWith159BytesLeft) {
  EXPECT_EQ(sumInterfaceCounters(resized(159)), Counters{});
  EXPECT_EQ(sumInterfaceCounters(resized(160)), (Counters{7, 9}));
}

TEST(MachineInterfaceCounters, EndsWhereAMessageClaimsMoreThanIsThere) {
  if_msghdr2 tooLong = interfaceMessage(up, 1, 2);
  tooLong.ifm_msglen = 60000;
  EXPECT_EQ(sumOf({tooLong, interfaceMessage(up, 4, 4)}), (Counters{1, 2}));
}

TEST(MachineInterfaceCounters, EveryCutOfAListIsSafe) {
  const std::vector<std::byte> whole =
      interfaceList({interfaceMessage(up, 1, 1), interfaceMessage(up, 2, 2)});
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    const std::vector<std::byte> cut(whole.begin(),
                                     whole.begin() + static_cast<std::ptrdiff_t>(size));
    const std::uint64_t expected = size < 160 ? 0 : size < 320 ? 1 : 3;
    EXPECT_EQ(sumInterfaceCounters(cut).inBytes, expected) << size;
  }
}

}  // namespace
}  // namespace korvantis
