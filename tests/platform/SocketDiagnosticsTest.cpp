#include <arpa/inet.h>
#include <cstring>
#include <gmock/gmock.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>
#include <string>

#include "platform/linux/SocketDiagnostics.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string message(std::uint16_t type, const std::string& payload, std::uint16_t flags = 0) {
  nlmsghdr header{};
  header.nlmsg_len = static_cast<std::uint32_t>(sizeof header + payload.size());
  header.nlmsg_type = type;
  header.nlmsg_flags = flags;
  std::string bytes(sizeof header, '\0');
  std::memcpy(bytes.data(), &header, sizeof header);
  bytes += payload;
  bytes.resize((bytes.size() + 3) / 4 * 4);
  return bytes;
}

std::string socketMessage(std::uint32_t inode, std::uint16_t port, std::uint8_t state = TCP_LISTEN,
                          std::uint8_t family = AF_INET) {
  inet_diag_msg body{};
  body.idiag_family = family;
  body.idiag_state = state;
  body.id.idiag_sport = htons(port);
  body.idiag_uid = 501;
  body.idiag_inode = inode;
  std::string payload(sizeof body, '\0');
  std::memcpy(payload.data(), &body, sizeof body);
  return message(SOCK_DIAG_BY_FAMILY, payload);
}

std::string number(int value) {
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

TEST(SocketDiagnostics, ReadsSocketsOfBothVersionsUpToTheEnd) {
  const auto part =
      parseSocketDiagnostics(socketMessage(1, 80) + socketMessage(2, 8080, TCP_LISTEN, AF_INET6) +
                             message(NLMSG_DONE, number(0)) + socketMessage(3, 90));
  EXPECT_THAT(part.sockets,
              ElementsAre(ListeningSocket{1, 80, 501, false}, ListeningSocket{2, 8080, 501, true}));
  EXPECT_TRUE(part.isLast);
  EXPECT_FALSE(part.hasFailed);
}

TEST(SocketDiagnostics, APieceWithoutAnEndAsksForMore) {
  const auto part = parseSocketDiagnostics(socketMessage(1, 80));
  EXPECT_FALSE(part.isLast);
  EXPECT_FALSE(part.hasFailed);
}

TEST(SocketDiagnostics, SocketsThatDoNotListenOrHaveNoInodeAreLeftOut) {
  const auto part =
      parseSocketDiagnostics(socketMessage(1, 80, TCP_ESTABLISHED) + socketMessage(0, 80));
  EXPECT_THAT(part.sockets, IsEmpty());
  EXPECT_FALSE(part.hasFailed);
}

TEST(SocketDiagnostics, ErrorsOverrunsAndInterruptedDumpsFail) {
  EXPECT_TRUE(parseSocketDiagnostics(message(NLMSG_ERROR, number(-2))).hasFailed);
  EXPECT_TRUE(parseSocketDiagnostics(message(NLMSG_OVERRUN, "")).hasFailed);
  EXPECT_TRUE(parseSocketDiagnostics(message(NLMSG_DONE, number(-4))).hasFailed);
  EXPECT_TRUE(parseSocketDiagnostics(message(NLMSG_DONE, number(0), NLM_F_DUMP_INTR)).hasFailed);
  EXPECT_TRUE(parseSocketDiagnostics(message(999, "")).hasFailed);
}

TEST(SocketDiagnostics, EveryCutPieceFailsOrGivesWholeSockets) {
  const std::string whole = socketMessage(1, 80) + socketMessage(2, 81) + socketMessage(3, 82);
  const std::size_t one = whole.size() / 3;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto part = parseSocketDiagnostics(std::string_view(whole).substr(0, length));
    EXPECT_EQ(part.hasFailed, length % one != 0) << length;
    EXPECT_EQ(part.sockets.size(), length / one) << length;
  }
}

TEST(SocketDiagnostics, LengthsThatLieFail) {
  for (const std::uint32_t length : {0U, 1U, 15U, 17U, 4096U, 0xffffffffU, 0xfffffffdU}) {
    std::string bytes = socketMessage(1, 80);
    std::memcpy(bytes.data(), &length, sizeof length);
    EXPECT_TRUE(parseSocketDiagnostics(bytes).hasFailed) << length;
  }
}

TEST(SocketDiagnostics, TheRunningKernelAnswers) {
  const auto sockets = dumpListeningSockets();
  ASSERT_TRUE(sockets);
  for (const ListeningSocket& socket : *sockets) EXPECT_GT(socket.port, 0);
}

}  // namespace
}  // namespace korvantis
