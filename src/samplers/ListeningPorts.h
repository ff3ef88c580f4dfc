#pragma once

#include <cstdint>
#include <vector>

#include "platform/LibProcCalls.h"

namespace korvantis {

/// The TCP ports that a process listens on, ascending, each once. Only its first 128
/// descriptors are looked at; empty when they can't be read. Any thread.
std::vector<std::uint16_t> scanListeningPorts(const LibProcCalls& libProc, std::int32_t pid);

}  // namespace korvantis
