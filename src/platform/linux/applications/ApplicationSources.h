#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace korvantis {

/// A process that holds a name on the session bus.
struct BusNameHolder {
  std::string name;
  std::int32_t pid = 0;
};

/// Where the knowledge of desktop applications comes from. Members may be called from several
/// threads at once.
struct ApplicationSources {
  /// The folder that stands for "/", without a slash at its end.
  std::string root;
  /// Folders of desktop entries, best first.
  std::vector<std::string> entryFolders;
  /// Folders in which programs are looked for by name.
  std::vector<std::string> programFolders;
  /// The forms of the user's languages in desktop entries, best first.
  std::vector<std::string> languages;
  std::uint64_t clockTicksPerSecond = 100;
  /// A clock in seconds since the machine started, asleep or not, that never goes back.
  std::function<double()> steadySeconds;
  /// Asks the session bus who holds the names that `isWanted` picks. Takes a fifth of a second at
  /// most; empty without a bus. May be left out.
  std::function<std::vector<BusNameHolder>(
      const std::function<bool(const std::string& name)>& isWanted)>
      busNameOwners;
  /// Slow work is done on threads of its own; otherwise at once, by whoever needs its result.
  bool worksInBackground = false;
};

/// The running system's, by its environment: XDG_DATA_HOME, XDG_DATA_DIRS, the exports of flatpak
/// and snapd, PATH and the language variables.
ApplicationSources systemApplicationSources();

}  // namespace korvantis
