#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinkCounters.h"

namespace korvantis {

/// One received piece of the kernel's answer about its network interfaces.
struct LinkDumpPart {
  std::vector<LinkCounters> links;
  /// The answer is complete.
  bool isLast = false;
  /// The answer can't be used: an error, or damaged bytes.
  bool hasFailed = false;
};

/// Reads one piece of the answer to the request numbered `sequence`; what belongs to another
/// request is passed over. An interface without a name or counters is left out.
LinkDumpPart parseLinkDump(std::string_view bytes, unsigned sequence);

/// Asks the kernel for its network interfaces, over a socket that stays open. Any thread; calls
/// take turns.
class LinkDump {
 public:
  /// All interfaces of this network namespace; absent when the kernel does not answer in full.
  /// Needs no privilege.
  std::optional<std::vector<LinkCounters>> dump();

 private:
  bool openSocket();
  bool sendRequest();
  std::optional<std::vector<LinkCounters>> receiveAnswer();

  /// Held for one whole question and answer: two on one socket would mix.
  std::mutex lock;
  FileDescriptor socket;
  unsigned sequence = 0;
  std::string buffer;
};

}  // namespace korvantis
