#pragma once

#include <string>
#include <string_view>

#include "core/Utf8.h"

namespace korvantis {

/// The text in a field of fixed size: up to its first zero byte, or all of it where there is
/// none, with bad UTF-8 repaired (a cut name may end in half a character). Any thread.
inline std::string fixedText(std::string_view field) {
  return repairedUtf8(field.substr(0, field.find('\0')));
}

}  // namespace korvantis
