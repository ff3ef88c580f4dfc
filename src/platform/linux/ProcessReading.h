#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ProcessDiskBytes.h"
#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/ProcessStat.h"
#include "platform/linux/ProcessStatus.h"

namespace korvantis {

/// One process, held through an open descriptor of its `/proc` folder. All that is read through
/// it is of this process and no other: the kernel refuses once the process has gone, even when
/// its number has been given away again. One thread at a time.
class ProcessReading {
 public:
  /// Opens the process that has this number now; null when there is none or its `stat` can't be
  /// read. `root` is the folder that stands for "/".
  static std::shared_ptr<ProcessReading> open(const std::string& root, std::int32_t pid);

  /// What its `stat` told when it was opened.
  const ProcessStat& stat() const { return openingStat; }

  /// Which process it is.
  ProcessIdentity identity() const { return {openingStat.pid, openingStat.startTicks}; }

  /// Its `stat` of now; absent when it has gone.
  std::optional<ProcessStat> readStat() const;

  /// Its `status`, read once and kept until `takeStatus`; absent when it can't be read.
  const std::optional<ProcessStatus>& status();

  /// The kept `status`, or that of now when none is kept. Owner and memory of one tick thus come
  /// from one read, and two requests for the memory from two.
  std::optional<ProcessStatus> takeStatus();

  /// Its disk counters; absent when they are refused.
  std::optional<ProcessDiskBytes> diskBytes() const;

  /// Whether it is still there, be it as a zombie.
  bool isThere() const;

  /// The path of its executable, without the mark of a file that has been removed. Where the link
  /// is refused, what the command line says if that is an absolute path. Empty otherwise.
  std::string executablePath() const;

  /// Its working directory; empty when it is refused, removed or out of reach.
  std::string workingDirectory() const;

  /// Its arguments with a zero byte after each; empty for a zombie and when they are refused.
  std::string commandLine() const;

  /// The link of one of its descriptors; absent when it is closed or refused.
  std::optional<std::string> descriptorLink(std::int32_t descriptor) const;

  /// The lowest of its open descriptors in ascending order; absent when they are refused.
  std::optional<std::vector<std::int32_t>> descriptors(std::size_t limit) const;

  /// How often all its threads went to sleep by themselves; absent when no thread can be read.
  std::optional<std::uint64_t> voluntarySwitches() const;

  /// The argument block last asked for its size, kept for the question that follows.
  std::string keptArgumentBlock;

  /// Sockets seen by the last listing of descriptors that don't listen, ascending.
  std::vector<std::int32_t> plainSockets;

 private:
  ProcessReading(FileDescriptor&& folder, ProcessStat&& stat);

  FileDescriptor directory;
  ProcessStat openingStat;
  std::optional<ProcessStatus> keptStatus;
};

}  // namespace korvantis
