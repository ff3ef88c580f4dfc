#pragma once

#include <string>

namespace korvantis {

/// Compares two texts as people of the user's language order them, without regard to case
/// (`localizedCaseInsensitiveCompare:`): below 0 when `left` comes first, 0 when they are equal,
/// above 0 otherwise. The language is the one of the environment when the program began. Any
/// thread.
int compareLocalizedCaseInsensitive(const std::string& left, const std::string& right);

}  // namespace korvantis
