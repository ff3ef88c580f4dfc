#pragma once

#include <cstddef>
#include <functional>

namespace korvantis {

/// Where all chance comes from.
struct RandomCalls {
  /// Fills `buffer` with `size` random bytes. Any thread.
  std::function<void(void* buffer, std::size_t size)> fill;
};

/// The system's random source.
RandomCalls systemRandomCalls();

}  // namespace korvantis
