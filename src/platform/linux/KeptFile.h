#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "platform/linux/FileDescriptor.h"

namespace korvantis {

/// A file of `/proc` or `/sys` that is read again and again: it stays open between readings,
/// which saves looking up its path. Any thread.
class KeptFile {
 public:
  /// Nothing is opened before the first reading.
  explicit KeptFile(std::string path);

  /// The whole text as it is now; absent when the file can't be opened or read. The next call
  /// then tries to open it anew.
  std::optional<std::string> read();

 private:
  const std::string path;

  /// Held while reading: the kernel makes such a text piece by piece, and pieces of two readings
  /// through one descriptor would mix.
  std::mutex lock;
  FileDescriptor file;
};

}  // namespace korvantis
