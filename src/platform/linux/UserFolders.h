#pragma once

#include <string>
#include <vector>

namespace korvantis {

/// `$HOME`, else the home of the password entry, else "/"; canonical where that is possible, since
/// working directories are canonical too. Any thread.
std::string homeFolder();

/// `$XDG_DATA_HOME` when it is absolute, else `~/.local/share`. Any thread.
std::vector<std::string> applicationSupportFolders();

/// What the user-dirs file names as `XDG_DOWNLOAD_DIR`, else `~/Downloads`. Any thread.
std::vector<std::string> downloadFolders();

/// `$TMPDIR` when it is absolute and a folder is there, else a `privateFolder` of /tmp, the same
/// one for the life of the program. Any thread.
std::string temporaryFolder();

/// A folder below `parent` that is this user's alone (mode 0700): "korvantis-<uid>", made where it
/// is missing; a new one with a random end where somebody else has taken that name or could look
/// into it. Empty when neither can be had. Any thread.
std::string privateFolder(const std::string& parent);

/// The folder that a user-dirs file (`XDG_DOWNLOAD_DIR="$HOME/..."`) names for downloads, the last
/// one if there are several; empty when it names none. A path there is absolute or begins with
/// `$HOME/`; one that is no text names nothing. Any thread.
std::string downloadFolderOf(const std::string& userDirsText, const std::string& home);

}  // namespace korvantis
