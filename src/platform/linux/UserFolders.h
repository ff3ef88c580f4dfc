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

/// `$TMPDIR` when it is absolute, else `/tmp/korvantis-<uid>`, made with mode 0700 and used only
/// when it is a folder of this user's alone; otherwise a new folder with a random name, the same
/// one for the life of the program. Any thread.
std::string temporaryFolder();

/// The folder that a user-dirs file (`XDG_DOWNLOAD_DIR="$HOME/..."`) names for downloads; empty
/// when it names none. A path there is absolute or begins with `$HOME/`. Any thread.
std::string downloadFolderOf(const std::string& userDirsText, const std::string& home);

}  // namespace korvantis
