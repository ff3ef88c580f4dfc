#include "samplers/ListeningPorts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>

#include "platform/DarwinTypes.h"

namespace korvantis {

namespace {

constexpr std::size_t descriptorLimit = 128;

std::uint16_t swappedBytes(std::uint16_t value) {
  return static_cast<std::uint16_t>((value << 8) | (value >> 8));
}

/// The port that a descriptor listens on; 0 when it is no listening TCP socket.
std::uint16_t listeningPort(const LibProcCalls& libProc, std::int32_t pid, int descriptor) {
  socket_fdinfo reply{};
  constexpr int size = sizeof(reply);
  if (libProc.proc_pidfdinfo(pid, descriptor, PROC_PIDFDSOCKETINFO, &reply, size) != size) {
    return 0;
  }
  if (reply.psi.soi_kind != SOCKINFO_TCP) return 0;
  const tcp_sockinfo& tcp = reply.psi.soi_proto.pri_tcp;
  if (tcp.tcpsi_state != TSI_S_LISTEN) return 0;
  return swappedBytes(static_cast<std::uint16_t>(tcp.tcpsi_ini.insi_lport & 0xFFFF));
}

}  // namespace

std::vector<std::uint16_t> scanListeningPorts(const LibProcCalls& libProc, std::int32_t pid) {
  std::array<proc_fdinfo, descriptorLimit> descriptors{};
  constexpr int size = sizeof(descriptors);
  const int filled = libProc.proc_pidinfo(pid, PROC_PIDLISTFDS, 0, descriptors.data(), size);
  if (filled < 1) return {};

  const std::size_t count =
      std::min(static_cast<std::size_t>(filled) / sizeof(proc_fdinfo), descriptorLimit);
  std::set<std::uint16_t> ports;
  for (std::size_t index = 0; index < count; ++index) {
    if (descriptors[index].proc_fdtype != PROX_FDTYPE_SOCKET) continue;
    const std::uint16_t port = listeningPort(libProc, pid, descriptors[index].proc_fd);
    if (port != 0) ports.insert(port);
  }
  return {ports.begin(), ports.end()};
}

}  // namespace korvantis
