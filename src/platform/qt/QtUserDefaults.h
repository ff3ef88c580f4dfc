#pragma once

#include <string>

#include "platform/UserDefaultsCalls.h"

namespace korvantis {

/// The user's settings in "Korvantis/Korvantis.conf" under the folder of the desktop's settings
/// (`$XDG_CONFIG_HOME`, else `~/.config`), in the form of an INI file: section "General", keys as
/// given. On macOS they will go through the system's own preferences later; until then the file
/// lies in `~/Library/Preferences`.
UserDefaultsCalls qtUserDefaultsCalls();

/// The same in the file at `path`. A file that can't be read counts as empty; of a damaged one,
/// every line that still makes sense counts. A value that can't be written is kept until the
/// program ends, and other keys are left as they are, also those that another copy of the program
/// writes at the same time.
UserDefaultsCalls qtUserDefaultsCalls(const std::string& path);

}  // namespace korvantis
