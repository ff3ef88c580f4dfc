#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace korvantis {

/// What reading a whole file gave.
struct FileText {
  /// The bytes; empty on failure.
  std::string text;
  /// 0, or the `errno` of the step that failed.
  int error = 0;

  explicit operator bool() const { return error == 0; }
};

/// Reads a file from its beginning to its end, or to `limit` bytes. `directory` is the descriptor
/// that a relative `path` starts from (`AT_FDCWD` for the working directory). Made for the files
/// of `/proc`, whose sizes are not known beforehand. Any thread.
FileText readFileText(int directory, const std::string& path,
                      std::size_t limit = std::size_t{16} << 20);

/// What a symbolic link holds; absent when it can't be read or is longer than 4095 bytes. Any
/// thread.
std::optional<std::string> readLinkText(int directory, const std::string& path);

}  // namespace korvantis
