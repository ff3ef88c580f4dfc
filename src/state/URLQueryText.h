#pragma once

#include <string>
#include <string_view>

namespace korvantis {

/// A text percent-encoded for the query of a URL, byte by byte with capital hex digits. Letters,
/// digits and `!$&'()*+,;=:@/?-._~` stay, so "&", "+" and "=" keep the meaning that the receiver
/// gives them. Any thread.
std::string urlQueryEncoded(std::string_view text);

}  // namespace korvantis
