#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/linux/DescriptorBudget.h"
#include "platform/linux/FileDescriptor.h"

namespace korvantis {

/// The `/proc` folder of one process, held open. All that is read through it is of this process
/// and no other: the kernel refuses once the process has gone, even when its number has been
/// given away again. It can be kept from one question to the next, and its files with it, which
/// saves looking them up. Any thread, several at once.
class ProcessFolder {
 public:
  /// The files that are read again and again.
  enum class File : std::uint8_t { stat, status, io };

  /// Opens the folder of whoever has this number now; null, with `errno` set, when there is
  /// none. `root` is the folder that stands for "/".
  static std::shared_ptr<ProcessFolder> open(const std::string& root, std::int32_t pid);

  ProcessFolder(const ProcessFolder&) = delete;
  ProcessFolder& operator=(const ProcessFolder&) = delete;
  ~ProcessFolder();

  /// The descriptor to look names up from.
  int number() const { return directory.number(); }

  /// From here on `stat` stays open too, if `descriptors` allow for both; says whether they do.
  /// Before others know of the folder.
  bool keepOpen(const std::shared_ptr<DescriptorBudget>& descriptors);

  /// Whether it counts as kept.
  bool isKept() const { return budget != nullptr; }

  /// The text of a file; empty on failure, with `errno` set. It holds until the same thread reads
  /// the next one. `isFrequent` lets the file of a kept folder stay open.
  std::string_view read(File file, bool isFrequent = false) const;

 private:
  explicit ProcessFolder(FileDescriptor&& folder);

  void keep(File file, FileDescriptor&& opened) const;

  const FileDescriptor directory;
  std::shared_ptr<DescriptorBudget> budget;
  /// Below 0 for those that are not open.
  mutable std::array<std::atomic<int>, 3> files{-1, -1, -1};
};

}  // namespace korvantis
