#pragma once

#include <string>
#include <string_view>

namespace korvantis {

/// Whether `bytes` is well-formed UTF-8 throughout (no overlong forms, no surrogates, nothing
/// above U+10FFFF). The empty text is. Any thread.
bool isValidUtf8(std::string_view bytes);

/// `bytes` with each maximal ill-formed piece replaced by one U+FFFD; well-formed text comes
/// back unchanged. Any thread.
std::string repairedUtf8(std::string_view bytes);

}  // namespace korvantis
