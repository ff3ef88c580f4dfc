#pragma once

#include <string_view>

namespace korvantis {

/// Whether two texts (UTF-8) are the same but for upper and lower case, by Unicode's full case
/// folding in every language setting: "STRASSE" equals "straße". Bytes that are no UTF-8 equal only
/// themselves. Allocates nothing. Any thread.
bool equalIgnoringCase(std::string_view first, std::string_view second);

}  // namespace korvantis
