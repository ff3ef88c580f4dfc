#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/ProcessSources.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// One process of a recorded machine.
struct RecordedProcess {
  std::int32_t pid = 0;
  std::string name = "program";
  char state = 'S';
  std::int32_t parent = 1;
  std::int32_t session = 1;
  std::uint64_t startTicks = 1000;
  std::uint32_t userID = 501;
  std::uint64_t userTicks = 0;
  std::uint64_t systemTicks = 0;
  std::uint64_t anonymousKilobytes = 0;
  std::uint64_t swapKilobytes = 0;
  /// The voluntary switches of each thread; the first is the main thread's.
  std::vector<std::uint64_t> switches = {0};
  /// Bytes read and written; none when the file is missing.
  std::optional<std::pair<std::uint64_t, std::uint64_t>> disk = std::pair{0, 0};
  /// The link texts; empty for none.
  std::string executable;
  std::string folder;
  std::string commandLine;
  std::map<std::int32_t, std::string> descriptors;
  bool isKernelThread = false;
};

/// A `/proc` folder as another machine might have it, with a clock that the test moves.
class RecordedProcesses {
 public:
  /// Writes a process over whatever was there under its number.
  void put(const RecordedProcess& process) {
    const std::string base = "proc/" + std::to_string(process.pid);
    files.remove(base);
    files.write(base + "/stat", statText(process));
    files.write(base + "/status", statusText(process, process.pid, process.switches.front()));
    const std::size_t threads = process.switches.size();
    for (std::size_t index = 0; threads > 1 && index < threads; ++index) {
      const std::int32_t thread = process.pid + static_cast<std::int32_t>(index);
      files.write(base + "/task/" + std::to_string(thread) + "/status",
                  statusText(process, thread, process.switches[index]));
    }
    if (process.disk) files.write(base + "/io", diskText(*process.disk));
    if (!process.commandLine.empty()) files.write(base + "/cmdline", process.commandLine);
    if (!process.executable.empty()) files.link(base + "/exe", process.executable);
    if (!process.folder.empty()) files.link(base + "/cwd", process.folder);
    for (const auto& [descriptor, link] : process.descriptors) {
      files.link(base + "/fd/" + std::to_string(descriptor), link);
    }
  }

  /// Takes a process away.
  void remove(std::int32_t pid) const { files.remove("proc/" + std::to_string(pid)); }

  /// Sources that read this folder as user 501; started at second 1,000,000.25 of the epoch.
  ProcessSources sources() {
    ProcessSources sources;
    sources.root = files.path();
    sources.userID = 501;
    sources.bootNanoseconds = 1'000'000'250'000'000;
    sources.clockTicksPerSecond = 100;
    sources.steadySeconds = [this] { return seconds; };
    return sources;
  }

  TemporaryFolder files;
  double seconds = 100;

  static std::string statText(const RecordedProcess& process) {
    const auto text = [](auto number) { return std::to_string(number); };
    return text(process.pid) + " (" + process.name + ") " + process.state + " " +
           text(process.parent) + " " + text(process.pid) + " " + text(process.session) + " 0 -1 " +
           (process.isKernelThread ? "2129984" : "4194304") + " 10 0 0 0 " +
           text(process.userTicks) + " " + text(process.systemTicks) + " 0 0 20 0 " +
           text(process.switches.size()) + " 0 " + text(process.startTicks) +
           " 1000000 250 18446744073709551615 1 1 0 0 0 0\n";
  }

 private:
  static std::string diskText(const std::pair<std::uint64_t, std::uint64_t>& bytes) {
    return "rchar: 9\nwchar: 9\nsyscr: 9\nsyscw: 9\nread_bytes: " + std::to_string(bytes.first) +
           "\nwrite_bytes: " + std::to_string(bytes.second) + "\ncancelled_write_bytes: 9\n";
  }

  static std::string statusText(const RecordedProcess& process, std::int32_t thread,
                                std::uint64_t switches) {
    const std::string user = std::to_string(process.userID);
    return "Name:\tany\nTgid:\t" + std::to_string(process.pid) + "\nPid:\t" +
           std::to_string(thread) + "\nUid:\t" + user + "\t" + user + "\t" + user + "\t" + user +
           "\nGid:\t20\t20\t20\t20\nRssAnon:\t    " + std::to_string(process.anonymousKilobytes) +
           " kB\nVmSwap:\t" + std::to_string(process.swapKilobytes) +
           " kB\nvoluntary_ctxt_switches:\t" + std::to_string(switches) +
           "\nnonvoluntary_ctxt_switches:\t7\n";
  }
};

}  // namespace korvantis::test
