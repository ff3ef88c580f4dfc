#pragma once

#include <string>
#include <vector>

namespace korvantis {

/// Has the session's file manager show these files selected; where there is none that can, the
/// folder of the first one is opened. Comes back at once; the rest happens on another thread. Any
/// thread.
void revealInFileManager(const std::vector<std::string>& paths);

/// The file URL of an absolute path. Any thread.
std::string fileURLOf(const std::string& path);

}  // namespace korvantis
