#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// The entries of a folder whose names are `prefix` followed by a decimal number, as full paths in
/// the order of their numbers; empty when the folder can't be listed. Any thread.
std::vector<std::string> numberedFolders(const std::string& folder, std::string_view prefix);

/// The number between `prefix` and `suffix` in a name such as "temp12_input"; below 0 when the name
/// is made otherwise.
int numberWithin(std::string_view name, std::string_view prefix, std::string_view suffix);

/// The last part of a path or of what a link holds.
std::string lastPart(const std::string& path);

}  // namespace korvantis
