#include "platform/linux/UserFolders.h"

#include <cstdlib>
#include <fcntl.h>
#include <limits.h>
#include <memory>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/FileText.h"

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

bool isOwnPrivateFolder(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
         facts.st_uid == ::getuid() && (facts.st_mode & 077) == 0;
}

std::string makePrivateTemporaryFolder() {
  const std::string path = "/tmp/korvantis-" + std::to_string(::getuid());
  ::mkdir(path.c_str(), 0700);
  if (isOwnPrivateFolder(path)) return path;
  std::string pattern = path + "-XXXXXX";
  return ::mkdtemp(pattern.data()) != nullptr ? pattern : path;
}

/// The text between the quotes of a value, its backslashes undone; empty when it is not quoted.
std::string unquoted(const std::string& value) {
  if (value.empty() || value.front() != '"') return "";
  std::string text;
  for (std::size_t index = 1; index < value.size(); ++index) {
    if (value[index] == '"') return text;
    if (value[index] == '\\' && index + 1 < value.size()) ++index;
    text += value[index];
  }
  return "";
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
  const std::string folder = absolutePathFromEnvironment("TMPDIR");
  if (!folder.empty()) return folder;
  static const std::string own = makePrivateTemporaryFolder();
  return own;
}

std::string downloadFolderOf(const std::string& userDirsText, const std::string& home) {
  const std::string key = "XDG_DOWNLOAD_DIR=";
  const std::string homeVariable = "$HOME";
  std::string folder;
  std::istringstream lines(userDirsText);
  for (std::string line; std::getline(lines, line);) {
    line.erase(0, line.find_first_not_of(" \t"));
    if (!line.starts_with(key)) continue;
    const std::string value = unquoted(line.substr(key.size()));
    if (value.starts_with(homeVariable + "/")) {
      folder = home + value.substr(homeVariable.size());
    } else if (value.starts_with("/")) {
      folder = value;
    }
  }
  return folder;
}

}  // namespace korvantis
