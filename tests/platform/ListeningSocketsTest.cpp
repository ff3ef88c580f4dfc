#include <gmock/gmock.h>
#include <string>

#include "platform/linux/ListeningSockets.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view header =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode                                                     \n";
constexpr std::string_view listening =
    "   0: 0100007F:1F90 00000000:0000 0A 00000000:00000000 00:00000000 00000000   501        0 "
    "4711 1 0000000000000000 100 0 0 10 0                     \n";
constexpr std::string_view established =
    "   1: 0100007F:1F90 0100007F:C350 01 00000000:00000000 00:00000000 00000000   501        0 "
    "4712 1 0000000000000000 100 0 0 10 0                     \n";
constexpr std::string_view listening6 =
    "   0: 00000000000000000000000000000000:0016 00000000000000000000000000000000:0000 0A "
    "00000000:00000000 00:00000000 00000000     0        0 99 1 0000000000000000 100 0 0 10 0\n";

std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

TEST(SocketTable, OnlyListeningSocketsAreTaken) {
  EXPECT_THAT(parseSocketTable(joined({header, listening, established}), false),
              ElementsAre(ListeningSocket{4711, 8080, 501, false}));
}

TEST(SocketTable, Version6LinesAreReadLikewise) {
  EXPECT_THAT(parseSocketTable(joined({header, listening6}), true),
              ElementsAre(ListeningSocket{99, 22, 0, true}));
}

TEST(SocketTable, EveryCutTextGivesWholeSocketsOrNone) {
  const std::string whole = joined({header, listening, listening});
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    for (const auto& socket : parseSocketTable(std::string_view(whole).substr(0, length), false)) {
      EXPECT_EQ(socket, (ListeningSocket{4711, 8080, 501, false})) << length;
    }
  }
}

TEST(SocketTable, DamagedLinesAreLeftOut) {
  const auto line = [](const std::string& local, const std::string& user,
                       const std::string& inode) {
    return "0: " + local + " 0:0 0A 0:0 0:0 0 " + user + " 0 " + inode + " 1\n";
  };
  EXPECT_THAT(parseSocketTable(line("0:50", "1", "5"), false),
              ElementsAre(ListeningSocket{5, 80, 1, false}));
  EXPECT_THAT(
      parseSocketTable(line("0:10000", "1", "5") + line("0:", "1", "5") + line("050", "1", "5") +
                           line("0:xx", "1", "5") + line("0:50", "4294967296", "5") +
                           line("0:50", "x", "5") + line("0:50", "1", "0") +
                           line("0:50", "1", "-1") + "\n\xff\xfe\n" + std::string(3, '\0') + "\n",
                       false),
      IsEmpty());
}

TEST(SocketInode, OnlySocketLinksHaveOne) {
  EXPECT_EQ(socketInode("socket:[4711]"), 4711U);
  for (const char* link : {"", "socket:[", "socket:[]", "socket:[x]", "socket:[1", "pipe:[1]",
                           "/tmp/socket:[1]", "socket:[-1]", "socket:[18446744073709551616]"}) {
    EXPECT_EQ(socketInode(link), std::nullopt) << link;
  }
}

TEST(ListeningSockets, AreFoundByInodeAndByOwner) {
  const ListeningSockets sockets({{1, 80, 0, false}, {2, 443, 501, true}});
  EXPECT_EQ(sockets.find(2), (ListeningSocket{2, 443, 501, true}));
  EXPECT_EQ(sockets.find(3), std::nullopt);
  EXPECT_TRUE(sockets.hasAny(0));
  EXPECT_TRUE(sockets.hasAny(501));
  EXPECT_FALSE(sockets.hasAny(502));
  EXPECT_FALSE(ListeningSockets({}).hasAny(0));
}

}  // namespace
}  // namespace korvantis
