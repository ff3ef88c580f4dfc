#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/ProcessDiskBytes.h"
#include "platform/linux/ProcessFolder.h"
#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/ProcessStat.h"
#include "platform/linux/ProcessStatus.h"

namespace korvantis {

/// One process during one pass, held through its open `/proc` folder: all that is read is of this
/// process and no other. One thread at a time.
class ProcessReading {
 public:
  /// Opens the process that has this number now; null when there is none or its `stat` can't be
  /// read. `root` is the folder that stands for "/".
  static std::shared_ptr<ProcessReading> open(const std::string& root, std::int32_t pid);

  /// The process of a folder that was opened earlier; null when it has gone.
  static std::shared_ptr<ProcessReading> through(std::shared_ptr<const ProcessFolder> folder);

  /// The folder that it is read through, as long as nobody else knows of it; null otherwise.
  std::shared_ptr<ProcessFolder> takeNewFolder() { return std::exchange(newFolder, nullptr); }

  /// What its `stat` told when it was opened.
  const ProcessStat& stat() const { return openingStat; }

  /// Which process it is.
  ProcessIdentity identity() const { return {openingStat.pid, openingStat.startTicks}; }

  /// Its `stat` of now; absent when it has gone.
  std::optional<ProcessStat> readStat() const;

  /// Takes `known` for its `status` of now.
  void setStatus(const ProcessStatus& known) { keptStatus = known; }

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
  const std::string& readExecutablePath();

  /// The path that was last read, or that of now when none was.
  const std::string& executablePath();

  /// Its working directory; empty when it is refused, removed or out of reach.
  std::string workingDirectory() const;

  /// Its arguments with a zero byte after each; empty for a zombie and when they are refused.
  std::string commandLine() const;

  /// The first `limit` bytes of another file of its folder; empty when it is refused.
  std::string fileText(const std::string& name, std::size_t limit) const;

  /// The link of one of its descriptors; absent when it is closed or refused.
  std::optional<std::string> descriptorLink(std::int32_t descriptor) const;

  /// The lowest of its open descriptors in ascending order; absent when they are refused.
  std::optional<std::vector<std::int32_t>> descriptors(std::size_t limit) const;

  /// How often all its threads went to sleep by themselves; absent when no thread can be read.
  std::optional<std::uint64_t> voluntarySwitches() const;

  /// Its CPU time in nanoseconds, where it was asked for before anything but `stat` was read.
  std::optional<std::uint64_t> cpuNanoseconds;

  /// Whether it has not run since what is remembered of it was read. Nothing about a process
  /// changes unless it runs, its parent, its memory and the names of its files excepted.
  bool isQuiet = false;

  /// What else of its usage still holds, for one answer.
  struct StandingUsage {
    ProcessDiskBytes disk;
    std::uint64_t wakeups = 0;

    bool operator==(const StandingUsage&) const = default;
  };
  std::optional<StandingUsage> standingUsage;

  /// Whether its usage has been told already.
  bool wasMeasured = false;

  /// Whether it has run lately, so that it is likely to be read in full again.
  bool isBusy = false;

  /// Its name in full; empty before it was told.
  std::string shownName;

  /// The argument block last asked for its size, kept for the question that follows.
  std::string keptArgumentBlock;

  /// Sockets seen by the last listing of descriptors that don't listen, ascending.
  std::vector<std::int32_t> plainSockets;

 private:
  ProcessReading(std::shared_ptr<const ProcessFolder> openFolder, ProcessStat&& stat);

  std::optional<ProcessStatus> readStatus() const;

  const std::shared_ptr<const ProcessFolder> folder;
  std::shared_ptr<ProcessFolder> newFolder;
  ProcessStat openingStat;
  std::optional<ProcessStatus> keptStatus;
  std::optional<std::string> keptExecutablePath;
};

}  // namespace korvantis
