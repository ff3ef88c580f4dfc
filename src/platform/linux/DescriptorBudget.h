#pragma once

#include <atomic>

namespace korvantis {

/// How many descriptors may stay open from one question to the next. Any thread.
class DescriptorBudget {
 public:
  explicit DescriptorBudget(int mostDescriptors) : most(mostDescriptors) {}

  /// Whether this many more may stay open; they then count until `giveBack`.
  bool take(int count);

  /// So many have been closed.
  void giveBack(int count) { open -= count; }

  /// Allows no more than half of what is open now: others in this program need some as well.
  void halve() { most = open / 2; }

  /// How many stay open now.
  int inUse() const { return open; }

 private:
  std::atomic<int> most;
  std::atomic<int> open{0};
};

/// Raises the number of descriptors that this program may have open at once as far as the system
/// lets it and it makes sense here; gives the number that holds now. Programs that are started
/// from here on inherit it. Any thread.
int raiseDescriptorLimit();

}  // namespace korvantis
