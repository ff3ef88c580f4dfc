#pragma once

#include <optional>
#include <string_view>

#include "core/HelperRole.h"

namespace korvantis {

/// The role that the words of a helper process give away: `haystack` is its name, path and
/// arguments in lower case. Absent when no word does. Any thread.
std::optional<HelperRole> helperRoleOfWords(std::string_view haystack);

}  // namespace korvantis
