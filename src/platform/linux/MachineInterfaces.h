#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/LinkCounters.h"
#include "platform/linux/MachineSources.h"
#include "platform/linux/RememberedNames.h"

namespace korvantis {

/// The interface list as `if_msghdr2` messages, one for each of `links` in their order.
std::vector<std::byte> interfaceMessages(const std::vector<LinkCounters>& links);

/// The machine's network interfaces: those that are devices of their own, so that no byte counts
/// twice through a bridge, a tunnel or a virtual pair; all of them where none is a device, as in
/// a container. Any thread.
class MachineInterfaces {
 public:
  explicit MachineInterfaces(MachineSources sources);

  /// Answers the interface list in the manner of `sysctl`: the size without a buffer, the
  /// messages with one. A thread that asks for the size and then for the messages gets both from
  /// one question to the kernel.
  int list(void* oldValue, std::size_t* oldSize);

 private:
  std::optional<std::vector<std::byte>> readMessages() const;
  std::optional<std::vector<LinkCounters>> readLinks() const;
  std::optional<std::vector<LinkCounters>> readTable() const;
  std::optional<std::vector<std::byte>> takeCounted();

  const MachineSources sources;
  mutable RememberedNames deviceNames;

  std::mutex lock;
  /// The messages behind a size that was told and that nobody has fetched yet.
  std::map<std::thread::id, std::vector<std::byte>> countedMessages;
};

}  // namespace korvantis
