// What desktop applications add to a tick. Starts 300 idle programs, and 100 that belong to ten
// applications with desktop entries of their own beside 290 other entries; then ticks (process
// sampler and application groups) with and without the knowledge of applications by turns. The
// clock of the samplers is moved by two seconds a tick, so that whatever is done every 25 seconds
// is part of the figures. CPU time of the whole program, background work included.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "analysis/AppGrouper.h"
#include "platform/PlatformCalls.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/applications/KeptEntryIndex.h"
#include "platform/linux/applications/LinuxApplications.h"
#include "samplers/LibProcSampler.h"

namespace korvantis {
namespace {

constexpr int plainCount = 300;
constexpr int applicationCount = 10;
constexpr int entryCount = 300;
constexpr int rounds = 8;
constexpr int ticksPerRound = 13;

namespace fs = std::filesystem;

double cpuMilliseconds() {
  timespec time{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The idle programs and the entries of some of them, gone with the object.
class Herd {
 public:
  Herd() {
    std::string name = (fs::temp_directory_path() / "korvantis-herd-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) std::exit(1);
    folder = fs::canonical(name).string();
    fs::create_directories(folder + "/applications");
    const std::string self = fs::read_symlink("/proc/self/exe").string();
    for (int number = 0; number < entryCount; ++number) writeEntry(number);
    for (int number = 0; number < applicationCount; ++number) {
      const std::string program = programOf(number);
      fs::create_directories(fs::path(program).parent_path());
      fs::copy_file(self, program);
      start(program, "");
      for (int helper = 1; helper < 10; ++helper) start(program, "--type=renderer");
    }
    for (int number = 0; number < plainCount; ++number) start(self, "");
  }
  Herd(const Herd&) = delete;
  Herd& operator=(const Herd&) = delete;
  ~Herd() {
    for (const pid_t pid : children) ::kill(pid, SIGKILL);
    for (const pid_t pid : children) ::waitpid(pid, nullptr, 0);
    fs::remove_all(folder);
  }

  std::string entryFolder() const { return folder + "/applications"; }

 private:
  std::string programOf(int number) const {
    const std::string name = "herdapp" + std::to_string(number);
    return folder + "/" + name + "/" + name;
  }

  void writeEntry(int number) const {
    std::ofstream file(entryFolder() + "/org.example.app" + std::to_string(number) + ".desktop");
    file << "[Desktop Entry]\nType=Application\nVersion=1.0\nName=Application " << number << "\n";
    for (const char* language : {"de", "fr", "es", "it", "pl", "ja", "zh_CN", "pt_BR", "ru"}) {
      file << "Name[" << language << "]=Anwendung " << number << "\n"
           << "Comment[" << language << "]=What this application is for, in that language\n";
    }
    const char* usual[] = {"bash", "sed", "find", "python3", "perl"};  // NOLINT: a plain table
    file << "Exec=" << (number < applicationCount ? programOf(number) : usual[number % 5])
         << " %U\nIcon=any\nCategories=Utility;\n";
  }

  void start(const std::string& program, const char* argument) {
    const pid_t pid = ::fork();
    if (pid == 0) {
      ::execl(program.c_str(), program.c_str(), "--idle", argument, nullptr);
      ::_exit(1);
    }
    children.push_back(pid);
  }

  std::string folder;
  std::vector<pid_t> children;
};

/// A process sampler and a grouper over this machine.
class Tick {
 public:
  Tick(const Herd& herd, bool knowsApplications) {
    ProcessSources sources = systemProcessSources();
    sources.steadySeconds = [this] { return seconds; };
    if (knowsApplications) {
      ApplicationSources own = systemApplicationSources();
      own.entryFolders = {herd.entryFolder()};
      own.steadySeconds = sources.steadySeconds;
      sources.applications = std::make_shared<LinuxApplications>(own);
    }
    auto processes = std::make_shared<LinuxProcesses>(sources);
    PlatformCalls calls = systemPlatformCalls();
    calls.clock.now = [this] { return seconds; };
    addCalls(calls, processes);
    if (auto applications = sources.applications) {
      calls.propertyLists.dictionaryWithContentsOfFile = [applications](const std::string& path) {
        return applications->propertyList(path);
      };
    }
    sampler = std::make_unique<LibProcSampler>(calls);
    grouper = std::make_unique<AppGrouper>(calls.propertyLists);
  }

  std::size_t run() {
    seconds += 2;
    const auto groups = grouper->group(sampler->sampleProcesses({}), std::uint64_t{1} << 34U);
    return static_cast<std::size_t>(
        std::count_if(groups.begin(), groups.end(),
                      [](const AppGroup& group) { return group.kind == AppGroupKind::app; }));
  }

 private:
  static void addCalls(PlatformCalls& calls, const std::shared_ptr<LinuxProcesses>& processes) {
    calls.libProc.proc_listallpids = [processes](void* buffer, int size) {
      return processes->listAllPids(buffer, size);
    };
    calls.libProc.proc_pidinfo = [processes](int pid, int flavor, std::uint64_t, void* buffer,
                                             int size) {
      return processes->processInfo(pid, flavor, buffer, size);
    };
    calls.libProc.proc_pid_rusage = [processes](int pid, int flavor, void* buffer) {
      return processes->resourceUsage(pid, flavor, buffer);
    };
    calls.libProc.proc_pidpath = [processes](int pid, void* buffer, std::uint32_t size) {
      return processes->executablePath(pid, buffer, size);
    };
    calls.libProc.proc_pidfdinfo = [processes](int pid, int descriptor, int flavor, void* buffer,
                                               int size) {
      return processes->descriptorInfo(pid, descriptor, flavor, buffer, size);
    };
    calls.libProc.responsibility_get_pid_responsible_for_pid = [processes](std::int32_t pid) {
      return processes->responsiblePid(pid);
    };
    calls.sysctl.sysctl = [processes](const int* name, unsigned length, void* value,
                                      std::size_t* size) {
      return processes->argumentBlock(name, length, value, size);
    };
  }

  double seconds = 1'000'000;
  std::unique_ptr<LibProcSampler> sampler;
  std::unique_ptr<AppGrouper> grouper;
};

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void measureIndex(const Herd& herd) {
  ApplicationSources sources = systemApplicationSources();
  sources.entryFolders = {herd.entryFolder()};
  std::vector<double> times;
  std::size_t size = 0;
  for (int round = 0; round < 9; ++round) {
    const double before = cpuMilliseconds();
    size = DesktopEntryIndex(sources, listEntryFiles("", sources.entryFolders)).size();
    times.push_back(cpuMilliseconds() - before);
  }
  const EntryFiles files = listEntryFiles("", sources.entryFolders);
  const double before = cpuMilliseconds();
  const bool hasChanged = haveEntryFilesChanged("", files);
  std::cout << "index of " << size << " entries: " << median(times)
            << " ms; look for changes: " << cpuMilliseconds() - before << " ms"
            << (hasChanged ? " (changed?)" : "") << "\n";
}

void measureTicks(const Herd& herd) {
  Tick plain(herd, false);
  Tick presented(herd, true);
  plain.run();
  const double before = cpuMilliseconds();
  const std::size_t applications = presented.run();
  const double first = cpuMilliseconds() - before;
  std::vector<double> ratios;
  std::vector<double> plainTimes;
  std::vector<double> presentedTimes;
  const auto spent = [](Tick& tick) {
    const double start = cpuMilliseconds();
    for (int count = 0; count < ticksPerRound; ++count) tick.run();
    return (cpuMilliseconds() - start) / ticksPerRound;
  };
  for (int round = 0; round < rounds; ++round) {
    plainTimes.push_back(spent(plain));
    presentedTimes.push_back(spent(presented));
    ratios.push_back(presentedTimes.back() / plainTimes.back());
  }
  std::cout << applications << " applications; first tick " << first
            << " ms; mean tick without them " << median(plainTimes) << " ms, with them "
            << median(presentedTimes) << " ms, ratio " << median(ratios) << "\n";
}

int run() {
  const Herd herd;
  // The programs must have become what they are.
  ::usleep(500'000);
  measureIndex(herd);
  measureTicks(herd);
  return 0;
}

}  // namespace
}  // namespace korvantis

int main(int count, char** arguments) {
  if (count > 1 && std::string(arguments[1]) == "--idle") {
    for (;;) ::pause();
  }
  return korvantis::run();
}
