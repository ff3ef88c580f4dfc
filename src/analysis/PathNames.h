#pragma once

#include <string_view>

namespace korvantis {

/// The last component of `path` without its extension: "Foo Bar" for "/Applications/Foo Bar.app".
/// Slashes at the end don't count, and a name that begins with its only dot keeps it. Empty when
/// there is no component. The result looks into `path`. Any thread.
std::string_view nameWithoutExtension(std::string_view path);

}  // namespace korvantis
