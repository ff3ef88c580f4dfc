#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/HardwareCalls.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A tree of `/proc`, `/sys` and `/dev` files that stands for a machine, with a clock that a test
/// moves. Outlives the operations over it.
class HardwareTree {
 public:
  /// An empty tree.
  HardwareTree();
  /// The machine of this name in `machines/`.
  explicit HardwareTree(const std::string& machine);

  std::atomic<double> seconds = 1000;
  /// What the kernel says when it is asked whether the list of mounts changed, and how often it
  /// was.
  std::atomic<bool> mountsChanged = false;
  std::atomic<int> mountQuestions = 0;
  /// Where the tree's figures come from; change it before `open`.
  HardwareSources sources;

  void write(const std::string& path, const std::string& text) { folder.write(path, text); }
  void link(const std::string& path, const std::string& target) { folder.link(path, target); }
  void remove(const std::string& path) { folder.remove(path); }
  std::string path(const std::string& relative) const { return folder.path(relative); }

  /// Puts a machine of the manifest's form into the tree.
  void expand(const std::string& manifest);

  /// Begins anew: the operations forget what they kept.
  void open();
  PlatformCalls calls;
  SMCCalls controller;

  /// A controller key of four or one bytes as a number; absent when it is not there.
  std::optional<double> key(const std::string& name) const;
  /// All keys of the sensors and fans that there are.
  std::map<std::string, double> keys() const;

  /// The properties of all services of a class.
  std::vector<PropertyMap> services(const std::string& className) const;
  /// The accumulated graphics time by the text that names each client.
  std::map<std::string, std::int64_t> graphicsClients() const;

 private:
  TemporaryFolder folder;
};

}  // namespace korvantis::test
