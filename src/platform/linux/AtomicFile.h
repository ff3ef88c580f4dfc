#pragma once

#include <string>
#include <string_view>

namespace korvantis {

/// Writes `bytes` into a new file beside `path`, brings them to the disk and moves the file over
/// what stands at `path`, whose permissions it takes on. True on success; otherwise the new file
/// is gone and what was there is untouched. A link at `path` is replaced, not followed. Any thread.
bool writeFileAtomically(const std::string& path, std::string_view bytes);

}  // namespace korvantis
