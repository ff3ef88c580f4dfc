#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace korvantis {

/// What a process has had read from and written to disk since it began, in bytes.
struct ProcessDiskBytes {
  std::uint64_t read = 0;
  std::uint64_t written = 0;

  bool operator==(const ProcessDiskBytes&) const = default;
};

/// Reads the text of `/proc/PID/io`; absent when either figure is missing or damaged.
std::optional<ProcessDiskBytes> parseProcessDiskBytes(std::string_view text);

}  // namespace korvantis
