#include "platform/applications/DesktopFixture.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace korvantis::test {
namespace {

using std::filesystem::perms;

std::string relative(const std::string& path) {
  return path.substr(1);
}

void makeExecutable(const std::string& path) {
  std::filesystem::permissions(path, perms::owner_all | perms::group_exec | perms::others_exec);
}

/// Collects the lines of a fixture file into files and processes.
class Loader {
 public:
  explicit Loader(DesktopFixture& desktop) : fixture(desktop) {}

  void take(const std::string& line) {
    const std::size_t blank = line.find(' ');
    const std::string key = line.substr(0, blank);
    const std::string value = blank == std::string::npos ? "" : line.substr(blank + 1);
    if (key == "|") {
      text += value + "\n";
    } else if (key == "file" || key == "script") {
      finish();
      kind = key;
      path = value;
    } else if (key == "process") {
      finish();
      startProcess(value);
    } else if (!takeProcessLine(key, value)) {
      finish();
      takeSingle(key, value);
    }
  }

  void finish() {
    if (kind == "file") fixture.machine.files.write(relative(path), text);
    if (kind == "script") fixture.script(path, text);
    if (kind == "process") fixture.put(process);
    kind.clear();
    text.clear();
  }

 private:
  void startProcess(const std::string& value) {
    kind = "process";
    process = {};
    process.group = "/";
    std::istringstream words(value);
    std::string word;
    words >> process.pid >> word >> process.parent >> word >> process.session >> word >>
        process.start;
    if (!words) throw std::runtime_error("no process: " + value);
  }

  bool takeProcessLine(const std::string& key, const std::string& value) {
    if (kind != "process") return false;
    if (key == "name")
      process.name = value;
    else if (key == "exe")
      process.executable = value;
    else if (key == "word")
      process.words.push_back(value);
    else if (key == "cgroup")
      process.group = value.substr(value.find("::") + 2);
    else if (key == "env")
      process.environment.push_back(value);
    else if (key == "shown")
      fixture.shownPaths[process.pid] = value;
    else if (key == "sandbox")
      process.sandbox = value;
    else
      return false;
    return true;
  }

  void takeSingle(const std::string& key, const std::string& value) {
    std::istringstream words(value);
    std::string first;
    std::string second;
    words >> first >> second;
    if (key == "native") return fixture.native(first);
    if (key == "link") return fixture.machine.files.link(relative(first), second);
    if (key == "bus") return fixture.busName(first, std::stoi(second));
    if (key.empty() || key == "#") return;
    throw std::runtime_error("no such kind of line: " + key);
  }

  DesktopFixture& fixture;
  std::string kind;
  std::string path;
  std::string text;
  DesktopFixture::Process process;
};

}  // namespace

DesktopFixture::DesktopFixture() {
  machine.seconds = 100'000;
}

void DesktopFixture::load(const std::string& name) {
  std::ifstream file(std::filesystem::path(KORVANTIS_FIXTURES) / name);
  if (!file) throw std::runtime_error("no fixture " + name);
  Loader loader(*this);
  for (std::string line; std::getline(file, line);) loader.take(line);
  loader.finish();
}

void DesktopFixture::entry(const std::string& id, const std::string& lines) {
  machine.files.write("usr/share/applications/" + id + ".desktop",
                      "[Desktop Entry]\nType=Application\n" + lines + "\n");
}

void DesktopFixture::native(const std::string& path) {
  makeExecutable(machine.files.write(relative(path),
                                     "\x7f"
                                     "ELF and so on"));
}

void DesktopFixture::script(const std::string& path, const std::string& text) {
  makeExecutable(machine.files.write(relative(path), text));
}

void DesktopFixture::put(const Process& process) {
  RecordedProcess recorded;
  recorded.pid = process.pid;
  recorded.parent = process.parent;
  recorded.session = process.session == 0 ? process.pid : process.session;
  recorded.startTicks = process.start;
  recorded.name = process.name;
  recorded.executable = process.executable;
  for (const std::string& word : process.words) recorded.commandLine += word + '\0';
  machine.put(recorded);
  const std::string base = "proc/" + std::to_string(process.pid);
  machine.files.write(base + "/cgroup", "1:name=systemd:/\n0::" + process.group + "\n");
  std::string environment;
  for (const std::string& setting : process.environment) environment += setting + '\0';
  machine.files.write(base + "/environ", environment);
  if (process.sandbox.empty()) return;
  machine.files.write(base + "/root" + "/.flatpak-info",
                      "[Application]\nname=" + process.sandbox + "\nruntime=runtime/any\n");
}

ApplicationSources DesktopFixture::sources() {
  ApplicationSources sources;
  sources.root = machine.files.path();
  sources.entryFolders = {"/home/user/.local/share/applications", "/usr/share/applications",
                          "/var/lib/flatpak/exports/share/applications",
                          "/var/lib/snapd/desktop/applications"};
  sources.programFolders = {"/usr/local/bin", "/usr/bin", "/usr/games"};
  sources.languages = {"de_AT", "de"};
  sources.steadySeconds = [this] { return machine.seconds; };
  sources.busNameOwners = [this](const std::function<bool(const std::string&)>& isWanted) {
    std::vector<BusNameHolder> holders;
    for (const BusNameHolder& holder : busHolders) {
      if (isWanted(holder.name)) holders.push_back(holder);
    }
    return holders;
  };
  return sources;
}

LinuxApplications& DesktopFixture::applications() {
  if (!watched) watched = std::make_shared<LinuxApplications>(sources());
  return *watched;
}

std::shared_ptr<LinuxApplications> DesktopFixture::watchedApplications() {
  applications();
  return watched;
}

ProcessQuestions& DesktopFixture::questions() {
  if (!asked) {
    applications();
    ProcessSources processSources = machine.sources();
    processSources.applications = watched;
    asked = std::make_unique<ProcessQuestions>(processSources);
    asked->pids();
  }
  return *asked;
}

void DesktopFixture::tick() {
  questions().pids();
}

std::string DesktopFixture::path(std::int32_t pid) {
  return questions().path(pid).value_or("");
}

std::int32_t DesktopFixture::responsible(std::int32_t pid) {
  return questions().processes.responsiblePid(pid);
}

}  // namespace korvantis::test
