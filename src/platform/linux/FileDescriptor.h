#pragma once

#include <unistd.h>
#include <utility>

namespace korvantis {

/// Owns an open descriptor and closes it; below 0 is none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : descriptor(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor(std::exchange(other.descriptor, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor, other.descriptor);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (descriptor >= 0) ::close(descriptor);
  }

  /// The number to hand to the system.
  int number() const { return descriptor; }

  /// Gives the number away: whoever takes it closes it.
  int release() { return std::exchange(descriptor, -1); }

  /// Whether there is one.
  explicit operator bool() const { return descriptor >= 0; }

 private:
  int descriptor = -1;
};

}  // namespace korvantis
