#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/applications/ApplicationSources.h"
#include "platform/linux/applications/LinuxApplications.h"
#include "support/ProcessQuestions.h"
#include "support/RecordedProcesses.h"

namespace korvantis::test {

/// A desktop as another machine might have it: entries, programs, processes and bus names, put
/// there one by one or from a file of tests/platform/applications.
class DesktopFixture {
 public:
  /// A process with what tells its application.
  struct Process {
    std::int32_t pid = 0;
    std::int32_t parent = 1;
    std::int32_t session = 0;
    std::uint64_t start = 1000;
    std::string name = "program";
    std::string executable;
    std::vector<std::string> words;
    std::string group = "/user.slice/user-1000.slice/session-2.scope";
    std::vector<std::string> environment;
    /// The flatpak that it runs in; empty for none.
    std::string sandbox{};
  };

  DesktopFixture();

  /// Reads a fixture file; see README.md there. Throws when it holds a line of no kind.
  void load(const std::string& name);

  /// An entry with these lines after its type, in /usr/share/applications.
  void entry(const std::string& id, const std::string& lines);
  void native(const std::string& path);
  void script(const std::string& path, const std::string& text);
  void put(const Process& process);
  void busName(const std::string& name, std::int32_t pid) { busHolders.push_back({name, pid}); }

  /// Begins to watch the desktop as it is now; everything below does so by itself.
  ProcessQuestions& questions();
  LinuxApplications& applications();
  std::shared_ptr<LinuxApplications> watchedApplications();

  /// Lists all processes, as the program does at each tick.
  void tick();
  std::string path(std::int32_t pid);
  std::int32_t responsible(std::int32_t pid);

  /// What the fixture file says of each process: where it is to be shown.
  std::map<std::int32_t, std::string> shownPaths;

  RecordedProcesses machine;

 private:
  ApplicationSources sources();

  std::vector<BusNameHolder> busHolders;
  std::shared_ptr<LinuxApplications> watched;
  std::unique_ptr<ProcessQuestions> asked;
};

}  // namespace korvantis::test
