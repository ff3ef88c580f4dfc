// Prints the applications that run on this desktop as a table: program, rule that caught it,
// helpers by role, verdict. Each argument "NAME|KIND|RULE|PROGRAM,...|VERDICT" is a row that must
// be there: a group of that name and kind ("app", "system"), with at least one process that was
// found by RULE ("-" for any), this verdict on its badge ("-" for any) and processes of the given
// names in it, each name optionally followed by "=ROLE". "!PROGRAM" says that no process of that
// name may be in it. "NAME|quit" asks the application politely to quit and expects that it takes
// the request and ends, without a signal. The exit code is the number of rows that failed.
#include <chrono>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "core/EnumerationTable.h"
#include "engine/OstrelEngine.h"
#include "platform/PlatformCalls.h"
#include "platform/linux/ProcessReading.h"
#include "platform/linux/applications/LinuxApplications.h"

namespace korvantis {
namespace {

std::string ruleName(std::optional<ApplicationRule> rule) {
  if (!rule) return "";
  switch (*rule) {
    case ApplicationRule::sandbox: return "sandbox";
    case ApplicationRule::appImage: return "AppImage";
    case ApplicationRule::entryExecutable: return "executable";
    case ApplicationRule::executableLocation: return "location";
    case ApplicationRule::interpreterScript: return "script";
    case ApplicationRule::launchEnvironment: return "launch";
    case ApplicationRule::busName: return "bus name";
    case ApplicationRule::controlGroup: return "control group";
    case ApplicationRule::sharedHelper: return "shared helper";
  }
  return "";
}

/// Looks at processes a second time, by itself, to tell the rules.
class Rules {
 public:
  explicit Rules(const EngineSnapshot& snapshot) : applications(systemApplicationSources()) {
    std::vector<ProcessIdentity> listed;
    for (const AppGroup& group : snapshot.appGroups) {
      for (const ProcessSample& process : group.processes) {
        const auto reading = ProcessReading::open("", process.pid);
        if (!reading) continue;
        identities[process.pid] = reading->identity();
        listed.push_back(reading->identity());
      }
    }
    applications.see(listed);
  }

  std::string of(std::int32_t pid) const {
    const auto found = identities.find(pid);
    return found == identities.end() ? "" : ruleName(applications.ruleOf(found->second));
  }

 private:
  LinuxApplications applications;
  std::map<std::int32_t, ProcessIdentity> identities;
};

std::string joined(const std::set<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

std::string rolesOf(const AppGroup& group) {
  std::map<HelperRole, std::map<std::string, int>> names;
  for (const ProcessSample& process : group.processes) ++names[process.helperRole][process.name];
  std::string text;
  for (const auto& [role, members] : names) {
    text += (text.empty() ? "" : "; ") + std::string(rawValue(role)) + ":";
    for (const auto& [name, count] : members) {
      text += " " + name + (count > 1 ? " x" + std::to_string(count) : "");
    }
  }
  return text;
}

std::set<std::string> rulesOf(const AppGroup& group, const Rules& rules) {
  std::set<std::string> found;
  for (const ProcessSample& process : group.processes) found.insert(rules.of(process.pid));
  found.erase("");
  return found;
}

std::vector<std::string> split(const std::string& text, char at) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, at);) parts.push_back(part);
  return parts;
}

bool hasProgram(const AppGroup& group, const std::string& wanted) {
  const auto parts = split(wanted, '=');
  for (const ProcessSample& process : group.processes) {
    const bool isRole = parts.size() < 2 || rawValue(process.helperRole) == parts[1];
    if (process.name == parts[0] && isRole) return true;
  }
  return false;
}

bool fits(const AppGroup& group, const std::vector<std::string>& row, const Rules& rules,
          std::string_view badge) {
  if (row.size() != 5 || group.name != row[0] || rawValue(group.kind) != row[1]) return false;
  if (row[2] != "-" && !rulesOf(group, rules).contains(row[2])) return false;
  if (row[4] != "-" && badge != row[4]) return false;
  for (const std::string& program : split(row[3], ',')) {
    if (program == "-") continue;
    const bool isForbidden = program.starts_with('!');
    if (hasProgram(group, program.substr(isForbidden ? 1 : 0)) == isForbidden) return false;
  }
  return true;
}

/// Whether the application takes a polite request and then ends within ten seconds.
bool quits(const EngineSnapshot& snapshot, const std::string& name, const PlatformCalls& platform) {
  for (const AppGroup& group : snapshot.appGroups) {
    if (group.name != name) continue;
    for (const ProcessSample& process : group.processes) {
      const auto running =
          platform.runningApplications.runningApplicationWithProcessIdentifier(process.pid);
      const auto reading = ProcessReading::open("", process.pid);
      if (!running || !reading) continue;
      if (!running->terminate()) return false;
      for (int tries = 0; tries < 100 && reading->readStat(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
      }
      const auto left = reading->readStat();
      return !left || left->state == 'Z';
    }
  }
  return false;
}

int run(const std::vector<std::string>& expected) {
  const PlatformCalls platform = systemPlatformCalls();
  OstrelEngine engine(platform);
  engine.sampleTick({}, {});
  std::this_thread::sleep_for(std::chrono::seconds(1));
  const EngineSnapshot snapshot = engine.sampleTick({}, {});
  const Rules rules(snapshot);
  std::cout << "| program | kind | rule | helpers and roles | verdict |\n|---|---|---|---|---|\n";
  for (const AppGroup& group : snapshot.appGroups) {
    std::cout << "| " << group.name << " | " << rawValue(group.kind) << " | "
              << joined(rulesOf(group, rules)) << " | " << rolesOf(group) << " | "
              << badgeText(engine.checkQuitSafety(group).verdict) << " |\n";
  }
  int missing = 0;
  for (const std::string& row : expected) {
    const auto parts = split(row, '|');
    bool isThere = parts.size() == 2 && parts[1] == "quit" && quits(snapshot, parts[0], platform);
    for (const AppGroup& group : snapshot.appGroups) {
      const auto badge = badgeText(engine.checkQuitSafety(group).verdict);
      isThere = isThere || fits(group, parts, rules, badge);
    }
    if (isThere) continue;
    std::cout << "MISSING: " << row << "\n";
    ++missing;
  }
  return missing;
}

}  // namespace
}  // namespace korvantis

int main(int count, char** arguments) {
  return korvantis::run({arguments + 1, arguments + count});
}
