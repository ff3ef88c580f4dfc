#pragma once

#include <string>
#include <string_view>

namespace korvantis {

/// The last component of `path` without its extension: "Foo Bar" for "/Applications/Foo Bar.app".
/// Slashes at the end don't count, and a name that begins with its only dot keeps it. Empty when
/// there is no component. The result looks into `path`. Any thread.
std::string_view nameWithoutExtension(std::string_view path);

/// The last component of `path`: "shop" for "/home/ada/shop". Slashes at the end don't count; a
/// path of nothing but slashes gives "/", the empty one the empty text. The result looks into
/// `path`. Any thread.
std::string_view lastPathComponent(std::string_view path);

/// The folder that the absolute `path`, in its standardised form, stands in: "/" for "/home" and
/// for "/" itself. Any thread.
std::string parentPath(std::string_view path);

/// The absolute `path` without ".", ".." and needless slashes, told from the text alone: links are
/// not looked at, and nothing lies above "/". A path that is not absolute stays as it is. Any
/// thread.
std::string standardizedPath(std::string_view path);

}  // namespace korvantis
