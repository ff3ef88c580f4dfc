#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

namespace korvantis::test {

/// What the kernel's own files say about a live process, read by other means than the program's.
namespace LiveProcessFacts {

/// The letter of its state, such as 'S' for one that sleeps.
char state(pid_t pid);

/// User plus system time so far, in clock ticks; each part is cut to whole ticks.
std::int64_t cpuTicks(pid_t pid);

/// Clock ticks per second.
double ticksPerSecond();

/// Private memory in RAM and swapped out, in bytes.
std::uint64_t privateBytes(pid_t pid);

/// Bytes that this process has caused to be written to disk so far; -1 where that is not told.
std::int64_t ownWrittenBytes();

/// The target of a link of the process's folder, such as "exe".
std::string link(pid_t pid, const std::string& name);

/// What a command prints to its standard output, without the last line end.
std::string outputOf(const std::string& command);

}  // namespace LiveProcessFacts

}  // namespace korvantis::test
