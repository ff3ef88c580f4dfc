#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/PlatformCalls.h"
#include "support/ScriptedProcess.h"

namespace korvantis::test {

/// What a sampler can ask about processes.
enum class ProcessOperation {
  listAllPIDs,
  basicInfo,
  resourceUsage,
  path,
  workingDirectory,
  descriptors,
  socket,
  arguments,
  responsiblePID,
  timebase,
  ownUID,
};

/// A process table that a test writes: it answers the operations of a platform byte by byte,
/// counts them, and can answer wrongly on purpose. Any thread; outlives what it is installed in.
class ScriptedProcesses {
 public:
  /// Called inside each operation, while nothing is locked.
  using Hook = std::function<void(ProcessOperation operation, std::int32_t pid)>;
  /// Turns the honest result of an operation into the one that is reported.
  using Reply = std::function<int(std::int32_t pid, int honest)>;

  void add(ScriptedProcess process);
  void remove(std::int32_t pid);
  /// Changes one process of the table, which must be there.
  void change(std::int32_t pid, const std::function<void(ScriptedProcess&)>& edit);
  /// Lists these pids instead of those of the table.
  void listPIDs(std::vector<std::int32_t> pids);

  void setNow(double seconds);
  void advance(double seconds);
  void setOwnUID(std::uint32_t uid);
  void setTimebase(std::uint32_t numer, std::uint32_t denom);
  void setHook(Hook newHook);
  void setReply(ProcessOperation operation, Reply reply);

  /// Writes the scripted operations over those of `platform` and leaves its others.
  void install(PlatformCalls& platform);
  PlatformCalls platform();

  /// How often an operation was called, for all processes or for one.
  int count(ProcessOperation operation) const;
  int count(ProcessOperation operation, std::int32_t pid) const;
  void resetCounts();

  /// What was wrong with the questions: an unknown flavour, a buffer of the wrong size or one
  /// that was not zeroed. Empty when all were well formed.
  std::vector<std::string> complaints() const;

 private:
  int listAllPIDs(void* buffer, int bufferSize);
  int processInfo(int pid, int flavor, std::uint64_t argument, void* buffer, int bufferSize);
  int basicInfo(int pid, void* buffer, int bufferSize);
  int workingDirectory(int pid, void* buffer, int bufferSize);
  int descriptors(int pid, void* buffer, int bufferSize);
  int resourceUsage(int pid, int flavor, void* buffer);
  int path(int pid, void* buffer, std::uint32_t bufferSize);
  int socket(int pid, int descriptor, int flavor, void* buffer, int bufferSize);
  int arguments(const int* name, unsigned nameLength, void* oldValue, std::size_t* oldSize);
  std::int32_t responsiblePID(std::int32_t pid);

  void enter(ProcessOperation operation, std::int32_t pid);
  int replyTo(ProcessOperation operation, std::int32_t pid, int honest) const;
  std::shared_ptr<const ScriptedProcess> find(std::int32_t pid) const;
  void checkBuffer(const char* what, const void* buffer, int bufferSize, int expected);
  void check(bool holds, const char* what, const char* of);

  mutable std::mutex mutex;
  std::vector<std::int32_t> order;
  std::unordered_map<std::int32_t, std::shared_ptr<const ScriptedProcess>> table;
  std::optional<std::vector<std::int32_t>> listedPIDs;
  double now = 1'750'000'000;
  std::uint32_t ownUID = 501;
  mach_timebase_info_data_t timebase{1, 1};
  Hook hook;
  std::map<ProcessOperation, Reply> replies;
  std::map<ProcessOperation, std::unordered_map<std::int32_t, int>> countsByPID;
  std::vector<std::string> wrongQuestions;
};

}  // namespace korvantis::test
