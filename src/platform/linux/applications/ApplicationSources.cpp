#include "platform/linux/applications/ApplicationSources.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <time.h>
#include <unistd.h>

#include "platform/linux/UserFolders.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/applications/SessionBus.h"

namespace korvantis {
namespace {

std::string variable(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] != '\0' ? value : otherwise;
}

void addOnce(std::vector<std::string>& list, std::string item) {
  while (item.size() > 1 && item.ends_with('/')) item.pop_back();
  const bool isUsable = item.starts_with('/');
  if (isUsable && std::find(list.begin(), list.end(), item) == list.end()) {
    list.push_back(std::move(item));
  }
}

std::vector<std::string> splitAtColons(std::string_view text) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t colon = std::min(text.find(':'), text.size());
    addOnce(parts, std::string(text.substr(0, colon)));
    text.remove_prefix(std::min(colon + 1, text.size()));
  }
  return parts;
}

std::vector<std::string> entryFolders() {
  std::vector<std::string> data = applicationSupportFolders();
  const std::string ownData = data.front();
  for (std::string& folder :
       splitAtColons(variable("XDG_DATA_DIRS", "/usr/local/share:/usr/share"))) {
    addOnce(data, std::move(folder));
  }
  addOnce(data, ownData + "/flatpak/exports/share");
  addOnce(data, "/var/lib/flatpak/exports/share");
  addOnce(data, "/var/lib/snapd/desktop");
  // A program that was started outside of the desktop may lack them.
  addOnce(data, "/usr/local/share");
  addOnce(data, "/usr/share");
  for (std::string& folder : data) folder += "/applications";
  return data;
}

std::vector<std::string> programFolders() {
  std::vector<std::string> folders = splitAtColons(variable("PATH", ""));
  for (const char* usual :
       {"/usr/local/bin", "/usr/bin", "/bin", "/usr/local/games", "/usr/games", "/snap/bin"}) {
    addOnce(folders, usual);
  }
  return folders;
}

std::vector<std::string> userLanguages() {
  const std::string locale =
      variable("LC_ALL", variable("LC_MESSAGES", variable("LANG", "").c_str()).c_str());
  return entryLanguages(variable("LANGUAGE", ""), locale);
}

double secondsSinceStart() {
  timespec time{};
  if (::clock_gettime(CLOCK_BOOTTIME, &time) != 0) return 0;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

ApplicationSources systemApplicationSources() {
  ApplicationSources sources;
  sources.entryFolders = entryFolders();
  sources.programFolders = programFolders();
  sources.languages = userLanguages();
  sources.clockTicksPerSecond = static_cast<std::uint64_t>(std::max(1L, ::sysconf(_SC_CLK_TCK)));
  sources.steadySeconds = secondsSinceStart;
  sources.busNameOwners = sessionBusNameOwners;
  sources.worksInBackground = true;
  return sources;
}

}  // namespace korvantis
