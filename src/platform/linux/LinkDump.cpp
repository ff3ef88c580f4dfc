#include "platform/linux/LinkDump.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <linux/if_link.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <utility>

namespace korvantis {
namespace {

/// The kernel fills at most this much of a longer buffer at once.
constexpr std::size_t bufferBytes = 32768;

/// Copies a structure from the front of `bytes`; absent when they are too few.
template <typename Structure>
std::optional<Structure> structureAt(std::string_view bytes) {
  if (bytes.size() < sizeof(Structure)) return std::nullopt;
  Structure value;  // NOLINT: filled below
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

/// Cuts `length` bytes and the padding behind them off the front.
void dropAligned(std::string_view& bytes, std::size_t length) {
  bytes.remove_prefix(std::min<std::size_t>(NLMSG_ALIGN(length), bytes.size()));
}

void readAttribute(LinkCounters& link, bool& hasCounters, int type, std::string_view value) {
  if (type == IFLA_IFNAME) link.name = value.substr(0, value.find('\0'));
  if (type != IFLA_STATS64) return;
  // Older kernels send a shorter structure; the byte counts are near its front.
  constexpr std::size_t needed = offsetof(rtnl_link_stats64, tx_bytes) + sizeof(std::uint64_t);
  if (value.size() < needed) return;
  std::memcpy(&link.receivedBytes, value.data() + offsetof(rtnl_link_stats64, rx_bytes),
              sizeof link.receivedBytes);
  std::memcpy(&link.sentBytes, value.data() + offsetof(rtnl_link_stats64, tx_bytes),
              sizeof link.sentBytes);
  hasCounters = true;
}

std::optional<LinkCounters> parseLink(std::string_view body) {
  const auto header = structureAt<ifinfomsg>(body);
  if (!header) return std::nullopt;
  dropAligned(body, sizeof(ifinfomsg));
  LinkCounters link;
  link.index = header->ifi_index;
  link.flags = header->ifi_flags;
  bool hasCounters = false;
  while (const auto attribute = structureAt<rtattr>(body)) {
    const std::size_t length = attribute->rta_len;
    if (length < sizeof(rtattr) || length > body.size()) return std::nullopt;
    readAttribute(link, hasCounters, attribute->rta_type,
                  body.substr(sizeof(rtattr), length - sizeof(rtattr)));
    dropAligned(body, length);
  }
  return hasCounters && !link.name.empty() ? std::optional(link) : std::nullopt;
}

}  // namespace

LinkDumpPart parseLinkDump(std::string_view bytes, unsigned sequence) {
  LinkDumpPart part;
  while (!bytes.empty()) {
    const auto header = structureAt<nlmsghdr>(bytes);
    if (!header || header->nlmsg_len < sizeof(nlmsghdr) || header->nlmsg_len > bytes.size()) {
      part.hasFailed = true;
      return part;
    }
    const auto body = bytes.substr(sizeof(nlmsghdr), header->nlmsg_len - sizeof(nlmsghdr));
    dropAligned(bytes, header->nlmsg_len);
    if (header->nlmsg_seq != sequence) continue;
    part.hasFailed = part.hasFailed || header->nlmsg_type == NLMSG_ERROR;
    part.isLast = part.isLast || header->nlmsg_type == NLMSG_DONE;
    if (header->nlmsg_type != RTM_NEWLINK) continue;
    if (auto link = parseLink(body)) part.links.push_back(std::move(*link));
  }
  return part;
}

std::optional<std::vector<LinkCounters>> LinkDump::dump() {
  const std::scoped_lock guard(lock);
  if (!socket && !openSocket()) return std::nullopt;
  auto links = sendRequest() ? receiveAnswer() : std::nullopt;
  // What is left of a failed answer must not meet the next question.
  if (!links) socket = FileDescriptor();
  return links;
}

bool LinkDump::openSocket() {
  socket = FileDescriptor(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
  if (!socket) return false;
  // The kernel answers at once; the limit is for one that never does.
  const timeval limit{.tv_sec = 1, .tv_usec = 0};
  ::setsockopt(socket.number(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  buffer.resize(bufferBytes);
  return true;
}

bool LinkDump::sendRequest() {
  struct Request {
    nlmsghdr header;
    ifinfomsg body;
  };
  Request request{};
  request.header.nlmsg_len = sizeof request;
  request.header.nlmsg_type = RTM_GETLINK;
  request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
  request.header.nlmsg_seq = ++sequence;
  request.body.ifi_family = AF_UNSPEC;
  return ::send(socket.number(), &request, sizeof request, 0) == sizeof request;
}

std::optional<std::vector<LinkCounters>> LinkDump::receiveAnswer() {
  std::vector<LinkCounters> links;
  while (true) {
    const ssize_t got = ::recv(socket.number(), buffer.data(), buffer.size(), MSG_TRUNC);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0 || static_cast<std::size_t>(got) > buffer.size()) return std::nullopt;
    const std::string_view bytes(buffer.data(), static_cast<std::size_t>(got));
    LinkDumpPart part = parseLinkDump(bytes, sequence);
    if (part.hasFailed) return std::nullopt;
    links.insert(links.end(), part.links.begin(), part.links.end());
    if (part.isLast) return links;
  }
}

}  // namespace korvantis
