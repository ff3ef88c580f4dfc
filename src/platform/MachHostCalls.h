#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "platform/DarwinTypes.h"

namespace korvantis {

/// Figures of the kernel's host port. Any thread.
struct MachHostCalls {
  /// Fills the fraction that turns time units into nanoseconds; 0 on success.
  std::function<int(mach_timebase_info_data_t* info)> mach_timebase_info;

  /// For `PROCESSOR_CPU_LOAD_INFO` stores the number of cores, the address of a reply with one
  /// `processor_cpu_load_info` a core, and the reply's length in words; 0 on success. The caller
  /// gives the reply back with `vm_deallocate`.
  std::function<int(int flavor, std::uint32_t* processorCount, std::int32_t** reply,
                    std::uint32_t* replyWords)>
      host_processor_info;

  /// Gives back `size` bytes at `address` that a call above handed over; 0 on success.
  std::function<int(std::uintptr_t address, std::size_t size)> vm_deallocate;

  /// For `HOST_VM_INFO64` fills a `vm_statistics64` of at most `*words` words and stores how many
  /// it filled; 0 on success.
  std::function<int(int flavor, std::int32_t* buffer, std::uint32_t* words)> host_statistics64;

  /// Stores the size of a memory page in bytes; 0 on success.
  std::function<int(std::uintptr_t* size)> host_page_size;
};

}  // namespace korvantis
