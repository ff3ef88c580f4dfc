#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace korvantis {

/// The entries of a folder whose names are whole numbers, such as pids and descriptors, in the
/// folder's order and at most `limit`; absent when the folder can't be read. With a small limit
/// the kernel is not made to list the rest. Any thread.
std::optional<std::vector<std::int32_t>> numberedEntries(
    int directory, const std::string& path,
    std::size_t limit = std::numeric_limits<std::size_t>::max());

}  // namespace korvantis
