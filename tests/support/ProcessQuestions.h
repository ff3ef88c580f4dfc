#pragma once

#include <array>
#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/LibProcCalls.h"
#include "platform/linux/LinuxProcesses.h"

namespace korvantis::test {

/// The questions of the process sampler with their answers in plain types.
class ProcessQuestions {
 public:
  explicit ProcessQuestions(ProcessSources sources) : processes(std::move(sources)) {}

  std::vector<std::int32_t> pids(int bytes = 16384) {
    std::vector<std::int32_t> buffer(static_cast<std::size_t>(bytes) / 4 + 1);
    const int filled = processes.listAllPids(buffer.data(), bytes);
    buffer.resize(static_cast<std::size_t>(filled) / 4);
    return buffer;
  }

  std::optional<proc_bsdinfo> basic(int pid) {
    proc_bsdinfo record{};
    const int filled = processes.processInfo(pid, PROC_PIDTBSDINFO, &record, sizeof record);
    return filled == static_cast<int>(sizeof record) ? std::optional(record) : std::nullopt;
  }

  std::optional<rusage_info_v4> usage(int pid) {
    rusage_info_v4 record{};
    const int result = processes.resourceUsage(pid, RUSAGE_INFO_V4, &record);
    return result == 0 ? std::optional(record) : std::nullopt;
  }

  std::optional<std::string> path(int pid) {
    std::array<char, 4096> buffer{};
    const int length = processes.executablePath(pid, buffer.data(), buffer.size());
    if (length < 1) return std::nullopt;
    return std::string(buffer.data(), static_cast<std::size_t>(length));
  }

  std::optional<std::string> folder(int pid) {
    proc_vnodepathinfo record{};
    const int filled = processes.processInfo(pid, PROC_PIDVNODEPATHINFO, &record, sizeof record);
    if (filled != static_cast<int>(sizeof record)) return std::nullopt;
    return std::string(record.pvi_cdir.vip_path);
  }

  /// The whole argument block through the two calls; absent when one of them fails.
  std::optional<std::string> block(int pid) {
    const std::array<int, 3> name{CTL_KERN, KERN_PROCARGS2, pid};
    std::size_t size = 0;
    if (processes.argumentBlock(name.data(), 3, nullptr, &size) != 0) return std::nullopt;
    std::string bytes(size, '\0');
    if (processes.argumentBlock(name.data(), 3, bytes.data(), &size) != 0) return std::nullopt;
    bytes.resize(size);
    return bytes;
  }

  std::vector<proc_fdinfo> descriptors(int pid, int bytes = 1024) {
    std::vector<proc_fdinfo> buffer(static_cast<std::size_t>(bytes) / sizeof(proc_fdinfo) + 1);
    const int filled = processes.processInfo(pid, PROC_PIDLISTFDS, buffer.data(), bytes);
    buffer.resize(static_cast<std::size_t>(std::max(filled, 0)) / sizeof(proc_fdinfo));
    return buffer;
  }

  std::optional<socket_fdinfo> socket(int pid, int descriptor) {
    socket_fdinfo record{};
    const int filled =
        processes.descriptorInfo(pid, descriptor, PROC_PIDFDSOCKETINFO, &record, sizeof record);
    return filled == static_cast<int>(sizeof record) ? std::optional(record) : std::nullopt;
  }

  /// The port of a descriptor that listens; 0 for every other one.
  std::uint16_t port(int pid, int descriptor) {
    const auto record = socket(pid, descriptor);
    if (!record || record->psi.soi_kind != SOCKINFO_TCP) return 0;
    if (record->psi.soi_proto.pri_tcp.tcpsi_state != TSI_S_LISTEN) return 0;
    const auto stored =
        static_cast<std::uint32_t>(record->psi.soi_proto.pri_tcp.tcpsi_ini.insi_lport);
    return static_cast<std::uint16_t>((stored >> 8U & 0xffU) | (stored & 0xffU) << 8U);
  }

  /// All listening ports of a process, as the sampler finds them.
  std::set<std::uint16_t> ports(int pid) {
    std::set<std::uint16_t> found;
    for (const proc_fdinfo& descriptor : descriptors(pid)) {
      if (descriptor.proc_fdtype != PROX_FDTYPE_SOCKET) continue;
      if (const std::uint16_t number = port(pid, descriptor.proc_fd)) found.insert(number);
    }
    return found;
  }

  LinuxProcesses processes;
};

/// CPU time of a record in nanoseconds.
inline std::uint64_t cpuTime(const rusage_info_v4& usage) {
  return usage.ri_user_time + usage.ri_system_time;
}

/// The words of an argument block after the executable path; empty when there are none.
inline std::vector<std::string> blockWords(const std::string& block) {
  std::vector<std::string> words;
  std::size_t position = block.find('\0', 4);
  while (position != std::string::npos && position + 1 < block.size()) {
    const std::size_t end = block.find('\0', position + 1);
    words.push_back(block.substr(position + 1, end - position - 1));
    position = end;
  }
  return words;
}

}  // namespace korvantis::test
