#include "platform/linux/SocketDiagnostics.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/socket.h>
#include <sys/time.h>

#include "platform/linux/FileDescriptor.h"

namespace korvantis {
namespace {

constexpr std::size_t bufferSize = 65536;

struct Request {
  nlmsghdr header;
  inet_diag_req_v2 body;
};

template <typename Record>
Record recordAt(std::string_view bytes) {
  Record record;
  std::memcpy(&record, bytes.data(), sizeof record);
  return record;
}

void readSocket(std::string_view payload, SocketDiagnosticsPart& part) {
  if (payload.size() < sizeof(inet_diag_msg)) {
    part.hasFailed = true;
    return;
  }
  const auto message = recordAt<inet_diag_msg>(payload);
  if (message.idiag_state != TCP_LISTEN || message.idiag_inode == 0) return;
  part.sockets.push_back({message.idiag_inode, ntohs(message.id.idiag_sport), message.idiag_uid,
                          message.idiag_family == AF_INET6});
}

/// The end of the answer carries an error of its own, below 0, when the kernel gave up midway.
void readEnd(std::string_view payload, SocketDiagnosticsPart& part) {
  part.isLast = true;
  if (payload.size() >= sizeof(int) && recordAt<int>(payload) < 0) part.hasFailed = true;
}

void readMessage(const nlmsghdr& header, std::string_view payload, SocketDiagnosticsPart& part) {
  if ((header.nlmsg_flags & NLM_F_DUMP_INTR) != 0) part.hasFailed = true;
  switch (header.nlmsg_type) {
    case NLMSG_DONE: readEnd(payload, part); break;
    case NLMSG_NOOP: break;
    case SOCK_DIAG_BY_FAMILY: readSocket(payload, part); break;
    default: part.hasFailed = true; break;
  }
}

bool sendRequest(const FileDescriptor& channel, int family) {
  Request request{};
  request.header.nlmsg_len = sizeof request;
  request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
  request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
  request.body.sdiag_family = static_cast<__u8>(family);
  request.body.sdiag_protocol = IPPROTO_TCP;
  request.body.idiag_states = 1U << TCP_LISTEN;
  sockaddr_nl kernel{};
  kernel.nl_family = AF_NETLINK;
  const ssize_t sent = ::sendto(channel.number(), &request, sizeof request, 0,
                                reinterpret_cast<const sockaddr*>(&kernel), sizeof kernel);
  return sent == static_cast<ssize_t>(sizeof request);
}

bool receiveAnswer(const FileDescriptor& channel, std::vector<ListeningSocket>& sockets) {
  std::string buffer(bufferSize, '\0');
  for (;;) {
    const ssize_t got = ::recv(channel.number(), buffer.data(), buffer.size(), MSG_TRUNC);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0 || static_cast<std::size_t>(got) > buffer.size()) return false;
    const auto part =
        parseSocketDiagnostics(std::string_view(buffer).substr(0, static_cast<std::size_t>(got)));
    if (part.hasFailed) return false;
    sockets.insert(sockets.end(), part.sockets.begin(), part.sockets.end());
    if (part.isLast) return true;
  }
}

}  // namespace

SocketDiagnosticsPart parseSocketDiagnostics(std::string_view bytes) {
  SocketDiagnosticsPart part;
  while (!bytes.empty() && !part.isLast && !part.hasFailed) {
    if (bytes.size() < sizeof(nlmsghdr)) {
      part.hasFailed = true;
      break;
    }
    const auto header = recordAt<nlmsghdr>(bytes);
    if (header.nlmsg_len < sizeof header || header.nlmsg_len > bytes.size()) {
      part.hasFailed = true;
      break;
    }
    readMessage(header, bytes.substr(sizeof header, header.nlmsg_len - sizeof header), part);
    const std::size_t padded = (std::size_t{header.nlmsg_len} + 3) & ~std::size_t{3};
    bytes.remove_prefix(std::min(padded, bytes.size()));
  }
  return part;
}

std::optional<std::vector<ListeningSocket>> dumpListeningSockets() {
  const FileDescriptor channel{::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG)};
  if (!channel) return std::nullopt;
  // The kernel answers at once; this only bounds what a broken emulation of it can cost.
  const timeval limit{1, 0};
  ::setsockopt(channel.number(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  std::vector<ListeningSocket> sockets;
  for (const int family : {AF_INET, AF_INET6}) {
    if (!sendRequest(channel, family) || !receiveAnswer(channel, sockets)) return std::nullopt;
  }
  return sockets;
}

}  // namespace korvantis
