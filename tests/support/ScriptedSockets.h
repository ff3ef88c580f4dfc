#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/SocketCalls.h"

namespace korvantis::test {

/// Thrown by a scripted `accept` when the script has no more clients: the only way out of a loop
/// that ends with the program.
struct NoMoreClients {};

/// Sockets that do as they are told and write down what they are asked. One thread.
class ScriptedSockets {
 public:
  /// One line a call, such as "connect 3 /tmp/bridge.sock 106".
  std::vector<std::string> log;
  /// The operations that fail, by name.
  std::set<std::string> failing;
  /// What `socket` gives.
  int nextDescriptor = 3;
  /// What `accept` gives, one a call; below 0 it fails.
  std::deque<int> clients;
  /// What `read` gives of each descriptor, one piece a call; then the end of the stream.
  std::map<int, std::deque<std::string>> pieces;
  /// Who is at the other end of each descriptor; not listed: `getpeereid` fails.
  std::map<int, std::uint32_t> peers;
  /// Everything written, by descriptor.
  std::map<int, std::string> written;
  /// The sizes of the buffers handed to `read`.
  std::set<std::size_t> readSizes;
  /// What `write` gives instead of the count of bytes.
  std::optional<std::int64_t> writeResult;
  /// Calls that a caller should never make: buffers that are not zeroed, wrong lengths.
  std::vector<std::string> complaints;

  /// The operations; this object must outlive them.
  SocketCalls calls();

 private:
  int answer(const std::string& name, const std::string& line, int result = 0);
  std::string words(const DarwinSocketAddress* address, std::uint32_t length);
  int accept(int descriptor, DarwinSocketAddress* address, const std::uint32_t* length);
  std::int64_t read(int descriptor, void* buffer, std::size_t size);
  std::int64_t write(int descriptor, const void* buffer, std::size_t size);
};

}  // namespace korvantis::test
