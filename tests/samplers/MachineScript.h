#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/PlatformCalls.h"

namespace korvantis::test {

/// A machine that a test writes: it answers the operations of the machine sampler and writes
/// down each one in the order in which it came. Outlives what asks it. Any thread may ask; the
/// test itself writes while nobody does.
class MachineScript {
 public:
  /// Ticks of one core: user, system, idle, nice.
  using Core = std::array<std::int32_t, 4>;

  double now = 1'750'000'000;
  std::uint64_t physicalMemory = std::uint64_t{16} << 30;
  std::int64_t processorCount = 8;

  /// The cores of the next reply.
  std::vector<Core> cores{{100, 100, 100, 100}};
  int processorInfoResult = 0;
  bool processorInfoGivesReply = true;
  /// Replaces the count of words in the reply.
  std::optional<std::uint32_t> processorInfoWords;
  /// Replaces the count of cores that the reply claims.
  std::optional<std::uint32_t> processorInfoCores;

  vm_statistics64 pageCounters{};
  int statisticsResult = 0;
  /// Absent: the call fails and leaves the variable alone.
  std::optional<std::uintptr_t> pageSize = 16384;

  /// Absent: the call fails and leaves the buffer alone.
  std::optional<std::array<double, 3>> loadAverages = std::array{1.5, 2.5, 3.5};

  /// The named figures, byte by byte; others fail.
  std::map<std::string, std::string> figures;
  /// Names whose first call, for the size, works and whose second fails.
  std::set<std::string> figuresThatFailToBeRead;

  /// The interface list; absent: its size can't be had.
  std::optional<std::vector<std::byte>> interfaceList = std::vector<std::byte>();
  bool interfaceListFailsToBeRead = false;
  /// What the second call says it has filled, when that is not all.
  std::optional<std::size_t> interfaceBytesFilled;

  /// The services of each class; an absent property map can't be read. Other classes have none.
  std::map<std::string, std::vector<std::optional<PropertyMap>>> services;
  std::set<std::string> classesThatFailToMatch;

  std::optional<VolumeResourceValues> rootVolume = VolumeResourceValues{500, 200};

  /// The operations over this script.
  PlatformCalls platform();

  /// Every operation so far, such as "sysctlbyname vm.swapusage".
  std::vector<std::string> operations() const;
  /// How often one of them came.
  int count(const std::string& operation) const;
  void forgetOperations();
  /// Replies of `host_processor_info` that nobody has given back.
  std::size_t repliesNotGivenBack() const;
  /// What was wrong with the questions; empty when they were all well formed.
  std::vector<std::string> complaints() const;

  template <typename Number>
  void setFigure(const std::string& name, Number value) {
    figures[name].assign(reinterpret_cast<const char*>(&value), sizeof value);
  }
  void setSwapUsed(std::uint64_t bytes);
  /// One storage driver with these counters in place of all others.
  void setDisk(std::int64_t readBytes, std::int64_t writtenBytes);

 private:
  void note(const std::string& operation);
  void check(bool holds, const std::string& complaint);
  int processorInfo(int flavor, std::uint32_t* count, std::int32_t** reply, std::uint32_t* words);
  int deallocate(std::uintptr_t address, std::size_t size);
  int statistics(int flavor, std::int32_t* buffer, std::uint32_t* words);
  int named(const char* name, void* oldValue, std::size_t* oldSize);
  int interfaces(const int* name, unsigned nameLength, void* oldValue, std::size_t* oldSize);
  std::optional<std::vector<IORegistryEntry>> match(const std::string& className);

  mutable std::mutex mutex;
  std::vector<std::string> log;
  std::vector<std::string> wrongQuestions;
  std::map<std::uintptr_t, std::vector<std::int32_t>> replies;
};

/// One `if_msghdr2`.
if_msghdr2 interfaceMessage(int flags, std::uint64_t inBytes, std::uint64_t outBytes);

/// Messages one after the other.
std::vector<std::byte> interfaceList(const std::vector<if_msghdr2>& messages);

/// An interface list of one interface that is up.
std::vector<std::byte> oneInterface(std::uint64_t inBytes, std::uint64_t outBytes);

/// The properties of a storage driver.
PropertyMap diskProperties(std::int64_t readBytes, std::int64_t writtenBytes);

}  // namespace korvantis::test
