#include "platform/linux/UserFolders.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <limits.h>
#include <memory>
#include <pwd.h>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/FileText.h"
#include "platform/linux/WellFormedText.h"

namespace korvantis {
namespace {

/// An environment variable that holds an absolute path; empty otherwise.
std::string absolutePathFromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? value : "";
}

std::string homeOfPasswordEntry() {
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0) return "";
  return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : "";
}

bool isFolder(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

bool isOwnPrivateFolder(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
         facts.st_uid == ::getuid() && (facts.st_mode & 077) == 0;
}

/// The text between the quotes of a value, its backslashes undone; empty when it is not quoted.
std::string unquoted(std::string_view value) {
  if (value.empty() || value.front() != '"') return "";
  std::string text;
  for (std::size_t index = 1; index < value.size(); ++index) {
    if (value[index] == '"') return text;
    if (value[index] == '\\' && index + 1 < value.size()) ++index;
    text += value[index];
  }
  return "";
}

void skipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
}

/// Takes `word` off the beginning of `text`, and the blanks behind it; false when it isn't there.
bool take(std::string_view& text, std::string_view word) {
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  skipBlanks(text);
  return true;
}

/// The folder that one line of a user-dirs file names for downloads; empty when it names none.
std::string downloadFolderOfLine(std::string_view line, const std::string& home) {
  const std::string_view homeBeginning = "\"$HOME/";
  skipBlanks(line);
  if (!take(line, "XDG_DOWNLOAD_DIR") || !take(line, "=")) return "";
  std::string folder = unquoted(line);
  if (line.starts_with(homeBeginning) && !folder.empty()) {
    folder = home + folder.substr(homeBeginning.size() - 2);
  }
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  const bool isPath = folder.starts_with('/') && folder.find('\0') == std::string::npos;
  return isPath && isWellFormedText(folder) ? folder : "";
}

}  // namespace

std::string homeFolder() {
  std::string home = absolutePathFromEnvironment("HOME");
  if (home.empty()) home = homeOfPasswordEntry();
  if (home.empty()) home = "/";
  const std::unique_ptr<char, decltype(&std::free)> canonical(::realpath(home.c_str(), nullptr),
                                                              &std::free);
  return canonical ? canonical.get() : home;
}

std::vector<std::string> applicationSupportFolders() {
  const std::string folder = absolutePathFromEnvironment("XDG_DATA_HOME");
  return {folder.empty() ? homeFolder() + "/.local/share" : folder};
}

std::vector<std::string> downloadFolders() {
  const std::string home = homeFolder();
  std::string configuration = absolutePathFromEnvironment("XDG_CONFIG_HOME");
  if (configuration.empty()) configuration = home + "/.config";
  const FileText file = readFileText(AT_FDCWD, configuration + "/user-dirs.dirs");
  const std::string named = downloadFolderOf(file.text, home);
  return {named.empty() ? home + "/Downloads" : named};
}

std::string temporaryFolder() {
  std::string folder = absolutePathFromEnvironment("TMPDIR");
  if (!folder.empty() && isFolder(folder)) return folder;
  static const std::string own = privateFolder("/tmp");
  // Where nothing can be made in /tmp, the home is the only folder that is surely the user's.
  return own.empty() ? homeFolder() : own;
}

std::string privateFolder(const std::string& parent) {
  std::string path = parent + "/korvantis-" + std::to_string(::getuid());
  ::mkdir(path.c_str(), 0700);
  if (isOwnPrivateFolder(path)) return path;
  std::string pattern = path + "-XXXXXX";
  return ::mkdtemp(pattern.data()) != nullptr ? pattern : "";
}

std::string downloadFolderOf(const std::string& userDirsText, const std::string& home) {
  std::string folder;
  std::istringstream lines(userDirsText);
  for (std::string line; std::getline(lines, line);) {
    const std::string named = downloadFolderOfLine(line, home);
    if (!named.empty()) folder = named;
  }
  return folder;
}

}  // namespace korvantis
