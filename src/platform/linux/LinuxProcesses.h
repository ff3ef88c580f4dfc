#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/LibProcCalls.h"
#include "platform/linux/DescriptorBudget.h"
#include "platform/linux/DescriptorWalks.h"
#include "platform/linux/IdleWakeups.h"
#include "platform/linux/ProcessListing.h"
#include "platform/linux/ProcessPass.h"
#include "platform/linux/ProcessSignals.h"
#include "platform/linux/ProcessSources.h"
#include "platform/linux/QuietProcesses.h"
#include "platform/linux/RememberedProcesses.h"

namespace korvantis {

/// Answers the questions of `libproc` from `/proc`, netlink and the CPU clocks of processes. The
/// members are the operations of `LibProcCalls`, `SysctlCalls` and `PosixCalls` under plain
/// names; failures set `errno`. Any thread, several at once.
///
/// A process is its number together with its start. `PROC_PIDTBSDINFO` picks the process that has
/// a number now; what the same thread asks next about that number is answered from that very
/// process, and fails once it has gone.
class LinuxProcesses {
 public:
  explicit LinuxProcesses(ProcessSources processSources);
  LinuxProcesses(const LinuxProcesses&) = delete;
  LinuxProcesses& operator=(const LinuxProcesses&) = delete;
  ~LinuxProcesses() = default;

  /// `proc_listallpids`: at most 1024 pids.
  int listAllPids(void* buffer, int bufferSize);

  /// `proc_pidinfo`.
  int processInfo(int pid, int flavor, void* buffer, int bufferSize);

  /// `proc_pid_rusage`.
  int resourceUsage(int pid, int flavor, void* buffer);

  /// `proc_pidpath`.
  int executablePath(int pid, void* buffer, std::uint32_t bufferSize);

  /// `proc_pidfdinfo`.
  int descriptorInfo(int pid, int descriptor, int flavor, void* buffer, int bufferSize);

  /// `responsibility_get_pid_responsible_for_pid`.
  std::int32_t responsiblePid(std::int32_t pid);

  /// `sysctl` for `KERN_PROCARGS2`.
  int argumentBlock(const int* name, unsigned nameLength, void* oldValue, std::size_t* oldSize);

  /// `kill`.
  int kill(std::int32_t pid, int signal) const;

  /// How many processes are remembered.
  std::size_t rememberedCount() const { return remembered.count(); }

  /// How many descriptors stay open between questions.
  int keptDescriptors() const { return descriptorBudget->inUse(); }

 private:
  ProcessPass& pass() const;
  ProcessPass& newPass() const;
  std::shared_ptr<ProcessReading> openReading(std::int32_t pid) const;
  std::shared_ptr<ProcessReading> current(std::int32_t pid) const;
  std::shared_ptr<const ProcessFolder> folderToKeep(ProcessReading& reading) const;
  const ListeningSockets& listeningSockets(ProcessPass& currentPass) const;
  std::optional<ProcessAncestry> ancestry(std::int32_t pid) const;
  std::string presentedPath(ProcessReading& reading) const;
  ProcessDiskBytes heldDiskBytes(const ProcessIdentity& identity) const;

  int basicInformation(std::int32_t pid, void* buffer);
  int workingDirectory(std::int32_t pid, void* buffer) const;
  int descriptorList(std::int32_t pid, void* buffer, std::size_t limit) const;

  const ProcessSources sources;
  const std::uint64_t instance;
  const std::shared_ptr<DescriptorBudget> descriptorBudget;
  mutable RememberedProcesses remembered;
  ProcessListing listing{sources, remembered};
  QuietProcesses quietProcesses{sources, remembered};
  DescriptorWalks descriptorWalks{sources, remembered};
  IdleWakeups wakeups{sources, remembered};
  ProcessSignals signals{sources, remembered};
};

}  // namespace korvantis
