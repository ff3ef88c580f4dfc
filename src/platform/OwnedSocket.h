#pragma once

#include <utility>

#include "platform/SocketCalls.h"

namespace korvantis {

/// Owns a descriptor of `SocketCalls` and closes it; below 0 is none. The calls must outlive it.
class OwnedSocket {
 public:
  OwnedSocket(const SocketCalls& socketCalls, int number)
      : calls(&socketCalls), descriptor(number) {}
  OwnedSocket(OwnedSocket&& other) noexcept
      : calls(other.calls), descriptor(std::exchange(other.descriptor, -1)) {}
  OwnedSocket& operator=(OwnedSocket&& other) noexcept {
    std::swap(calls, other.calls);
    std::swap(descriptor, other.descriptor);
    return *this;
  }
  OwnedSocket(const OwnedSocket&) = delete;
  OwnedSocket& operator=(const OwnedSocket&) = delete;
  ~OwnedSocket() {
    if (descriptor >= 0) calls->close(descriptor);
  }

  /// The number to hand to the system.
  int number() const { return descriptor; }

  /// Whether there is one.
  explicit operator bool() const { return descriptor >= 0; }

  /// Gives the number away: it is not closed here any more.
  int release() { return std::exchange(descriptor, -1); }

 private:
  const SocketCalls* calls;
  int descriptor;
};

}  // namespace korvantis
