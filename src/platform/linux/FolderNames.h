#pragma once

#include <string>
#include <vector>

namespace korvantis {

/// The names in a folder, in no order; empty when it can't be listed. Any thread.
std::vector<std::string> namesInFolder(const std::string& folder);

}  // namespace korvantis
