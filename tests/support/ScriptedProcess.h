#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/DarwinTypes.h"

namespace korvantis::test {

/// One descriptor of a scripted process; by default a TCP socket that listens.
struct ScriptedDescriptor {
  std::uint32_t type = PROX_FDTYPE_SOCKET;
  std::uint16_t port = 0;
  int kind = SOCKINFO_TCP;
  int state = TSI_S_LISTEN;
  /// Stands in the high 16 bits of the port field, which mean nothing.
  std::uint16_t portFieldNoise = 0;
};

/// One process of a scripted table: what each operation answers about it. Texts are bytes.
/// Every field has an initializer, so that a test can name just the ones it is about.
struct ScriptedProcess {
  std::int32_t pid = 0;
  std::uint32_t ppid = 1;
  std::uint32_t uid = 501;
  std::string name{};
  std::string comm{};
  std::uint64_t startSeconds = 1'700'000'000;
  std::uint64_t startMicroseconds = 0;

  bool usageIsReadable = true;
  std::uint64_t userTime = 0;
  std::uint64_t systemTime = 0;
  std::uint64_t idleWakeups = 0;
  std::uint64_t footprint = 0;
  std::uint64_t diskReadBytes = 0;
  std::uint64_t diskWriteBytes = 0;

  /// Empty: unreadable.
  std::string path{};
  std::string workingDirectory{};
  /// What the system holds responsible; 0: it names none.
  std::int32_t responsiblePID = 0;
  std::vector<ScriptedDescriptor> descriptors{};

  /// Absent: both calls fail.
  std::optional<std::string> argumentBlock{};
  bool secondArgumentCallFails = false;
  /// Where a call reports another size than the block has.
  std::optional<std::size_t> firstArgumentSize{};
  std::optional<std::size_t> secondArgumentSize{};
};

/// A `KERN_PROCARGS2` block as the kernel lays it out: little-endian count, path, padding zeros,
/// words with a zero byte each, then the environment.
std::string argumentBlock(std::int32_t count, const std::string& path,
                          const std::vector<std::string>& words,
                          const std::vector<std::string>& environment = {});

}  // namespace korvantis::test
