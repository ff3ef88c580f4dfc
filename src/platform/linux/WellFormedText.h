#pragma once

#include <string_view>

namespace korvantis {

/// Whether `bytes` is well-formed UTF-8 throughout, by the C library's own judgement. Any thread.
bool isWellFormedText(std::string_view bytes);

}  // namespace korvantis
