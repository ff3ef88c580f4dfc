#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/MachineCalls.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A tree of `/proc` and `/sys` files that stands for a machine, with a clock that a test moves.
/// Outlives the operations over it.
class MachineTree {
 public:
  double seconds = 1000;
  /// What the kernel's own dump of interfaces gives; absent: it gives none.
  std::optional<std::vector<LinkCounters>> links;
  int dumps = 0;

  /// Writes a file of the tree.
  void write(const std::string& path, const std::string& text) { folder.write(path, text); }
  /// Removes a file or folder of the tree.
  void remove(const std::string& path) { folder.remove(path); }

  /// The operations over this tree; what they keep between calls begins anew.
  PlatformCalls calls();

  /// A laptop: one processor of four alike cores with two threads each, an NVMe disk with
  /// partitions below an encrypted mapping, loop devices, compressed swap, Wi-Fi, a bridge.
  void makeLaptop();
  /// A container: no `/sys`, no pressure figures, one virtual interface.
  void makeContainer();
  /// A board with four cores of one kind and two of a more capable one.
  void makeBigLittleBoard();
  /// A processor with two performance cores of two threads each and four efficiency cores.
  void makeHybrid();

 private:
  void makeProcessor(int number, const std::string& coreList);

  TemporaryFolder folder;
};

/// A named figure of four bytes.
std::optional<std::int32_t> int32Figure(const PlatformCalls& calls, const char* name);

/// A named text.
std::optional<std::string> textFigure(const PlatformCalls& calls, const char* name);

/// The page counters; absent when they can't be had.
std::optional<vm_statistics64> pageCounters(const PlatformCalls& calls);

/// The messages of the interface list; absent when it can't be had.
std::optional<std::vector<if_msghdr2>> interfaceMessages(const PlatformCalls& calls);

/// Bytes read and written of each storage driver.
std::vector<std::pair<std::int64_t, std::int64_t>> diskCounters(const PlatformCalls& calls);

/// The ticks of each core; empty when they can't be had.
std::vector<processor_cpu_load_info> coreTicks(const PlatformCalls& calls);

}  // namespace korvantis::test
