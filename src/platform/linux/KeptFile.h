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

  /// The text as it is at `now` (seconds that never go back), or was at most a tenth of a second
  /// before: several figures of one tick then come from one reading, and from one moment.
  std::optional<std::string> readOnceAround(double now);

 private:
  std::optional<std::string> readLocked();

  const std::string path;

  /// Held while reading: the kernel makes such a text piece by piece, and pieces of two readings
  /// through one descriptor would mix.
  std::mutex lock;
  FileDescriptor file;
  std::optional<std::string> lastText;
  double lastReadAt = 0;
};

}  // namespace korvantis
