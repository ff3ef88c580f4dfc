#pragma once

#include <string>

namespace korvantis {

/// `text` (UTF-8) in lower case by the rules of Unicode, the same in every language setting: the
/// Kelvin sign gives "k". Bytes that are no UTF-8 stay as they are. Any thread.
std::string lowerCased(std::string text);

}  // namespace korvantis
