#pragma once

#include <cstddef>
#include <functional>

namespace korvantis {

/// Named figures of the kernel. Any thread.
struct SysctlCalls {
  /// With a null `oldValue` stores the size needed in `*oldSize`; otherwise fills at most
  /// `*oldSize` bytes and stores how many. 0 on success, -1 on failure.
  std::function<int(const int* name, unsigned nameLength, void* oldValue, std::size_t* oldSize)>
      sysctl;

  /// The same for a figure by name, such as "hw.logicalcpu". A buffer that is too small is a
  /// failure.
  std::function<int(const char* name, void* oldValue, std::size_t* oldSize)> sysctlbyname;
};

}  // namespace korvantis
