#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/FileDescriptor.h"

namespace korvantis {

/// A small text of `/sys` or `/proc` that is read on each tick: it stays open and takes one system
/// call. One thread at a time.
class AttributeFile {
 public:
  /// Nothing is opened before the first reading.
  explicit AttributeFile(std::string filePath) : path(std::move(filePath)) {}

  /// The text as it is now, at most 8 KB, without blanks and newlines at its end; absent when it
  /// can't be read. The next call then opens the file anew: a device that left and came back has
  /// another file under the same name.
  std::optional<std::string> text();

  /// The text as a whole number; absent when it is anything else.
  std::optional<std::int64_t> number();

  /// Gives the descriptor back; the next reading opens the file anew.
  void close() { file = FileDescriptor(); }

 private:
  std::string path;
  FileDescriptor file;
};

/// Such a text read once; empty when it can't be read. Any thread.
std::string attributeText(const std::string& path);

/// Such a number read once; absent when there is none. Any thread.
std::optional<std::int64_t> attributeNumber(const std::string& path);

}  // namespace korvantis
